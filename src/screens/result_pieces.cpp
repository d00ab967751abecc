// The pieces of the picture of the results.
#include "screens/result_pieces.h"

#include "graphics/draw.h"

namespace qlm {

void DrawPiece(const platform::Rect& piece, int32_t x, int32_t y) {
  if (DDBack && ResultObj) ClippedBlt(*DDBack, ScreenRect, x, y, *ResultObj, piece, platform::Keyed::kYes);
}

}  // namespace qlm
