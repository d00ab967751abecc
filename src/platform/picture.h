// Picture files: decoding to a surface, and writing frames as PNG.
#pragma once

#include <span>
#include <string>

#include "platform/surface.h"

namespace platform {

// The largest picture that is decoded, so that no file of a few bytes can ask for the machine's whole memory.
constexpr int64_t kMaxPicturePixels = int64_t{4096} * 4096;

// BMP with 1, 4, 8, 16, 24 or 32 bits a pixel, run-length coded ones too. A fourth channel is passed over.
// Pixels that the data do not reach stay black. Null when the bytes are no such picture, are cut short in the
// header, or ask for more than Surface::kMaxSide pixels on a side, kMaxPicturePixels in all or the memory
// there is.
SurfacePtr DecodeBmp(std::span<const unsigned char> bytes);

// BMP, PNG, JPEG or GIF (its first image), told apart by their first bytes. Transparency is laid over black,
// but for BMP as above. Null under the same conditions, and when the picture library finds the data damaged.
SurfacePtr DecodePicture(std::span<const unsigned char> bytes);

// A 24-bit PNG file. `path` is the system's own form. False when it could not be written.
bool SavePng(const Surface& surface, const std::string& path);

}  // namespace platform
