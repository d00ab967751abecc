// How loud a sound is to the ear, and bringing sounds to one loudness.
#pragma once

#include "sound.h"

namespace assetmaker {

// The loudest tenth of a second, in dB, weighted as the ear weights it: less for the lows, more for the
// highs.
double Loudness(const Sound& sound);

// The sound at that loudness, or as near below it as a peak of -4 dB allows.
Sound AtLoudness(Sound sound, double loudness);

}  // namespace assetmaker
