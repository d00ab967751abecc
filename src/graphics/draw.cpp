// Drawing on the back surface that several screens share.
#include "graphics/draw.h"

#include <algorithm>
#include <optional>
#include <string>

#include "base/numbers.h"
#include "graphics/inks.h"
#include "platform/clock.h"
#include "platform/text.h"
#include "state/settings.h"

namespace qlm {
namespace {

// Codes that the font sheet has a cell for.
constexpr bool HasCell(uint8_t byte) { return byte >= 33 && byte < 127; }

// Gives `put` each character's left edge, the font sheet and its cell there.
template <typename Put>
int32_t DrawCells(int32_t x, TextView text, float spacing, Put put) {
  const SurfacePtr& sheet = SkinFile[1];
  if (!DDBack || !sheet) return 0;
  int32_t cell = 0;
  const auto draw = [&](uint8_t byte) {
    const double left = x + static_cast<double>(cell) * SysFontW + static_cast<double>(spacing) * (cell + 1);
    ++cell;
    if (!HasCell(byte)) return;
    if (const std::optional<int32_t> place = Round(left)) put(*place, *sheet, SysFont[byte - 32]);
  };
  // Character by character, so that a frame's texts need no memory of their own.
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] < 128) {
      draw(static_cast<uint8_t>(text[i]));
    } else {
      for (const char byte : platform::EncodeCp932(text.substr(i, 1))) draw(static_cast<uint8_t>(byte));
    }
  }
  return cell;
}

}  // namespace

int32_t DrawText(int32_t x, int32_t y, TextView text, float spacing) {
  return DrawCells(x, text, spacing, [y](int32_t left, const Surface& sheet, const Rect& cell) {
    DDBack->Copy(left, y, sheet, cell, platform::Keyed::kYes);
  });
}

void DrawFaintText(int32_t x, int32_t y, TextView text) {
  DrawCells(x, text, 0, [y](int32_t left, const Surface& sheet, const Rect& cell) {
    DDBack->CopyFaint(left, y, sheet, cell);
  });
}

void DrawTextWithin(const Rect& clip, int32_t x, int32_t y, TextView text, float spacing) {
  DrawCells(x, text, spacing, [&](int32_t left, const Surface& sheet, const Rect& cell) {
    ClippedBlt(*DDBack, clip, left, y, sheet, cell, platform::Keyed::kYes);
  });
}

void ClippedBlt(Surface& destination, const Rect& clip, int32_t x, int32_t y, const Surface& source,
                const Rect& from, platform::Keyed keyed) {
  // The place on the destination, and how much of each side lies outside; in 64 bits, which no numbers leave.
  const int64_t right = int64_t{x} + from.right - from.left;
  const int64_t bottom = int64_t{y} + from.bottom - from.top;
  if (x >= clip.right || y >= clip.bottom || right <= clip.left || bottom <= clip.top) return;
  const int64_t overLeft = std::max<int64_t>(int64_t{clip.left} - x, 0);
  const int64_t overTop = std::max<int64_t>(int64_t{clip.top} - y, 0);
  const int64_t overRight = std::max<int64_t>(right - clip.right, 0);
  const int64_t overBottom = std::max<int64_t>(bottom - clip.bottom, 0);
  const Rect cut{static_cast<int32_t>(from.left + overLeft), static_cast<int32_t>(from.top + overTop),
                 static_cast<int32_t>(from.right - overRight),
                 static_cast<int32_t>(from.bottom - overBottom)};
  destination.Copy(static_cast<int32_t>(x + overLeft), static_cast<int32_t>(y + overTop), source, cut, keyed);
}

void DrawStrip(const Rect& strip) {
  constexpr platform::Colour kGround = platform::Rgb(0x06, 0x09, 0x12);
  if (!DDBack) return;
  DDBack->Fill(strip, inks::kFaintRule);
  DDBack->Fill({strip.left, strip.top + 1, strip.right, strip.bottom - 1}, kGround);
}

void DrawMovingBack() {
  if (DRAWLIMIT >= 3 || !DDBack || !SSBack) return;
  constexpr Rect kTile{0, 0, 160, 120};
  const auto k = static_cast<int32_t>(platform::Now() % 6400 / 20);
  const auto rise = static_cast<int32_t>(RoundHalfEven(-k * 0.75));
  const auto tile = [&](int32_t x, int32_t y) {
    ClippedBlt(*DDBack, ScreenRect, x, y, *SSBack, kTile, platform::Keyed::kNo);
  };
  for (int32_t i = 0; i <= 5; ++i) {
    for (int32_t row = 0; row <= 480; row += 240) {
      tile(160 * i - 320 + k, rise + row);
      tile(160 * i - k, rise + row + 120);
    }
  }
}

}  // namespace qlm
