// The cursor of the list screens.
#pragma once

#include <cstdint>

namespace qlm {

// Moves the cursor down the list by so many rows, up by negative ones, with the wheel behind it. Nothing
// happens on an empty list.
void MoveListCursor(int32_t rows);

// What a change of listCursor brings: it is brought into the list, from either end to the other, the title is
// split, the score table read, and the wait for a preview begins anew. Nothing happens on an empty list.
void chexec();

// The wait before the preview of the row in hand, from its beginning, and its end without a preview.
void RestartPreviewTimer();
void StopPreviewTimer();

}  // namespace qlm
