// Lengths, levels, sums and fades.
#include "sound.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace assetmaker {

std::size_t Samples(double seconds) {
  return static_cast<std::size_t>(std::lround(std::max(seconds, 0.0) * sampleRate));
}

double Decibels(double db) { return std::pow(10, db / 20); }

void Mix(Wave& whole, const Wave& part, std::size_t at, double gain) {
  whole.resize(std::max(whole.size(), at + part.size()));
  for (std::size_t i = 0; i < part.size(); ++i) whole[at + i] += static_cast<float>(gain * part[i]);
}

void Mix(Sound& whole, const Sound& part, std::size_t at, double gain) {
  Mix(whole.left, part.left, at, gain);
  Mix(whole.right, part.right, at, gain);
}

void MixAround(Sound& loop, const Sound& part, std::size_t at, double gain) {
  const std::size_t length = loop.left.size();
  for (std::size_t i = 0; i < part.left.size(); ++i) {
    loop.left[(at + i) % length] += static_cast<float>(gain * part.left[i]);
    loop.right[(at + i) % length] += static_cast<float>(gain * part.right[i]);
  }
}

double Peak(const Wave& wave) {
  double peak = 0;
  for (const float sample : wave) peak = std::max(peak, std::fabs(static_cast<double>(sample)));
  return peak;
}

double Peak(const Sound& sound) { return std::max(Peak(sound.left), Peak(sound.right)); }

void Scale(Wave& wave, double gain) {
  for (float& sample : wave) sample = static_cast<float>(sample * gain);
}

void Scale(Sound& sound, double gain) {
  Scale(sound.left, gain);
  Scale(sound.right, gain);
}

Wave Normalised(Wave wave) {
  const double peak = Peak(wave);
  if (peak > 0) Scale(wave, 1 / peak);
  return wave;
}

Sound Pan(const Wave& wave, double position) {
  const double angle = (position + 1) * std::numbers::pi / 4;
  Sound sound{wave, wave};
  Scale(sound.left, std::cos(angle) * std::numbers::sqrt2);
  Scale(sound.right, std::sin(angle) * std::numbers::sqrt2);
  return sound;
}

namespace {

// Half a cosine: 1 at 0, 0 at 1.
double Fall(double x) { return 0.5 + 0.5 * std::cos(std::numbers::pi * x); }

}  // namespace

void FadeOut(Wave& wave, double seconds) {
  const std::size_t length = std::min(Samples(seconds), wave.size());
  const std::size_t begin = wave.size() - length;
  for (std::size_t i = 0; i < length; ++i) {
    const double progress = static_cast<double>(i + 1) / static_cast<double>(length);
    wave[begin + i] = static_cast<float>(wave[begin + i] * Fall(progress));
  }
}

void FadeOut(Sound& sound, double seconds) {
  FadeOut(sound.left, seconds);
  FadeOut(sound.right, seconds);
}

void FadeIn(Wave& wave, double seconds) {
  const std::size_t length = std::min(Samples(seconds), wave.size());
  for (std::size_t i = 0; i < length; ++i) {
    const double progress = static_cast<double>(i) / static_cast<double>(length);
    wave[i] = static_cast<float>(wave[i] * Fall(1 - progress));
  }
}

void TrimTail(Sound& sound, double floor) {
  const double threshold = Peak(sound) * floor;
  std::size_t length = sound.left.size();
  while (length > 1 && std::fabs(sound.left[length - 1]) < threshold &&
         std::fabs(sound.right[length - 1]) < threshold) {
    --length;
  }
  sound.left.resize(length);
  sound.right.resize(length);
  FadeOut(sound, 0.025);
}

}  // namespace assetmaker
