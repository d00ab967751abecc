// The song select screen.
#pragma once

#include <cstdint>

namespace qlm {

// A key by its number goes down on a list screen.
void ProcessKey_SongSelect(int32_t key);

// Scrolling, settling and fading in of the rows, as on entering a list.
void ResetListState();
// The list screen behind a play.
void RestoreListScreen();
// The wait before the current chart's preview, from its beginning.
void RestartPreviewTimer();

}  // namespace qlm
