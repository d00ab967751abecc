// Preparation: bar lines, time order, scaled positions, and all numbers of a play that the chart decides.
#pragma once

#include <cstdint>

namespace qlm {

void BMSPrepare();
// BMSLengthMs anew, from the objects as they stand.
int32_t GetBMSLength();
// Sorts the object table by pos, in the one scheme that fixes the order of equals.
void SortObjs();

}  // namespace qlm
