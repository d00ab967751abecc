// All that is struck or plucked: a body that rings in a number of modes, each dying away at its own pace.
#pragma once

#include <vector>

#include "sound.h"

namespace assetmaker {

struct Mode {
  double frequency;  // Hz
  double amplitude;
  double decay;      // seconds to fall to 1/e
  double phase = 0;  // radians; 0 begins at a zero crossing, so that the start does not click
};

// The sum of the modes over `seconds`, sinking into silence towards the end however long they would ring on.
// Modes above the band of the sample rate are left out.
Wave Ring(const std::vector<Mode>& modes, double seconds);

}  // namespace assetmaker
