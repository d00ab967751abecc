// The clear check.
#include "screens/clear_check.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "base/paths.h"
#include "base/text.h"
#include "files/record_file.h"
#include "files/scores.h"
#include "platform/files.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"

namespace qlm {
namespace {

// Quirk: only the last byte of a score file counts, whatever is in front of it.
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
  if (const std::optional<bool> cleared = ClearedIn(ScoreFileOf(entry.path));
      cleared && row < songCleared.size()) {
    songCleared[row] = *cleared;
  }
  if (row < songHasRecord.size() && FileExists(ReadableBeside(entry.path, RecordExtension())))
    songHasRecord[row] = true;
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
