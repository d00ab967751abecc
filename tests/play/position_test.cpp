// Tests of the clock, the position and tempo changes.
#include "play/position.h"

#include "play/turn.h"
#include "state/message.h"
#include "state/options.h"
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
  EXPECT_EQ(message.text, u"BPM CHANGE : 130.5");
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

}  // namespace
}  // namespace qlm
