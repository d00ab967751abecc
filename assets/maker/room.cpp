// A feedback delay network: eight delays of lengths without a common beat, mixed so that no energy is won or
// lost, each dying away in step with its length and losing its highs at the walls.
#include "room.h"

#include <array>
#include <cmath>

namespace assetmaker {
namespace {

constexpr std::size_t lines = 8;
constexpr std::array<std::size_t, lines> lengths = {487,  601,  743,  887,
                                                    1039, 1187, 1327, 1481};  // 11 to 34 ms
constexpr double wallLoss = 0.35;  // 0 keeps the highs, 1 would swallow them

class Delay {
 public:
  Delay(std::size_t length, double gain) : memory_(length), gain_(gain) {}

  double Oldest() {
    softened_ += (1 - wallLoss) * (memory_[place_] - softened_);
    return softened_ * gain_;
  }

  void Put(double sample) {
    memory_[place_] = sample;
    place_ = (place_ + 1) % memory_.size();
  }

 private:
  std::vector<double> memory_;
  double gain_;
  double softened_ = 0;
  std::size_t place_ = 0;
};

// The Hadamard transform: an even mixing of all lines that keeps their energy.
void MixEvenly(std::array<double, lines>& values) {
  for (std::size_t half = 1; half < lines; half *= 2) {
    for (std::size_t i = 0; i < lines; ++i) {
      if (i & half) continue;
      const double a = values[i], b = values[i | half];
      values[i] = a + b;
      values[i | half] = a - b;
    }
  }
  for (double& value : values) value /= std::sqrt(static_cast<double>(lines));
}

}  // namespace

Sound InRoom(const Sound& dry, double amount, double seconds) {
  std::vector<Delay> delays;
  delays.reserve(lengths.size());
  for (const std::size_t length : lengths) {
    delays.emplace_back(length, std::pow(10, -3.0 * static_cast<double>(length) / (seconds * sampleRate)));
  }
  Sound wet = dry;
  const std::size_t total = dry.left.size() + Samples(seconds);
  wet.left.resize(total);
  wet.right.resize(total);
  for (std::size_t i = 0; i < total; ++i) {
    const double left = wet.left[i], right = wet.right[i];
    std::array<double, lines> values;
    for (std::size_t n = 0; n < lines; ++n) values[n] = delays[n].Oldest();
    wet.left[i] += static_cast<float>(amount * (values[0] - values[2] + values[4] - values[6]));
    wet.right[i] += static_cast<float>(amount * (values[1] - values[3] + values[5] - values[7]));
    MixEvenly(values);
    for (std::size_t n = 0; n < lines; ++n) delays[n].Put(values[n] + (n % 2 == 0 ? left : right));
  }
  return wet;
}

}  // namespace assetmaker
