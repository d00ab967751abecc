// The gauge over the length of a play, in 300 samples.
#pragma once

#include <cstdint>
#include <optional>

namespace qlm {

// The slot that playClock has reached; nothing for a chart so short that a sample rounds to 0 ms.
std::optional<int32_t> HistorySlot();
// Fills every slot that is due with the gauge of side 0, and draws it. Walks on loopCounter.
void FillGaugeHistory();

}  // namespace qlm
