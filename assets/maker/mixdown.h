// The whole song as one sound, for listening and measuring.
#pragma once

#include <vector>

#include "sample_bank.h"
#include "score.h"
#include "sound.h"

namespace assetmaker {

// Every event at its time at the volume at which charts play, -5 dB. A sample that starts again cuts itself
// off, since a slot has one voice. `sounds` are those of the bank, in its order.
Sound Mixdown(const Score& score, const SampleBank& bank, const std::vector<Sound>& sounds);

}  // namespace assetmaker
