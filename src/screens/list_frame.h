// One frame of the list screens: wheel, panel, scores, options, help.
#pragma once

namespace qlm {

// Draws the list that is up, with the row in hand, and presents the frame. Moves on what moves by itself: the
// wheel's settling, the rows' appearing, the clear check of one row.
void DrawList();

}  // namespace qlm
