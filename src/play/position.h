// The chart's position: from the clock to the place, tempo changes, and seeks.
#pragma once

#include <cstdint>

#include "state/chart.h"

namespace qlm {

// Takes the clock into playClock, and playPos from it.
void ReadClock();
// Tempo before RealHiSpeed; 0 freezes the position. The position at playClock stays where it is, up to half a
// unit.
void SetBPM(float bpm);
// The tempo of an object that is passed. In the wide reading it holds from the object's own place on, however
// late the turn is; else, and behind a tempo of 0, from playClock on.
void SetBPMOf(const ChartObj& obj, float bpm);
// Moves the clock to a `pos` (byPosition) or to the bar line of a measure. Out of range only the BGA changes.
void SeekChart(int32_t position, bool byPosition);

// Puts a tempo before RealHiSpeed in force, with the rates that follow from it, and leaves the position to
// the caller.
void TakeTempo(float bpm);

}  // namespace qlm
