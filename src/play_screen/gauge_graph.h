// The gauge graph, written on its own surface during a play.
#pragma once

#include <cstdint>

namespace qlm {

// A dark red band above a dark green one, under a grid.
void PaintGraph();
// One gauge sample of slot i: a line from (i, y) to (i + 3, y), y = 200 - 2 * sample.
void DrawGaugeSample(int32_t slot, uint8_t sample);
// The mark of a song change, in columns of the graph.
void DrawSongMark(int32_t x1, int32_t y1, int32_t x2, int32_t y2);
// The combo behind one judgement, the `judged`-th of a side: one pixel, by the grade's colour. Nothing on a
// chart without notes of side 0.
void DrawJudgedNote(int32_t judged, int32_t combo, int32_t grade);
// The combo that a judgement met, as a small figure in the face of the texts. On opaque ground, so that it is
// legible over lines and pixels; nothing without a font.
void DrawLostCombo(int32_t judged, int32_t combo);

}  // namespace qlm
