// Bowed glass is nearly pure tones that beat, struck glass and piano are modes, ink is bubbles.
#include "glass.h"

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

double Onset(double time, double seconds) { return 1 - std::exp(-time / seconds); }

// Low to the left, high to the right, not as wide as a player hears it.
double Across(Pitch pitch) { return std::clamp((pitch - 66) / 48.0, -0.5, 0.5); }

// The bubble that a drop leaves behind: its tone rises while it shrinks.
Wave Bubble(double low, double high, double seconds) {
  Wave wave(Samples(5 * seconds));
  double turns = 0;
  for (std::size_t i = 0; i < wave.size(); ++i) {
    const double time = static_cast<double>(i) / sampleRate;
    wave[i] = static_cast<float>(std::sin(tau * turns) * std::exp(-time / seconds));
    turns += (high - (high - low) * std::exp(-time / seconds)) / sampleRate;
  }
  FadeOut(wave, seconds);
  return wave;
}

}  // namespace

Sound NightPiano(Pitch pitch, double seconds, double touch) {
  const double fundamental = Frequency(pitch);
  const double cloth = 420 + 900 * touch;  // Hz: where the cloth begins to swallow the partials
  const double ring = 2.6 * std::exp2((60 - pitch) / 24.0);
  std::vector<Mode> modes;
  for (int n = 1; n <= 12; ++n) {
    const double frequency = n * fundamental * std::sqrt(1 + 0.0004 * n * n);
    const double amplitude = std::exp(-frequency / cloth) / n + (n == 1 ? 0.3 : 0.0);
    modes.push_back({frequency, amplitude, ring / (1 + 0.45 * (n - 1))});
  }
  // The octave answers a little late, so it is a bloom and not a note.
  const Wave octave = Ring({{2 * fundamental * 1.0006, 1, ring * 0.5}}, seconds);
  constexpr double damper = 0.2;
  Wave wave = Normalised(Ring(modes, seconds + damper));
  Shape(wave, [](double time) { return Onset(time, 0.0025); });
  Wave bloom = octave;
  Shape(bloom, [](double time) { return Onset(time, 0.18); });
  Mix(wave, bloom, 0, 0.12);
  Wave felt = Noise(static_cast<std::uint32_t>(pitch) + 701).Seconds(0.05);
  Apply(Biquad::LowPass(650), felt);
  Shape(felt, [](double time) { return std::exp(-time / 0.009); });
  Mix(wave, felt, 0, 0.35);
  wave.resize(Samples(seconds + damper));
  FadeOut(wave, damper);
  return InRoom(Pan(wave, Across(pitch)), 0.22, 0.9);
}

Sound BowedGlass(Pitch pitch, double seconds) {
  constexpr double release = 0.4;
  constexpr std::array<double, 3> cents = {-3, 0, 4};
  Sound glasses;
  for (std::size_t i = 0; i < cents.size(); ++i) {
    const double place = static_cast<double>(i) - 1;
    Tone tone;
    tone.frequency = Frequency(pitch);
    tone.seconds = seconds + release;
    tone.phase = 0.31 * static_cast<double>(i);
    tone.level = [=](double time) {
      const double start =
          0.3 * Onset(time, 0.008) + 0.7 * Onset(time, 0.16);  // the finger catches, then it sings
      return start * (0.85 + 0.15 * std::sin(tau * (2.1 + 0.4 * place) * time));
    };
    tone.brightness = [](double time) { return 0.05 + 0.11 * Onset(time, 0.4); };
    tone.bend = [=](double) { return cents[i]; };
    Wave wave = Sustain(tone);
    FadeOut(wave, release);
    Mix(glasses, Pan(wave, 0.55 * place));
  }
  Wave finger = Noise(static_cast<std::uint32_t>(pitch) + 801).Seconds(std::min(seconds, 0.8));
  Apply(Biquad::BandPass(2 * Frequency(pitch), 6), finger);
  Shape(finger, [](double time) { return Onset(time, 0.05) * std::exp(-time / 0.3); });
  FadeOut(finger, 0.1);
  Mix(glasses, Pan(finger, 0), 0, 0.25);
  return InRoom(glasses, 0.28, 1.1);
}

Sound StruckGlass(Pitch pitch) {
  const double f = Frequency(pitch);
  const Wave wave = Ring({{f, 1, 0.55},
                          {1.002 * f, 0.4, 0.45},
                          {2.32 * f, 0.35, 0.2},
                          {4.25 * f, 0.18, 0.07},
                          {6.63 * f, 0.08, 0.03}},
                         1.4);
  return InRoom(Pan(wave, -Across(pitch)), 0.24, 0.9);
}

Sound SlowBass(Pitch pitch, double seconds) {
  constexpr double release = 0.25;
  Tone tone;
  tone.frequency = Frequency(pitch);
  tone.seconds = seconds + release;
  tone.level = [](double time) { return Onset(time, 0.035) * (0.55 + 0.45 * std::exp(-time / 0.9)); };
  tone.brightness = [](double time) { return 0.2 + 0.3 * std::exp(-time / 0.5); };
  tone.bend = [](double) { return 0.0; };
  Wave wave = Sustain(tone);
  FadeOut(wave, release);
  return InRoom(Pan(wave, 0), 0.05, 0.6);
}

Sound InkDrop() {
  Wave wave = Bubble(480, 1250, 0.028);
  Mix(wave, Bubble(900, 1900, 0.014), Samples(0.045), 0.4);
  return InRoom(Pan(wave, 0.25), 0.3, 0.8);
}

Sound Swirl() {
  constexpr double seconds = 0.6;
  const auto around = [](double time) { return std::sin(std::numbers::pi * std::min(time / seconds, 1.0)); };
  Wave wave = SweptBand(
      Noise(901).Seconds(seconds), [=](double time) { return 700 + 1500 * around(time); }, 3);
  const Wave rim = Ring({{1318.5, 0.5, 0.3}, {3060, 0.3, 0.12}}, seconds);
  Mix(wave, rim, 0, 0.12);
  Shape(wave, [=](double time) { return Onset(time, 0.012) * (0.3 + 0.7 * around(time)); });
  FadeOut(wave, seconds / 2);
  return InRoom(Pan(wave, -0.3), 0.2, 0.7);
}

}  // namespace assetmaker
