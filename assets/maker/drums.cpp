// Skins are modes, snares and brushes are noise, cymbals are both.
#include "drums.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "filters.h"
#include "modes.h"
#include "noise.h"
#include "room.h"

namespace assetmaker {
namespace {

Curve Dying(double seconds) {
  return [=](double time) { return std::exp(-time / seconds); };
}

// The snares under the skin, which is wide: each ear hears some of its own.
Sound Snares(double force, Noise& noise) {
  const Wave middle = noise.Seconds(0.3);
  Sound snares{noise.Seconds(0.3), noise.Seconds(0.3)};
  Mix(snares, {middle, middle}, 0, 0.6);
  Apply(Biquad::HighPass(1500), snares);
  Apply(Biquad::LowPass(7500 + 6000 * force), snares);
  Shape(snares, Dying(0.035 + 0.03 * force));
  Scale(snares, 1 / Peak(snares));
  return snares;
}

constexpr double fieldPlace = -0.12;

// One stroke of the field drum without the room.
Sound Stroke(double force, std::uint32_t seed) {
  Noise noise(seed);
  const double tuning = noise.Between(0.985, 1.015);
  const Wave skin = Ring({{172 * tuning, 1, 0.05},
                          {274 * tuning, 0.8, 0.038},
                          {358 * tuning, 0.5, 0.03},
                          {452 * tuning, 0.35, 0.022},
                          {615 * tuning, 0.2, 0.015}},
                         0.3);
  Wave stick = noise.Seconds(0.006);
  Apply(Biquad::BandPass(4200, 0.7), stick);
  FadeOut(stick, 0.005);
  Sound sound = Pan(Normalised(skin), fieldPlace);
  Scale(sound, 0.75);
  Mix(sound, Snares(force, noise), 0, 0.75);
  Mix(sound, Pan(stick, fieldPlace), 0, 0.5 * force);
  Scale(sound, 0.25 + 0.75 * force);
  return sound;
}

}  // namespace

Sound FieldStroke(double force, std::uint32_t seed) { return InRoom(Stroke(force, seed), 0.2, 0.5); }

Sound FieldFlam() {
  Sound sound = Stroke(0.35, 11);
  Mix(sound, Stroke(1, 12), Samples(0.021));
  return InRoom(sound, 0.2, 0.5);
}

Sound FieldRoll(double seconds, double from, double to) {
  constexpr double strokesPerSecond = 27;
  Noise hand(5);
  Sound sound;
  const int strokes = std::max(1, static_cast<int>(std::lround(seconds * strokesPerSecond)));
  for (int i = 0; i < strokes; ++i) {
    const double progress = static_cast<double>(i) / strokes;
    const double force = (from + (to - from) * progress) * hand.Between(0.82, 1.0);
    const double time = progress * seconds + (i == 0 ? 0 : hand.Between(-0.003, 0.003));
    Mix(sound, Stroke(force, static_cast<std::uint32_t>(20 + i)), Samples(time));
  }
  return InRoom(sound, 0.2, 0.5);
}

Sound BassDrum() {
  Wave wave(Samples(0.5));
  double turns = 0;
  // The skin moves away from the beater first, against the field drum's, so that the two do not pile up.
  for (std::size_t i = 0; i < wave.size(); ++i) {
    const double time = static_cast<double>(i) / sampleRate;
    wave[i] = static_cast<float>(-std::sin(2 * std::numbers::pi * turns) * std::exp(-time / 0.13));
    turns += (52 + 55 * std::exp(-time / 0.025)) / sampleRate;
  }
  Wave beater = Noise(41).Seconds(0.06);
  Apply(Biquad::LowPass(1100), beater);
  Shape(beater, Dying(0.01));
  Mix(wave, beater, 0, 0.8);
  return InRoom(Pan(wave, 0.08), 0.14, 0.6);
}

Sound BrushTap() {
  Wave wave = Noise(51).Seconds(0.14);
  Apply(Biquad::HighPass(1800), wave);
  Apply(Biquad::LowPass(7500), wave);
  Shape(wave, [](double time) { return (1 - std::exp(-time / 0.002)) * std::exp(-time / 0.03); });
  return InRoom(Pan(wave, 0.2), 0.15, 0.5);
}

Sound BrushSweep(double seconds) {
  Wave wave = SweptBand(
      Noise(52).Seconds(seconds),
      [=](double time) { return 2300 + 2200 * std::sin(std::numbers::pi * time / seconds); }, 0.8);
  Shape(wave, [=](double time) {
    return (1 - std::exp(-time / 0.02)) * (0.35 + 0.65 * std::sin(std::numbers::pi * time / seconds));
  });
  FadeOut(wave, seconds / 3);
  return InRoom(Pan(wave, -0.3), 0.15, 0.5);
}

Sound Cymbals(double seconds) {
  Noise noise(61);
  std::vector<Mode> modes;
  for (int i = 0; i < 140; ++i) {
    const double place = noise.Between(0, 1);
    const double frequency = 320 * std::pow(40, place);  // 320 Hz to 12.8 kHz, evenly over the octaves
    const double decay = seconds * 0.28 * noise.Between(0.5, 1.2) * (1.15 - 0.75 * place);
    modes.push_back(
        {frequency, noise.Between(0.3, 1) * std::pow(place + 0.2, 0.8), decay, noise.Between(0, 6.28)});
  }
  Wave left = Normalised(Ring(modes, seconds));
  for (Mode& mode : modes) mode.phase += noise.Between(0.5, 2.5);
  Wave right = Normalised(Ring(modes, seconds));
  // Above its tones the metal hisses, on each side for itself.
  Sound hiss{noise.Seconds(seconds), noise.Seconds(seconds)};
  Apply(Biquad::HighPass(5000), hiss);
  Apply(Biquad::LowPass(15000), hiss);
  Shape(hiss, Dying(seconds * 0.2));
  Wave clash = noise.Seconds(0.4);
  Apply(Biquad::HighPass(2500), clash);
  Shape(clash, Dying(0.07));
  Sound sound{left, right};
  Mix(sound, hiss, 0, 0.4);
  Mix(sound, Pan(clash, 0), 0, 0.5);
  FadeIn(sound.left, 0.001);
  FadeIn(sound.right, 0.001);
  FadeOut(sound, seconds / 3);
  return InRoom(sound, 0.12, 0.8);
}

Sound Triangle() {
  const Wave wave =
      Ring({{2310, 0.4, 0.5}, {4127, 1, 0.6}, {5290, 0.5, 0.45}, {6890, 0.7, 0.4}, {9120, 0.5, 0.3}}, 1.2);
  return InRoom(Pan(wave, 0.4), 0.15);
}

}  // namespace assetmaker
