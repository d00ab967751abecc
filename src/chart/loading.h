// Loading of one chart, and joining of the charts of a course.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

// 1 when the chart was loaded, -1 when the file does not exist.
int32_t BMSLoad(TextView path);
// Joins CourseSongs into one table. The caller clears LoadAbort and sets WAVLoadmode.
void BMSLoadCourse();

}  // namespace qlm
