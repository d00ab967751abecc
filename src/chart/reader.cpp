// The reader of BMS text.
#include "chart/reader.h"

namespace qlm {

void BMSInit() {}
void BMSRead(TextView) {}
void ReportShortage() {}

}  // namespace qlm
