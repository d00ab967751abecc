// What is told of a device by the moments at which it asks for blocks.
#include "platform/block_watch.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace platform {
namespace {

constexpr int64_t kBlock = 5000;  // microseconds

void Ask(BlockWatch& watch, std::initializer_list<int64_t> moments) {
  for (const int64_t moment : moments) watch.Asked(moment, kBlock);
}

TEST(BlockWatch, KnowsNothingBeforeTheFirstBlock) {
  const BlockWatch watch;
  EXPECT_EQ(watch.Late(), 0);
  EXPECT_EQ(watch.MostAhead(), 0);
}

TEST(BlockWatch, BlocksInTimeAreNotLate) {
  BlockWatch watch;
  Ask(watch, {100'000, 105'000, 110'000, 115'000});
  EXPECT_EQ(watch.Late(), 0);
}

// The first block sounds until 105,000 at the latest, and a device that kept one more until 110,000. Of the
// time between, a thousandth is given away.
TEST(BlockWatch, ABlockIsLateWhenMoreThanOneBlockOfSilenceLiesBeforeIt) {
  BlockWatch inTime;
  Ask(inTime, {100'000, 109'990});
  EXPECT_EQ(inTime.Late(), 0);
  BlockWatch late;
  Ask(late, {100'000, 110'001});
  EXPECT_EQ(late.Late(), 1);
}

TEST(BlockWatch, OneGapIsOneLateBlock) {
  BlockWatch watch;
  Ask(watch, {100'000, 200'000, 205'000, 210'000, 300'000});
  EXPECT_EQ(watch.Late(), 2);
}

// It asks for four blocks at once, and then for none until they have sounded.
TEST(BlockWatch, ADeviceThatAsksForSeveralBlocksAtATimeIsNotLate) {
  BlockWatch watch;
  for (int64_t turn = 0; turn < 1000; ++turn) {
    const int64_t now = 100'000 + turn * 4 * kBlock;
    Ask(watch, {now, now, now, now});
  }
  EXPECT_EQ(watch.Late(), 0);
  EXPECT_EQ(watch.MostAhead(), 4 * kBlock);
}

// After a gap it fills what it keeps ready: here two blocks, of which a thousandth of the time to the third
// one is given away.
TEST(BlockWatch, AfterAGapTheDeviceTellsHowMuchItTakesInAdvance) {
  BlockWatch watch;
  Ask(watch, {100'000, 105'000, 110'000});
  EXPECT_EQ(watch.MostAhead(), kBlock);
  Ask(watch, {250'000, 250'020, 255'000, 260'000});
  EXPECT_EQ(watch.MostAhead(), 2 * kBlock - 4);
}

// Both clocks tell a microsecond apart in each block, for an hour: neither is late, and nothing adds up.
TEST(BlockWatch, ClocksThatDifferALittleAddUpToNothing) {
  for (const int64_t apart : {-1, 1}) {
    BlockWatch watch;
    int64_t now = 100'000;
    for (int32_t block = 0; block < 720'000; ++block) {
      watch.Asked(now, kBlock);
      now += kBlock + apart;
    }
    EXPECT_EQ(watch.Late(), 0) << apart;
    EXPECT_LE(watch.MostAhead(), 2 * kBlock) << apart;
    // A gap is still seen at its end.
    watch.Asked(now + 2 * kBlock, kBlock);
    EXPECT_EQ(watch.Late(), 1) << apart;
  }
}

}  // namespace
}  // namespace platform
