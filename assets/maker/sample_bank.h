// The samples of a song, each in one of the 255 slots that two hexadecimal digits can name.
#pragma once

#include <optional>
#include <vector>

#include "score.h"
#include "sound.h"

namespace assetmaker {

class SampleBank {
 public:
  // Gives every sample of the score a slot, in order of first use. False when there are more than slots.
  bool Fill(const Score& score);

  // 1 to 255; 0 for a sample that the score does not hold.
  int Slot(const Sample& sample) const;

  // The sample of slot n stands at n - 1.
  const std::vector<Sample>& Samples() const { return samples_; }

  // The sounds of all samples, in the same order.
  std::vector<Sound> RenderAll() const;

 private:
  std::vector<Sample> samples_;
  double level_ = 0;  // of the song
};

}  // namespace assetmaker
