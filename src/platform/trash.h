// The system's trash, by the rules that desktops share.
#pragma once

#include <string_view>

namespace platform {

// Moves a file into the trash of the user, or of the disk that it lies on. False when neither takes it: the
// file then stays.
bool MoveToTrash(std::u16string_view path);

}  // namespace platform
