// Text drawn with an outline font, for what is not drawn from a skin's own font sheet.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/surface.h"

namespace platform {

struct FontLook {
  int32_t height = 12;  // pixels from line to line
  bool bold = false;    // thicker strokes
  // Pixels of a letter of half width; 0 leaves it half as wide as it is high, as the font has it. Letters are
  // narrowed by this, never widened.
  int32_t width = 0;

  friend bool operator==(const FontLook&, const FontLook&) = default;
};

// The shape of one line of text, which can be drawn in any colour without being laid out anew.
struct TextMask {
  int32_t top = 0;    // of the shape, below the line's upper edge; may be negative
  int32_t width = 0;  // of the line
  int32_t height = 0;
  std::vector<uint8_t> ink;  // rows of `width` pixels: 0 is all ground, 255 all ink
};

// Kanji come from the first installed Japanese font; where there is none, the mask is empty.
TextMask RenderText(std::u16string_view text, const FontLook& look);
// Draws the line with its top left corner at (x, y), cut at the clip rectangle and at the edges.
void DrawMask(Surface& surface, const Rect& clip, int32_t x, int32_t y, const TextMask& mask, Colour colour);

// Both in one: draws one line of text with its top left corner at (x, y), `height` pixels from line to line,
// cut at the edges. `bold` thickens the strokes.
void DrawFontText(Surface& surface, int32_t x, int32_t y, std::u16string_view text, int32_t height,
                  Colour colour, bool bold = false);
// Width in pixels of the same line, 0 without a font.
int32_t FontTextWidth(std::u16string_view text, int32_t height, bool bold = false);

// Gives the fonts back; the next text opens them again.
void CloseFonts();

}  // namespace platform
