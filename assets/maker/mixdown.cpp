// Each start is laid into the whole as far as its slot is left alone.
#include "mixdown.h"

#include <algorithm>
#include <map>

namespace assetmaker {
namespace {

constexpr double chartVolume = -5;  // dB

Sound Between(const Sound& sound, std::size_t from, std::size_t to) {
  const std::size_t size = sound.left.size();
  const auto begin = static_cast<std::ptrdiff_t>(std::min(from, size));
  const auto end = static_cast<std::ptrdiff_t>(std::min(to, size));
  return {{sound.left.begin() + begin, sound.left.begin() + end},
          {sound.right.begin() + begin, sound.right.begin() + end}};
}

}  // namespace

Sound Mixdown(const Score& score, const SampleBank& bank, const std::vector<Sound>& sounds) {
  return Mixdown(score, bank, sounds, [](const Event&) { return true; });
}

Sound Mixdown(const Score& score, const SampleBank& bank, const std::vector<Sound>& sounds,
              const Heard& heard) {
  std::map<int, std::vector<std::size_t>> starts;  // by slot, rising
  for (const Event& event : score.events) {
    if (!heard(event)) continue;
    starts[bank.Slot(event.sample)].push_back(Samples(SecondsAt(score, event.tick)));
  }
  Sound mix;
  for (const auto& [slot, times] : starts) {
    const Sound& sound = sounds[static_cast<std::size_t>(slot - 1)];
    for (std::size_t i = 0; i < times.size(); ++i) {
      const std::size_t alone = i + 1 < times.size() ? times[i + 1] - times[i] : sound.left.size();
      Mix(mix, Between(sound, 0, alone), times[i], Decibels(chartVolume));
    }
  }
  return mix;
}

Sound DuringSection(const Score& score, const Sound& mix, const std::string& section) {
  int begin = 0, end = 0;  // in ticks
  for (const Measure& measure : score.measures) {
    if (measure.section != section) continue;
    if (measure.inSection == 0) begin = measure.tick;
    end = measure.tick + measure.length;
  }
  return Between(mix, Samples(SecondsAt(score, begin)), Samples(SecondsAt(score, end)));
}

}  // namespace assetmaker
