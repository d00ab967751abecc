// Another program of an X display, as a window manager or a person with a mouse would use it.
#pragma once

#include <string>

namespace qlm {

// Does to the first window of the display what its close button does. False when there is none to close.
bool PressCloseButton(const std::string& display);

}  // namespace qlm
