// The game window's events: keys, the close button.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

// The screen's size and, in a window, its caption.
void PrepareForm();

// Has the window's events and the keys, and the calls that go up the floors, reach the game.
void ConnectHooks();

// A key or controller input by its number; KeyHeld already shows its new state.
void ButtonDown(int32_t key);
void ButtonUp(int32_t key);

// A character is typed.
void Form_KeyPress(char16_t unit);
// The mouse: its left button is the key Enter, its right one the key Left. In full screen its way over the
// lists moves their cursor.
void Form_MouseDown(int32_t button);
void Form_MouseMove(int32_t x, int32_t y);
// A folder was dropped on the lists: the charts below it become the list.
void Form_OLEDragDrop(TextView path);

// The window was closed: the program ends.
void Form_Unload();

}  // namespace qlm
