// Drawing on the back surface that several screens share.
#include "graphics/draw.h"

#include <optional>
#include <string>

#include "base/numbers.h"
#include "platform/clock.h"
#include "platform/text.h"
#include "state/settings.h"

namespace qlm {
namespace {

// Codes that the font sheet has a cell for.
constexpr bool HasCell(uint8_t byte) { return byte >= 33 && byte < 127; }

}  // namespace

void DrawText(int32_t x, int32_t y, TextView text, float spacing) {
  const SurfacePtr& sheet = SkinFile[1];
  if (!DDBack || !sheet) return;
  int32_t cell = 0;
  const auto draw = [&](uint8_t byte) {
    const double left = x + static_cast<double>(cell) * SysFontW + static_cast<double>(spacing) * (cell + 1);
    ++cell;
    if (!HasCell(byte)) return;
    if (const std::optional<int32_t> place = Round(left)) {
      DDBack->Copy(*place, y, *sheet, SysFont[byte - 32], platform::Keyed::kYes);
    }
  };
  // Character by character, so that a frame's texts need no memory of their own.
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] < 128) {
      draw(static_cast<uint8_t>(text[i]));
    } else {
      for (const char byte : platform::EncodeCp932(text.substr(i, 1))) draw(static_cast<uint8_t>(byte));
    }
  }
}

void ClippedBlt(Surface& destination, const Rect& clip, int32_t x, int32_t y, const Surface& source,
                Rect from, platform::Keyed keyed) {
  int64_t left = x;
  int64_t top = y;
  int64_t right = left + from.right - from.left;
  int64_t bottom = top + from.bottom - from.top;
  if (left >= clip.right || top >= clip.bottom || right <= clip.left || bottom <= clip.top) return;
  if (left < clip.left) {
    from.left += static_cast<int32_t>(clip.left - left);
    left = clip.left;
  }
  if (top < clip.top) {
    from.top += static_cast<int32_t>(clip.top - top);
    top = clip.top;
  }
  if (right > clip.right) from.right -= static_cast<int32_t>(right - clip.right);
  if (bottom > clip.bottom) from.bottom -= static_cast<int32_t>(bottom - clip.bottom);
  destination.Copy(static_cast<int32_t>(left), static_cast<int32_t>(top), source, from, keyed);
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
