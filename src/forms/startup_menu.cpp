// The startup menu's window.
#include "forms/startup_menu.h"

namespace qlm {

bool RunStartupMenu() { return true; }

}  // namespace qlm
