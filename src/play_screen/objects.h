// Notes and bar lines.
#pragma once

namespace qlm {

// Draws what lies ahead, from objCursor up to the first object above the screen, and finds on the way the
// first note of each lane that a press may reach (LaneNote), whether it shows or not.
void DrawObjects();

}  // namespace qlm
