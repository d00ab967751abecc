// The keys of the list screens.
#pragma once

#include <cstdint>

namespace qlm {

// A key by its number, or a controller's input from 256 on, goes down on a list screen.
void ProcessKey_SongSelect(int32_t key);

}  // namespace qlm
