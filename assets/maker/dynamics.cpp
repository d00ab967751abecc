// The gain is the least that any sample near by asks for, evened out over the same reach, so that it moves
// without corners and no peak slips through.
#include "dynamics.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <vector>

namespace assetmaker {
namespace {

constexpr std::size_t reach = 3 * sampleRate / 1000;  // 3 ms to either side

// For each place the least of all values within reach.
std::vector<double> LeastAround(const std::vector<double>& values) {
  std::vector<double> least(values.size());
  std::deque<std::size_t> candidates;  // rising values, of which the first is the least
  for (std::size_t i = 0; i < values.size() + reach; ++i) {
    if (i < values.size()) {
      while (!candidates.empty() && values[candidates.back()] >= values[i]) candidates.pop_back();
      candidates.push_back(i);
    }
    if (i < reach) continue;
    const std::size_t place = i - reach;
    while (candidates.front() + reach < place) candidates.pop_front();
    least[place] = values[candidates.front()];
  }
  return least;
}

// For each place the mean of all values within reach; those beyond the ends are as at the ends.
std::vector<double> MeanAround(const std::vector<double>& values) {
  const auto at = [&](std::ptrdiff_t place) {
    return values[static_cast<std::size_t>(
        std::clamp<std::ptrdiff_t>(place, 0, static_cast<std::ptrdiff_t>(values.size()) - 1))];
  };
  constexpr auto around = static_cast<std::ptrdiff_t>(reach);
  std::vector<double> means(values.size());
  double sum = 0;
  for (std::ptrdiff_t place = -around; place <= around; ++place) sum += at(place);
  for (std::size_t i = 0; i < values.size(); ++i) {
    means[i] = sum / (2 * reach + 1);
    const auto place = static_cast<std::ptrdiff_t>(i);
    sum += at(place + around + 1) - at(place - around);
  }
  return means;
}

}  // namespace

Sound Limited(Sound sound, double ceiling) {
  if (Peak(sound) <= ceiling) return sound;
  std::vector<double> gains;
  for (std::size_t i = 0; i < sound.left.size(); ++i) {
    const double height = std::max(std::fabs(sound.left[i]), std::fabs(sound.right[i]));
    gains.push_back(height > ceiling ? ceiling / height : 1);
  }
  gains = MeanAround(LeastAround(gains));
  for (std::size_t i = 0; i < gains.size(); ++i) {
    sound.left[i] = static_cast<float>(sound.left[i] * gains[i]);
    sound.right[i] = static_cast<float>(sound.right[i] * gains[i]);
  }
  return sound;
}

}  // namespace assetmaker
