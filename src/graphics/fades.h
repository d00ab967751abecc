// Fades: combs of black lines, falling tiles, and the title picture of a course.
#pragma once

#include <cstdint>

namespace qlm {

// 0 clear, 100 black.
void ScreenFade(double percent);
// Holds the frame and fades it: kind 1 to black, others from black. 0 ms means 200.
void FadeScreen(int32_t kind, int32_t length);
// The title picture over the whole screen; nothing without one.
void DrawTitle();
// Draws the speeds of the 300 tiles anew. At the start of each play.
void MakeFadeTiles();
// Copies the frame that is being drawn, or the one that the screen shows, to the surface that tiles and fades
// hold.
void HoldFrame();
void HoldScreen();
// The falling tiles of the held frame: t is (ms \ 10) / divisor, 50 in a play and 30 on the loading screen.
// True once t has reached 1.
bool DrawFadeTiles(int32_t divisor);
// The running fade of a play, at the end of its frame. At its end PlayEnd is set if FadeLeaving is 1.
void DrawFades();

}  // namespace qlm
