// The lanes that the reader gives to notes: shuffled, forced to one side, or copied to both.
#include "chart/reader.h"

#include "base/rnd.h"
#include "platform/clock.h"
#include "state/chart.h"
#include "state/options.h"
#include "state/settings.h"
#include "tests/chart/chart_test.h"

namespace qlm {
namespace {

using Strings = std::vector<std::string>;
using Counts = std::array<int32_t, 2>;

class ReaderLanesTest : public ChartTest {};

// --- random keymap ---

// The numbers that a lane is drawn with: Int(x * 9) + 11.
constexpr float kDraws12 = 0.12F;
constexpr float kDraws13 = 0.23F;
constexpr float kDraws14 = 0.34F;
constexpr float kDraws15 = 0.45F;
constexpr float kDraws16 = 0.56F;
constexpr float kDraws17 = 0.67F;
constexpr float kDraws18 = 0.78F;
constexpr float kDraws19 = 0.89F;

TEST_F(ReaderLanesTest, WithoutRandomKeymapChannelsStay) {
  Read({});
  for (int32_t channel = 0; channel <= 99; ++channel) EXPECT_EQ(ChannelMap[channel], channel);
  EXPECT_EQ(CountLogged(u"<RANDOM> Randomize keymap"), 0);
}

// 11 with 12, then 12 with 13: 11 leads to 12, 12 to 13, 13 to 11.
TEST_F(ReaderLanesTest, RandomKeymapSpreadsOneLineOverItsCycle) {
  Random = true;
  SetRndList({kDraws12, kDraws13, kDraws13, kDraws14, kDraws15, kDraws18, kDraws19});
  Read({u"#00111:01020300", u"#00211:04", u"#00314:0506"});
  EXPECT_TRUE(Logged(u"    <RANDOM> Randomize keymap"));
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c12 v1", "m1 t48 p240 c13 v2", "m1 t96 p288 c11 v3",
                             "m2 t0 p384 c12 v4", "m3 t0 p576 c14 v5", "m3 t96 p672 c14 v6"}));
}

TEST_F(ReaderLanesTest, RandomKeymapDrawsAgainForScratchAndFreeSlot) {
  Random = true;
  SetRndList({kDraws16, kDraws17, kDraws19, kDraws12, kDraws13, kDraws14, kDraws15, kDraws18, kDraws19});
  Read({u"#00111:01", u"#00116:02", u"#00118:03", u"#00119:04", u"#00121:05", u"#00131:06"});
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c19 v1", "m1 t0 p192 c16 v2", "m1 t0 p192 c18 v3",
                             "m1 t0 p192 c11 v4", "m1 t0 p192 c21 v5", "m1 t0 p192 c31 v6"}));
}

TEST_F(ReaderLanesTest, RandomKeymapDecidesWhetherLanes18And19AreUsed) {
  Random = true;
  SetRndList({kDraws18, kDraws12, kDraws13, kDraws14, kDraws15, kDraws18, kDraws19});
  Read({u"#00118:01"});
  EXPECT_FALSE(uses89);
  Read({u"#00111:01"});
  EXPECT_TRUE(uses89);
}

TEST_F(ReaderLanesTest, RandomKeymapUsesTheStreamAsItStandsBeforeTheSeed) {
  Random = true;
  const auto mapAfter = [&](uint32_t seed, uint32_t clock) {
    SeedRnd(seed);
    platform::UseVirtualClock(clock);
    Read({});
    return std::vector<int32_t>(ChannelMap.begin(), ChannelMap.end());
  };
  EXPECT_EQ(mapAfter(7, 1'000'000), mapAfter(7, 2'000'000));
  EXPECT_NE(mapAfter(7, 1'000'000), mapAfter(8, 1'000'000));
}

TEST_F(ReaderLanesTest, RandomKeymapGivesUpOnNumbersThatDrawNoLane) {
  Random = true;
  SetRndList({kDraws16});
  Read({u"#00111:01"});
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c11 v1"}));
}

// --- player forcing ---

TEST_F(ReaderLanesTest, ForcingTo1PPutsAllOnTheLanesOfSideOne) {
  PlayerForce = 1;
  Read({u"#PLAYER 3", u"#00111:01", u"#00121:02", u"#00129:03", u"#00141:04", u"#00131:05", u"#00101:06"});
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c11 v1", "m1 t0 p192 c11 v2", "m1 t0 p192 c19 v3",
                             "m1 t0 p192 c31 v4", "m1 t0 p192 c31 v5", "m1 t0 p192 c1 v6"}));
  EXPECT_EQ(TotalNotes, (Counts{3, 2}));
  EXPECT_EQ(HdrPlayer, 1);
  EXPECT_TRUE(uses89);
}

// Side 2 goes to side 1 first, and then along the cycle of the shuffle: 21 to 11, 11 to 12, 12 to 11.
TEST_F(ReaderLanesTest, ForcingTo1PAndRandomKeymapWorkTogether) {
  PlayerForce = 1;
  Random = true;
  SetRndList({kDraws12, kDraws12, kDraws13, kDraws14, kDraws15, kDraws18, kDraws19});
  Read({u"#00121:01020300"});
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c11 v1", "m1 t48 p240 c12 v2", "m1 t96 p288 c11 v3"}));
}

TEST_F(ReaderLanesTest, ForcingTo2PCopiesTheObjectsOfSideOne) {
  PlayerForce = 2;
  Read({u"#00111:01", u"#00131:02", u"#00101:03", u"#00119:0004"});
  EXPECT_EQ(Objs(),
            (Strings{"m1 t0 p192 c11 v1", "m1 t0 p192 c31 v2", "m1 t0 p192 c1 v3", "m1 t96 p288 c19 v4",
                     "m1 t0 p192 c21 v1", "m1 t0 p192 c41 v2", "m1 t96 p288 c29 v4"}));
  EXPECT_EQ(TotalNotes, (Counts{2, 2}));
  EXPECT_EQ(HdrPlayer, 2);
  EXPECT_EQ(CountLogged(u"Player FORCED TO 2P/BP"), 1);
  EXPECT_EQ(CountLogged(u"COPYING objects to 2P"), 1);
}

TEST_F(ReaderLanesTest, ForcingTo2PCopiesNothingOfAChartForTwo) {
  PlayerForce = 2;
  Read({u"#PLAYER 3", u"#00111:01", u"#00121:0202"});
  EXPECT_EQ(objCount, 3);
  EXPECT_EQ(TotalNotes, (Counts{1, 2}));
  EXPECT_EQ(HdrPlayer, 2);
  EXPECT_EQ(CountLogged(u"Player FORCED TO 2P/BP"), 1);
  EXPECT_EQ(CountLogged(u"COPYING objects to 2P"), 0);
}

TEST_F(ReaderLanesTest, ForcingToDoublePlayCountsNoCopies) {
  PlayerForce = 3;
  Read({u"#00111:0101"});
  EXPECT_EQ(ObjsOf(21).size(), 2U);
  EXPECT_EQ(TotalNotes, (Counts{2, 0}));
  EXPECT_EQ(HdrPlayer, 3);
  EXPECT_EQ(CountLogged(u"COPYING objects to 2P"), 1);
}

TEST_F(ReaderLanesTest, ForcingToDoublePlayCountsARealSideTwoTwice) {
  PlayerForce = 3;
  Read({u"#PLAYER 3", u"#00111:01", u"#00121:020202"});
  EXPECT_EQ(objCount, 4);
  EXPECT_EQ(TotalNotes, (Counts{4, 3}));
  EXPECT_EQ(CountLogged(u"COPYING objects to 2P"), 0);
}

TEST_F(ReaderLanesTest, CopiesBeginAtTheFirstObjectOfTheFile) {
  PlayerForce = 2;
  Read({u"#00111:01"});
  BMSRead(WriteChart({u"#00212:02"}));
  EXPECT_EQ(Objs(),
            (Strings{"m1 t0 p192 c11 v1", "m1 t0 p192 c21 v1", "m2 t0 p384 c12 v2", "m2 t0 p384 c22 v2"}));
}

TEST_F(ReaderLanesTest, CopiesDrawTheirSpeedAnew) {
  PlayerForce = 2;
  FourDMode = true;
  SetRndList({0.25F, 0.5F});
  Read({u"#00111:01"});
  EXPECT_EQ(objs[0].speedMul, 1.125F);
  EXPECT_EQ(objs[1].speedMul, 1.25F);
  EXPECT_EQ(Rnd(), 0.25F);  // nothing was drawn for the record past the end
}

// The record past the end is empty, also when it is the only one looked at.
TEST_F(ReaderLanesTest, ForcingAnEmptyChartCopiesNothing) {
  PlayerForce = 2;
  Read({});
  EXPECT_EQ(objCount, 0);
}

// Three copies that do not fit, and one more for the record past the end, which the table does not have.
TEST_F(ReaderLanesTest, RecordPastAFullTableCountsAsACopy) {
  numObjs = 2;
  PlayerForce = 2;
  Read({u"#00111:010101"});
  EXPECT_EQ(objCount, 7);
  EXPECT_EQ(CountLogged(u"Read complete"), 0);
}

}  // namespace
}  // namespace qlm
