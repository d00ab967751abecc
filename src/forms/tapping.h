// Where a person's taps lie against the clicks that they are made to.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace qlm {

// Twenty clicks, a hundred a minute; the first four are to find the time by.
constexpr int32_t kClicks = 20;
constexpr int32_t kClicksUncounted = 4;
constexpr int64_t kClickGap = 600'000;  // microseconds from click to click

struct TapResult {
  int32_t taps = 0;   // that count
  double median = 0;  // milliseconds from the click to the tap; negative when the tap came first
  double spread = 0;  // milliseconds from the first quarter of the taps to the last one
  friend bool operator==(const TapResult&, const TapResult&) = default;
};

// The taps, in microseconds, against clicks of which the first came at `firstClick`. A tap belongs to the
// click that is nearest, and to none when that is more than a third of the gap away; of several at a click
// the first counts. Nothing for less than eight.
std::optional<TapResult> ResultOfTaps(const std::vector<int64_t>& taps, int64_t firstClick);

}  // namespace qlm
