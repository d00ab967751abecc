// How loud a sound is to the ear, and bringing sounds to one loudness.
#pragma once

#include "sound.h"

namespace assetmaker {

// The loudest tenth of a second, in dB, weighted as the ear weights it: less for the lows, more for the
// highs.
double Loudness(const Sound& sound);

constexpr double highestPeak = -4;  // dB: of any sample

// The sound at that loudness, with nothing above `peak` dB. Peaks are held down by 4 dB at most, so that a
// stroke stays a stroke; a sound that would need more comes out quieter.
Sound AtLoudness(Sound sound, double loudness, double peak = highestPeak);

// The loudness of a whole piece in LUFS, as broadcasters measure it: 0.4 s at a time, without what is quieter
// than -70 LUFS or 10 LU below the rest. -120 when nothing is left.
double ProgrammeLoudness(const Sound& sound);

// The highest point of the curve through the samples, in dB, from four points a sample.
double TruePeakDb(const Sound& sound);

// The mean energy of a sound in dB, highs and lows alike; 0 for two channels whose squares add up to 1. -120
// for silence.
double EnergyDb(const Sound& sound);

// How much of a sound's energy lies above 4 kHz, in dB against all of it: 0 would be nothing but highs.
double HighsDb(const Sound& sound);

// How much stronger its sides (left minus right) are than its middle (left plus right), in dB: about -20 for
// what stands in the middle, 0 for what fills the room. -120 without any sides.
double WidthDb(const Sound& sound);

}  // namespace assetmaker
