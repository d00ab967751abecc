// A desktop that no one sees: the title of its window, and a mouse that no one touches.
#pragma once

#include <string>

namespace qlm {

// Empty without a window.
std::string WindowTitle();

// The mouse moved to this place of the window; told with the next pump.
void MoveVirtualMouse(int x, int y);
bool PointerShows();

struct PointerPlace {
  int x;
  int y;
  friend bool operator==(const PointerPlace&, const PointerPlace&) = default;
};
// In the window that has it.
PointerPlace WhereThePointerIs();

}  // namespace qlm
