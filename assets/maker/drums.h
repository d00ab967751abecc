// The drums and metals of the marching band. `seed` tells one stroke from the next, as no two strokes are
// alike.
#pragma once

#include <cstdint>

#include "sound.h"

namespace assetmaker {

// The field drum: deep, with gut snares. `force` 0 is a tap, 1 an accent.
Sound FieldStroke(double force, std::uint32_t seed);

// Two sticks, the first a whisper ahead of the second.
Sound FieldFlam();

// A roll that grows from one force to another.
Sound FieldRoll(double seconds, double from, double to);

Sound BassDrum();
Sound BrushTap();

// A brush drawn over the skin for so long.
Sound BrushSweep(double seconds);

Sound Cymbals(double seconds);
Sound Triangle();

}  // namespace assetmaker
