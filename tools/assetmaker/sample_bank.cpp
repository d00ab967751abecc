// Slots are handed out as the music asks for them.
#include "sample_bank.h"

#include <algorithm>

namespace assetmaker {

bool SampleBank::Fill(const Score& score) {
  constexpr std::size_t slots = 255;
  for (const Event& event : score.events) {
    if (Slot(event.sample) == 0) samples_.push_back(event.sample);
  }
  return samples_.size() <= slots;
}

int SampleBank::Slot(const Sample& sample) const {
  const auto found = std::find(samples_.begin(), samples_.end(), sample);
  return found == samples_.end() ? 0 : static_cast<int>(found - samples_.begin()) + 1;
}

}  // namespace assetmaker
