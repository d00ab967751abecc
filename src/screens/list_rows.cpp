// The rows of the active list.
#include "screens/list_rows.h"

#include <cstddef>
#include <vector>

#include "state/song_select.h"

namespace qlm {
namespace {

bool MarkOf(const std::vector<bool>& marks, int32_t index) {
  return index >= 0 && static_cast<size_t>(index) < marks.size() && marks[static_cast<size_t>(index)];
}

}  // namespace

int32_t WrappedRow(int64_t row) {
  if (lastSong < 0) return -1;
  const int64_t rows = int64_t{lastSong} + 1;
  return static_cast<int32_t>((row % rows + rows) % rows);
}

const SongEntry* RowAt(int32_t index) {
  const bool listed = index >= 0 && index <= lastSong && static_cast<size_t>(index) < songList.size();
  return listed ? &songList[static_cast<size_t>(index)] : nullptr;
}

const SongEntry* HeldRow() { return RowAt(listCursor); }

const SongEntry* PanelRow() { return songSelect.rowBeforeSort ? &*songSelect.rowBeforeSort : HeldRow(); }

bool RowCleared(int32_t index) { return MarkOf(songCleared, index); }
bool RowHasRecord(int32_t index) { return MarkOf(songHasRecord, index); }

}  // namespace qlm
