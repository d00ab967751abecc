// The road of a play: decided, loaded, played, results, back to the list.
#include "screens/road.h"

#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

#include "base/log.h"
#include "base/paths.h"
#include "base/rnd.h"
#include "chart/loading.h"
#include "chart/trouble.h"
#include "files/course_files.h"
#include "files/play_history.h"
#include "files/record_file.h"
#include "files/scores.h"
#include "graphics/bga.h"
#include "input/input.h"
#include "net/messages.h"
#include "platform/clock.h"
#include "platform/timers.h"
#include "platform/window.h"
#include "play/loop.h"
#include "play/position.h"
#include "play/records.h"
#include "play/reset.h"
#include "play/skin_choice.h"
#include "screens/list_cursor.h"
#include "screens/list_rows.h"
#include "screens/loading_screen.h"
#include "screens/name_entry.h"
#include "screens/results.h"
#include "screens/song_select.h"
#include "sound/play.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/last_play.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/network.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "state/sounds.h"
#include "state/timeline.h"

namespace qlm {
namespace {

constexpr int32_t kScreenMs = 500;
constexpr uint32_t kTilesGoneMs = 2000;

// The title picture lies beside the chart.
void LoadTitlePicture(TextView path) {
  ReleaseStage();
  if (const SongEntry* entry = HeldRow()) LoadStage(Join(GetFolder(path), entry->stageFile));
}

// Where the play record of the row in hand lies.
Text RecordOfRow() {
  const SongEntry* const row = HeldRow();
  return row == nullptr ? Text() : RecordPath(row->path);
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
  if (network.NetActive || !LoadAbort) return false;
  UnloadBMS();
  return true;
}

void Load(TextView path) {
  chartTrouble.clear();
  if (CourseMode) {
    CourseLoad(path, false);
    JoinCourse();
  } else if (BMSLoad(path) < 1) {
    LoadAbort = true;
  } else {
    TellTrouble(path);
  }
}

void Ready(TextView path) {
  DebugLog(u"[Ready BMS] Timer start");
  GameState = kStatePlay;
  StopSE(SE::kSelectMusic);
  if (CourseMode || network.NetActive || EndlessRun) HazardGauge = true;
  FadeState = kFadeTiles;
  FadeStart = platform::Now();
  DebugLog(u"Ready BMS");
  LoadTitlePicture(path);
  ShowLoadingScreen();
  if (GivenUp()) return;

  ReturnState = CourseMode ? kStateCourses : kStateSongSelect;
  Load(path);
  if (GivenUp()) return;
  GameState = kStatePlay;
  DebugLog(u"Load Complete");
  if (network.NetActive) SendStandby();
}

Outcome OutcomeOfPlay() {
  if (PlayCleared && Gauge[0] >= kClearGauge) return Outcome::kCleared;
  return PlayCleared || PlayFailed ? Outcome::kFailed : Outcome::kStopped;
}

// Where no chart could be loaded there was nothing to play.
void RememberPlay(Outcome outcome) {
  if (LoadAbort) return;
  lastPlay = LastPlay{.title = CourseMode ? songSelect.courseName : HdrTitle,
                      .artist = CourseMode ? Text() : HdrArtist,
                      .path = BMSPath,
                      .troubled = !chartTrouble.empty(),
                      .playLevel = HdrPlayLevel,
                      .outcome = outcome,
                      .machine = DEMOMode || ShowRec,
                      .score = Score[0],
                      .classIndex = ClassOf(JPts[0], JPtsMax[0]),
                      .counts = JudgeCount[0]};
}

// Previews and the next load take its figures away, and the program may end inside it.
void RunPlay() {
  RememberPlay(Outcome::kLeft);
  PlayLoop();
  RememberPlay(OutcomeOfPlay());
}

void FinishScores() {
  ShowResults();
  LoadScoreDat();
  StoreSkinChoice();
  const bool own = !DEMOMode && !ShowRec;
  if (own && PlayCleared) AddScoreDat();
  if (own) SaveScoreDat();
  ReleaseInputs();
  LaneDown = {};
}

void ReturnToList() {
  HazardGauge = false;
  selectLocked = false;
  PlaySE(SE::kSelectMusic, true);
  SelectVolume = 0;
  SetSEVolume(SE::kSelectMusic, SelectVolume);
  if (BMSPreview != 0) RestartPreviewTimer();
  PlaySE(SE::kSelectStart);
}

// The order in which a run takes the rows of the list.
class RunOrder {
 public:
  RunOrder() : rows_(static_cast<size_t>(lastSong + 1)) { std::iota(rows_.begin(), rows_.end(), 0); }

  // Puts the cursor on the next row; with ENDLESSMODE 1 on the next one for a single player, as far as a
  // whole round has one.
  void Next() {
    for (size_t tried = 0; tried < rows_.size(); ++tried) {
      Step();
      const SongEntry* const row = HeldRow();
      if (ENDLESSMODE != 1 || (row != nullptr && row->player == 1)) return;
    }
  }

 private:
  // Quirk: the first row of a shuffled order is passed over, so that it begins no round twice, and a list of
  // a single row has no second one to go to: the cursor stays.
  void Step() {
    if (Divides(lastSong, place_)) {
      place_ = 0;
      Shuffle();
    }
    ++place_;
    if (static_cast<size_t>(place_) < rows_.size()) listCursor = rows_[static_cast<size_t>(place_)];
  }

  // Whether there is no remainder. A division by 0 counts as one without.
  static bool Divides(int32_t divisor, int32_t number) { return divisor == 0 || number % divisor == 0; }

  // Quirk: the last row is never drawn as a partner, so that not all orders are alike likely.
  void Shuffle() {
    for (int32_t& row : rows_) {
      const auto other = static_cast<size_t>(std::floor(Rnd() * static_cast<float>(lastSong)));
      std::swap(row, rows_[other]);
    }
  }

  std::vector<int32_t> rows_;
  int32_t place_ = 0;
};

// The row in hand, from the load to the return. False when the player gave up the load.
bool PlayRowInHand() {
  ReadyBMS(u"");
  if (LoadGivenUp) return false;
  const Text record = RecordOfRow();
  if (ShowRec) LoadUserRec(record);
  StartPlay();
  if (UserRec) SaveUserRec(record);
  return true;
}

// Back at the list as if nothing had been decided.
void AbandonPlay() {
  ShowMessage(u"LOAD ABORTED");
  EndlessRun = false;
  LaneDown = {};
  ResetListState();
  RestoreListScreen();
  ReturnToList();
}

void PlayDecided() {
  RunOrder order;
  CourseSong = 0;
  do {
    if (EndlessRun) order.Next();
    if (!PlayRowInHand()) AbandonPlay();
    ++CourseSong;
  } while (EndlessRun);
}

// In a battle the rest happens on what the others send.
void WaitForOthersSongs() {
  EndlessRun = false;
  GameState = kStateBattleSongs;
  selectLocked = true;
  SendCurSongData(true);
}

void ShowListAgain() {
  ResetListState();
  songSelect.listScroll = kWheelStops;
  songSelect.rowCursorTime = platform::Now();
  FadeStart = platform::Now();
  FadeState = kFadeIn;
  FadeLeaving = 0;
  songSelect.deciding = 0;
}

void LoadBattleSong() {
  ReadyBMS(u"");
  if (!network.NetHost) DebugLog(u"receive ready");
}

void PlayBattleSong() {
  StartPlay();
  PlaySE(SE::kFade);
  ShowListAgain();
}

}  // namespace

void ArmFadeEnd() {
  platform::SetTimer(platform::kTimerRunFESub, 1, [] {
    // A preview's load that runs around this pump must end first.
    if (previewLoading) return;
    platform::KillTimer(platform::kTimerRunFESub);
    ShowMessage(u"Fade---");
    FadeEndSubject();
  });
}

void FadeEndSubject() {
  if (songSelect.deciding != 1) return;
  clearPlayList();
  if (network.NetActive) return WaitForOthersSongs();
  const int32_t state = GameState;
  PlayDecided();
  PlaySE(SE::kFade);
  GameState = state;
  if (state == kStateLists) JukeReady();
  ShowListAgain();
}

void RunBattleStep() {
  while (network.step != BattleStep::kNone) {
    switch (std::exchange(network.step, BattleStep::kNone)) {
      case BattleStep::kNone: break;
      case BattleStep::kLoad: LoadBattleSong(); break;
      case BattleStep::kStart: PlayBattleSong(); break;
    }
  }
}

void ReadyBMS(TextView path) {
  // A copy, since the list may change under a pump.
  Text chart(path);
  if (const SongEntry* entry = HeldRow(); chart.empty() && entry != nullptr) chart = entry->path;
  LoadAbort = LoadGivenUp = false;
  LoadRunning = true;
  // No play may ever run as a preview.
  PreviewActive = false;
  Ready(chart);
  LoadRunning = false;
}

void JoinCourse() {
  const int32_t mode = WAVLoadmode;
  WAVLoadmode = 1;
  BMSLoadCourse();
  WAVLoadmode = mode;
}

void StartPlay() {
  // A preview may have left the machine's hands on.
  PlayKeySound = false;
  UserPlay = true;
  EscHeld = false;
  ResetPlay();
  SeekChart(0, false);
  DebugLog(Join(u"totalobjs: ", objCount));
  writePlayList();
  RunPlay();
  ResetListState();
  platform::MoveMouse(320, 240);
  GameState = ReturnState;
  // A run ends with the first chart that was not played to its end, or failed while its last notes fell.
  if (objCursor < objCount || PlayFailed) EndlessRun = false;
  if (!EndlessRun) FinishScores();
  UnloadBMS();
  RestoreListScreen();
  if (!EndlessRun) ReturnToList();
}

bool PlayListEntry(int32_t index) {
  PlayEnd = previewStop = true;
  EscHeld = false;
  const bool hasRow = index >= 0 && index <= lastSong;
  const Text path = hasRow ? songList[static_cast<size_t>(index)].path : Text();
  const bool loaded = BMSLoad(path) >= 1;
  if (loaded) TellTrouble(path);
  LoadAbort = !loaded;
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
  RunPlay();
}

}  // namespace qlm
