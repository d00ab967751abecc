// How the maker measures loudness.
#include "assets/maker/loudness.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace assetmaker {
namespace {

Sound Sine(double frequency, double db, double phase, double seconds) {
  Wave wave(Samples(seconds));
  for (std::size_t i = 0; i < wave.size(); ++i) {
    const double turns = frequency * static_cast<double>(i) / sampleRate;
    wave[i] = static_cast<float>(Decibels(db) * std::sin(2 * std::numbers::pi * turns + phase));
  }
  return {wave, wave};
}

// Two channels of a 997 Hz sine at -20 dB are -20 LUFS: -23 dB of power in each, +3 for two of them, the
// weighting's +0.69 at this frequency taken off by the scale's -0.69.
TEST(Loudness, OfASineIsItsLevel) {
  EXPECT_NEAR(ProgrammeLoudness(Sine(997, -20, 0, 5)), -20, 0.15);
  EXPECT_NEAR(ProgrammeLoudness(Sine(997, -32, 0, 5)), -32, 0.15);
}

TEST(Loudness, OfSilenceIsThatOfNothing) { EXPECT_EQ(ProgrammeLoudness(Sine(997, -200, 0, 5)), -120); }

// Silence and what is more than 10 LU below the rest do not count.
TEST(Loudness, LeavesQuietPartsOut) {
  Sound sound = Sine(997, -20, 0, 5);
  const Sound quiet = Sine(997, -50, 0, 15);
  Mix(sound, quiet, sound.left.size());
  EXPECT_NEAR(ProgrammeLoudness(sound), -20, 0.4);
}

// A sine of a quarter of the sample rate, an eighth of a turn late, has all samples 3 dB below its peak.
TEST(Loudness, TruePeakLiesBetweenTheSamples) {
  const Sound sound = Sine(sampleRate / 4.0, -6, std::numbers::pi / 4, 0.5);
  EXPECT_NEAR(20 * std::log10(Peak(sound)), -9.01, 0.02);
  EXPECT_NEAR(TruePeakDb(sound), -6, 0.2);
}

// Two channels of a sine at -20 dB have half of 0.1 squared each.
TEST(Loudness, EnergyIsThatOfBothChannels) {
  EXPECT_NEAR(EnergyDb(Sine(50, -20, 0, 1)), -20, 0.01);
  EXPECT_NEAR(EnergyDb(Sine(9000, -20, 0, 1)), -20, 0.01);
  EXPECT_EQ(EnergyDb({}), -120);
}

// Of two sines that are alike, one on each side of 4 kHz, the higher one has half of the energy.
TEST(Loudness, HighsAreWhatLiesAboveFourKilohertz) {
  Sound sound = Sine(1000, -20, 0, 2);
  EXPECT_LT(HighsDb(sound), -40);
  Mix(sound, Sine(12000, -20, 0, 2));
  EXPECT_NEAR(HighsDb(sound), -3.01, 0.1);
}

// A right channel of a third of the left one: 2/3 to 4/3, half as much. What sounds on one side alone is as
// strong in the sides as in the middle.
TEST(Loudness, WidthSetsTheSidesAgainstTheMiddle) {
  Sound sound = Sine(500, -20, 0, 1);
  EXPECT_EQ(WidthDb(sound), -120);
  Scale(sound.right, 1.0 / 3);
  EXPECT_NEAR(WidthDb(sound), -6.02, 0.01);
  Scale(sound.right, 0);
  EXPECT_NEAR(WidthDb(sound), 0, 0.01);
}

}  // namespace
}  // namespace assetmaker
