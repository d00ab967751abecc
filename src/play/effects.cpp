// The effects of attacks, and the stall.
#include "play/effects.h"

#include <array>
#include <cmath>

#include "base/numbers.h"
#include "base/text.h"
#include "platform/clock.h"
#include "play/position.h"
#include "play/shuffle.h"
#include "sound/play.h"
#include "sound/slots.h"
#include "state/message.h"
#include "state/options.h"
#include "state/session.h"
#include "state/timeline.h"

namespace qlm {
namespace {

constexpr int32_t kStallMs = 1000;

void Announce(TextView name, float value) { ShowMessage(Join(u"< ", name, u" [", Fixed(value, 1), u"] >")); }

// Quirk: the tempo that an effect reapplies is the chart's start tempo, so that a section with another tempo
// goes on at it until its next tempo object.
void SetSpeed(double factor) {
  Assign(RealHiSpeed, Narrow(factor));
  SetBPM(rawBPM);
}

// From double speed down to a standstill.
void TempoDown(int32_t ms) {
  SetSpeed((2000.0 - ms) / 2000 + 1.0);
  Announce(u"T E M P O D O W N", RealHiSpeed);
}

// From half the speed up to two and a half times.
void TempoUp(int32_t ms) {
  SetSpeed((ms - 1000.0) / 2000 + 1.0);
  Announce(u"T E M P O U P", RealHiSpeed);
}

// Notes fall faster and faster. The target stays set, so that the scroll factor eases back to it.
void SpeedUp(int32_t ms) {
  if (HiSpeedTarget == 0) HiSpeedTarget = HiSpeed;
  Assign(HiSpeed, Narrow(HiSpeedTarget * (ms / 4000.0 + 1.0)));
  SetBPM(rawBPM);
  Announce(u"S P E E D U P", HiSpeed);
}

void Shuffle(int32_t) {
  ShuffleAhead();
  ShowMessage(u"< S H F F U L E ! >");
}

void Break(int32_t) {
  if (!BreakActive) BreakPlay();
  ShowMessage(u"< B R E A K >");
}

// Quirk: the way leads back to exactly 1, and not to the speed that the player has set.
void Recover(int32_t) {
  if (RealHiSpeed != 1) {
    Assign(RealHiSpeed, Narrow(RealHiSpeed + (1.0 - RealHiSpeed) * 0.1));
    if (std::abs(1.0 - RealHiSpeed) < 0.1) RealHiSpeed = 1;
    SetBPM(rawBPM);
  }
  if (RealHiSpeed == 1) AttackKind = kAttackNone;
}

// What each kind does on a tick, and the time past which it gives way to the recovery; 0 for those that end
// by themselves.
struct Effect {
  void (*work)(int32_t ms);
  int32_t lasts;
};
constexpr std::array<Effect, 6> kEffects = {{
    {.work = Recover, .lasts = 0},
    {.work = TempoDown, .lasts = 4000},
    {.work = SpeedUp, .lasts = 8000},
    {.work = TempoUp, .lasts = 4000},
    {.work = Shuffle, .lasts = 10000},
    {.work = Break, .lasts = 0},
}};

}  // namespace

void BreakPlay() {
  BreakActive = true;
  BreakStart = platform::Now();
  StopPlayingSounds();
  if (AttackKind != kAttackBreak) PlaySE(SE::kFail);
  // Quirk: a tempo that stands still already is kept as it stands: a stall that begins in a pause, or a
  // second miss of the same frame, leaves the play without a tempo until another one is set.
  savedBPM = curBPM;
  SetBPM(0);
}

void EndStall() {
  if (!BreakActive || PlayFailed || platform::Elapsed(platform::Now(), BreakStart) <= kStallMs) return;
  ResumeStoppedSounds();
  // Quirk: savedBPM holds RealHiSpeed already, as in a resume.
  SetBPM(savedBPM);
  if (AttackKind != kAttackBreak) {
    PlayFailed = true;
    PlayFailedTime = platform::Now();
  }
  BreakActive = false;
  AttackKind = kAttackNone;
}

void WorkEffect() {
  if (AttackKind < 0 || AttackKind >= static_cast<int32_t>(kEffects.size())) return;
  const Effect& effect = kEffects[static_cast<size_t>(AttackKind)];
  const int32_t ms = platform::Elapsed(platform::Now(), AttackStart);
  effect.work(ms);
  if (effect.lasts != 0 && ms > effect.lasts) AttackKind = kAttackRecovering;
}

}  // namespace qlm
