// A desktop that no one sees: the title of its window, and a mouse that no one touches.
#pragma once

#include <string>
#include <vector>

namespace qlm {

// Empty without a window.
std::string WindowTitle();

// The mouse moved to this place of the window; told with the next pump.
void MoveVirtualMouse(int x, int y);
// What a person does with the mouse and the keys of letters; told with the next pump.
void PressMouse(int button);  // 1 left, 2 middle, 3 right
void TurnMouseWheel(int steps);
void DropOnWindow(const std::vector<std::string>& paths);
void TypeText(const std::string& utf8);
// What an input method still works on.
void ComposeText(const std::string& utf8);
// A key by what stands on it: 8 backspace, 13 Enter, 27 Esc. Its place on the board is left out.
void PressControlKey(int character, bool repeat = false);
bool PointerShows();

struct PointerPlace {
  int x;
  int y;
  friend bool operator==(const PointerPlace&, const PointerPlace&) = default;
};
// In the window that has it.
PointerPlace WhereThePointerIs();

}  // namespace qlm
