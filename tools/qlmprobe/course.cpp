// The command `course`: charts joined into one table, as a course plays them.
#include <algorithm>
#include <span>

#include "base/paths.h"
#include "chart/loading.h"
#include "library/song_list.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/settings.h"
#include "tools/qlmprobe/chart_keys.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"

namespace probe {
namespace {

void PutSongs(Json& json) {
  json.Key("courseSongs").BeginArray();
  for (const qlm::SongEntry& song : std::span(qlm::CourseSongs).first(qlm::numsongs)) {
    json.BeginObject();
    json.Put("rank", song.rank);
    json.Put("playLevel", song.playLevel);
    json.Put("bpm", song.bpm);
    json.EndObject();
  }
  json.EndArray();
}

// As the header of a course is its last song's, so are the files. A song past the tables has none: the tables
// of a single chart, which a course leaves empty, stand in.
ChartFiles FilesOfLastSong() {
  const int32_t last = qlm::numsongs - 1;
  if (!qlm::CourseWavFile.Holds(last)) return {qlm::WavFile, qlm::BmpFile, u""};
  const qlm::SongEntry& song = qlm::CourseSongs[static_cast<size_t>(last)];
  return {qlm::CourseWavFile[last], qlm::CourseBmpFile[last], qlm::GetFolder(song.path)};
}

// Makes the charts the songs of the loaded course. False when one cannot be read.
bool TakeSongs(const std::vector<std::string>& files) {
  for (const std::string& file : files) {
    if (!CheckReadable(file)) return false;
  }
  for (const std::string& file : files) qlm::AddSong(GamePath(file));
  qlm::CourseSongs = qlm::songList;
  qlm::numsongs = static_cast<uint8_t>(files.size());
  return true;
}

}  // namespace

int CourseCommand(Arguments& arguments) {
  StartEngine(arguments);
  TakeLoadOptions(arguments);
  const bool raw = arguments.Flag("--raw");
  const std::vector<std::string> before = TakeChartsBefore(arguments);
  const std::vector<std::string>& files = arguments.Files();
  const auto course = std::ranges::find_if(files, IsCourseFile);
  if (course != files.end() && files.size() > 1) arguments.Fail(*course + ": a course file stands alone");
  if (!arguments.Good()) return kWrongUsage;
  if (!LoadChartsBefore(before)) return kRefused;
  if (course != files.end() ? !TakeCourseFile(*course) : !TakeSongs(files)) return kRefused;
  qlm::LoadAbort = false;
  qlm::WAVLoadmode = 1;
  if (raw) {
    qlm::ReadCourse();
  } else {
    qlm::BMSLoadCourse();
  }
  Json json;
  PutChart(json, raw, FilesOfLastSong());
  PutLog(json);
  PutSongs(json);
  const int status = PutFatal(json);
  return Print(json, status);
}

}  // namespace probe
