// The game window.
#include "platform/window.h"

namespace platform {

bool HasDisplay() { return false; }

}  // namespace platform
