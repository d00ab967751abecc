// Picture files to surfaces, and the report of video memory.
#pragma once

#include <cstdint>

#include "base/text.h"
#include "state/surfaces.h"

namespace qlm {

// Bytes of videoMemoryTotal that surfaces leave; at least 0.
int64_t FreeVideoMemory();

// By extension: BMP and RLE to LoadBitmap, all others to LoadExBitmap. The colour key of what they load is
// black. A failure leaves the surface null and the rectangle empty.
void LoadAnyBitmap(TextView path, SurfacePtr& surface, Rect& rect);
void LoadBitmap(TextView path, SurfacePtr& surface, Rect& rect);
void LoadExBitmap(TextView path, SurfacePtr& surface, Rect& rect);

// In the wide reading: corrects `path` to the file that stands for it, the one of this name first, then the
// same stem as .bmp, .png, .jpg, .jpeg and .gif. Nothing is done where there is none.
void FindWidePicture(Text& path);
// In the wide reading: makes a picture with a side above `most` as much smaller as fits it in, with its
// proportions.
void FitWidePicture(SurfacePtr& surface, Rect& rect, int32_t most);
// Whether a file is a video by its name. None is played.
bool IsVideo(TextView path);

// A picture of any kind, without a log line and without a colour key. Null when it cannot be loaded.
SurfacePtr ReadPicture(TextView path);

}  // namespace qlm
