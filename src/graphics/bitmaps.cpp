// Picture files to surfaces.
#include "graphics/bitmaps.h"

namespace qlm {

void LoadAnyBitmap(TextView, SurfacePtr&, Rect&) {}
void LoadBitmap(TextView, SurfacePtr&, Rect&) {}
void LoadExBitmap(TextView, SurfacePtr&, Rect&) {}

}  // namespace qlm
