// The draw of a random lane, for every option that moves notes between the lanes of the keys.
#pragma once

#include <cmath>
#include <cstdint>
#include <optional>

#include "base/rnd.h"

namespace qlm {

// The lanes of side 1 that take part: the keys without the turntable and the free lane.
constexpr bool IsShuffledLane(int32_t channel) {
  return channel >= 11 && channel <= 19 && channel != 16 && channel != 17;
}

// Draws until a lane comes up that takes part and for which `isFree(channel)` holds. Real random numbers
// reach every lane; a scripted list may hold no free one, so that the draw is given up, with nothing.
template <typename IsFree>
std::optional<int32_t> DrawLane(IsFree isFree) {
  constexpr int kMostDraws = 1000;
  for (int draw = 0; draw < kMostDraws; ++draw) {
    const int32_t channel = static_cast<int32_t>(std::floor(Rnd() * 9.0F)) + 11;
    if (IsShuffledLane(channel) && isFree(channel)) return channel;
  }
  return std::nullopt;
}

}  // namespace qlm
