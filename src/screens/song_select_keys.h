// The keys of the list screens.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

// A key by its number, or a controller's input from 256 on, goes down on a list screen.
void ProcessKey_SongSelect(int32_t key);

// On the list of jukeboxes: opens the one of that name, with the chart of the lowest level in hand. Without
// one nothing happens.
void OpenOnEasiest(TextView jukebox);

}  // namespace qlm
