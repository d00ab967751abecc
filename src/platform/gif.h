// GIF files, by a library of their own: the picture library goes on to the next image when it fails at one,
// so that the size of the first says nothing of what it takes from the heap.
#pragma once

#include <span>

#include "platform/surface.h"

namespace platform {

// The first image of a GIF, at its own size; the screen around it is passed over. Transparent pixels are
// black. Of data that end early or are damaged, the blocks before are shown, and all other pixels in the
// colour of index 0. Null when there is no image, or when it or the screen asks for more than
// kMaxPicturePixels.
SurfacePtr DecodeGif(std::span<const unsigned char> bytes);

}  // namespace platform
