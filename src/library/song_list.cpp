// The active list.
#include "library/song_list.h"

#include "base/paths.h"
#include "library/header.h"
#include "library/progress.h"
#include "state/lists.h"
#include "state/song_find.h"
#include "state/song_select.h"

namespace qlm {

void ClearList() {
  lastSong = -1;
  listTotalTime = 0;
  listCursor = 0;
  listFileName.clear();
  songCleared.clear();
  songHasRecord.clear();
  songList.clear();
  songSelect.rowBeforeSort.reset();
  songFind = {};
  ShowListProgress();
}

void TakeRows(std::vector<SongEntry> rows) {
  songList = std::move(rows);
  lastSong = static_cast<int32_t>(songList.size()) - 1;
  songCleared.assign(songList.size(), false);
  songHasRecord.assign(songList.size(), false);
  listTotalTime = 0;
  for (const SongEntry& song : songList) listTotalTime += song.lengthMs;
}

void AddSong(TextView path) {
  ++lastSong;
  const auto rows = static_cast<size_t>(lastSong) + 1;
  songList.resize(rows);
  songCleared.resize(rows);
  songHasRecord.resize(rows);
  if (FileExists(path)) ReadBMSHeader(path, lastSong);
  listTotalTime += songList.back().lengthMs;
  ShowListProgress();
}

}  // namespace qlm
