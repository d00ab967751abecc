// The sides and lanes that the play screen shows.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "state/chart.h"
#include "state/settings.h"

namespace qlm {

// Sides of the skin that are drawn, 0 up to but not including it.
inline size_t DrawnSides() { return static_cast<size_t>(std::clamp(SideCount, 0, 2)); }

// Sides that have figures: a double play has two lanes but one player.
inline size_t ScoredSides() {
  constexpr int32_t kDoublePlay = 3;
  const size_t sides = DrawnSides();
  return HdrPlayer == kDoublePlay && sides > 0 ? sides - 1 : sides;
}

// Where the turntable of a side stands: 0 left, 1 right.
inline size_t Placement(size_t side) { return (side == 0 ? SCRATCH1P : SCRATCH2P) ? 1 : 0; }

// Of a note channel: 0 or 1, and 0 to 18.
constexpr size_t SideOf(int32_t channel) { return channel < 20 ? 0 : 1; }
constexpr size_t LaneOf(int32_t channel) { return static_cast<size_t>(channel) - 11; }

// Runs `work` with each note channel of the drawn sides, in ascending order.
template <typename Work>
void ForNoteChannels(Work work) {
  const auto last = static_cast<int32_t>(DrawnSides()) * 10 + 9;
  for (int32_t channel = 11; channel <= last; ++channel) {
    if (IsNoteChannel(channel)) work(channel);
  }
}

}  // namespace qlm
