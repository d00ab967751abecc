// What an object is drawn with.
#pragma once

#include "base/rnd.h"
#include "state/options.h"

namespace qlm {

// A speed of its own, or the common one.
inline float DrawnSpeed() { return FourDMode ? Rnd() * 0.5F + 1.0F : 1.0F; }

}  // namespace qlm
