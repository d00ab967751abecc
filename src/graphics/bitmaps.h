// Picture files to surfaces, and the report of video memory.
#pragma once

#include <cstdint>

#include "base/text.h"
#include "state/surfaces.h"

namespace qlm {

// By extension: BMP and RLE to LoadBitmap, all others to LoadExBitmap. A failure leaves the surface null and
// the rectangle empty.
void LoadAnyBitmap(TextView path, SurfacePtr& surface, Rect& rect);
void LoadBitmap(TextView path, SurfacePtr& surface, Rect& rect);
void LoadExBitmap(TextView path, SurfacePtr& surface, Rect& rect);

}  // namespace qlm
