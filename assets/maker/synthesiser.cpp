// A filter that closes is a row of harmonics that loses its brightness.
#include "synthesiser.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "filters.h"
#include "modes.h"
#include "noise.h"
#include "room.h"
#include "tones.h"

namespace assetmaker {
namespace {

double Onset(double time, double seconds) { return 1 - std::exp(-time / seconds); }

Curve Constant(double value) {
  return [=](double) { return value; };
}

// A row of harmonics that begins with the brightness `open` and falls towards `closed` within `fall` seconds.
Tone Saw(Pitch pitch, double seconds, double open, double closed, double fall) {
  Tone tone;
  tone.frequency = Frequency(pitch);
  tone.seconds = seconds;
  tone.level = [](double time) { return Onset(time, 0.0012); };
  tone.brightness = [=](double time) { return closed + (open - closed) * std::exp(-time / fall); };
  tone.bend = Constant(0);
  return tone;
}

Sound Dry(const Wave& wave, double position) { return InRoom(Pan(wave, position), 0.02, 0.2); }

}  // namespace

Sound Pluck(Pitch pitch, double edge) {
  constexpr double seconds = 0.7;
  Sound pair;
  for (const double side : {-1.0, 1.0}) {
    Tone tone = Saw(pitch, seconds, 0.72 + 0.2 * edge, 0.25, 0.07 + 0.05 * edge);
    tone.bend = Constant(5 * side);
    tone.phase = side > 0 ? 0.0 : 0.37;  // apart, so that their edges do not add up
    tone.level = [](double time) { return Onset(time, 0.0008) * std::exp(-time / 0.27); };
    Wave wave = Sustain(tone);
    FadeOut(wave, seconds * 0.4);
    Mix(pair, Pan(wave, 0.35 * side));
  }
  return InRoom(pair, 0.1, 0.45);
}

Sound Reed(Pitch pitch, double seconds) {
  constexpr double release = 0.05;
  Tone tone = Saw(pitch, seconds + release, 0.8, 0.62, 0.15);
  tone.level = [](double time) { return Onset(time, 0.004) * (0.75 + 0.25 * std::exp(-time / 0.15)); };
  tone.bend = [](double time) {
    return 6 * std::clamp((time - 0.2) / 0.3, 0.0, 1.0) * std::sin(2 * std::numbers::pi * 5.6 * time);
  };
  Wave wave = Sustain(tone);
  tone.phase = 0.5;  // half a turn behind, taken away: the even harmonics are gone
  Mix(wave, Sustain(tone), 0, -1);
  FadeOut(wave, release);
  return InRoom(Pan(wave, 0.08), 0.12, 0.5);
}

Sound SawStab(Pitch pitch, double seconds) {
  constexpr double release = 0.03;
  Tone tone = Saw(pitch, seconds + release, 0.78, 0.45, 0.05);
  tone.level = [](double time) { return Onset(time, 0.001) * std::exp(-time / 0.3); };
  Wave wave = Sustain(tone);
  FadeOut(wave, release);
  return InRoom(Pan(wave, -0.25), 0.08, 0.35);
}

Sound SawPad(Pitch pitch, double seconds) {
  constexpr std::array<double, 5> cents = {-11, -5, 0, 6, 12};
  constexpr double release = 0.2;
  Sound whole;
  for (std::size_t i = 0; i < cents.size(); ++i) {
    Tone tone = Saw(pitch, seconds + release, 0.5, 0.62, 0.8);
    tone.level = [](double time) { return Onset(time, 0.05); };
    tone.bend = Constant(cents[i]);
    tone.phase = 0.19 * static_cast<double>(i);
    Wave wave = Sustain(tone);
    FadeOut(wave, release);
    Mix(whole, Pan(wave, -0.7 + 0.35 * static_cast<double>(i)));
  }
  return InRoom(whole, 0.15, 0.7);
}

Sound SynthBass(Pitch pitch) {
  constexpr double seconds = 0.34;
  Tone tone = Saw(pitch, seconds, 0.85, 0.4, 0.06);
  tone.level = [](double time) { return Onset(time, 0.0015) * (0.35 + 0.65 * std::exp(-time / 0.14)); };
  Wave wave = Sustain(tone);
  FadeOut(wave, 0.08);
  return Dry(wave, 0);
}

Sound DryKick() {
  Wave wave(Samples(0.3));
  double turns = 0;
  for (std::size_t i = 0; i < wave.size(); ++i) {
    const double time = static_cast<double>(i) / sampleRate;
    wave[i] = static_cast<float>(std::sin(2 * std::numbers::pi * turns) * std::exp(-time / 0.08));
    turns += (47 + 150 * std::exp(-time / 0.018)) / sampleRate;
  }
  Wave click = Noise(1001).Seconds(0.01);
  Apply(Biquad::LowPass(4000), click);
  FadeOut(click, 0.01);
  Mix(wave, click, 0, 0.3);
  FadeOut(wave, 0.08);
  return Dry(wave, 0);
}

Sound DrySnare() {
  Wave wave = Ring({{188, 1, 0.05}, {331, 0.7, 0.035}, {470, 0.3, 0.02}}, 0.25);
  Wave wires = Noise(1002).Seconds(0.22);
  Apply(Biquad::HighPass(1700), wires);
  Shape(wires, [](double time) { return std::exp(-time / 0.045); });
  Mix(wave, wires, 0, 0.9);
  FadeOut(wave, 0.06);
  return Dry(wave, 0.05);
}

Sound Hat(double seconds) {
  Wave wave = Noise(1003).Seconds(seconds);
  Apply(Biquad::HighPass(6500), wave);
  Apply(Biquad::LowPass(13000), wave);
  Shape(wave, [=](double time) { return std::exp(-4 * time / seconds); });
  FadeOut(wave, seconds / 3);
  return Dry(wave, 0.3);
}

Sound Scratch(double lift) {
  constexpr double seconds = 0.16;
  const auto pace = [=](double time) {
    return std::exp2(1.3 * lift * (0.5 - std::fabs(time / seconds - 0.5)));
  };
  Wave wave = SweptBand(
      Noise(lift > 0 ? 1004 : 1005).Seconds(seconds), [=](double time) { return 1300 * pace(time); }, 2.5);
  Tone voice = Saw(57, seconds, 0.8, 0.8, 1);
  voice.bend = [=](double time) { return 1200 * std::log2(pace(time)); };
  Mix(wave, Sustain(voice), 0, 0.25);
  Shape(wave, [=](double time) {
    return Onset(time, 0.003) * std::cos(std::numbers::pi / 2 * std::min(time / seconds, 1.0));
  });
  return Dry(wave, 0.15 * lift);
}

}  // namespace assetmaker
