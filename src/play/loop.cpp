// The timed loop of a play.
#include "play/loop.h"

#include "base/log.h"
#include "graphics/fades.h"
#include "net/messages.h"
#include "platform/clock.h"
#include "platform/sound_device.h"
#include "platform/timers.h"
#include "play/position.h"
#include "play/records.h"
#include "play/turn.h"
#include "sound/play.h"
#include "state/chart.h"
#include "state/last_play.h"
#include "state/message.h"
#include "state/network.h"
#include "state/options.h"
#include "state/session.h"
#include "state/timeline.h"
#include "state/wide_chart.h"

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
  while (platform::Elapsed(platform::Now(), message.time) < kReadyMs && !PlayEnd) {
    playStart = platform::Now();
    PlayFrame(0);
    PlayTick();
  }
}

// What would leave the player before a play that stands still, or without some of its sounds and pictures.
void ShowWarnings() {
  if (RealHiSpeed == 0) {
    ShowMessage(u"RealHiSpeed is 0: nothing moves. Hold 3 and press 2");
  } else if (!loadNotice.empty()) {
    ShowMessage(loadNotice);
  }
  loadNotice.clear();
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

}  // namespace

void PlayLoop() {
  const int32_t lateBefore = platform::LateSoundBlocks();
  MakeFadeTiles();
  PlayEnd = false;
  PlayAlive = true;
  DebugLog(u"[PlayLoop]");
  posOffset = 0;
  posRest = 0;
  rawBPM = HdrBPM;
  TakeTempo(HdrBPM);
  DebugLog(u"  playloop start");
  PlaySE(SE::kReady);
  HoldScreen();
  StartFade(kFadeTiles, 0);
  ShowMessage(u"R E A D Y ?");
  RankLocked = false;
  PreRoll();
  ShowWarnings();
  // 0 ms of the chart is this moment.
  // Quirk: the seek sets the tempo anew, so that a pause in the pre-roll does not hold the chart back. Its
  // lanes are dead until the resume all the same.
  SeekChart(0, true);
  if (!PlayEnd) Run();
  AddRecEvent(kRecEnd, 0, 0);
  if (network.NetActive) SendEnd();
  GameState = kStatePlayOver;
  RestoreHiSpeed();
  lateBlocks = platform::LateSoundBlocks() - lateBefore;
}

}  // namespace qlm
