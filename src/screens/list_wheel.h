// The wheel of rows, and the name of the list above it.
#pragma once

#include <cstdint>

#include "state/surfaces.h"

namespace qlm {

// Where the row at an offset from the row in hand stands: 16 pixels high, 190 wide. Offsets above 0 are the
// rows before it.
Rect RowPlace(int32_t offset);
// Pixels that the row in hand is pushed to the right at the moment.
int32_t HeldRowPulse();

// Lets more of the rows appear, as the time goes.
void MoveFadeIn();
// All rows, that in hand last, and the head.
void DrawWheel();

}  // namespace qlm
