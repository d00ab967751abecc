// No search within a list.
#include "state/song_find.h"

namespace qlm {

void ResetSongFind() {
  songFind = {};
  foundReadings.clear();
}

}  // namespace qlm
