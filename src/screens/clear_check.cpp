// The clear check.
#include "screens/clear_check.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "base/paths.h"
#include "base/text.h"
#include "platform/files.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"

namespace qlm {
namespace {

Text WithExtension(const Text& path, TextView extension) {
  const size_t dot = path.rfind(u'.');
  return Join(dot == Text::npos ? TextView(path) : TextView(path).substr(0, dot), extension);
}

// The file beside the row's own, or the one that stands for it where that folder could not be written.
Text FileOf(const SongEntry& row, TextView extension) {
  const Text beside = WithExtension(row.path, extension);
  const TextView folder = GetFolder(beside);
  const TextView folderName = folder.empty() ? folder : GetFileName(folder.substr(0, folder.size() - 1));
  Text kept = Join(DataPath(u"ro_score"), u"\\", folderName, u"\\", GetFileName(beside));
  return FileExists(kept) ? kept : beside;
}

// Only the last byte of a score file counts: the low one of its clear flag.
std::optional<bool> ClearedIn(const Text& path) {
  const std::optional<int64_t> length = platform::FileLength(path);
  if (!length || *length < 1) return std::nullopt;
  const std::optional<std::string> last = platform::ReadFilePart(path, *length - 1, 1);
  if (!last || last->empty()) return std::nullopt;
  return last->front() != 0;
}

void CheckRow(size_t row) {
  if (row >= songList.size()) return;
  const SongEntry& entry = songList[row];
  if (const std::optional<bool> cleared = ClearedIn(FileOf(entry, u".qsd"));
      cleared && row < songCleared.size()) {
    songCleared[row] = *cleared;
  }
  if (row < songHasRecord.size() && FileExists(FileOf(entry, u".qpd"))) songHasRecord[row] = true;
}

}  // namespace

void CheckNextRow() {
  const bool atRest = songSelect.listSettle == songSelect.listSettleGoal && songSelect.listScroll == 0;
  if (!ShowClearedOnList || !atRest) return;
  int32_t& row = songSelect.clearCheckRow;
  if (row > lastSong || (GameState != kStateSongSelect && GameState != kStateCourses)) {
    row = lastSong + 1;
    return;
  }
  if (row >= 0) CheckRow(static_cast<size_t>(row));
  ShowMessage(Join(u"clear check... ", row));
  ++row;
}

}  // namespace qlm
