// The gauge as a bar.
#pragma once

#include <cstddef>

namespace qlm {

// Its ground, then the bar up to a restless head, and the place that the gauge has reached.
// A bar that grows leftward is the mirror image within the clip's width: it grows from its right end.
void DrawGaugeBar(size_t side);

}  // namespace qlm
