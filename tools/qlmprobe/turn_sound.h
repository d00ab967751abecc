// What is heard of a play from one turn to the next.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace probe {

constexpr int64_t kSoundRate = 44100;
constexpr int64_t kSoundChannels = 2;

// Frames of sound before a moment of the chart's clock; below 0 in the pre-roll.
int64_t SoundFramesAt(int64_t ms);

class TurnSound {
 public:
  // Samples of all channels, so that each start falls on the sample of its turn. They hold until the next
  // call.
  std::span<const int16_t> Render(int64_t turn, int64_t next);

 private:
  std::vector<int16_t> block_;
};

}  // namespace probe
