// Tests of moving the clock to a place of the chart.
#include "play/position.h"
#include "state/judgement.h"
#include "state/options.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

using SeekTest = PlayTest;

TEST_F(SeekTest, StartIsThisMoment) {
  LayBars(2);
  SetClock(345);
  objCursor = 2;
  keySoundCursor = 7;
  posOffset = 9;
  poorBGA = 3;
  PoorShow = true;
  SeekChart(0, true);
  EXPECT_EQ(playStart, kStart + 345);
  EXPECT_EQ(playClock, 0);
  EXPECT_DOUBLE_EQ(playPos, 0);
  EXPECT_EQ(objCursor, 0);
  EXPECT_EQ(keySoundCursor, 0);
  EXPECT_EQ(posOffset, 0);
  EXPECT_EQ(poorBGA, 0);
  EXPECT_FALSE(PoorShow);
  EXPECT_FLOAT_EQ(rawBPM, 1250);
  EXPECT_FLOAT_EQ(curBPM, 1250);
}

TEST_F(SeekTest, MeasureIsFoundAtItsBarLine) {
  LayBars(3);
  SeekChart(2, false);
  EXPECT_DOUBLE_EQ(playPos, 384);
  EXPECT_EQ(playClock, 384);
  EXPECT_EQ(playStart, kStart - 384);
  EXPECT_EQ(objCursor, 1);  // one before the bar line found
}

TEST_F(SeekTest, PositionIsFoundAtTheFirstObjectNotBefore) {
  Lay(1, 10);
  Lay(1, 20);
  Lay(1, 30);
  Lay(1, 40);
  SeekChart(25, true);
  EXPECT_DOUBLE_EQ(playPos, 25);
  EXPECT_EQ(objCursor, 1);
  SeekChart(30, true);
  EXPECT_EQ(objCursor, 1);
}

TEST_F(SeekTest, OutOfRangeOnlyTheBgaChanges) {
  LayBars(2);  // measures 0 and 1 hold objects, the last bar line stands at 384
  const auto refused = [&](int32_t position, bool byPosition) {
    log.clear();
    curBaseBGA = curLayerBGA = 5;
    BGADirty = false;
    posOffset = 77;
    objCursor = 1;
    playStart = 123;
    SeekChart(position, byPosition);
    return Logged(u"Err: Range over") && posOffset == 77 && objCursor == 1 && playStart == 123 &&
           curBaseBGA == -1 && curLayerBGA == -1 && BGADirty;
  };
  EXPECT_TRUE(refused(-1, true));
  EXPECT_TRUE(refused(385, true));
  EXPECT_FALSE(refused(384, true));
  EXPECT_TRUE(refused(-1, false));
  EXPECT_TRUE(refused(2, false));
  EXPECT_FALSE(refused(1, false));
}

TEST_F(SeekTest, EmptyTableHasNoPosition) {
  SeekChart(0, true);
  EXPECT_TRUE(Logged(u"Err: Range over"));
}

TEST_F(SeekTest, EmptyTableHasMeasureZero) {
  SetClock(50);
  SeekChart(0, false);
  EXPECT_FALSE(Logged(u"Err: Range over"));
  EXPECT_EQ(playStart, kStart + 50);
  EXPECT_DOUBLE_EQ(playPos, 0);
  EXPECT_EQ(objCursor, 0);
}

TEST_F(SeekTest, TableThatWasNeverAllocatedHasMeasureZeroToo) {
  objs.clear();
  SeekChart(0, false);
  EXPECT_EQ(playStart, kStart);
  EXPECT_DOUBLE_EQ(playPos, 0);
}

TEST_F(SeekTest, LastObjectThatDidNotFitHasNoPosition) {
  objs.resize(1);
  Lay(1, 10);
  AddObj();
  SeekChart(5, true);
  EXPECT_TRUE(Logged(u"Err: Range over"));
}

TEST_F(SeekTest, TempoChangesOnTheWayAreApplied) {
  Lay(3, 1000, 2500);
  Lay(8, 2000, 1);
  Lay(ObjSeparator, 9000);
  BpmTable[1] = 625;
  SeekChart(1500, true);
  EXPECT_EQ(posOffset, -1000);  // -(2500 - 1250) / 1250 * 1000
  EXPECT_EQ(playClock, 1250);   // 1000 ms, then 500 units at 2 a ms
  EXPECT_FLOAT_EQ(rawBPM, 2500);
  SeekChart(2500, true);
  EXPECT_EQ(posOffset, 1250);  // -1000 - (625 - 2500) / 1250 * 1500
  EXPECT_EQ(playClock, 2500);  // 1000, 500 and 500 / 0.5
  EXPECT_FLOAT_EQ(rawBPM, 625);
  EXPECT_FLOAT_EQ(curBPM, 625);
  EXPECT_FLOAT_EQ(shownBPM, 625);
  EXPECT_TRUE(played.tempi.empty());  // no tempo changes in play
}

TEST_F(SeekTest, TempoAtTheGoalWaitsForThePlay) {
  Lay(1, 500);
  Lay(3, 1000, 2500);
  Lay(ObjSeparator, 9000);
  SeekChart(1000, true);
  EXPECT_FLOAT_EQ(curBPM, 1250);
  EXPECT_EQ(objCursor, 0);
}

TEST_F(SeekTest, RealHiSpeedCountsForEachTempo) {
  RealHiSpeed = 2;
  Lay(3, 1000, 2500);
  Lay(ObjSeparator, 9000);
  SeekChart(2000, true);
  EXPECT_FLOAT_EQ(curBPM, 5000);
  EXPECT_FLOAT_EQ(rawBPM, 2500);
  EXPECT_EQ(posOffset, -1000);  // -(5000 - 2500) / 1250 * 500
  EXPECT_EQ(playClock, 750);    // 500 ms, then 1000 units at 4 a ms
}

TEST_F(SeekTest, StartRoundsHalfToEvenOnTheClock) {
  HdrBPM = 2500;  // half a millisecond a unit
  Lay(ObjSeparator, 100);
  SeekChart(1, true);
  EXPECT_EQ(playStart, kStart);  // 999999.5
  EXPECT_EQ(playClock, 0);
  SeekChart(3, true);
  EXPECT_EQ(playStart, kStart - 2);  // 999998.5
  EXPECT_EQ(playClock, 2);
  SetClock(1);
  SeekChart(1, true);
  EXPECT_EQ(playStart, kStart);  // 1000000.5
  EXPECT_EQ(playClock, 1);
}

TEST_F(SeekTest, StartMayLieBeforeTheClocksOwn) {
  Lay(ObjSeparator, 3'000'000);
  SeekChart(2'000'000, true);
  EXPECT_EQ(playClock, 2'000'000);
  EXPECT_EQ(playStart, kStart - 2'000'000U);  // wrapped
}

TEST_F(SeekTest, TableTempoOfZeroCountsHere) {
  Lay(8, 100, 1);  // undefined, so 0
  Lay(ObjSeparator, 500);
  playStart = kStart - 40;
  SeekChart(300, true);
  EXPECT_FLOAT_EQ(curBPM, 0);
  EXPECT_FLOAT_EQ(rawBPM, 0);
  // Nothing gets there at that rate: the start stays where it was.
  EXPECT_EQ(playStart, kStart - 40);
  EXPECT_EQ(playClock, 40);
  EXPECT_DOUBLE_EQ(playPos, 300);
}

TEST_F(SeekTest, TempoBehindATempoOfZeroLeavesTheOffset) {
  Lay(8, 100, 1);
  Lay(3, 200, 2500);
  Lay(ObjSeparator, 500);
  SeekChart(300, true);
  EXPECT_EQ(posOffset, 100);  // what the tempo of 0 froze: 0 - (0 - 1250) / 1250 * 100
  EXPECT_FLOAT_EQ(curBPM, 2500);
  EXPECT_EQ(playClock, 100);  // (300 - 100) / 2
}

}  // namespace
}  // namespace qlm
