// The list screen, which is still to come: until then there is nothing to return to.
#include "play/list_screen.h"

namespace qlm {

void ResetListState() {}
void RestoreListScreen() {}
void RestartPreviewTimer() {}

}  // namespace qlm
