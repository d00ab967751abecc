// The startup menu: the dialog in which all settings are made and from which the game is started.
#pragma once

namespace qlm {

// Whether the menu can be shown: there is a display, and one of a kind that the toolkit knows too.
bool MenuCanBeShown();

// Shows the menu and returns when it is closed: true when the game is to start, false when the program is to
// end. `shown` runs once it is up, if given.
bool RunStartupMenu(void (*shown)() = nullptr);

}  // namespace qlm
