// The sixteen system sounds.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "wav.h"

namespace stock {
namespace {

const std::vector<std::string> names = {
    "sngchg",  "select",  "sngdecide", "ready",   "fade",     "class_ss",  "class_s",  "class_a",
    "class_b", "class_c", "class_d",   "class_e", "selstart", "res_clear", "res_fail", "ptscount"};
constexpr const char* loop = "select";

Wav SystemSound(const std::string& name) { return ReadWav(SystemSounds() / (name + ".wav")); }

TEST(SystemSounds, AllSixteenArePlainStereoAt44100) {
  ASSERT_EQ(names.size(), 16u);
  for (const std::string& name : names) {
    SCOPED_TRACE(name);
    const Wav wav = SystemSound(name);
    EXPECT_TRUE(wav.valid);
    EXPECT_EQ(wav.format, 1u);
    EXPECT_EQ(wav.channels, 2u);
    EXPECT_EQ(wav.rate, 44100u);
    EXPECT_EQ(wav.bits, 16u);
    EXPECT_EQ(wav.frameBytes, 4u);
    EXPECT_EQ(wav.bytesPerSecond, 176400u);
  }
}

TEST(SystemSounds, PeakBelowMinusThreeDecibels) {
  for (const std::string& name : names) EXPECT_LT(PeakDb(SystemSound(name)), -3) << name;
}

TEST(SystemSounds, BeginAtOnce) {
  for (const std::string& name : names) EXPECT_LT(StartMs(SystemSound(name), 0.01), 25) << name;
}

TEST(SystemSounds, EndInSilenceSaveForTheLoop) {
  for (const std::string& name : names) {
    if (name == loop) continue;
    EXPECT_LE(End(SystemSound(name), 8), 2 / 32768.0) << name;
  }
}

TEST(SystemSounds, MatchInLoudness) {
  double quietest = 0, loudest = -100;
  for (const std::string& name : names) {
    if (name == loop) continue;
    const double loudness = LoudestTenthDb(SystemSound(name));
    quietest = std::min(quietest, loudness);
    loudest = std::max(loudest, loudness);
  }
  // Unweighted, low sounds measure up to some decibels louder than they are heard.
  EXPECT_LT(loudest - quietest, 8);
}

TEST(SystemSounds, TheLoopStaysBehindTheOthers) {
  EXPECT_LT(LoudestTenthDb(SystemSound(loop)), LoudestTenthDb(SystemSound("sngchg")) - 5);
}

TEST(SystemSounds, TheLoopLastsEightBarsAndMeetsItsBeginning) {
  const Wav wav = SystemSound(loop);
  EXPECT_EQ(wav.left.size(), 8u * 4 * 36750);  // eight bars of four beats at 72 a minute
  double largestStep = 0;
  for (std::size_t i = 1; i < wav.left.size(); ++i) {
    largestStep = std::max(largestStep, std::fabs(wav.left[i] - wav.left[i - 1]));
  }
  EXPECT_LE(std::fabs(wav.left.front() - wav.left.back()), largestStep / 4);
}

// "R E A D Y ?" stands for a second.
TEST(SystemSounds, ReadyEndsAsTheSongBegins) { EXPECT_LE(SystemSound("ready").left.size(), 1.1 * 44100); }

TEST(SystemSounds, TheCountIsShortEnoughToRattle) {
  const Wav wav = SystemSound("ptscount");
  EXPECT_LT(wav.left.size(), 44100u / 8);
}

}  // namespace
}  // namespace stock
