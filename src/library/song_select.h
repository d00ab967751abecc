// The song select screen.
#pragma once

#include <cstdint>

namespace qlm {

// A key by its number goes down on a list screen.
void ProcessKey_SongSelect(int32_t key);

}  // namespace qlm
