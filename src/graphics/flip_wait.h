// The wait of a finished frame for its flip, in which keys are served as they come.
#pragma once

#include <cstdint>

#include "platform/window.h"

namespace qlm {

// Waits until the frame must be sent on its way to be in time for the screen's next one, or, without `waits`,
// for `restMs` milliseconds alone; no less than these in either case. What window and controllers tell
// meanwhile is served at once. On the virtual clock no time passes: what has come by now is served.
void ServeKeysUntilFlip(const platform::WindowEvents& events, uint32_t restMs, bool waits);
// The frame was shown.
void NoteFlip();

// The margin, in microseconds, after a frame that was shown `took` behind the one before, on a screen that
// shows one every `period`.
int64_t NextFlipMargin(int64_t margin, int64_t took, int64_t period);

}  // namespace qlm
