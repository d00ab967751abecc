// One turn of the play, step by step.
#include "play/turn.h"

#include <cmath>
#include "base/numbers.h"
#include "graphics/display.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "platform/timers.h"
#include "platform/window.h"
#include "play/effects.h"
#include "play/gauge.h"
#include "play/gauge_history.h"
#include "play/judgement.h"
#include "play/object_events.h"
#include "play/position.h"
#include "play/records.h"
#include "play/shuffle.h"
#include "play_screen/play_screen.h"
#include "sound/play.h"
#include "state/chart.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/timeline.h"
#include "state/transcript.h"

namespace qlm {
namespace {

constexpr int32_t kEscMs = 500;
constexpr int32_t kTurnsAPlace = 50;

void LeaveOnEsc() {
  const uint32_t now = platform::Now();
  if (!EscHeld || platform::Elapsed(now, EscStart) <= kEscMs) return;
  FadeStart = now;
  FadeState = kFadeEnd;
  FadeLeaving = 1;
  AddRecEvent(kRecEnd, 0, 0);
  EscHeld = false;
}

void TranscribeTurn() {
  if (transcript == nullptr) return;
  if (transcript->turns % kTurnsAPlace == 0) transcript->places.push_back({playClock, playPos});
  ++transcript->turns;
}

// Draws the scroll factor to its target.
void EaseHiSpeed() {
  if (HiSpeedTarget == 0) return;
  Assign(HiSpeed, Narrow(HiSpeed + (HiSpeedTarget - double{HiSpeed}) * 0.1));
  if (std::abs(double{HiSpeedTarget} - HiSpeed) >= 0.001) return;
  HiSpeed = HiSpeedTarget;
  HiSpeedTarget = 0;
}

}  // namespace

void PlayStep() {
  ReadClock();
  TranscribeTurn();
  EndStall();
  playedEchoes += ServeEchoes();
  FollowKeySounds();
  if (ShowRec) ReplayEvents();
  PassObjects();
  LoadSoundsAhead();
  FillGaugeHistory();
  LeaveOnEsc();
  if (!PreviewActive) {
    PlayFrame(objCursor);
    PlayTick();
  }
  if (objCursor >= objCount) PlayAlive = false;
}

void PlayFrame(int32_t cursor) {
  if (cursor > objCount) return;
  if (!CheckDisplay()) return;
  // Nothing that is drawn before the notes looks at the lanes of those ahead, so that they may be thrown
  // first.
  if (ExRandom) ShuffleAhead();
  DrawPlayFrame();
  JudgeScrolledPast();
  platform::LetMovingPointerShow();
  PresentFrame();
}

void PlayTick() {
  EaseShownFigures();
  EaseHiSpeed();
  WorkEffect();
  if (PlayEnd || !PlayAlive) platform::KillTimer(platform::kTimerPlay);
}

}  // namespace qlm
