// The active list.
#include "library/song_list.h"

#include "base/paths.h"
#include "library/header.h"
#include "state/lists.h"

namespace qlm {
namespace {

// The progress text is the startup menu's caption; the menu is still to come.
void ShowScanProgress() {}

}  // namespace

void ClearList() {
  lastSong = -1;
  listTotalTime = 0;
  listCursor = 0;
  listFileName.clear();
  songCleared.clear();
  songHasRecord.clear();
  songList.clear();
  ShowScanProgress();
}

void ShowList(const std::vector<SongEntry>& rows) {
  ClearList();
  songList = rows;
  lastSong = static_cast<int32_t>(rows.size()) - 1;
  songCleared.resize(rows.size());
  songHasRecord.resize(rows.size());
}

void AddSong(TextView path) {
  ++lastSong;
  const auto rows = static_cast<size_t>(lastSong) + 1;
  songList.resize(rows);
  songCleared.resize(rows);
  songHasRecord.resize(rows);
  if (FileExists(path)) ReadBMSHeader(path, lastSong);
  listTotalTime += songList.back().lengthMs;
  ShowScanProgress();
}

}  // namespace qlm
