// Paper is noise with a grain, wood and metal are short modes.
#include "desk.h"

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

// Noise whose loudness trembles as fibres of the paper pass under what is drawn over them, dull above
// `highest` Hz as paper is.
Wave Grain(double seconds, double fibresPerSecond, Noise& noise, double highest = 8000) {
  Wave wave(Samples(seconds));
  double level = 1, target = 1;
  const double pace = fibresPerSecond / sampleRate;
  for (float& sample : wave) {
    if (noise.Between(0, 1) < pace) target = noise.Between(0.15, 1);
    level += (target - level) * pace * 4;
    sample = static_cast<float>(noise.Next() * level);
  }
  Apply(Biquad::LowPass(highest), wave);
  return wave;
}

// Rises over the first share of a duration and falls over the rest; both ends are silent.
Curve Swell(double seconds, double rise) {
  return [=](double time) {
    const double x = std::clamp(time / seconds, 0.0, 1.0);
    return x < rise ? std::sin(std::numbers::pi / 2 * x / rise)
                    : std::cos(std::numbers::pi / 2 * (x - rise) / (1 - rise));
  };
}

Wave Tap(Noise& noise) {
  const double size = noise.Between(0.93, 1.07);
  Wave wave = Ring({{410 * size, 0.5, 0.012},
                    {1280 * size, 0.8, 0.009},
                    {2150 * size, 1, 0.008},
                    {3870 * size, 0.5, 0.005}},
                   0.08);
  Wave point = noise.Seconds(0.004);
  FadeOut(point, 0.004);
  Mix(wave, point, 0, 0.35);
  return wave;
}

}  // namespace

Sound NibTap(std::uint32_t seed) {
  Noise noise(seed);
  return InRoom(Pan(Tap(noise), 0.1), 0.12, 0.35);
}

Sound PenStroke(double seconds, double lift, std::uint32_t seed) {
  Noise noise(seed + 100);
  const auto pitch = [=](double time) { return 3100 * std::exp2(0.7 * lift * (time / seconds - 0.5)); };
  Wave wave = SweptBand(Grain(seconds, 260, noise), pitch, 2.2);
  const Wave body = SweptBand(
      Grain(seconds, 160, noise), [=](double time) { return pitch(time) * 0.42; }, 1.2);
  Mix(wave, body, 0, 0.5);
  Shape(wave, Swell(seconds, 0.12));
  return InRoom(Pan(wave, 0.15 * lift), 0.12, 0.4);
}

Sound BroadStroke(double seconds, double lift, std::uint32_t seed) {
  Sound sound;
  // The two points of the split nib run side by side.
  for (const double side : {-1.0, 1.0}) {
    Noise noise(seed + (side > 0 ? 150 : 100));
    const auto pitch = [=](double time) {
      return (5600 + 500 * side) * std::exp2(0.9 * lift * (time / seconds - 0.5));
    };
    Wave wave = SweptBand(Grain(seconds, 140, noise, 14000), pitch, 1.6);
    Shape(wave, Swell(seconds, 0.06));
    Mix(sound, Pan(wave, 0.5 * side));
  }
  return InRoom(sound, 0.12, 0.4);
}

Sound PageTurn(double seconds) {
  Noise noise(201);
  Wave air = SweptBand(
      Grain(seconds, 90, noise), [=](double time) { return 900 + 2600 * time / seconds; }, 0.8);
  Shape(air, Swell(seconds, 0.35));
  Wave flap = SweptBand(
      Grain(0.07, 200, noise), [](double) { return 1500.0; }, 0.7);
  Shape(flap, Swell(0.07, 0.1));
  Mix(air, flap, Samples(seconds * 0.72), 0.9);
  return InRoom(Pan(air, 0), 0.1, 0.4);
}

Sound Stamp() {
  Noise noise(301);
  Wave wave = Ring(
      {{82, 1, 0.07}, {131, 0.7, 0.05}, {236, 0.45, 0.03}, {540, 0.25, 0.015}, {1130, 0.12, 0.008}}, 0.4);
  Wave paper = Grain(0.09, 300, noise);
  Apply(Biquad::LowPass(3500), paper);
  Shape(paper, [](double time) { return std::exp(-time / 0.014); });
  Mix(wave, paper, 0, 0.9);
  return InRoom(Pan(wave, 0), 0.15, 0.5);
}

Sound PencilDrop() {
  Noise noise(401);
  Wave wave;
  double time = 0, force = 1, pause = 0.16;
  while (pause > 0.018) {
    Mix(wave, Tap(noise), Samples(time), force);
    time += pause * noise.Between(0.9, 1.1);
    pause *= 0.66;
    force *= 0.72;
  }
  return InRoom(Pan(wave, -0.1), 0.15, 0.4);
}

Sound Breath(double seconds) {
  Noise noise(501);
  const Wave air = noise.Seconds(seconds);
  Wave wave = SweptBand(
      air, [=](double time) { return 900 + 900 * time / seconds; }, 2.0);
  Mix(wave,
      SweptBand(
          air, [=](double time) { return 2600 + 1400 * time / seconds; }, 2.0),
      0, 0.6);
  Shape(wave, Swell(seconds, 0.7));
  return InRoom(Pan(wave, 0), 0.1, 0.4);
}

Sound Vinyl(std::size_t length) {
  Noise noise(601);
  Sound sound{Wave(length), Wave(length)};
  Biquad leftHush = Biquad::BandPass(900, 0.4), rightHush = leftHush;
  // The first turn through the loop only lets the filters settle, so that the end meets the beginning.
  std::vector<double> left(length), right(length);
  for (std::size_t i = 0; i < length; ++i) left[i] = noise.Next(), right[i] = noise.Next();
  for (int round = 0; round < 2; ++round) {
    for (std::size_t i = 0; i < length; ++i) {
      sound.left[i] = static_cast<float>(0.012 * leftHush.Next(left[i]));
      sound.right[i] = static_cast<float>(0.012 * rightHush.Next(right[i]));
    }
  }
  const double clicks = 7.0 * static_cast<double>(length) / sampleRate;
  for (int i = 0; i < clicks; ++i) {
    const double size = noise.Between(0.005, 1);
    const double frequency = noise.Between(1200, 4200);
    const Wave click = Ring({{frequency, 0.10 * size * size * size, 0.0006}}, 0.006);
    const Sound placed = Pan(click, noise.Between(-0.8, 0.8));
    MixAround(sound, placed, Samples(noise.Between(0, static_cast<double>(length - 1) / sampleRate)));
  }
  return sound;
}

}  // namespace assetmaker
