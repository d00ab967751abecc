// Keeping account of a device's blocks.
#include "platform/block_watch.h"

#include <algorithm>

namespace platform {

void BlockWatch::Asked(int64_t now, int64_t length) {
  // The device's clock and ours differ by a little; so much a second is given away that no difference adds
  // up.
  constexpr int64_t kDrift = 1000;
  if (lastAsked_ != 0) {
    soundsUntil_ -= (now - lastAsked_) / kDrift;
    if (now - soundsUntil_ > length) late_.fetch_add(1, std::memory_order_relaxed);
  }
  lastAsked_ = now;
  soundsUntil_ = std::max(now, soundsUntil_) + length;
  if (soundsUntil_ - now > MostAhead()) mostAhead_.store(soundsUntil_ - now, std::memory_order_relaxed);
}

}  // namespace platform
