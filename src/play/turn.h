// One turn of the play: the one order in which everything of it happens.
#pragma once

#include <cstdint>

namespace qlm {

// One turn: the clock, due events, objects up to the position, then the frame and the tick.
void PlayStep();
// One drawn frame; nothing happens when `cursor` lies past the objects or the display is lost.
void PlayFrame(int32_t cursor);
// Shown figures and effects; runs from the 1 ms timer and once a frame.
void PlayTick();

}  // namespace qlm
