// The directives of a skin.
#pragma once

#include "graphics/skin_lines.h"

namespace qlm {

// Does what the line at hand says. A line without a directive is passed over.
void ReadSkinLine(SkinReading& in);
// Adds a number to a list in the order of the file; what goes past its end is dropped.
void Append(SkinOrder& order, uint8_t number);
// What a skin is read for once all its lines are known: the frames of its clips.
void CutClips(const SkinReading& in);

}  // namespace qlm
