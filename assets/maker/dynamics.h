// Holding peaks down without making what lies between them quieter.
#pragma once

#include "sound.h"

namespace assetmaker {

// The sound with nothing above `ceiling`, a factor: around every higher peak, and within a few milliseconds
// of it alone, both channels sink together.
Sound Limited(Sound sound, double ceiling);

}  // namespace assetmaker
