// The chart's pictures.
#include "graphics/bga.h"

namespace qlm {

void BgaLoad(int32_t) {}
void ReleaseUnnamedPicture(int32_t) {}
void ReleaseAllPictures() {}
void LoadStage(TextView) {}
void ReleaseStage() {}
void LoadCourseBga(int32_t, int32_t) {}
void ComposeBga() {}
void DrawBga() {}

}  // namespace qlm
