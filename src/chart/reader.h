// The reader of BMS text: one chart file to objects, header fields and file tables.
#pragma once

#include "base/text.h"

namespace qlm {

// Empties all that one chart owns. Header fields and loaded files stay.
void BMSInit();
// Appends the chart at `path` to the object table. No bad line stops a read.
void BMSRead(TextView path);
// Tells that the object table is too small, if it is.
void ReportShortage();

}  // namespace qlm
