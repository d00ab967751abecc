// Slots are handed out as the music asks for them.
#include "sample_bank.h"

#include <algorithm>
#include <atomic>
#include <thread>

namespace assetmaker {

bool SampleBank::Fill(const Score& score) {
  constexpr std::size_t slots = 255;
  level_ = score.head.level;
  for (const Event& event : score.events) {
    if (Slot(event.sample) == 0) samples_.push_back(event.sample);
  }
  return samples_.size() <= slots;
}

int SampleBank::Slot(const Sample& sample) const {
  const auto found = std::find(samples_.begin(), samples_.end(), sample);
  return found == samples_.end() ? 0 : static_cast<int>(found - samples_.begin()) + 1;
}

std::vector<Sound> SampleBank::RenderAll() const {
  std::vector<Sound> sounds(samples_.size());
  std::atomic<std::size_t> next = 0;
  const auto work = [&] {
    for (std::size_t i = next++; i < samples_.size(); i = next++) sounds[i] = Render(samples_[i], level_);
  };
  std::vector<std::jthread> workers;
  for (unsigned n = 1; n < std::thread::hardware_concurrency(); ++n) workers.emplace_back(work);
  work();
  workers.clear();  // waits for them
  return sounds;
}

}  // namespace assetmaker
