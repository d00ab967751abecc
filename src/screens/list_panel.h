// The panel beside the wheel: what is known of the row in hand, and its picture.
#pragma once

namespace qlm {

// The sheet with the chart, the course or the jukebox of the row in hand.
void DrawPanel();
// The title picture, or the animation that stands for a missing one.
void DrawPictureBox();
// The row's number in the list, at the top right.
void DrawListPosition();

}  // namespace qlm
