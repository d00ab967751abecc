// Text of the list screens in the outline font. Each line is laid out once and kept, so that a frame of the
// wheel lays out nothing.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/text.h"
#include "platform/font.h"
#include "state/surfaces.h"

namespace qlm {

// The looks of letters, in pixels.
constexpr platform::FontLook kRowFont{.height = 12};
constexpr platform::FontLook kHeldRowFont{.height = 16, .bold = true};
constexpr platform::FontLook kSmallFont{.height = 12, .bold = true};
constexpr platform::FontLook kLargeFont{.height = 26, .width = 9};

enum class Align { kLeft, kCentre, kRight };

// One line within a rectangle of the back surface, in the middle of its height and cut at its edges. Text
// that is too long loses its end, however it is aligned.
void DrawLine(const Rect& box, TextView text, const platform::FontLook& look, platform::Colour colour,
              Align align = Align::kLeft);
// Pixels that the line is wide.
int32_t LineWidth(TextView text, const platform::FontLook& look);

// Lines that are kept at most; the one that was not drawn for the longest time goes first.
constexpr size_t kKeptLines = 192;
// Lines that were laid out since the program's start.
int64_t LinesLaidOut();
// Forgets all that is kept.
void ForgetLines();

}  // namespace qlm
