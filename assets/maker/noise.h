// White noise that is the same on every machine and in every run.
#pragma once

#include <cstdint>

#include "sound.h"

namespace assetmaker {

class Noise {
 public:
  explicit Noise(std::uint32_t seed) : state_(seed * 2654435769u + 1013904223u) {}

  // From -1 to 1, evenly spread.
  double Next() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    state_ ^= state_ << 5;
    return static_cast<double>(state_) / 2147483648.0 - 1;
  }

  // From `low` to `high`, evenly spread.
  double Between(double low, double high) { return low + (high - low) * (Next() + 1) / 2; }

  Wave Seconds(double seconds) {
    Wave wave(Samples(seconds));
    for (float& sample : wave) sample = static_cast<float>(Next());
    return wave;
  }

 private:
  std::uint32_t state_;  // xorshift; never 0 for the seeds in use
};

}  // namespace assetmaker
