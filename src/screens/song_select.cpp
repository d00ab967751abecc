// The song select screen, which is still to come: until then its keys do nothing, and there is nothing to
// return to.
#include "screens/song_select.h"

namespace qlm {

void ProcessKey_SongSelect(int32_t) {}
void ResetListState() {}
void RestoreListScreen() {}
void RestartPreviewTimer() {}

}  // namespace qlm
