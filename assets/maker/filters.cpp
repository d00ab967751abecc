// The sections are the usual ones, by bilinear transform of their analogue models.
#include "filters.h"

#include <cmath>
#include <numbers>

namespace assetmaker {
namespace {

struct Prototype {
  double cosine, alpha;
};

Prototype At(double frequency, double q) {
  const double w = 2 * std::numbers::pi * frequency / sampleRate;
  return {std::cos(w), std::sin(w) / (2 * q)};
}

}  // namespace

Biquad::Biquad(double b0, double b1, double b2, double a0, double a1, double a2)
    : b0_(b0 / a0), b1_(b1 / a0), b2_(b2 / a0), a1_(a1 / a0), a2_(a2 / a0) {}

Biquad Biquad::LowPass(double frequency, double q) {
  const auto [c, alpha] = At(frequency, q);
  return {(1 - c) / 2, 1 - c, (1 - c) / 2, 1 + alpha, -2 * c, 1 - alpha};
}

Biquad Biquad::HighPass(double frequency, double q) {
  const auto [c, alpha] = At(frequency, q);
  return {(1 + c) / 2, -1 - c, (1 + c) / 2, 1 + alpha, -2 * c, 1 - alpha};
}

Biquad Biquad::BandPass(double frequency, double q) {
  const auto [c, alpha] = At(frequency, q);
  return {alpha, 0, -alpha, 1 + alpha, -2 * c, 1 - alpha};
}

Biquad Biquad::HighShelf(double frequency, double db) {
  const auto [c, alpha] = At(frequency, 0.7);
  const double a = std::pow(10, db / 40);
  const double bend = 2 * std::sqrt(a) * alpha;
  return {a * (a + 1 + (a - 1) * c + bend), -2 * a * (a - 1 + (a + 1) * c), a * (a + 1 + (a - 1) * c - bend),
          a + 1 - (a - 1) * c + bend,       2 * (a - 1 - (a + 1) * c),      a + 1 - (a - 1) * c - bend};
}

void Apply(Biquad filter, Wave& wave) {
  for (float& sample : wave) sample = static_cast<float>(filter.Next(sample));
}

void Apply(Biquad filter, Sound& sound) {
  Apply(filter, sound.left);
  Apply(filter, sound.right);
}

Wave SweptBand(const Wave& wave, const Curve& frequency, double q) {
  // A state-variable filter in its trapezoidal form, which stays stable however fast its frequency moves.
  Wave band(wave.size());
  const double damping = 1 / q;
  double first = 0, second = 0;  // the two integrators
  for (std::size_t i = 0; i < wave.size(); ++i) {
    const double time = static_cast<double>(i) / sampleRate;
    const double g = std::tan(std::numbers::pi * frequency(time) / sampleRate);
    const double high = (wave[i] - (g + damping) * first - second) / (1 + g * (g + damping));
    const double middle = first + g * high;
    const double low = second + g * middle;
    first = middle + g * high;
    second = low + g * middle;
    band[i] = static_cast<float>(middle * damping);
  }
  return band;
}

void Shape(Wave& wave, const Curve& level) {
  for (std::size_t i = 0; i < wave.size(); ++i) {
    wave[i] = static_cast<float>(wave[i] * level(static_cast<double>(i) / sampleRate));
  }
}

void Shape(Sound& sound, const Curve& level) {
  Shape(sound.left, level);
  Shape(sound.right, level);
}

}  // namespace assetmaker
