// The whole song as one sound, for listening and measuring.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "sample_bank.h"
#include "score.h"
#include "sound.h"

namespace assetmaker {

// Every event at its time at the volume at which charts play, -5 dB. A sample that starts again cuts itself
// off, since a slot has one voice. `sounds` are those of the bank, in its order.
Sound Mixdown(const Score& score, const SampleBank& bank, const std::vector<Sound>& sounds);

// The same with only those events in it for which `heard` is true.
using Heard = std::function<bool(const Event&)>;
Sound Mixdown(const Score& score, const SampleBank& bank, const std::vector<Sound>& sounds,
              const Heard& heard);

// The part of the song's mix, or of a mix of some of its events, that sounds during one section. Empty if
// there is no such section.
Sound DuringSection(const Score& score, const Sound& mix, const std::string& section);

}  // namespace assetmaker
