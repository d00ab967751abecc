// Median and spread of taps.
#include "forms/tapping.h"

#include <algorithm>
#include <array>

namespace qlm {
namespace {

// Of sorted numbers, between two of them where it must be.
double At(const std::vector<double>& sorted, double part) {
  const double place = part * static_cast<double>(sorted.size() - 1);
  const auto below = static_cast<size_t>(place);
  const size_t above = std::min(below + 1, sorted.size() - 1);
  return sorted[below] + (sorted[above] - sorted[below]) * (place - static_cast<double>(below));
}

}  // namespace

std::optional<TapResult> ResultOfTaps(const std::vector<int64_t>& taps, int64_t firstClick) {
  constexpr size_t kFewest = 8;
  std::array<bool, kClicks> tapped{};
  std::vector<double> distances;
  for (const int64_t tap : taps) {
    // Rounded to the nearest click, also in front of the first.
    const int64_t since = tap - firstClick + kClickGap / 2;
    const int64_t click = since < 0 ? -1 : since / kClickGap;
    if (click < kClicksUncounted || click >= kClicks || tapped[static_cast<size_t>(click)]) continue;
    const int64_t distance = tap - firstClick - click * kClickGap;
    if (std::max(distance, -distance) > kClickGap / 3) continue;
    tapped[static_cast<size_t>(click)] = true;
    distances.push_back(static_cast<double>(distance) / 1000);
  }
  if (distances.size() < kFewest) return std::nullopt;
  std::sort(distances.begin(), distances.end());
  return TapResult{.taps = static_cast<int32_t>(distances.size()),
                   .median = At(distances, 0.5),
                   .spread = At(distances, 0.75) - At(distances, 0.25)};
}

}  // namespace qlm
