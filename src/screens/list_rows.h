// The rows of the active list, as the screens ask for them.
#pragma once

#include <cstdint>

#include "state/lists.h"

namespace qlm {

// The index of a row that may lie before the first or behind the last: the list begins anew there. -1 for an
// empty list.
int32_t WrappedRow(int64_t row);
// The row of an index, or null where the list has none.
const SongEntry* RowAt(int32_t index);
// The row in hand, or null.
const SongEntry* HeldRow();
// The row that the panel tells of: the one in hand, and behind a sort, until the cursor moves, the one that
// was.
const SongEntry* PanelRow();
// The marks of a row; false where the list has none.
bool RowCleared(int32_t index);
bool RowHasRecord(int32_t index);

}  // namespace qlm
