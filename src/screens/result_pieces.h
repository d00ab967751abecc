// The pieces of the picture of the results, resobj.bmp, and the writing in columns.
#pragma once

#include <cstdint>

#include "base/text.h"
#include "platform/surface.h"

namespace qlm {

constexpr platform::Rect kSealPiece = {0, 0, 128, 128};
constexpr platform::Rect kTornSealPiece = {128, 0, 256, 128};
constexpr platform::Rect kNibPiece = {256, 0, 304, 64};  // its point in the left bottom corner

// Puts a piece on the back surface, cut at the screen's edge. Nothing without the picture.
void DrawPiece(const platform::Rect& piece, int32_t x, int32_t y);
// The nib, pointing at (x, y).
inline void DrawNib(int32_t x, int32_t y) { DrawPiece(kNibPiece, x, y - kNibPiece.Height()); }
// Text at (x, y), whose letters stand closer where they would touch what begins at `next`, as far as they can
// still be read.
void DrawBefore(int32_t next, int32_t x, int32_t y, TextView text);

}  // namespace qlm
