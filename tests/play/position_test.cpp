// Tests of the clock, the position and tempo changes.
#include "play/position.h"

#include "platform/clock.h"
#include "play/turn.h"
#include "state/message.h"
#include "state/options.h"
#include "state/session.h"
#include "state/sounds.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

using PositionTest = PlayTest;

TEST_F(PositionTest, PositionGrowsWithTheTempo) {
  HdrBPM = 120;
  Lay(ObjSeparator, 960);
  Begin();
  EXPECT_DOUBLE_EQ(pixPerMs, 120 / 1250.0);
  EXPECT_FLOAT_EQ(unitsPerSec, 96);  // 120 / 240 * 192
  Turn(1000);
  EXPECT_EQ(playClock, 1000);
  EXPECT_DOUBLE_EQ(playPos, 96);
}

TEST_F(PositionTest, ClockRunsAcrossItsWrap) {
  Lay(ObjSeparator, 5000);
  Begin();
  SetNow(0xFFFF'FF00U);
  SeekChart(0, true);
  SetNow(0x100);
  PlayStep();
  EXPECT_EQ(playClock, 512);
  EXPECT_DOUBLE_EQ(playPos, 512);
}

TEST_F(PositionTest, TempoChangeKeepsThePosition) {
  HdrBPM = 120;
  Lay(ObjSeparator, 960);
  Begin();
  Turn(1000);
  SetBPM(150);
  EXPECT_EQ(posOffset, -24);  // -(150 - 120) / 1250 * 1000
  Turn(1000);
  EXPECT_DOUBLE_EQ(playPos, 96);
  Turn(2000);
  EXPECT_DOUBLE_EQ(playPos, 216);  // 96 + 1000 * 0.12
}

TEST_F(PositionTest, OffsetRoundsHalfToEven) {
  // From 1250 to 1875 the offset changes by half a unit a millisecond.
  const auto offsetAt = [&](int32_t clock) {
    posOffset = 0;
    curBPM = 1250;
    playClock = clock;
    SetBPM(1875);
    return posOffset;
  };
  EXPECT_EQ(offsetAt(1), 0);
  EXPECT_EQ(offsetAt(3), -2);
  EXPECT_EQ(offsetAt(5), -2);
  EXPECT_EQ(offsetAt(7), -4);
  EXPECT_EQ(offsetAt(8), -4);
}

TEST_F(PositionTest, OffsetDriftsByUpToHalfAUnit) {
  Lay(ObjSeparator, 5000);
  Begin();
  Turn(3);
  EXPECT_DOUBLE_EQ(playPos, 3);
  SetBPM(1875);  // an exact offset would be -1.5
  Turn(3);
  EXPECT_DOUBLE_EQ(playPos, 2.5);
}

TEST_F(PositionTest, TempoChangeIsShownAndLogged) {
  RealHiSpeed = 1.5F;
  SetBPM(130.5F);
  EXPECT_EQ(messageText, u"BPM CHANGE : 130.5");
  EXPECT_TRUE(Logged(u"BPM->195.75 ( 130.5 * 1.5 )"));
  EXPECT_FLOAT_EQ(curBPM, 195.75F);
}

TEST_F(PositionTest, RealHiSpeedDoublesTempoAndPitch) {
  RealHiSpeed = 2;
  FillSlot(1, 22050);
  Lay(ObjSeparator, 5000);
  Begin();
  EXPECT_FLOAT_EQ(curBPM, 2500);
  SetBPM(150);
  EXPECT_FLOAT_EQ(curBPM, 300);
  EXPECT_DOUBLE_EQ(pixPerMs, 300 / 1250.0);
  EXPECT_EQ(WavBuffer[1]->Frequency(), 44100);
  EXPECT_EQ(loopCounter, 256);  // the walk over the slots leaves it behind the last one
}

TEST_F(PositionTest, TempoZeroFreezesThePosition) {
  Lay(ObjSeparator, 5000);
  Begin();
  Turn(700);
  SetBPM(0);
  Turn(1700);
  EXPECT_EQ(playClock, 1700);
  EXPECT_DOUBLE_EQ(playPos, 700);
}

TEST_F(PositionTest, TempoThatOverflowsIsSkipped) {
  RealHiSpeed = 2;
  curBPM = 100;
  posOffset = 7;
  playClock = 1000;
  SetBPM(3e38F);
  EXPECT_FLOAT_EQ(curBPM, 100);
  EXPECT_EQ(posOffset, 7);
}

TEST_F(PositionTest, StallEndsAfterASecondAndFails) {
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

TEST_F(PositionTest, RealHiSpeedIsSquaredBehindAStall) {
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

TEST_F(PositionTest, StallOfAnAttackDoesNotFail) {
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

TEST_F(PositionTest, StallStaysOnceThePlayHasFailed) {
  Lay(ObjSeparator, 9000);
  Begin();
  BreakActive = true;
  BreakStart = kStart;
  PlayFailed = true;
  Turn(5000);
  EXPECT_TRUE(BreakActive);
}

TEST_F(PositionTest, DueEchoesAreCounted) {
  FillSlot(1);
  Lay(ObjSeparator, 9000);
  Begin();
  EchoQueue[0] = {.time = 200, .slot = 1, .step = 1};
  EchoQueue[1] = {.time = 400, .slot = 1, .step = 2};
  EchoCount = 2;
  Turn(200);  // an echo waits until its time has passed
  EXPECT_EQ(playedEchoes, 0);
  Turn(201);
  EXPECT_EQ(playedEchoes, 1);
  Turn(500);
  EXPECT_EQ(playedEchoes, 2);
  EXPECT_EQ(EchoCount, 0);
}

TEST_F(PositionTest, EscHeldForHalfASecondFadesOut) {
  Lay(ObjSeparator, 9000);
  Begin();
  EscHeld = true;
  EscStart = kStart + 100;
  Turn(600);
  EXPECT_EQ(FadeState, kFadeNone);
  Turn(601);
  EXPECT_EQ(FadeState, kFadeEnd);
  EXPECT_EQ(FadeStart, kStart + 601);
  EXPECT_EQ(FadeLeaving, 1);
  EXPECT_FALSE(EscHeld);
  EXPECT_FALSE(PlayCleared);
}

TEST_F(PositionTest, EscReleasedInTimeDoesNothing) {
  Lay(ObjSeparator, 9000);
  Begin();
  EscHeld = true;
  EscStart = kStart + 100;
  Turn(500);
  EscHeld = false;
  Turn(1000);
  EXPECT_EQ(FadeState, kFadeNone);
}

TEST_F(PositionTest, PlayIsAliveUntilTheLastObjectHasPassed) {
  Lay(ObjSeparator, 100);
  Begin();
  Turn(99);
  EXPECT_TRUE(PlayAlive);
  Turn(100);
  EXPECT_FALSE(PlayAlive);
}

TEST_F(PositionTest, TranscriptTellsTemposPlacesAndTurns) {
  Lay(3, 100, 250);
  Lay(ObjSeparator, 5000);
  Begin();
  for (uint32_t turn = 0; turn < 101; ++turn) Turn(turn * 2);
  EXPECT_EQ(played.turns, 101);
  ASSERT_EQ(played.places.size(), 3U);
  EXPECT_EQ(played.places[0].clock, 0);
  EXPECT_EQ(played.places[1].clock, 100);
  EXPECT_DOUBLE_EQ(played.places[1].playPos, 100);
  EXPECT_EQ(played.places[2].clock, 200);
  EXPECT_DOUBLE_EQ(played.places[2].playPos, 120);  // 100 + 100 * 0.2
  ASSERT_EQ(played.tempi.size(), 1U);
  EXPECT_EQ(played.tempi[0].clock, 100);
  EXPECT_FLOAT_EQ(played.tempi[0].curBPM, 250);
  EXPECT_EQ(played.tempi[0].posOffset, 80);  // -(250 - 1250) / 1250 * 100
}

}  // namespace
}  // namespace qlm
