// The chart's pictures: loading by slot, and composing of base, layer, poor and title picture.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

// Sees that the slot holds the picture that the chart wants.
void BgaLoad(int32_t slot);
// Gives back a slot whose file the chart no longer names.
void ReleaseUnnamedPicture(int32_t slot);
void ReleaseAllPictures();
// The title picture: dropped, and loaded anew when the file exists.
void LoadStage(TextView path);
void ReleaseStage();
// With CourseLoadMode 2: one picture of a course song.
void LoadCourseBga(int32_t song, int32_t slot);

void ComposeBga();
// Each frame.
void DrawBga();

}  // namespace qlm
