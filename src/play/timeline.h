// The chart's position: clock to position, tempo changes, and the objects that it passes.
#pragma once

#include <cstdint>

namespace qlm {

// One turn of the play.
void PlayStep();
// Tempo before RealHiSpeed; 0 freezes the position.
void SetBPM(float bpm);
// Moves the clock to a `pos` (byPosition) or to the bar line of a measure. Out of range nothing changes.
void SeekChart(int32_t position, bool byPosition);

}  // namespace qlm
