// Loading of one chart, and joining of the charts of a course.
#include "chart/loading.h"

#include <algorithm>
#include <cstddef>

#include "base/hooks.h"
#include "base/log.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "chart/preparation.h"
#include "chart/reader.h"
#include "graphics/bga.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/message.h"
#include "state/network.h"
#include "state/session.h"
#include "state/settings.h"

namespace qlm {
namespace {

// Measures from the last one of a song to the first of the next: its closing one and the gap with the marker.
constexpr int64_t kSongGap = 2;

void LoadTitlePicture(const SongEntry& song) {
  ReleaseStage();
  if (!song.stageFile.empty() && CourseLoadMode == 2) LoadStage(Join(GetFolder(song.path), song.stageFile));
}

void PlaceSong(int32_t index) {
  CourseSong = index;
  if (lastMeasure + kSongGap <= INT32_MAX) BasePos = static_cast<int32_t>(lastMeasure + kSongGap);
  lastMeasure = BasePos;
  // Quirk: what is logged as BasePos is the last object's pos. Before the first song there is none, and no
  // line.
  if (const ChartObj* last = LastObj()) {
    DebugLog(Join(u"*** loading ", index, u" : BasePos=", last->pos, u" NumObjs=", objCount));
  }
}

void ReadSong(SongEntry& song) {
  if (RefuseLongChart(song.path)) return;
  BMSRead(song.path);
  song.rank = HdrRank;
  song.playLevel = HdrPlayLevel;
  song.bpm = HdrBPM;
}

// The player sees nothing of such a song but a short break.
void TellMissingSongs() {
  Text names;
  for (size_t i = 0; i < std::min<size_t>(numsongs, CourseSongs.size()); ++i) {
    const Text& path = CourseSongs[i].path;
    if (!FileExists(path)) names = Join(names, u" [", static_cast<int64_t>(i) + 1, u"] ", GetFileName(path));
  }
  if (!names.empty()) AddLoadNotice(Join(u"file not exist:", names));
}

}  // namespace

int32_t BMSLoad(TextView path) {
  DebugLog(Join(u"[BMSLoad] ", GetFileName(path)), 1);
  BMSInit();
  if (!FileExists(path)) {
    DebugLog(u"file not exist.", -1);
    return -1;
  }
  if (RefuseLongChart(path)) {
    DebugLog(u"not loaded.", -1);
    return -1;
  }
  LoadAbort = false;
  BMSRead(path);
  if (!shortageRaised) BMSPrepare();
  if (shortageRaised) return -1;
  DebugLog(u"loaded.", -1);
  return 1;
}

bool ReadCourse() {
  PreviewActive = false;
  BMSInit();
  CourseMode = true;
  BasePos = 0;
  lastMeasure = 0;
  DebugLog(Join(u"[BMSLoad:Course] numsongs:", int32_t{numsongs}));
  for (int32_t i = 0; i < numsongs; ++i) {
    if (LoadAbort || shortageRaised) return false;
    const bool listed = i < static_cast<int32_t>(CourseSongs.size());
    if (listed) LoadTitlePicture(CourseSongs[static_cast<size_t>(i)]);
    PlaceSong(i);
    if (hooks.loadingFrame != nullptr) hooks.loadingFrame();
    if (listed) ReadSong(CourseSongs[static_cast<size_t>(i)]);
  }
  if (LoadAbort || shortageRaised) return false;
  TellMissingSongs();
  ReleaseStage();
  CourseSong = 0;
  BasePos = 0;
  return true;
}

void BMSLoadCourse() {
  if (ReadCourse()) BMSPrepare();
}

void AbortLoad() {
  // In a battle the others wait for it.
  if (LoadRunning && !network.NetActive) LoadAbort = LoadGivenUp = true;
}

}  // namespace qlm
