// Software images: rows of 32-bit pixels, and loops that the compiler can turn into vector code.
#include "platform/surface.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

namespace platform {
namespace {

constexpr Colour kColourBits = 0x00FFFFFF;
constexpr Colour kRedBits = 0x00FF0000;
constexpr Colour kGreenBits = 0x0000FF00;
constexpr Colour kBlueBits = 0x000000FF;

size_t bytesHeld = 0;

// Which colours a copy leaves out. A type of its own for each kind of key, so that the test of the innermost
// loop is a handful of vector instructions.
struct NoKey {
  bool operator()(Colour) const { return false; }
};

struct ExactKey {
  Colour key;
  bool operator()(Colour colour) const { return colour == key; }
};

// From black up to a colour whose channels are all of the form 2^n - 1: no other bit may be set.
struct DarkKey {
  Colour otherBits;
  bool operator()(Colour colour) const { return (colour & otherBits) == 0; }
};

struct RangeKey {
  Colour low;
  Colour high;
  bool operator()(Colour colour) const {
    return Between(colour, kRedBits) && Between(colour, kGreenBits) && Between(colour, kBlueBits);
  }
  bool Between(Colour colour, Colour bits) const {
    const auto value = static_cast<int32_t>(colour & bits);
    return value >= static_cast<int32_t>(low & bits) && value <= static_cast<int32_t>(high & bits);
  }
};

bool OnlyLowBits(Colour channel) { return (channel & (channel + 1)) == 0; }

template <class Work>
void WithKey(bool keyed, Colour low, Colour high, Work work) {
  if (!keyed) {
    work(NoKey{});
  } else if (low == high) {
    work(ExactKey{low});
  } else if (low == 0 && OnlyLowBits(high >> 16) && OnlyLowBits(high >> 8 & 255) && OnlyLowBits(high & 255)) {
    work(DarkKey{~high & kColourBits});
  } else {
    work(RangeKey{low, high});
  }
}

template <class Key>
void CopyRow(const Colour* __restrict from, Colour* __restrict to, int32_t count, Key leftOut) {
  for (int32_t i = 0; i < count; ++i) {
    to[i] = leftOut(from[i]) ? to[i] : from[i];
  }
}

template <class Key>
void CopyRowFaint(const Colour* __restrict from, Colour* __restrict to, int32_t count, Key leftOut) {
  constexpr Colour kHalves = 0x007F7F7F;  // of the channels, without the bits that come from their neighbours
  for (int32_t i = 0; i < count; ++i) {
    to[i] = leftOut(from[i]) ? to[i] : ((from[i] ^ to[i]) >> 1 & kHalves) + (from[i] & to[i]);
  }
}

Colour Shaded(Colour colour, Shade shade) {
  if (shade == Shade::kHalf) return colour >> 1 & 0x007F7F7F;
  return std::max({colour >> 16 & 255, colour >> 8 & 255, colour & 255}) << 16;
}

void CopyRow(const Colour* from, Colour* to, int32_t count, NoKey) {
  std::memcpy(to, from, static_cast<size_t>(count) * sizeof(Colour));
}

void FillRow(Colour* to, int32_t count, Colour colour) {
  if (colour == 0) {
    std::memset(to, 0, static_cast<size_t>(count) * sizeof(Colour));
  } else {
    std::fill_n(to, count, colour);
  }
}

// Source index of the places from `first` up to `end`, of `count` over which `length` pixels are spread:
// i * length \ count.
class Spread {
 public:
  Spread(int32_t length, int32_t count, int32_t first, int32_t end) {
    const int32_t whole = length / count;
    const int32_t rest = length % count;
    const int64_t begin = int64_t{first} * length;
    auto source = static_cast<int32_t>(begin / count);
    auto error = static_cast<int32_t>(begin % count);
    for (int32_t i = 0; i < end - first; ++i) {
      index_.data()[i] = static_cast<uint16_t>(source);
      source += whole;
      error += rest;
      if (error >= count) {
        error -= count;
        ++source;
      }
    }
  }
  // The place counts from `first`.
  int32_t operator[](int32_t i) const { return index_.data()[i]; }

 private:
  std::array<uint16_t, Surface::kMaxSide> index_;  // filled only as far as it is read
};

Rect Intersection(const Rect& a, const Rect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

// Whether both sides are from 1 to kMaxSide, whatever the corners.
bool HasSize(const Rect& rect) {
  const int64_t width = int64_t{rect.right} - rect.left;
  const int64_t height = int64_t{rect.bottom} - rect.top;
  return width >= 1 && height >= 1 && width <= Surface::kMaxSide && height <= Surface::kMaxSide;
}

bool Overlap(const Rect& a, const Rect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// numerator / denominator to the nearest whole number, halves to the smaller one; denominator above 0.
int64_t RoundHalfDown(int64_t numerator, int64_t denominator) {
  const int64_t doubled = 2 * numerator - denominator;
  const int64_t quotient = doubled / (2 * denominator);
  return quotient + (doubled % (2 * denominator) > 0 ? 1 : 0);
}

}  // namespace

Surface::Surface(int32_t width, int32_t height)
    : width_(std::clamp(width, 1, kMaxSide)),
      height_(std::clamp(height, 1, kMaxSide)),
      pixels_(static_cast<size_t>(width_) * static_cast<size_t>(height_)) {
  bytesHeld += pixels_.size() * sizeof(Colour);
}

Surface::~Surface() { bytesHeld -= pixels_.size() * sizeof(Colour); }

size_t Surface::BytesHeld() { return bytesHeld; }

std::span<Colour> Surface::Row(int32_t y) {
  if (y < 0 || y >= height_) {
    return {};
  }
  return std::span(pixels_).subspan(static_cast<size_t>(y) * static_cast<size_t>(width_),
                                    static_cast<size_t>(width_));
}

std::span<const Colour> Surface::Row(int32_t y) const {
  if (y < 0 || y >= height_) {
    return {};
  }
  return std::span(pixels_).subspan(static_cast<size_t>(y) * static_cast<size_t>(width_),
                                    static_cast<size_t>(width_));
}

Colour Surface::Pixel(int32_t x, int32_t y) const {
  return x < 0 || x >= width_ || y < 0 || y >= height_ ? 0 : Row(y)[static_cast<size_t>(x)];
}

void Surface::SetColourKey(Colour low, Colour high) {
  hasKey_ = true;
  keyLow_ = low & kColourBits;
  keyHigh_ = high & kColourBits;
}

bool Surface::Holds(const Rect& rect) const {
  return rect.left >= 0 && rect.top >= 0 && rect.left < rect.right && rect.top < rect.bottom &&
         rect.right <= width_ && rect.bottom <= height_;
}

bool Surface::Fill(const Rect& rect, Colour colour) {
  if (!Holds(rect)) {
    return false;
  }
  // Rows that lie one behind the other are one.
  const bool whole = rect.Width() == width_;
  const int32_t count = whole ? width_ * rect.Height() : rect.Width();
  for (int32_t y = rect.top; y < rect.bottom; y += whole ? rect.Height() : 1) {
    FillRow(PixelsFrom(rect.left, y), count, colour & kColourBits);
  }
  return true;
}

void Surface::Line(int32_t x1, int32_t y1, int32_t x2, int32_t y2, Colour colour) {
  const auto bring = [](int32_t coordinate) {
    constexpr int64_t kFar = int64_t{1} << 30;
    return std::clamp<int64_t>(coordinate, -kFar, kFar);
  };
  const int64_t width = bring(x2) - bring(x1);
  const int64_t height = bring(y2) - bring(y1);
  const bool flat = std::abs(width) >= std::abs(height);
  // The line takes one pixel at each place of its longer axis.
  const int64_t start = flat ? bring(x1) : bring(y1);
  const int64_t along = flat ? width : height;
  const int64_t base = flat ? bring(y1) : bring(x1);
  const int64_t across = flat ? height : width;
  const int64_t steps = std::abs(along);
  const int64_t length = flat ? width_ : height_;
  // The steps whose place lies in the image.
  const int64_t first = along > 0 ? -start : start - (length - 1);
  const int64_t end = along > 0 ? length - start : start + 1;
  for (int64_t step = std::max<int64_t>(first, 0); step < std::min(end, steps); ++step) {
    const int64_t place = start + (along > 0 ? step : -step);
    const int64_t side = base + RoundHalfDown(across * step, steps);
    const int64_t x = flat ? place : side;
    const int64_t y = flat ? side : place;
    if (x >= 0 && x < width_ && y >= 0 && y < height_) {
      Row(static_cast<int32_t>(y))[static_cast<size_t>(x)] = colour & kColourBits;
    }
  }
}

bool Surface::Copy(int32_t x, int32_t y, const Surface& source, const Rect& from, Keyed keyed) {
  if (!source.Holds(from) || x < 0 || y < 0 || x > width_ - from.Width() || y > height_ - from.Height()) {
    return false;
  }
  const Rect to{x, y, x + from.Width(), y + from.Height()};
  if (this == &source && Overlap(to, from)) {
    Surface snapshot(from.Width(), from.Height());
    snapshot.Copy(0, 0, source, from);
    if (hasKey_) {
      snapshot.SetColourKey(keyLow_, keyHigh_);
    }
    return Copy(x, y, snapshot, snapshot.Bounds(), keyed);
  }
  WithKey(keyed == Keyed::kYes && source.hasKey_, source.keyLow_, source.keyHigh_, [&](auto key) {
    // Rows that lie one behind the other in both images are one.
    const bool whole = from.Width() == width_ && from.Width() == source.width_;
    const int32_t count = whole ? width_ * from.Height() : from.Width();
    for (int32_t row = 0; row < from.Height(); row += whole ? from.Height() : 1) {
      CopyRow(source.PixelsFrom(from.left, from.top + row), PixelsFrom(x, y + row), count, key);
    }
  });
  return true;
}

bool Surface::CopyFaint(int32_t x, int32_t y, const Surface& source, const Rect& from) {
  if (this == &source || !source.Holds(from) || x < 0 || y < 0 || x > width_ - from.Width() ||
      y > height_ - from.Height()) {
    return false;
  }
  WithKey(source.hasKey_, source.keyLow_, source.keyHigh_, [&](auto key) {
    for (int32_t row = 0; row < from.Height(); ++row) {
      CopyRowFaint(source.PixelsFrom(from.left, from.top + row), PixelsFrom(x, y + row), from.Width(), key);
    }
  });
  return true;
}

bool Surface::Stretch(const Rect& to, const Surface& source, const Rect& from, Keyed keyed) {
  return Holds(to) && StretchWithin(to, to, source, from, keyed);
}

bool Surface::StretchWithin(const Rect& clip, const Rect& to, const Surface& source, const Rect& from,
                            Keyed keyed) {
  const Rect seen = Intersection(Intersection(to, clip), Bounds());
  if (!HasSize(to) || !Holds(seen) || !source.Holds(from)) {
    return false;
  }
  if (this == &source && Overlap(to, from)) {
    Surface snapshot(from.Width(), from.Height());
    snapshot.Copy(0, 0, source, from);
    if (hasKey_) {
      snapshot.SetColourKey(keyLow_, keyHigh_);
    }
    return StretchWithin(clip, to, snapshot, snapshot.Bounds(), keyed);
  }
  const int32_t left = seen.left - to.left;
  const int32_t top = seen.top - to.top;
  if (to.Width() == from.Width() && to.Height() == from.Height()) {
    const int32_t sourceLeft = from.left + left;
    const int32_t sourceTop = from.top + top;
    return Copy(seen.left, seen.top, source,
                {sourceLeft, sourceTop, sourceLeft + seen.Width(), sourceTop + seen.Height()}, keyed);
  }
  const Spread columns(from.Width(), to.Width(), left, left + seen.Width());
  const Spread rows(from.Height(), to.Height(), top, top + seen.Height());
  const bool leavesOut = keyed == Keyed::kYes && source.hasKey_;
  WithKey(leavesOut, source.keyLow_, source.keyHigh_, [&](auto leftOut) {
    for (int32_t row = 0; row < seen.Height(); ++row) {
      Colour* const target = PixelsFrom(seen.left, seen.top + row);
      // Enlarged, a row without holes is the one above it once more.
      if (!leavesOut && row > 0 && rows[row] == rows[row - 1]) {
        std::memcpy(target, target - width_, static_cast<size_t>(seen.Width()) * sizeof(Colour));
        continue;
      }
      const Colour* const pixels = source.PixelsFrom(from.left, from.top + rows[row]);
      for (int32_t i = 0; i < seen.Width(); ++i) {
        const Colour colour = pixels[columns[i]];
        if (!leftOut(colour)) target[i] = colour;
      }
    }
  });
  return true;
}

bool Surface::StretchShaded(const Rect& clip, const Rect& to, const Surface& source, const Rect& from,
                            Shade shade) {
  const Rect seen = Intersection(Intersection(to, clip), Bounds());
  if (this == &source || !HasSize(to) || !Holds(seen) || !source.Holds(from)) return false;
  const int32_t left = seen.left - to.left;
  const int32_t top = seen.top - to.top;
  const Spread columns(from.Width(), to.Width(), left, left + seen.Width());
  const Spread rows(from.Height(), to.Height(), top, top + seen.Height());
  WithKey(source.hasKey_, source.keyLow_, source.keyHigh_, [&](auto leftOut) {
    for (int32_t row = 0; row < seen.Height(); ++row) {
      Colour* const target = PixelsFrom(seen.left, seen.top + row);
      const Colour* const pixels = source.PixelsFrom(from.left, from.top + rows[row]);
      for (int32_t i = 0; i < seen.Width(); ++i) {
        const Colour colour = pixels[columns[i]];
        if (!leftOut(colour)) target[i] = Shaded(colour, shade);
      }
    }
  });
  return true;
}

}  // namespace platform
