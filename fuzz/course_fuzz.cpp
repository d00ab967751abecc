// Joins any bytes, cut into charts, as the songs of a course.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "base/log.h"
#include "chart/loading.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/wide_chart.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

void Check(bool holds) {
  if (!holds) __builtin_trap();
}

constexpr char kCut = '\xFF';  // begins no character of a chart
constexpr size_t kMostSongs = 5;

// The songs' folder, for this run of the fuzzer.
class Folder {
 public:
  Folder() : path_(fs::temp_directory_path() / ("quillmarch-course-" + std::to_string(getpid()))) {
    fs::create_directory(path_);
  }
  ~Folder() { fs::remove_all(path_); }

  Text Write(size_t number, std::string_view bytes) const {
    const fs::path file = path_ / (std::to_string(number) + ".bms");
    std::ofstream(file, std::ios::binary | std::ios::trunc)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return platform::InnerPath(file.string());
  }

 private:
  fs::path path_;
};

// An empty piece is a song whose file is not there.
void AddSong(const Folder& folder, std::string_view bytes) {
  SongEntry song;
  song.path = bytes.empty() ? u"\\no such folder\\chart.bms" : folder.Write(CourseSongs.size(), bytes);
  CourseSongs.push_back(song);
}

void LoadAndCheck() {
  BMSLoadCourse();

  Check(CourseMode && objs.size() == static_cast<size_t>(numObjs) + 1);
  Check(shortageRaised || (CourseSong == 0 && BasePos == 0));
  int32_t songs = 0;
  for (int32_t i = 0; i < objCount && i <= numObjs; ++i) {
    const ChartObj& obj = objs[static_cast<size_t>(i)];
    Check(obj.channel >= (WideCharts ? ObjLongNoteEnd : ObjSongChange) && obj.channel != 0);
    Check(obj.channel <= 49 || (WideCharts && IsMine(obj.channel)));
    Check(obj.tick >= 0 && obj.tick <= kMeasureUnits);
    if (obj.channel != ObjSongChange) continue;
    ++songs;
    Check(obj.value >= 0 && obj.value < numsongs);
  }
  // Without a shortage each song has its marker.
  Check(shortageRaised || songs == numsongs);
}

void Run(std::string_view bytes) {
  static const Folder folder;
  platform::UseVirtualClock(1'000'000);
  LogIndent = 0;
  logOutput.file = false;
  numObjs = 500;
  WAVLoadmode = BMPLoadmode = CourseLoadMode = 1;  // no name in a chart reaches a file
  RealHiSpeed = 1;
  LoadAbort = false;

  const auto options = bytes.empty() ? uint8_t{0} : static_cast<uint8_t>(bytes.back());
  PlayerForce = options & 3;
  Random = (options & 4) != 0;
  FourDMode = (options & 8) != 0;
  NoBGA = (options & 16) != 0;
  NoWAV = (options & 32) != 0;

  CourseSongs.clear();
  while (CourseSongs.size() < kMostSongs) {
    const size_t cut = bytes.find(kCut);
    AddSong(folder, bytes.substr(0, cut));
    if (cut == std::string_view::npos) break;
    bytes.remove_prefix(cut + 1);
  }
  numsongs = static_cast<uint8_t>(CourseSongs.size());
  WideCharts = (options & 64) != 0;
  LoadAndCheck();
}

}  // namespace
}  // namespace qlm

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  qlm::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
