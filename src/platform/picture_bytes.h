// What the readers of picture files share: numbers at a place in the bytes, and the sizes that are decoded.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "platform/picture.h"

namespace platform {

using Bytes = std::span<const unsigned char>;

// Numbers at an offset; bytes behind the end read as 0.
inline uint32_t Byte(Bytes bytes, size_t at) { return at < bytes.size() ? bytes[at] : 0; }
inline uint32_t Little16(Bytes bytes, size_t at) { return Byte(bytes, at) | Byte(bytes, at + 1) << 8; }
inline uint32_t Little32(Bytes bytes, size_t at) {
  return Little16(bytes, at) | Little16(bytes, at + 2) << 16;
}
inline uint32_t Big16(Bytes bytes, size_t at) { return Byte(bytes, at) << 8 | Byte(bytes, at + 1); }
inline uint32_t Big32(Bytes bytes, size_t at) { return Big16(bytes, at) << 16 | Big16(bytes, at + 2); }

inline Bytes From(Bytes bytes, size_t at) { return bytes.subspan(std::min(at, bytes.size())); }

inline bool StartsWith(Bytes bytes, std::string_view text) {
  return bytes.size() >= text.size() && std::memcmp(bytes.data(), text.data(), text.size()) == 0;
}

struct PictureSize {
  int64_t width = 0;
  int64_t height = 0;
};

// Whether a picture of this size is decoded.
inline bool Holdable(const PictureSize& size) {
  return size.width >= 1 && size.height >= 1 && size.width <= Surface::kMaxSide &&
         size.height <= Surface::kMaxSide && size.width * size.height <= kMaxPicturePixels;
}

}  // namespace platform
