// The end of every frame: messages, events, showing.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

// Where a message begins.
struct MessagePlace {
  int32_t x;
  int32_t y;
};
MessagePlace PlaceOfMessage();

// Lets window events, scripted hands and due timers run.
void DoEvents();
// Shows the finished back surface and prepares the next frame. `noWait` leaves out the wait for the vertical
// blank, `quiet` the message and the frame rate.
void PresentFrame(bool noWait = false, bool quiet = false);
// Milliseconds that each frame rests, 0 to 100: the setting Sleep, within that.
uint32_t FrameRest();
// The window caption, in windowed mode only.
void SetCaption(TextView text);

}  // namespace qlm
