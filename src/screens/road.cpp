// The road of a play: decided, loaded, played, results, back to the list.
#include "screens/road.h"

#include "base/log.h"
#include "base/paths.h"
#include "chart/loading.h"
#include "files/course_files.h"
#include "files/scores.h"
#include "graphics/bga.h"
#include "net/messages.h"
#include "platform/clock.h"
#include "platform/window.h"
#include "play/loop.h"
#include "play/position.h"
#include "play/reset.h"
#include "play/skin_choice.h"
#include "screens/loading_screen.h"
#include "screens/name_entry.h"
#include "screens/results.h"
#include "screens/song_select.h"
#include "sound/play.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/timeline.h"

namespace qlm {
namespace {

constexpr int32_t kScreenMs = 500;
constexpr uint32_t kTilesGoneMs = 2000;

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

void FinishScores() {
  ShowResults();
  LoadScoreDat();
  StoreSkinChoice();
  const bool own = !DEMOMode && !ShowRec;
  if (own && PlayCleared) AddScoreDat();
  if (own) SaveScoreDat();
  LaneDown = {};
  KeyHeld.Clear();
}

void ReturnToList() {
  HazardGauge = false;
  selectLocked = false;
  PlaySE(SE::kSelectMusic, true);
  SetSEVolume(SE::kSelectMusic, 0);
  if (BMSPreview != 0) RestartPreviewTimer();
  PlaySE(SE::kSelectStart);
}

}  // namespace

// The decision of the song select is still to come.
void FadeEndSubject() {}

void ReadyBMS(TextView path) {
  // A copy, since the list may change under a pump.
  Text chart(path);
  if (const SongEntry* entry = CurrentEntry(); chart.empty() && entry != nullptr) chart = entry->path;
  LoadAbort = false;
  LoadRunning = true;
  Ready(chart);
  LoadRunning = false;
}

void StartPlay() {
  // A preview may have left the machine's hands on.
  PlayKeySound = false;
  UserPlay = true;
  ResetPlay();
  SeekChart(0, false);
  DebugLog(Join(u"totalobjs: ", objCount));
  PlayLoop();
  ResetListState();
  platform::MoveMouse(320, 240);
  GameState = ReturnState;
  // A run ends with the first chart that was not played to its end.
  if (objCursor < objCount) EndlessRun = false;
  if (!EndlessRun) FinishScores();
  UnloadBMS();
  RestoreListScreen();
  if (!EndlessRun) ReturnToList();
}

bool PlayListEntry(int32_t index) {
  PlayEnd = true;
  const bool hasRow = index >= 0 && index <= lastSong;
  const bool loaded = BMSLoad(hasRow ? TextView(songList[static_cast<size_t>(index)].path) : TextView()) >= 1;
  PlayLoadedChart();
  listCursor = index;
  if (!loaded) DebugLog(u"error: File not found");
  return loaded;
}

void PlayLoadedChart() {
  ResetPlay();
  SeekChart(0, false);
  // From its pre-roll on, the keys are those of a play.
  GameState = kStatePlay;
  PlayLoop();
}

}  // namespace qlm
