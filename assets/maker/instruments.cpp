// Struck and plucked strings, bars and skins are rows of modes; brass and strings are tones that breathe.
#include "instruments.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "filters.h"
#include "modes.h"
#include "noise.h"
#include "room.h"
#include "tones.h"

namespace assetmaker {
namespace {

constexpr double tau = 2 * std::numbers::pi;

// From -1 in the lowest octaves to 1 in the highest, as the keys lie before a player.
double Across(Pitch pitch) { return std::clamp((pitch - 62) / 30.0, -1.0, 1.0); }

// A quick knock of something soft on something hollow: the hammer, the finger.
Wave Knock(double frequency, double brightness, std::uint32_t seed) {
  Wave wave =
      Ring({{frequency, 1, 0.018}, {frequency * 1.7, 0.5, 0.012}, {frequency * 2.6, 0.3, 0.008}}, 0.1);
  Wave skin = Noise(seed).Seconds(0.03);
  Apply(Biquad::LowPass(brightness), skin);
  Shape(skin, [](double time) { return std::exp(-time / 0.005); });
  Mix(wave, skin, 0, 0.6);
  return wave;
}

// Rises within a few times `seconds`, without a corner.
double Onset(double time, double seconds) { return 1 - std::exp(-time / seconds); }

// A wind or bow cannot tremble at once: from 0 to 1 between 0.25 and 0.6 seconds.
double Settled(double time) { return std::clamp((time - 0.25) / 0.35, 0.0, 1.0); }

}  // namespace

Sound FeltPiano(Pitch pitch, double seconds, double touch) {
  const double fundamental = Frequency(pitch);
  const double stiffness = 0.00025 * std::exp2((pitch - 60) / 12.0);
  const double felt = 800 + 2100 * touch;  // Hz: where the felt begins to swallow the partials
  const double ring = 1.9 * std::exp2((60 - pitch) / 20.0);
  std::vector<Mode> left, right;
  for (int n = 1; n <= 16; ++n) {
    const double frequency = n * fundamental * std::sqrt(1 + stiffness * n * n);
    const double strike =
        std::fabs(std::sin(std::numbers::pi * n / 7.3));  // the hammer's place on the string
    const double amplitude = strike * std::exp(-frequency / felt) / std::sqrt(n);
    const double decay = ring / (1 + 0.3 * (n - 1));
    // Every partial is heard from another place of the soundboard.
    const double place = 0.3 * Across(pitch) + 0.55 * std::sin(2.4 * n);
    // Two strings a hair apart: the first gives its energy away quickly, the second keeps singing.
    left.push_back({frequency * 0.9997, amplitude * (1 - place), decay * 0.35});
    left.push_back({frequency * 1.0003, amplitude * (1 - place) * 0.55, decay});
    right.push_back({frequency * 0.9997, amplitude * (1 + place), decay * 0.35});
    right.push_back({frequency * 1.0003, amplitude * (1 + place) * 0.55, decay});
  }
  constexpr double damper = 0.12;
  Sound sound{Ring(left, seconds + damper), Ring(right, seconds + damper)};
  Scale(sound, 1 / Peak(sound));
  Shape(sound, [](double time) { return Onset(time, 0.0015); });
  const Wave knock = Knock(95 + pitch * 0.8, 500 + 900 * touch, static_cast<std::uint32_t>(pitch));
  Mix(sound, Pan(knock, 0.35 * Across(pitch)), 0, 0.10);
  sound.left.resize(Samples(seconds + damper));
  sound.right.resize(Samples(seconds + damper));
  FadeOut(sound, damper);
  return InRoom(sound, 0.18);
}

Sound PluckedBass(Pitch pitch, double seconds) {
  const double fundamental = Frequency(pitch);
  const double ring = 0.9 * std::exp2((40 - pitch) / 24.0);
  std::vector<Mode> modes;
  for (int n = 1; n <= 14; ++n) {
    const double pluck = std::sin(std::numbers::pi * n * 0.23) / n;  // a finger at a quarter of the string
    modes.push_back(
        {fundamental * n * (1 + 0.00004 * n * n), pluck * std::exp(-n / 8.0), ring / (1 + 0.4 * (n - 1))});
  }
  constexpr double stopped = 0.08;
  Wave wave = Normalised(Ring(modes, seconds + stopped));
  Shape(wave, [](double time) { return Onset(time, 0.001); });
  Mix(wave, Knock(140, 1800, static_cast<std::uint32_t>(pitch) + 7), 0, 0.12);
  wave.resize(Samples(seconds + stopped));
  FadeOut(wave, stopped);
  return InRoom(Pan(wave, 0), 0.07, 0.5);
}

Sound Brass(Pitch pitch, double seconds, double force) {
  struct Player {
    double cents, phase, position;
  };
  constexpr std::array<Player, 3> players = {{{-4, 0.0, -0.8}, {1, 0.37, 0.05}, {5, 0.71, 0.8}}};
  constexpr double release = 0.07;
  const double fundamental = Frequency(pitch);
  Sound section;
  for (const Player& player : players) {
    Tone tone;
    tone.frequency = fundamental;
    tone.seconds = seconds + release;
    tone.phase = player.phase;
    tone.formant = 1250;
    tone.formantGain = 1.1;
    tone.level = [](double time) { return Onset(time, 0.011) * (0.78 + 0.35 * std::exp(-time / 0.11)); };
    // The harder the wind, the further up the harmonics reach, above all as the lips let go.
    tone.brightness = [=](double time) {
      const double reach =
          (750 + 1350 * force) * (0.5 + 0.5 * Onset(time, 0.02)) * (1 + 0.5 * std::exp(-time / 0.1));
      return std::exp(-fundamental / reach);
    };
    tone.bend = [=](double time) {
      return player.cents - 30 * std::exp(-time / 0.016) +
             7 * Settled(time) * std::sin(tau * (5.2 + 0.1 * player.cents / 5) * time + player.phase);
    };
    Wave wave = Sustain(tone);
    FadeOut(wave, release);
    Mix(section, Pan(wave, player.position));
  }
  Wave breath = Noise(static_cast<std::uint32_t>(pitch) + 31).Seconds(std::min(seconds, 0.06));
  Apply(Biquad::BandPass(1600, 0.8), breath);
  FadeOut(breath, 0.05);
  Mix(section, Pan(breath, 0), 0, 0.12);
  return InRoom(section, 0.24);
}

Sound Fife(Pitch pitch, double seconds) {
  constexpr double release = 0.05;
  const double fundamental = Frequency(pitch);
  Tone tone;
  tone.frequency = fundamental;
  tone.seconds = seconds + release;
  tone.formant = 4500;
  tone.formantGain = 1.2;
  tone.level = [](double time) { return Onset(time, 0.008) * (0.85 + 0.25 * std::exp(-time / 0.08)); };
  tone.brightness = [](double time) { return 0.42 + 0.15 * std::exp(-time / 0.06); };
  // It is overblown by a hair at first.
  tone.bend = [](double time) {
    return 25 * std::exp(-time / 0.02) + 9 * Settled(time) * std::sin(tau * 5.8 * time);
  };
  Wave wave = Sustain(tone);
  // The wind over the edge of the hole.
  Wave wind = Noise(static_cast<std::uint32_t>(pitch) + 61).Seconds(seconds + release);
  Apply(Biquad::BandPass(2 * fundamental, 0.8), wind);
  Shape(wind, [](double time) { return Onset(time, 0.003) * (0.25 + std::exp(-time / 0.03)); });
  Mix(wave, wind, 0, 0.16);
  FadeOut(wave, release);
  return InRoom(Pan(wave, -0.45), 0.28);
}

Sound Strings(Pitch pitch, double seconds) {
  constexpr std::array<double, 5> cents = {-9, -4, 0, 5, 8};
  constexpr double release = 0.28;
  const double fundamental = Frequency(pitch);
  Sound section;
  for (std::size_t i = 0; i < cents.size(); ++i) {
    Tone tone;
    tone.frequency = fundamental;
    tone.seconds = seconds + release;
    tone.phase = 0.23 * static_cast<double>(i);
    tone.level = [=](double time) {
      const double swell = std::sin(std::numbers::pi * std::min(time / seconds, 1.0));
      return Onset(time, 0.06) * (0.7 + 0.3 * swell);
    };
    tone.brightness = [=](double) { return std::exp(-fundamental / 1500); };
    tone.bend = [=](double time) {
      return cents[i] + 8 * Settled(time) * std::sin(tau * (4.6 + 0.25 * static_cast<double>(i)) * time);
    };
    Wave wave = Sustain(tone);
    FadeOut(wave, release);
    Mix(section, Pan(wave, -0.9 + 0.45 * static_cast<double>(i)));
  }
  return InRoom(section, 0.25, 0.9);
}

Sound Glockenspiel(Pitch pitch) {
  const double f = Frequency(pitch);
  const Wave wave =
      Ring({{f, 1, 0.45}, {2.756 * f, 0.45, 0.16}, {5.404 * f, 0.2, 0.05}, {8.93 * f, 0.08, 0.02}}, 1.5);
  return InRoom(Pan(wave, 0.55), 0.25);
}

Sound Timpani(Pitch pitch) {
  const double f = Frequency(pitch);
  Wave wave = Ring(
      {{f, 1, 0.5}, {1.504 * f, 0.6, 0.4}, {1.742 * f, 0.25, 0.15}, {2 * f, 0.4, 0.3}, {2.44 * f, 0.2, 0.2}},
      1.2);
  Mix(wave, Knock(180, 900, 91), 0, 0.5);
  return InRoom(Pan(wave, -0.15), 0.25, 0.9);
}

Sound Bell(Pitch pitch, double seconds) {
  const double f = Frequency(pitch);
  const Wave wave = Ring({{0.5 * f, 0.5, 2.2},
                          {f, 1, 1.4},
                          {1.003 * f, 0.4, 1.1},
                          {1.19 * f, 0.45, 0.9},
                          {1.5 * f, 0.25, 0.7},
                          {2 * f, 0.4, 0.6},
                          {2.66 * f, 0.15, 0.35},
                          {3.01 * f, 0.1, 0.25}},
                         seconds);
  return InRoom(Pan(wave, 0), 0.25, 1.1);
}

}  // namespace assetmaker
