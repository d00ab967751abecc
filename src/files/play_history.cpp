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

// In a course the estimate that its list holds: the joined chart has one length for all its songs.
int32_t LengthInPlay() {
  const auto song = static_cast<size_t>(CourseSong);
  const bool ofCourse = CourseMode && CourseSong >= 0 && song < CourseSongs.size();
  return ofCourse ? CourseSongs[song].lengthMs : BMSLengthMs;
}

Text HistoryLine() {
  const int32_t seconds = LengthInPlay() / 1000;
  return Join(library.playedSongs, u">\t★", HdrPlayLevel, u" [", HdrGenre, u"] ", HdrTitle, u" / ", HdrArtist,
              u"\t<", Padded(seconds / 60, 2), u":", Padded(seconds % 60, 2), u">", kCrLf);
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
