// Each mode is a pointer turning in the complex plane and shrinking a little with every sample.
#include "modes.h"

#include <cmath>
#include <complex>
#include <numbers>

namespace assetmaker {

Wave Ring(const std::vector<Mode>& modes, double seconds) {
  Wave wave(Samples(seconds));
  for (const Mode& mode : modes) {
    if (mode.frequency > 0.45 * sampleRate) continue;
    const double turn = 2 * std::numbers::pi * mode.frequency / sampleRate;
    const std::complex<double> step = std::polar(std::exp(-1 / (mode.decay * sampleRate)), turn);
    std::complex<double> pointer = std::polar(mode.amplitude, mode.phase);
    for (float& sample : wave) {
      sample += static_cast<float>(pointer.imag());
      pointer *= step;
    }
  }
  FadeOut(wave, seconds * 0.3);
  return wave;
}

}  // namespace assetmaker
