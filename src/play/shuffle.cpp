// The throwing of notes onto other lanes.
#include "play/shuffle.h"

#include <array>
#include <optional>

#include "base/rnd.h"
#include "state/chart.h"
#include "state/options.h"
#include "state/timeline.h"

namespace qlm {
namespace {

constexpr double kThrownFrom = 384;  // position units ahead
constexpr double kThrownTo = 256;    // pixels ahead
// Scripted random numbers may never name a lane that is free.
constexpr int32_t kMostDraws = 1000;

bool IsThrown(int32_t channel) { return channel >= 11 && channel <= 19 && channel != 16 && channel != 17; }

using LastPos = std::array<int32_t, kLanes>;

std::optional<int32_t> FreeChannel(const LastPos& lastPos, int32_t pos) {
  for (int32_t draw = 0; draw < kMostDraws; ++draw) {
    const int32_t channel = static_cast<int32_t>(double{Rnd()} * 9) + 11;
    if (IsThrown(channel) && lastPos[static_cast<size_t>(channel - 11)] != pos) return channel;
  }
  return std::nullopt;
}

}  // namespace

void ShuffleAhead() {
  LastPos lastPos{};
  const double settled = playPos + kThrownTo / HiSpeed;
  for (int32_t index = objCursor; index < objCount; ++index) {
    ChartObj* const obj = FindObj(index);
    if (obj == nullptr || obj->pos >= playPos + kThrownFrom) return;
    if (!IsThrown(obj->channel) || !(obj->pos > settled)) continue;
    const std::optional<int32_t> channel = FreeChannel(lastPos, obj->pos);
    if (!channel) continue;
    obj->channel = *channel;
    lastPos[static_cast<size_t>(*channel - 11)] = obj->pos;
  }
}

}  // namespace qlm
