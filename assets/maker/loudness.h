// How loud a sound is to the ear, and bringing sounds to one loudness.
#pragma once

#include "sound.h"

namespace assetmaker {

// The loudest tenth of a second, in dB, weighted as the ear weights it: less for the lows, more for the
// highs.
double Loudness(const Sound& sound);

// The sound at that loudness, or as near below it as a peak of -4 dB allows.
Sound AtLoudness(Sound sound, double loudness);

// The loudness of a whole piece in LUFS, as broadcasters measure it: 0.4 s at a time, without what is quieter
// than -70 LUFS or 10 LU below the rest. -120 when nothing is left.
double ProgrammeLoudness(const Sound& sound);

// The highest point of the curve through the samples, in dB, from four points a sample.
double TruePeakDb(const Sound& sound);

}  // namespace assetmaker
