// Holding peaks down.
#include "assets/maker/dynamics.h"

#include <gtest/gtest.h>

#include <cmath>

namespace assetmaker {
namespace {

// A tenth of a second at 0.2 with one sample of 0.8 in its middle, on the left alone.
Sound Spike() {
  Sound sound{Wave(Samples(0.1), 0.2F), Wave(Samples(0.1), 0.2F)};
  sound.left[2205] = 0.8F;
  return sound;
}

TEST(Limited, HoldsAPeakAtTheCeiling) {
  const Sound limited = Limited(Spike(), 0.4);
  EXPECT_NEAR(Peak(limited), 0.4, 1e-6);
  EXPECT_NEAR(limited.left[2205], 0.4, 1e-6);
  EXPECT_NEAR(limited.right[2205], 0.1, 1e-6);  // both channels sink together
}

TEST(Limited, LeavesAllElseAsItWas) {
  const Sound limited = Limited(Spike(), 0.4);
  for (const std::size_t at : {0u, 1900u, 2500u, 4409u}) EXPECT_EQ(limited.left[at], 0.2F) << at;
  const Sound quiet = Limited(Spike(), 0.9);
  EXPECT_EQ(quiet.left, Spike().left);
}

// A step of the gain would be heard as a click: over 3 ms it sinks from 1 to a half and rises again.
TEST(Limited, MovesItsGainWithoutCorners) {
  const Sound limited = Limited(Spike(), 0.4);
  for (std::size_t i = 1; i < limited.right.size(); ++i)
    ASSERT_LT(std::fabs(limited.right[i] - limited.right[i - 1]), 0.001) << i;
}

TEST(Limited, HoldsPeaksAtBothEnds) {
  Sound sound = Spike();
  sound.left.front() = sound.right.back() = -0.9F;
  EXPECT_LE(Peak(Limited(sound, 0.4)), 0.4 + 1e-6);
}

}  // namespace
}  // namespace assetmaker
