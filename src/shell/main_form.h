// The game window's events: keys, the close button.
#pragma once

#include <cstdint>

namespace qlm {

// The screen's size and, in a window, its caption.
void PrepareForm();

// Has the window's events and the keys, and the calls that go up the floors, reach the game.
void ConnectHooks();

// A key or controller input by its number; KeyHeld already shows its new state.
void ButtonDown(int32_t key);
void ButtonUp(int32_t key);

// The window was closed: the program ends.
void Form_Unload();

}  // namespace qlm
