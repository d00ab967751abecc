// Each start is laid into the whole as far as its slot is left alone.
#include "mixdown.h"

#include <algorithm>
#include <map>

namespace assetmaker {
namespace {

constexpr double chartVolume = -5;  // dB

Sound FirstPart(const Sound& sound, std::size_t length) {
  const auto end = static_cast<std::ptrdiff_t>(std::min(length, sound.left.size()));
  return {{sound.left.begin(), sound.left.begin() + end}, {sound.right.begin(), sound.right.begin() + end}};
}

}  // namespace

Sound Mixdown(const Score& score, const SampleBank& bank, const std::vector<Sound>& sounds) {
  std::map<int, std::vector<std::size_t>> starts;  // by slot, rising
  for (const Event& event : score.events) {
    starts[bank.Slot(event.sample)].push_back(Samples(SecondsAt(score, event.tick)));
  }
  Sound mix;
  for (const auto& [slot, times] : starts) {
    const Sound& sound = sounds[static_cast<std::size_t>(slot - 1)];
    for (std::size_t i = 0; i < times.size(); ++i) {
      const std::size_t alone = i + 1 < times.size() ? times[i + 1] - times[i] : sound.left.size();
      Mix(mix, FirstPart(sound, alone), times[i], Decibels(chartVolume));
    }
  }
  return mix;
}

}  // namespace assetmaker
