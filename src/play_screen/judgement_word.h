// The word of the last judgement and what stands around it.
#pragma once

#include <cstddef>

namespace qlm {

// Word, combo, bonus figures and combo box of a side, for 1000 ms after a judgement. The combo is drawn only
// with `blink`.
void DrawJudgement(size_t side, bool blink);

}  // namespace qlm
