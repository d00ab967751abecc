// The weighting is that of broadcast loudness meters; the window is as short as a game's sounds are.
#include "loudness.h"

#include <algorithm>
#include <cmath>

#include "filters.h"

namespace assetmaker {
namespace {

constexpr double window = 0.1;      // seconds
constexpr double highestPeak = -4;  // dB
constexpr double silence = -120;    // dB

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

Sound AtLoudness(Sound sound, double loudness) {
  const double peak = Peak(sound);
  if (peak <= 0) return sound;
  const double wanted = Decibels(loudness - Loudness(sound));
  Scale(sound, std::min(wanted, Decibels(highestPeak) / peak));
  return sound;
}

}  // namespace assetmaker
