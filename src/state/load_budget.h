// The memory that sounds and pictures may hold together.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

// Whether sounds and pictures hold more than LoadBudget with what was just made of a file, which the caller
// then lets go. The log names each such file, and the screen the first one since the chart's load began: at
// once, and again when the play begins.
bool OverLoadBudget(TextView path);
// Bytes of it that nothing holds yet, negative when it is used up.
int64_t LoadBudgetLeft();

// A new chart: nothing has been said of it.
void ResetBudgetNotice();

}  // namespace qlm
