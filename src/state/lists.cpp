// The empty lists.
#include "state/lists.h"

namespace qlm {

void ResetLists() {
  songList.clear();
  lastSong = -1;
  songCleared.clear();
  songHasRecord.clear();
  listTotalTime = 0;
  listCursor = 0;
  listFileName.clear();
  selectLocked = false;
  library = {};
}

}  // namespace qlm
