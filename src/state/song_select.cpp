// Start values of the list screens.
#include "state/song_select.h"

namespace qlm {

void ResetSongSelect() { songSelect = {}; }

}  // namespace qlm
