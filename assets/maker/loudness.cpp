// The weighting is that of broadcast loudness meters; the window is as short as a game's sounds are.
#include "loudness.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include "dynamics.h"
#include "filters.h"

namespace assetmaker {
namespace {

constexpr double window = 0.1;    // seconds
constexpr double silence = -120;  // dB

}  // namespace

double Loudness(const Sound& sound) {
  Sound weighted = sound;
  Apply(Biquad::HighPass(60, 0.5), weighted);
  Apply(Biquad::HighShelf(1700, 4), weighted);
  const std::size_t length = Samples(window);
  double energy = 0, loudest = 0;
  const auto energyAt = [&](std::size_t i) {
    return static_cast<double>(weighted.left[i]) * weighted.left[i] +
           static_cast<double>(weighted.right[i]) * weighted.right[i];
  };
  for (std::size_t i = 0; i < weighted.left.size(); ++i) {
    energy += energyAt(i);
    if (i >= length) energy -= energyAt(i - length);
    loudest = std::max(loudest, energy);
  }
  return loudest > 0 ? 10 * std::log10(loudest / static_cast<double>(length)) : silence;
}

Sound AtLoudness(Sound sound, double loudness, double peak) {
  constexpr double mostHeld = 4;  // dB
  const double height = 20 * std::log10(Peak(sound));
  if (!std::isfinite(height)) return sound;
  Scale(sound, Decibels(std::min(loudness - Loudness(sound), peak + mostHeld - height)));
  return Limited(std::move(sound), Decibels(peak));
}

namespace {

double Lufs(double power) { return power > 0 ? -0.691 + 10 * std::log10(power) : silence; }

// The mean of the powers that are louder than so many LUFS.
double MeanAbove(const std::vector<double>& powers, double floor) {
  double sum = 0;
  int count = 0;
  for (const double power : powers) {
    if (Lufs(power) > floor) sum += power, ++count;
  }
  return count > 0 ? sum / count : 0;
}

// The value a fraction of a sample behind sample `at`, by a windowed sinc.
double Between(const Wave& wave, std::size_t at, double fraction) {
  constexpr int reach = 12;
  double sum = 0;
  for (int n = 1 - reach; n <= reach; ++n) {
    const auto place = static_cast<std::ptrdiff_t>(at) + n;
    if (place < 0 || place >= static_cast<std::ptrdiff_t>(wave.size())) continue;
    const double x = std::numbers::pi * (n - fraction);
    const double window = 0.5 + 0.5 * std::cos(x / reach);
    sum += wave[static_cast<std::size_t>(place)] * std::sin(x) / x * window;
  }
  return sum;
}

double TruePeak(const Wave& wave) {
  const double highest = Peak(wave);
  double peak = highest;
  for (std::size_t i = 0; i + 1 < wave.size(); ++i) {
    // Between two low samples the curve does not rise above the highest.
    if (std::max(std::fabs(wave[i]), std::fabs(wave[i + 1])) < 0.5 * highest) continue;
    for (const double fraction : {0.25, 0.5, 0.75})
      peak = std::max(peak, std::fabs(Between(wave, i, fraction)));
  }
  return peak;
}

}  // namespace

double ProgrammeLoudness(const Sound& sound) {
  Sound weighted = sound;
  Apply(Biquad::HighShelf(1500, 4), weighted);
  Apply(Biquad::HighPass(38, 0.5), weighted);
  const std::size_t hop = Samples(0.1);
  std::vector<double> hops;
  for (std::size_t start = 0; start + hop <= weighted.left.size(); start += hop) {
    double energy = 0;
    for (std::size_t i = start; i < start + hop; ++i) {
      energy += static_cast<double>(weighted.left[i]) * weighted.left[i] +
                static_cast<double>(weighted.right[i]) * weighted.right[i];
    }
    hops.push_back(energy / static_cast<double>(hop));
  }
  std::vector<double> blocks;
  for (std::size_t i = 0; i + 4 <= hops.size(); ++i) {
    blocks.push_back((hops[i] + hops[i + 1] + hops[i + 2] + hops[i + 3]) / 4);
  }
  constexpr double absoluteFloor = -70, below = 10;
  return Lufs(MeanAbove(blocks, std::max(absoluteFloor, Lufs(MeanAbove(blocks, absoluteFloor)) - below)));
}

double TruePeakDb(const Sound& sound) {
  return 20 * std::log10(std::max(TruePeak(sound.left), TruePeak(sound.right)));
}

namespace {

double Energy(const Wave& wave) {
  double energy = 0;
  for (const float sample : wave) energy += static_cast<double>(sample) * sample;
  return energy;
}

double RatioDb(double part, double whole) {
  return part > 0 && whole > 0 ? std::max(silence, 10 * std::log10(part / whole)) : silence;
}

}  // namespace

double EnergyDb(const Sound& sound) {
  return RatioDb(Energy(sound.left) + Energy(sound.right), static_cast<double>(sound.left.size()));
}

double HighsDb(const Sound& sound) {
  constexpr double edge = 4000;
  Sound highs = sound;
  // Two sections make a slope of 24 dB an octave without a bump at the edge.
  for (const double q : {0.54, 1.31}) Apply(Biquad::HighPass(edge, q), highs);
  return RatioDb(Energy(highs.left) + Energy(highs.right), Energy(sound.left) + Energy(sound.right));
}

double WidthDb(const Sound& sound) {
  Wave middle = sound.left, sides = sound.left;
  Mix(middle, sound.right);
  Mix(sides, sound.right, 0, -1);
  return RatioDb(Energy(sides), Energy(middle));
}

}  // namespace assetmaker
