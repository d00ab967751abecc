// Tests of the throwing of notes onto other lanes.
#include "play/shuffle.h"

#include <set>

#include "base/rnd.h"
#include "play/turn.h"
#include "state/options.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

class ShuffleTest : public PlayTest {
 protected:
  ShuffleTest() { LaneNote.fill(-1); }
  ~ShuffleTest() override { SetRndList({}); }
  int32_t ChannelOf(size_t index) const { return objs[index].channel; }
};

TEST_F(ShuffleTest, NotesFrom256To384UnitsAheadAreThrown) {
  SetRndList({0.99F});  // channel 19
  Lay(11, 256);
  Lay(11, 257);
  Lay(11, 383);
  Lay(11, 384);
  ShuffleAhead();
  EXPECT_EQ(ChannelOf(0), 11);
  EXPECT_EQ(ChannelOf(1), 19);
  EXPECT_EQ(ChannelOf(2), 19);
  EXPECT_EQ(ChannelOf(3), 11);
}

TEST_F(ShuffleTest, FasterNotesSettleNearer) {
  SetRndList({0.99F});
  HiSpeed = 2;
  playPos = 1000;
  Lay(11, 1128);
  Lay(11, 1129);
  ShuffleAhead();
  EXPECT_EQ(ChannelOf(0), 11);
  EXPECT_EQ(ChannelOf(1), 19);
}

TEST_F(ShuffleTest, HalfTheSpeedThrowsNothing) {
  HiSpeed = 0.5F;
  SetRndList({0.99F});
  for (int32_t pos = 0; pos < 600; pos += 50) Lay(11, pos);
  ShuffleAhead();
  for (size_t index = 0; index < 12; ++index) EXPECT_EQ(ChannelOf(index), 11);
}

TEST_F(ShuffleTest, ScrollFactorOfZeroThrowsNothing) {
  HiSpeed = 0;
  SetRndList({0.99F});
  Lay(11, 300);
  ShuffleAhead();
  EXPECT_EQ(ChannelOf(0), 11);
}

TEST_F(ShuffleTest, TurntableIsNeitherThrownNorHit) {
  // 0.6 and 0.7 name channels 16 and 17, and are drawn again.
  SetRndList({0.6F, 0.7F, 0.2F});
  Lay(16, 300);
  Lay(11, 301);
  ShuffleAhead();
  EXPECT_EQ(ChannelOf(0), 16);
  EXPECT_EQ(ChannelOf(1), 12);
}

TEST_F(ShuffleTest, OnlyNotesOfTheFirstSideAreThrown) {
  SetRndList({0.99F});
  for (const int32_t channel : {1, 3, 4, 21, 25, 29, 31, int32_t{ObjSeparator}}) Lay(channel, 300);
  ShuffleAhead();
  EXPECT_EQ(ChannelOf(0), 1);
  EXPECT_EQ(ChannelOf(3), 21);
  EXPECT_EQ(ChannelOf(4), 25);
  EXPECT_EQ(ChannelOf(6), 31);
  EXPECT_EQ(ChannelOf(7), ObjSeparator);
}

TEST_F(ShuffleTest, NotesOfAChordNeverShareALane) {
  for (const int32_t channel : {11, 12, 13, 14, 15, 18, 19}) Lay(channel, 300);
  for (int32_t frame = 0; frame < 200; ++frame) {
    ShuffleAhead();
    std::set<int32_t> lanes;
    for (size_t index = 0; index < 7; ++index) lanes.insert(ChannelOf(index));
    ASSERT_EQ(lanes, (std::set<int32_t>{11, 12, 13, 14, 15, 18, 19}));
  }
}

TEST_F(ShuffleTest, DrawsThatNameNoFreeLaneLeaveTheNote) {
  SetRndList({0.99F});
  Lay(11, 300);
  Lay(12, 300);
  Lay(13, 301);
  ShuffleAhead();
  EXPECT_EQ(ChannelOf(0), 19);
  EXPECT_EQ(ChannelOf(1), 12);
  EXPECT_EQ(ChannelOf(2), 19);
}

TEST_F(ShuffleTest, PendingNotesAreRethrownToo) {
  // At ten times the speed the settled stretch is 25.6 units, and a pending note may lie beyond.
  HiSpeed = 10;
  SetRndList({0.99F});
  Lay(11, 90);
  LaneNote[0] = 0;
  ShuffleAhead();
  EXPECT_EQ(ChannelOf(0), 19);
  EXPECT_EQ(LaneNote[0], 0);
}

TEST_F(ShuffleTest, PassedNotesStay) {
  SetRndList({0.99F});
  Lay(11, 300);
  Lay(11, 300);
  objCursor = 1;
  ShuffleAhead();
  EXPECT_EQ(ChannelOf(0), 11);
  EXPECT_EQ(ChannelOf(1), 19);
}

TEST_F(ShuffleTest, FrameThrowsWithTheOptionOnly) {
  SetRndList({0.99F});
  Lay(11, 300);
  PlayFrame(0);
  EXPECT_EQ(ChannelOf(0), 11);
  ExRandom = true;
  PlayFrame(0);
  EXPECT_EQ(ChannelOf(0), 19);
}

}  // namespace
}  // namespace qlm
