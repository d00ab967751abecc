// Second-order filters, and noise cut to a band.
#pragma once

#include <functional>

#include "sound.h"

namespace assetmaker {

// One second-order section in transposed direct form. Frequencies are in Hz; `q` is the resonance, 0.7 being
// flat.
class Biquad {
 public:
  static Biquad LowPass(double frequency, double q = 0.7);
  static Biquad HighPass(double frequency, double q = 0.7);
  static Biquad BandPass(double frequency, double q);  // 0 dB at its middle
  static Biquad HighShelf(double frequency, double db);

  double Next(double x) {
    const double y = b0_ * x + z1_;
    z1_ = b1_ * x - a1_ * y + z2_;
    z2_ = b2_ * x - a2_ * y;
    return y;
  }

 private:
  Biquad(double b0, double b1, double b2, double a0, double a1, double a2);

  double b0_, b1_, b2_, a1_, a2_;
  double z1_ = 0, z2_ = 0;
};

// The wave, filtered in place.
void Apply(Biquad filter, Wave& wave);
void Apply(Biquad filter, Sound& sound);

// A quantity that moves: seconds since the start to its value.
using Curve = std::function<double(double)>;

// A resonant band that moves through a wave: the sound of anything that is drawn over a surface.
// `frequency` gives the middle of the band in Hz, `q` its narrowness.
Wave SweptBand(const Wave& wave, const Curve& frequency, double q);

// The wave times a moving level.
void Shape(Wave& wave, const Curve& level);
void Shape(Sound& sound, const Curve& level);

}  // namespace assetmaker
