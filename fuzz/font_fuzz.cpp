// Any UTF-16 as a line of text, at any place, height and width: an image shows its part of the line, and
// nothing else.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/font.h"

namespace {

using platform::Surface;

struct Line {
  int32_t x = 0;
  int32_t y = 0;
  int16_t height = 0;
  bool bold = false;
  int8_t width = 0;  // of a letter; 0 as designed
  std::u16string text;
};

Line ReadLine(const uint8_t* data, size_t size) {
  Line line;
  constexpr size_t kHead = 10;
  std::array<uint8_t, kHead> head{};
  const size_t given = size < kHead ? size : kHead;
  if (given > 0) std::memcpy(head.data(), data, given);
  // Most places lie on the image or near it, a few anywhere.
  line.x = static_cast<int8_t>(head[0]);
  line.y = static_cast<int8_t>(head[1]);
  if (head[2] == 255) std::memcpy(&line.x, &head[3], sizeof(line.x));
  if (head[2] == 254) std::memcpy(&line.y, &head[3], sizeof(line.y));
  line.bold = head[2] % 2 != 0;
  line.width = static_cast<int8_t>(head[6]);
  line.height = static_cast<int8_t>(head[7]);
  if (head[8] == 255) line.height = static_cast<int16_t>(head[9] << 8);
  line.text.resize((size - given) / 2);
  if (!line.text.empty()) std::memcpy(line.text.data(), data + given, line.text.size() * 2);
  return line;
}

void Draw(Surface& surface, const Line& line) {
  if (line.width == 0) {
    platform::DrawFontText(surface, line.x, line.y, line.text, line.height, 0x80C0FF, line.bold);
    return;
  }
  const platform::FontLook look{.height = line.height, .bold = line.bold, .width = line.width};
  platform::DrawMask(surface, surface.Bounds(), line.x, line.y, platform::RenderText(line.text, look),
                     0x80C0FF);
}

// The fonts of each height and weight stay open, of which a game has a handful and an input may have any.
void CloseFontsAtTimes() {
  static int lines = 0;
  if (++lines % 64 == 0) platform::CloseFonts();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const Line line = ReadLine(data, size);
  Surface image(160, 60);
  Draw(image, line);
  if (platform::FontTextWidth(line.text, line.height, line.bold) < 0) std::abort();
  // The same line on an image that reaches further on all sides.
  constexpr int32_t kMargin = 50;
  if (line.x > INT32_MAX - kMargin || line.y > INT32_MAX - kMargin) return 0;
  Line moved = line;
  moved.x += kMargin;
  moved.y += kMargin;
  Surface wide(160 + 2 * kMargin, 60 + 2 * kMargin);
  Draw(wide, moved);
  for (int32_t y = 0; y < image.Height(); ++y) {
    for (int32_t x = 0; x < image.Width(); ++x) {
      const platform::Colour colour = image.Pixel(x, y);
      if (colour > 0xFFFFFF || colour != wide.Pixel(x + kMargin, y + kMargin)) std::abort();
    }
  }
  CloseFontsAtTimes();
  return 0;
}
