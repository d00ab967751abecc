// Drawing on the back surface that several screens share.
#pragma once

#include <cstdint>

#include "base/text.h"
#include "state/surfaces.h"

namespace qlm {

// The bitmap font of the skin, on the back surface. Draws nothing without a font sheet. Gives the number of
// cells that it went through.
int32_t DrawText(int32_t x, int32_t y, TextView text, float spacing);
// The same half covered by what lies there.
void DrawFaintText(int32_t x, int32_t y, TextView text);
// The same as DrawText, cut at a rectangle of the screen; DrawText leaves out a letter that would run
// off.
void DrawTextWithin(const Rect& clip, int32_t x, int32_t y, TextView text, float spacing = 0);
// A copy cut against `clip`, and not made when it lies wholly outside.
void ClippedBlt(Surface& destination, const Rect& clip, int32_t x, int32_t y, const Surface& source,
                const Rect& from, platform::Keyed keyed);
// A dark strip between two thin rules, which letters on it can be read on whatever lies behind it.
void DrawStrip(const Rect& strip);
// The drifting backdrop of the list screens, with DRAWLIMIT below 3.
void DrawMovingBack();

}  // namespace qlm
