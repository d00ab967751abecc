// Tests of the effects that strike a running play.
#include "play/effects.h"

#include "base/rnd.h"
#include "platform/clock.h"
#include "play/pause.h"
#include "play/position.h"
#include "play/turn.h"
#include "sound/play.h"
#include "state/message.h"
#include "state/options.h"
#include "state/session.h"
#include "state/sounds.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

class EffectsTest : public PlayTest {
 protected:
  EffectsTest() {
    HdrBPM = 100;
    Lay(ObjSeparator, 9000);
    Begin();
  }

  static void Strike(int32_t kind) {
    AttackKind = kind;
    AttackStart = platform::Now();
  }
  static void TickAt(uint32_t ms) {
    SetClock(ms);
    WorkEffect();
  }
};

TEST_F(EffectsTest, TempoDownFallsFromDoubleSpeedToAStandstill) {
  Strike(kAttackTempoDown);
  TickAt(0);
  EXPECT_FLOAT_EQ(RealHiSpeed, 2);
  EXPECT_FLOAT_EQ(curBPM, 200);
  EXPECT_EQ(message.text, u"< T E M P O D O W N [2.0] >");
  TickAt(1000);
  EXPECT_FLOAT_EQ(RealHiSpeed, 1.5F);
  TickAt(2000);
  EXPECT_FLOAT_EQ(RealHiSpeed, 1);
  TickAt(4000);
  EXPECT_FLOAT_EQ(RealHiSpeed, 0);
  EXPECT_FLOAT_EQ(curBPM, 0);
  EXPECT_EQ(AttackKind, kAttackTempoDown);
  EXPECT_EQ(message.text, u"< T E M P O D O W N [0.0] >");
}

TEST_F(EffectsTest, TempoDownEndsWithATempoBelowZeroForOneTick) {
  Strike(kAttackTempoDown);
  TickAt(4100);
  EXPECT_FLOAT_EQ(RealHiSpeed, -0.05F);
  EXPECT_FLOAT_EQ(curBPM, -5);
  EXPECT_EQ(AttackKind, kAttackRecovering);
  TickAt(4101);
  EXPECT_FLOAT_EQ(RealHiSpeed, 0.055F);
}

TEST_F(EffectsTest, TempoUpRisesFromHalfTheSpeed) {
  Strike(kAttackTempoUp);
  TickAt(0);
  EXPECT_FLOAT_EQ(RealHiSpeed, 0.5F);
  EXPECT_EQ(message.text, u"< T E M P O U P [0.5] >");
  TickAt(4000);
  EXPECT_FLOAT_EQ(RealHiSpeed, 2.5F);
  EXPECT_EQ(AttackKind, kAttackTempoUp);
  TickAt(4001);
  EXPECT_EQ(AttackKind, kAttackRecovering);
}

TEST_F(EffectsTest, EffectMovesThePitchToo) {
  FillSlot(1, 22050);
  Strike(kAttackTempoDown);
  TickAt(1000);
  EXPECT_EQ(WavBuffer[1]->Frequency(), 33075);
}

// Quirk: a later section goes on at the chart's start tempo.
TEST_F(EffectsTest, EffectRunsAtTheStartTempo) {
  SetBPM(300);
  EXPECT_FLOAT_EQ(curBPM, 300);
  Strike(kAttackTempoDown);
  TickAt(2000);
  EXPECT_FLOAT_EQ(curBPM, 100);
}

TEST_F(EffectsTest, SpeedUpGrowsFromTheScrollFactor) {
  HiSpeed = 2;
  Strike(kAttackSpeedUp);
  TickAt(0);
  EXPECT_FLOAT_EQ(HiSpeedTarget, 2);
  EXPECT_FLOAT_EQ(HiSpeed, 2);
  TickAt(4000);
  EXPECT_FLOAT_EQ(HiSpeed, 4);
  EXPECT_FLOAT_EQ(RealHiSpeed, 1);
  EXPECT_EQ(message.text, u"< S P E E D U P [4.0] >");
  TickAt(8000);
  EXPECT_FLOAT_EQ(HiSpeed, 6);
  EXPECT_EQ(AttackKind, kAttackSpeedUp);
  TickAt(8001);
  EXPECT_EQ(AttackKind, kAttackRecovering);
  EXPECT_FLOAT_EQ(HiSpeedTarget, 2);
  TickAt(8002);
  EXPECT_EQ(AttackKind, kAttackNone);
}

TEST_F(EffectsTest, ScrollFactorEasesBackBehindASpeedUp) {
  HiSpeed = 6;
  HiSpeedTarget = 2;
  PlayTick();
  EXPECT_FLOAT_EQ(HiSpeed, 5.6F);
  HiSpeed = 2.0011F;
  PlayTick();
  EXPECT_FLOAT_EQ(HiSpeed, 2);
  EXPECT_FLOAT_EQ(HiSpeedTarget, 0);
}

TEST_F(EffectsTest, ShuffleThrowsForTenSeconds) {
  ChartObj& note = objs[0];
  note.channel = 11;
  note.pos = 300;
  HiSpeed = 1;
  SetRndList({0.99F});
  Strike(kAttackShuffle);
  playPos = 0;
  TickAt(10'000);
  EXPECT_EQ(note.channel, 19);
  EXPECT_EQ(message.text, u"< S H F F U L E ! >");
  EXPECT_EQ(AttackKind, kAttackShuffle);
  TickAt(10'001);
  EXPECT_EQ(AttackKind, kAttackRecovering);
  SetRndList({});
}

// Quirk: the way leads back to 1, whatever the player has set.
TEST_F(EffectsTest, RecoveryEndsAtExactlyOne) {
  RealHiSpeed = 2;
  Strike(kAttackRecovering);
  TickAt(1);
  EXPECT_FLOAT_EQ(RealHiSpeed, 1.9F);
  EXPECT_FLOAT_EQ(curBPM, 190);
  EXPECT_EQ(AttackKind, kAttackRecovering);
  RealHiSpeed = 1.11F;
  TickAt(2);
  EXPECT_FLOAT_EQ(RealHiSpeed, 1);
  EXPECT_FLOAT_EQ(curBPM, 100);
  EXPECT_EQ(AttackKind, kAttackNone);
}

TEST_F(EffectsTest, RecoveryWithoutAnythingToRecoverEndsAtOnce) {
  Strike(kAttackRecovering);
  log.clear();
  TickAt(1);
  EXPECT_EQ(AttackKind, kAttackNone);
  EXPECT_TRUE(log.empty());
}

TEST_F(EffectsTest, SecondAttackInTheRecoveryTakesItsOwnFormula) {
  RealHiSpeed = 1.7F;
  Strike(kAttackRecovering);
  TickAt(10);
  Strike(kAttackTempoUp);
  TickAt(10);
  EXPECT_FLOAT_EQ(RealHiSpeed, 0.5F);
}

TEST_F(EffectsTest, BreakStallsForASecondWithoutAFailure) {
  FillSlot(1);
  FillSlot(14);
  SystemSound[14] = WavBuffer[14];
  PlayWav(1, 0, 0);
  Strike(kAttackBreak);
  TickAt(500);
  EXPECT_TRUE(BreakActive);
  EXPECT_EQ(BreakStart, kStart + 500);
  EXPECT_FALSE(WavBuffer[1]->Playing());
  EXPECT_TRUE(WavWasPlaying[1]);
  EXPECT_FALSE(SystemSound[14]->Playing());
  EXPECT_FLOAT_EQ(savedBPM, 100);
  EXPECT_EQ(message.text, u"< B R E A K >");
  TickAt(600);
  EXPECT_EQ(BreakStart, kStart + 500);
  const double stood = playPos;
  Turn(1500);
  EXPECT_TRUE(BreakActive);
  EXPECT_DOUBLE_EQ(playPos, stood);
  Turn(1501);
  EXPECT_FALSE(BreakActive);
  EXPECT_FALSE(PlayFailed);
  EXPECT_EQ(AttackKind, kAttackNone);
  EXPECT_FLOAT_EQ(curBPM, 100);
  EXPECT_TRUE(WavBuffer[1]->Playing());
}

TEST_F(EffectsTest, StallOfAMissSoundsAndFailsThePlay) {
  FillSlot(14);
  SystemSound[14] = WavBuffer[14];
  BreakPlay();
  EXPECT_TRUE(SystemSound[14]->Playing());
  Turn(1001);
  EXPECT_TRUE(PlayFailed);
  EXPECT_EQ(PlayFailedTime, kStart + 1001);
}

// Quirk: what stands still already is kept as it stands.
TEST_F(EffectsTest, BreakInAPauseLeavesNoTempo) {
  BMSPause();
  EXPECT_FLOAT_EQ(savedBPM, 100);
  Strike(kAttackBreak);
  TickAt(0);
  EXPECT_FLOAT_EQ(savedBPM, 0);
  BMSResume();
  EXPECT_FLOAT_EQ(curBPM, 0);
  Turn(1001);
  EXPECT_FALSE(BreakActive);
  EXPECT_FLOAT_EQ(curBPM, 0);
}

TEST_F(EffectsTest, NoEffectDoesNothing) {
  log.clear();
  for (const int32_t kind : {kAttackNone, 6, -1}) {
    Strike(kind);
    TickAt(50'000);
    EXPECT_EQ(AttackKind, kind);
  }
  EXPECT_TRUE(log.empty());
}

TEST_F(EffectsTest, TickWorksTheEffect) {
  Strike(kAttackTempoUp);
  PlayTick();
  EXPECT_FLOAT_EQ(RealHiSpeed, 0.5F);
}

// The stall, at 1250 BPM.

using StallTest = PlayTest;

TEST_F(StallTest, StallEndsAfterASecondAndFails) {
  FillSlot(4);
  Lay(ObjSeparator, 9000);
  Begin();
  Turn(500);
  BreakActive = true;
  BreakStart = platform::Now();
  savedBPM = curBPM;
  WavWasPlaying[4] = true;
  AttackKind = 255;
  SetBPM(0);
  Turn(1500);
  EXPECT_TRUE(BreakActive);
  EXPECT_DOUBLE_EQ(playPos, 500);
  EXPECT_FALSE(WavBuffer[4]->Playing());
  Turn(1501);
  EXPECT_FALSE(BreakActive);
  EXPECT_TRUE(PlayFailed);
  EXPECT_EQ(PlayFailedTime, kStart + 1501);
  EXPECT_EQ(AttackKind, 255);
  EXPECT_FLOAT_EQ(curBPM, 1250);
  EXPECT_TRUE(WavBuffer[4]->Playing());
  Turn(1601);
  EXPECT_DOUBLE_EQ(playPos, 600);
}

TEST_F(StallTest, RealHiSpeedIsSquaredBehindAStall) {
  RealHiSpeed = 1.5F;
  HdrBPM = 100;
  Lay(ObjSeparator, 9000);
  Begin();
  BreakActive = true;
  BreakStart = kStart;
  savedBPM = curBPM;
  EXPECT_FLOAT_EQ(savedBPM, 150);
  Turn(1001);
  EXPECT_FLOAT_EQ(curBPM, 225);
}

TEST_F(StallTest, StallOfAnAttackDoesNotFail) {
  Lay(ObjSeparator, 9000);
  Begin();
  BreakActive = true;
  BreakStart = kStart;
  AttackKind = 5;
  savedBPM = 1250;
  Turn(1001);
  EXPECT_FALSE(PlayFailed);
  EXPECT_FALSE(BreakActive);
  EXPECT_EQ(AttackKind, 255);
}

TEST_F(StallTest, StallStaysOnceThePlayHasFailed) {
  Lay(ObjSeparator, 9000);
  Begin();
  BreakActive = true;
  BreakStart = kStart;
  PlayFailed = true;
  Turn(5000);
  EXPECT_TRUE(BreakActive);
}

}  // namespace
}  // namespace qlm
