// Loading of a chart behind the loading screen.
#include "chart/loading.h"
#include "base/log.h"
#include "base/paths.h"
#include "graphics/bga.h"
#include "graphics/screens.h"
#include "library/course_files.h"
#include "net/messages.h"
#include "platform/clock.h"
#include "play/session.h"
#include "sound/play.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/lists.h"
#include "state/session.h"
#include "state/settings.h"

namespace qlm {
namespace {

constexpr int32_t kScreenMs = 500;
constexpr uint32_t kTilesGoneMs = 2000;

bool loading = false;

const SongEntry* CurrentEntry() {
  const auto index = static_cast<size_t>(listCursor);
  return listCursor >= 0 && index < songList.size() ? &songList[index] : nullptr;
}

// The title picture lies beside the chart.
void LoadTitlePicture(TextView path) {
  ReleaseStage();
  if (const SongEntry* entry = CurrentEntry()) LoadStage(Join(GetFolder(path), entry->stageFile));
}

// From FadeStart on; the last two frames have the tiles gone.
void ShowLoadingScreen() {
  while (platform::Elapsed(platform::Now(), FadeStart) < kScreenMs) Loading();
  FadeStart = platform::Now() - kTilesGoneMs;
  Loading();
  Loading();
}

// In a battle the others wait, so that a load goes on to its end.
bool GivenUp() {
  if (BattleActive || !LoadAbort) return false;
  UnloadBMS();
  return true;
}

// Its sounds wait for their songs.
void LoadCourse(TextView path) {
  const int32_t mode = WAVLoadmode;
  WAVLoadmode = 1;
  CourseLoad(path, false);
  BMSLoadCourse();
  WAVLoadmode = mode;
}

void Load(TextView path) {
  if (CourseMode) return LoadCourse(path);
  if (BMSLoad(path) < 1) LoadAbort = true;
}

void Ready(TextView path) {
  DebugLog(u"[Ready BMS] Timer start");
  GameState = kStatePlay;
  StopSE(SE::kSelectMusic);
  if (CourseMode || BattleActive || EndlessRun) HazardGauge = true;
  FadeState = kFadeTiles;
  FadeStart = platform::Now();
  DebugLog(u"Ready BMS");
  LoadTitlePicture(path);
  ShowLoadingScreen();
  if (GivenUp()) return;

  ReturnState = CourseMode ? kStateCourses : kStateSongSelect;
  PreviewActive = false;
  Load(path);
  if (GivenUp()) return;
  GameState = kStatePlay;
  DebugLog(u"Load Complete");
  if (BattleActive) {
    DebugLog(u"Send [STANDBY]");
    SendStandby();
  }
}

}  // namespace

void ReadyBMS(TextView path) {
  // A copy, since the list may change under a pump.
  Text chart(path);
  if (const SongEntry* entry = CurrentEntry(); chart.empty() && entry != nullptr) chart = entry->path;
  LoadAbort = false;
  loading = true;
  Ready(chart);
  loading = false;
}

void AbortLoad() {
  if (loading) LoadAbort = true;
}

}  // namespace qlm
