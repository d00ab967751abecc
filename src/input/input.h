// Keyboard and controllers: from what the devices report to key numbers that go down and up.
#pragma once

#include <cstdint>

namespace qlm {

// The keyboard comes with the window and needs nothing but its place in the log.
void InitDI_Keyboard();
// Controllers from here on, also those that are plugged in later. A failure is told in a box, and passed
// over.
void InitDI_Joystick();
void ReleaseDI();

// A key or controller input went down or up: KeyHeld takes it, then the game's handler runs. Nothing happens
// when KeyHeld shows it so already, as for a repeat, or for a number outside 0 to 400.
void DispatchKey(int32_t key, bool down);
// The keyboard has gone to another window, which sees the keys go up: every held key is let go.
void ReleaseKeyboard();
// Lets go every key and every controller input that is held.
void ReleaseInputs();
// Polls the controllers, and dispatches each input that has changed, in ascending order. Inputs past the 64
// of JoyStateBits, those of a third controller among them, are lost.
void ReadJoysticks();

}  // namespace qlm
