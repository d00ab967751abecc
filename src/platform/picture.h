// Picture files: decoding to a surface, and writing frames as PNG.
#pragma once

#include <span>
#include <string>

#include "platform/surface.h"

namespace platform {

// BMP with 1, 4, 8, 16, 24 or 32 bits a pixel, run-length coded ones too. Null when the bytes are no such
// picture, are cut short in the header, or ask for more than 16384 pixels on a side or 64 Mi pixels in all.
SurfacePtr DecodeBmp(std::span<const unsigned char> bytes);

// Whatever the picture library reads: JPEG, PNG, GIF (first image), BMP and more. Transparency is laid over
// black. Null under the same conditions.
SurfacePtr DecodePicture(std::span<const unsigned char> bytes);

// A 24-bit PNG file. `path` is the system's own form. False when it could not be written.
bool SavePng(const Surface& surface, const std::string& path);

}  // namespace platform
