// The play history.
#include "files/play_history.h"

#include <string>

#include "base/paths.h"
#include "files/data_folder.h"
#include "platform/files.h"
#include "platform/text.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/lists.h"

namespace qlm {
namespace {

Text HistoryPath() { return Join(AppPath, u"\\lastplay.txt"); }

// Of a course its list's row: the joined chart has the header of its last song, and one length for them all.
SongEntry SongInPlay() {
  const auto song = static_cast<size_t>(CourseSong);
  if (CourseMode && CourseSong >= 0 && song < CourseSongs.size()) return CourseSongs[song];
  SongEntry chart;
  chart.playLevel = HdrPlayLevel;
  chart.genre = HdrGenre;
  chart.title = HdrTitle;
  chart.artist = HdrArtist;
  chart.lengthMs = BMSLengthMs;
  return chart;
}

Text HistoryLine() {
  const SongEntry song = SongInPlay();
  const int32_t seconds = song.lengthMs / 1000;
  return Join(library.playedSongs, u">\t★", song.playLevel, u" [", song.genre, u"] ", song.title, u" / ",
              song.artist, u"\t<", Padded(seconds / 60, 2), u":", Padded(seconds % 60, 2), u">", kCrLf);
}

}  // namespace

void writePlayList() {
  ++library.playedSongs;
  if (!keepsDataFolder) return;
  const std::string before = platform::ReadFile(HistoryPath()).value_or(std::string());
  platform::WriteFile(HistoryPath(), before + platform::EncodeCp932(HistoryLine()));
}

void clearPlayList() {
  library.playedSongs = 0;
  if (keepsDataFolder) platform::DeleteFile(HistoryPath());
}

}  // namespace qlm
