// The clock and its virtual stand-in.
#include "platform/clock.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

class ClockTest : public testing::Test {
 protected:
  ~ClockTest() override { UseRealClock(); }
};

TEST_F(ClockTest, StartsHighEnoughToTakeSecondsFromIt) { EXPECT_GE(Now(), 1'000'000U); }

TEST_F(ClockTest, RealTimePasses) {
  const uint32_t before = Now();
  SleepFor(3);
  EXPECT_GE(Elapsed(Now(), before), 2);
}

TEST_F(ClockTest, BeatsAreAsFarApartAsAskedFor) {
  const uint32_t first = Now();
  for (int i = 0; i < 5; ++i) WaitForBeat(50);
  // The first may come at once; the others are 20 ms apart, or more where the machine is busy.
  EXPECT_GE(Elapsed(Now(), first), 79);
}

TEST_F(ClockTest, VirtualTimeStandsUntilAFrameIsShown) {
  UseVirtualClock(5000);
  SetFrameClock([](uint32_t now) { return now + 16; });
  SleepFor(1000);
  EXPECT_EQ(Now(), 5000U);
  FrameShown();
  EXPECT_EQ(Now(), 5016U);
}

TEST_F(ClockTest, RestsOnTheVirtualClockAreAddedUp) {
  UseVirtualClock(5000);
  SleepFor(1000);
  SleepFor(4'000'000'000);
  EXPECT_EQ(VirtualRest(), 4'000'001'000);
  UseVirtualClock(6000);
  EXPECT_EQ(VirtualRest(), 0);
}

TEST_F(ClockTest, DifferencesAreRightAcrossTheWrap) {
  EXPECT_EQ(Elapsed(5, 0xFFFFFFFB), 10);
  EXPECT_EQ(Elapsed(0xFFFFFFFB, 5), -10);
}

}  // namespace
}  // namespace platform
