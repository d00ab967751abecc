// The chart's pictures: loading by slot, and composing of base, layer, poor and title picture.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

// Sees that the slot holds the picture that the chart wants. Slots outside the tables are passed over.
void BgaLoad(int32_t slot);
// Gives back a slot whose file the chart no longer names.
void ReleaseUnnamedPicture(int32_t slot);
void ReleaseAllPictures();
// The title picture: dropped, and loaded anew when the file exists.
void LoadStage(TextView path);
void ReleaseStage();
// With CourseLoadMode 2: one picture of a course song, which the song's start then takes over.
void LoadCourseBga(int32_t song, int32_t slot);

// Puts the current pictures together on DDBga.
void ComposeBga();
// Each frame: the composed picture, or the poor picture, on the back surface. False when its place stays as
// it was, since the chart shows no picture now or pictures are off.
bool DrawBga();

}  // namespace qlm
