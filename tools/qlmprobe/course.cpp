// The command `course`: charts joined into one table, as a course plays them.
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
  for (const qlm::SongEntry& song : qlm::CourseSongs) {
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
  return {qlm::CourseWavFile[last], qlm::CourseBmpFile[last], qlm::GetFolder(qlm::CourseSongs.back().path)};
}

bool IsCourseFile(const std::string& name) {
  return qlm::EqualsAnyCase(qlm::Right(platform::DecodeUtf8(name), 4), u".QCL");
}

}  // namespace

int CourseCommand(Arguments& arguments) {
  StartEngine(arguments);
  TakeLoadOptions(arguments);
  const bool raw = arguments.Flag("--raw");
  const std::vector<std::string> before = TakeChartsBefore(arguments);
  const std::vector<std::string>& files = arguments.Files();
  for (const std::string& file : files) {
    if (IsCourseFile(file)) arguments.Fail(file + ": course files cannot be read in this version");
  }
  if (!arguments.Good()) return kWrongUsage;
  for (const std::string& file : files) {
    if (!CheckReadable(file)) return kRefused;
  }
  if (!LoadChartsBefore(before)) return kRefused;

  for (const std::string& file : files) qlm::AddSong(GamePath(file));
  qlm::CourseSongs = qlm::songList;
  qlm::numsongs = static_cast<uint8_t>(files.size());
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
