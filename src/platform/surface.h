// Software images: copies under a colour key, stretched copies, fills, lines.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace platform {

// Left and top belong to the rectangle, right and bottom are the first column and row behind it.
struct Rect {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;

  constexpr int32_t Width() const { return right - left; }
  constexpr int32_t Height() const { return bottom - top; }
  friend constexpr bool operator==(const Rect&, const Rect&) = default;
};

// 0x00RRGGBB. The top byte is always 0.
using Colour = uint32_t;
constexpr Colour Rgb(uint32_t red, uint32_t green, uint32_t blue) {
  return (red & 255) << 16 | (green & 255) << 8 | (blue & 255);
}

// `over` laid on `under`; opacity 0 to 255.
constexpr Colour Mix(Colour under, Colour over, uint32_t opacity) {
  const auto channel = [=](int shift) {
    return ((under >> shift & 255) * (255 - opacity) + (over >> shift & 255) * opacity + 127) / 255;
  };
  return Rgb(channel(16), channel(8), channel(0));
}

// Whether a copy leaves out the source's transparent colours.
enum class Keyed : bool { kNo, kYes };

// What a shaded copy makes of its colours: half of each channel, or a red as bright as the brightest one.
enum class Shade : bool { kHalf, kRed };

// A 32-bit image, black when made. Every routine that would touch a pixel outside either image does nothing
// and returns false: clipping is the caller's business. Empty and reversed rectangles are refused too.
class Surface {
 public:
  static constexpr int32_t kMaxSide = 16384;

  // Width and height from 1 to kMaxSide; anything else is brought into that range.
  Surface(int32_t width, int32_t height);
  ~Surface();
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;

  int32_t Width() const { return width_; }
  int32_t Height() const { return height_; }
  Rect Bounds() const { return {0, 0, width_, height_}; }

  // One row of pixels, y from 0 to Height() - 1; empty outside. Who writes keeps the top bytes 0.
  std::span<Colour> Row(int32_t y);
  std::span<const Colour> Row(int32_t y) const;
  // Black outside the image.
  Colour Pixel(int32_t x, int32_t y) const;

  // Colours whose three channels each lie from low's to high's (both included) are left out of keyed copies.
  // Without a key nothing is left out.
  void SetColourKey(Colour low, Colour high);

  bool Fill(const Rect& rect, Colour colour);
  // A line of one pixel from the first point up to, but not including, the last one; cut at the edges.
  // Halfway between two pixels it takes the upper or left one. Coordinates beyond 2^30 are brought to it.
  void Line(int32_t x1, int32_t y1, int32_t x2, int32_t y2, Colour colour);

  // Puts `from` of `source` at (x, y). The two may be one surface; overlapping areas copy as if from a
  // snapshot.
  bool Copy(int32_t x, int32_t y, const Surface& source, const Rect& from, Keyed keyed = Keyed::kNo);
  // The same without the transparent colours, half covered by what lies there already: each channel becomes
  // the mean of both, rounded down. Not onto itself.
  bool CopyFaint(int32_t x, int32_t y, const Surface& source, const Rect& from);
  // The same as Copy with `from` scaled to `to`, nearest neighbour: column i of n takes source column i * m
  // \ n.
  bool Stretch(const Rect& to, const Surface& source, const Rect& from, Keyed keyed = Keyed::kNo);
  // The same for a `to` that may lie anywhere, with sides up to kMaxSide: only the part of it within `clip`
  // and the image is drawn, as it would be drawn without a cut.
  bool StretchWithin(const Rect& clip, const Rect& to, const Surface& source, const Rect& from,
                     Keyed keyed = Keyed::kNo);

  // The same without the transparent colours, shaded. Not onto itself.
  bool StretchShaded(const Rect& clip, const Rect& to, const Surface& source, const Rect& from, Shade shade);

  // Bytes that the pixels of all living surfaces hold.
  static size_t BytesHeld();

 private:
  bool Holds(const Rect& rect) const;
  // The pixels from a place on that is known to lie in the image.
  Colour* PixelsFrom(int32_t x, int32_t y) { return pixels_.data() + (ptrdiff_t{y} * width_ + x); }
  const Colour* PixelsFrom(int32_t x, int32_t y) const {
    return pixels_.data() + (ptrdiff_t{y} * width_ + x);
  }

  int32_t width_;
  int32_t height_;
  std::vector<Colour> pixels_;
  bool hasKey_ = false;
  Colour keyLow_ = 0;
  Colour keyHigh_ = 0;
};

using SurfacePtr = std::shared_ptr<Surface>;

}  // namespace platform
