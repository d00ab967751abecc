// Timers run in the pump, when due, once.
#include "platform/timers.h"

#include <gtest/gtest.h>

#include "platform/clock.h"

namespace platform {
namespace {

int calls = 0;

class TimersTest : public testing::Test {
 protected:
  TimersTest() {
    UseVirtualClock(1000);
    calls = 0;
  }
  ~TimersTest() override {
    KillTimer(kTimerPlay);
    UseRealClock();
  }
};

TEST_F(TimersTest, FiresAtMostOnceInOnePump) {
  SetTimer(kTimerPlay, 1, [] { ++calls; });
  RunDueTimers();
  EXPECT_EQ(calls, 0);
  UseVirtualClock(1050);
  RunDueTimers();
  EXPECT_EQ(calls, 1);
  RunDueTimers();
  EXPECT_EQ(calls, 1);
  UseVirtualClock(1051);
  RunDueTimers();
  EXPECT_EQ(calls, 2);
}

TEST_F(TimersTest, WaitsForItsInterval) {
  SetTimer(kTimerPreview, 20, [] { ++calls; });
  UseVirtualClock(1019);
  RunDueTimers();
  EXPECT_EQ(calls, 0);
  UseVirtualClock(1020);
  RunDueTimers();
  EXPECT_EQ(calls, 1);
  KillTimer(kTimerPreview);
}

TEST_F(TimersTest, MayKillItselfFromItsOwnCall) {
  SetTimer(kTimerPlay, 1, [] {
    ++calls;
    KillTimer(kTimerPlay);
  });
  UseVirtualClock(1010);
  RunDueTimers();
  UseVirtualClock(1020);
  RunDueTimers();
  EXPECT_EQ(calls, 1);
  EXPECT_FALSE(TimerArmed(kTimerPlay));
}

TEST_F(TimersTest, UnknownNumbersAreRefused) {
  SetTimer(77, 1, [] { ++calls; });
  UseVirtualClock(1010);
  RunDueTimers();
  EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace platform
