// The game window's events: keys, the close button.
#pragma once

#include <cstdint>

namespace qlm {

// The screen's size and, in a window, its caption.
void PrepareForm();

// Has the window's events, and the calls that go up the floors, reach the game.
void ConnectHooks();
// Has the keyboard reach ButtonDown and ButtonUp. Joysticks are still to come.
void InitDI_Keyboard();

// A key or controller button by its number; KeyHeld already shows its new state. Keys of the lanes and of the
// lists are still to come.
void ButtonDown(int32_t key);
void ButtonUp(int32_t key);

// The window was closed: the program ends.
void Form_Unload();

}  // namespace qlm
