// The throwing of notes onto other lanes.
#include "play/shuffle.h"

#include <array>
#include <optional>

#include "chart/random_lane.h"
#include "state/chart.h"
#include "state/options.h"
#include "state/timeline.h"

namespace qlm {
namespace {

constexpr double kThrownFrom = 384;  // position units ahead
constexpr double kThrownTo = 256;    // pixels ahead
}  // namespace

void ShuffleAhead() {
  std::array<int32_t, kLanes> lastPos{};
  const auto placeOf = [&](int32_t channel) -> int32_t& {
    return lastPos[static_cast<size_t>(channel - 11)];
  };
  const double settled = playPos + kThrownTo / HiSpeed;
  for (int32_t index = objCursor; index < objCount; ++index) {
    ChartObj* const obj = FindObj(index);
    if (obj == nullptr || obj->pos >= playPos + kThrownFrom) return;
    if (!IsShuffledLane(obj->channel) || !(obj->pos > settled)) continue;
    const std::optional<int32_t> channel = DrawLane([&](int32_t lane) { return placeOf(lane) != obj->pos; });
    if (!channel) continue;
    obj->channel = *channel;
    placeOf(*channel) = obj->pos;
  }
}

}  // namespace qlm
