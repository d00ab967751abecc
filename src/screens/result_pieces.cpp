// The pieces and columns of the results.
#include "screens/result_pieces.h"

#include <algorithm>

#include "graphics/draw.h"

namespace qlm {

void DrawPiece(const platform::Rect& piece, int32_t x, int32_t y) {
  if (DDBack && ResultObj) ClippedBlt(*DDBack, ScreenRect, x, y, *ResultObj, piece, platform::Keyed::kYes);
}

void DrawBefore(int32_t next, int32_t x, int32_t y, TextView text) {
  constexpr int32_t kClosest = -2;
  constexpr int32_t kAir = 4;
  const auto steps = std::max(static_cast<int32_t>(text.size()) - 1, 1);
  const int32_t step = (next - kAir - x - SysFontW) / steps;
  const int32_t spacing = std::clamp(step - SysFontW, kClosest, 0);
  // The first letter is spaced, too.
  DrawText(x - spacing, y, text, static_cast<float>(spacing));
}

}  // namespace qlm
