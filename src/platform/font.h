// Text drawn with an outline font, for what is not drawn from a skin's own font sheet.
#pragma once

#include <string_view>

#include "platform/surface.h"

namespace platform {

// Draws one line of text with its top left corner at (x, y), `height` pixels from line to line, cut at the
// edges. Kanji come from the first installed Japanese font; where there is none, nothing is drawn.
// `bold` thickens the strokes.
void DrawFontText(Surface& surface, int32_t x, int32_t y, std::u16string_view text, int32_t height,
                  Colour colour, bool bold = false);
// Width in pixels of the same line, 0 without a font.
int32_t FontTextWidth(std::u16string_view text, int32_t height, bool bold = false);

// Gives the fonts back; the next text opens them again.
void CloseFonts();

}  // namespace platform
