// The keys of the lanes, where the chart's pictures would be.
#pragma once

namespace qlm {

// The skin's own picture of turntable and keys, faint, once for each side, in the middle of the pictures'
// place; over turntable and narrow keys and under the wide ones stand the keys that the key table gives their
// lanes. A side whose skin has no such picture, or that no key plays, has no legend.
void DrawKeyLegend();

}  // namespace qlm
