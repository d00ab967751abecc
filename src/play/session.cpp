// The play from its start to the return to the lists, and its loop.
#include "play/session.h"

#include <cmath>
#include <optional>

#include "base/log.h"
#include "base/numbers.h"
#include "graphics/display.h"
#include "graphics/fades.h"
#include "graphics/play_screen.h"
#include "graphics/present.h"
#include "net/messages.h"
#include "platform/clock.h"
#include "platform/timers.h"
#include "platform/window.h"
#include "play/effects.h"
#include "play/gauge.h"
#include "play/judgement.h"
#include "play/list_screen.h"
#include "play/records.h"
#include "play/results.h"
#include "play/shuffle.h"
#include "play/skin_choice.h"
#include "play/timeline.h"
#include "sound/play.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/timeline.h"

namespace qlm {
namespace {

constexpr int32_t kReadyMs = 1000;
constexpr uint32_t kPlayTickMs = 1;

void StartFade(uint8_t state, uint8_t leaving) {
  FadeStart = platform::Now();
  FadeState = state;
  FadeLeaving = leaving;
}

// Waits out the message "R E A D Y ?". Any message posted meanwhile prolongs the wait by its own second.
void PreRoll() {
  while (platform::Elapsed(platform::Now(), messageTime) < kReadyMs && !PlayEnd) {
    playStart = platform::Now();
    PlayFrame(0);
    PlayTick();
  }
}

void RunTurns() {
  while (!PlayEnd) {
    // Quirk: a failure in the very turn that passes the last object comes too late: the play counts as
    // cleared, and as failed.
    if (objCursor >= objCount && FadeState == kFadeNone) {
      if (EndlessRun) {
        HoldScreen();
        return;
      }
      StartFade(kFadeEnd, 1);
      PlaySE(SE::kFade);
      PlayCleared = true;
    }
    if (PlayFailed && FadeState == kFadeNone) {
      StartFade(kFadeFail, 1);
      PlaySE(SE::kFade);
    }
    PlayStep();
  }
}

void Run() {
  platform::SetTimer(platform::kTimerPlay, kPlayTickMs, PlayTick);
  if (ComboHiSpeed || RandomHiSpeed) {
    HiSpeed = 1;
    HiSpeedTarget = 0;
  }
  BreakActive = false;
  GameState = kStatePlay;
  PlayFailed = false;
  PlayCleared = false;
  RunTurns();
  DebugLog(u"playloop end");
  platform::KillTimer(platform::kTimerPlay);
}

// What is kept is what the player set, and not what an effect reached.
void RestoreHiSpeed() {
  if (ComboHiSpeed) {
    HiSpeed = 1;
    HiSpeedTarget = 0;
  }
  if (RandomHiSpeed) {
    HiSpeed = 0;
    HiSpeedTarget = 0;
  }
  if (HiSpeedTarget != 0) {
    HiSpeed = HiSpeedTarget;
    HiSpeedTarget = 0;
  }
}

// Draws the scroll factor to its target.
void EaseHiSpeed() {
  if (HiSpeedTarget == 0) return;
  Assign(HiSpeed, Narrow(HiSpeed + (HiSpeedTarget - double{HiSpeed}) * 0.1));
  if (std::abs(double{HiSpeedTarget} - HiSpeed) >= 0.001) return;
  HiSpeed = HiSpeedTarget;
  HiSpeedTarget = 0;
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

void PlayLoop() {
  MakeFadeTiles();
  PlayEnd = false;
  PlayAlive = true;
  DebugLog(u"[PlayLoop]");
  posOffset = 0;
  rawBPM = HdrBPM;
  TakeTempo(HdrBPM);
  DebugLog(u"  playloop start");
  PlaySE(SE::kReady);
  HoldScreen();
  StartFade(kFadeTiles, 0);
  ShowMessage(u"R E A D Y ?");
  RankLocked = false;
  PreRoll();
  // 0 ms of the chart is this moment.
  SeekChart(0, true);
  if (!PlayEnd) Run();
  if (UserRec) {
    if (const std::optional<int32_t> pos = Round(playPos)) AddRecEvent(kRecEnd, *pos, 0, 0);
  }
  if (BattleActive) SendEnd();
  GameState = kStatePlayOver;
  RestoreHiSpeed();
}

void PlayFrame(int32_t cursor) {
  if (cursor > objCount) return;
  if (!CheckDisplay()) return;
  // Nothing that is drawn before the notes looks at the lanes of those ahead, so that they may be thrown
  // first.
  if (ExRandom) ShuffleAhead();
  DrawPlayFrame();
  JudgeScrolledPast();
  PresentFrame();
}

void PlayTick() {
  EaseShownFigures();
  EaseHiSpeed();
  WorkEffect();
  if (PlayEnd || !PlayAlive) platform::KillTimer(platform::kTimerPlay);
}

void UnloadBMS() {
  DebugLog(u"[Unload-BMS] > faked");
  StopAndRewindSounds();
}

// The road from a decided song to its play is still to come, with the song select.
void FadeEndSubject() {}

}  // namespace qlm
