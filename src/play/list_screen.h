// The list screen to which a play returns.
#pragma once

namespace qlm {

// Scrolling, settling and fading in of the rows, as on entering a list.
void ResetListState();
void RestoreListScreen();
// The wait before the current chart's preview, from its beginning.
void RestartPreviewTimer();

}  // namespace qlm
