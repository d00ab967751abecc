// Loading of one chart, and joining of the charts of a course.
#include "chart/loading.h"

namespace qlm {

int32_t BMSLoad(TextView) { return -1; }
void BMSLoadCourse() {}

}  // namespace qlm
