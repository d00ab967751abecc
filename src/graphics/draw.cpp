// Drawing on the back surface that several screens share.
#include "graphics/draw.h"

namespace qlm {

void DrawText(int32_t, int32_t, TextView, float) {}
void ClippedBlt(Surface&, const Rect&, int32_t, int32_t, const Surface&, Rect, platform::Keyed) {}
void DrawMovingBack() {}

}  // namespace qlm
