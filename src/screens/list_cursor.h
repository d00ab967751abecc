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

// Whether the list takes nothing from keys and mouse: a decision runs, a battle waits, charts are looked for.
bool ListIsBusy();

// The mouse has been dragged by so many pixels in all: each 16 of them, once there are more than 16, move the
// cursor by a row, upwards for a drag down, and the pointer goes back to the centre.
void DragList(int32_t right, int32_t down);
// A row for each step of the mouse's wheel.
void TurnListWheel(int32_t steps);

// The wait before the preview of the row in hand, from its beginning, and its end without a preview.
void RestartPreviewTimer();
void StopPreviewTimer();

}  // namespace qlm
