// All that is blown or bowed: a steady row of harmonics whose brightness, loudness and pitch move.
#pragma once

#include "filters.h"
#include "sound.h"

namespace assetmaker {

struct Tone {
  double frequency;        // Hz
  double seconds;          // in all
  Curve level;             // loudness over time
  Curve brightness;        // 0 to 1: each harmonic has this share of the one below it, before the formant
  Curve bend;              // pitch offset over time, in cents
  double formant = 0;      // Hz; harmonics near it are stronger, 0 for none
  double formantGain = 0;  // how much stronger at the middle, as a factor above 1
  double phase = 0;        // turns, 0 to 1; sets the players of a section apart
};

Wave Sustain(const Tone& tone);

}  // namespace assetmaker
