// The harmonics come from the recurrence sin(n+1)x = 2 cos x sin nx - sin(n-1)x: one sine and one cosine a
// sample.
#include "tones.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace assetmaker {
namespace {

constexpr int maxHarmonics = 32;
constexpr double audible = 1e-4;  // harmonics below this share are not worth their time

// How much the formant lifts each harmonic of the tone.
std::vector<double> FormantWeights(const Tone& tone, int harmonics) {
  std::vector<double> weights(static_cast<std::size_t>(harmonics), 1.0);
  if (tone.formant <= 0) return weights;
  for (int n = 1; n <= harmonics; ++n) {
    const double octaves = std::log2(n * tone.frequency / tone.formant);
    weights[static_cast<std::size_t>(n - 1)] += tone.formantGain * std::exp(-octaves * octaves * 2);
  }
  return weights;
}

// What moves in a tone; between two moments it moves in a straight line.
struct Moment {
  double level = 0, brightness = 0;
  double pace = 0;  // turns a sample
};

constexpr std::size_t control = 32;  // samples from one moment to the next, less than a millisecond

Moment MomentAt(const Tone& tone, std::size_t sample) {
  const double time = static_cast<double>(sample) / sampleRate;
  return {tone.level(time), tone.brightness(time),
          tone.frequency * std::exp2(tone.bend(time) / 1200) / sampleRate};
}

Moment StepBetween(const Moment& from, const Moment& to) {
  constexpr double share = 1.0 / control;
  return {(to.level - from.level) * share, (to.brightness - from.brightness) * share,
          (to.pace - from.pace) * share};
}

}  // namespace

Wave Sustain(const Tone& tone) {
  const int harmonics = std::clamp(static_cast<int>(0.42 * sampleRate / tone.frequency), 1, maxHarmonics);
  const std::vector<double> weights = FormantWeights(tone, harmonics);
  Wave wave(Samples(tone.seconds));
  double turns = tone.phase;
  Moment moment = MomentAt(tone, 0), next = moment, step;
  for (std::size_t i = 0; i < wave.size(); ++i) {
    if (i % control == 0) {
      moment = next;
      next = MomentAt(tone, i + control);
      step = StepBetween(moment, next);
    }
    const double angle = 2 * std::numbers::pi * turns;
    const double twiceCosine = 2 * std::cos(angle);
    double below = 0, sine = std::sin(angle), share = 1, sum = 0;
    for (const double weight : weights) {
      sum += share * weight * sine;
      share *= moment.brightness;
      if (share < audible) break;
      const double above = twiceCosine * sine - below;
      below = sine;
      sine = above;
    }
    wave[i] = static_cast<float>(sum * moment.level);
    turns += moment.pace;
    turns -= std::floor(turns);
    moment.level += step.level;
    moment.brightness += step.brightness;
    moment.pace += step.pace;
  }
  return wave;
}

}  // namespace assetmaker
