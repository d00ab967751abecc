// The startup menu: the dialog in which all settings are made and from which the game is started.
#pragma once

namespace qlm {

// Shows the menu and returns when it is closed: true when the game is to start. Needs a display.
bool RunStartupMenu();

}  // namespace qlm
