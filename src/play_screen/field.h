// The field's furniture: what stands around the notes and beneath them.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qlm {

// The lines of each side and the picture of its turntable and keys.
void DrawLinesAndKeys();
// Each lane's marker, while its note is about to be due, and its beam. Moves KeyBeam and settles LaneBeam.
void DrawLanes();
// The bars that tell how much of the chart is over.
void DrawProgressBars();
void DrawLayers();
void DrawJudgeLines();
// Height of a side's judge line on the screen: half of the skin's under HalfField.
int32_t JudgeLineY(size_t side);
// The bursts on the judge line. Those that are over clear LaneHit.
void DrawBombs();
// The title, which runs to the left by a letter in 200 ms.
void DrawMarquee();

}  // namespace qlm
