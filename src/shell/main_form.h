// The game window's events: keys, the close button, activity.
#pragma once

namespace qlm {

// The screen's size and, in a window, its caption.
void PrepareForm();

// Has the window's events and the calls that go up the floors reach the game.
void ConnectHooks();
// Connects the keyboard: KeyHeld follows it, and each change reaches ButtonDown or ButtonUp. Joysticks are
// still to come.
void InitDI_Keyboard();

// The window was closed: the program ends.
void Form_Unload();

}  // namespace qlm
