// How well the sound device is served: when it asks for its blocks, and how far it takes them in advance.
#pragma once

#include <atomic>
#include <cstdint>

namespace platform {

class BlockWatch {
 public:
  // Device's thread: at `now`, in microseconds, a block that sounds for `length` microseconds is asked for.
  void Asked(int64_t now, int64_t length);

  // Any thread.
  // Blocks that were asked for when all that had been given must have sounded to its end, and the length of
  // one block more had passed: a gap was heard. A shorter gap may hide in what the device keeps ready.
  int32_t Late() const { return late_.load(std::memory_order_relaxed); }
  // The most, in microseconds, that the device has ever held of what had not sounded yet, behind a block
  // given. After a gap this is all that it takes in advance.
  int64_t MostAhead() const { return mostAhead_.load(std::memory_order_relaxed); }

 private:
  std::atomic<int32_t> late_ = 0;
  std::atomic<int64_t> mostAhead_ = 0;
  // Device's thread:
  int64_t lastAsked_ = 0;    // 0 before the first block
  int64_t soundsUntil_ = 0;  // what was given has sounded by then, as far as one can tell
};

}  // namespace platform
