// The gauge graph, written on its own surface during a play.
#pragma once

#include <cstdint>

namespace qlm {

// A dark red band above a dark green one, under a grid.
void PaintGraph();
// One gauge sample of slot i: a line from (i, y) to (i + 3, y), y = 200 - 2 * sample.
void DrawGaugeSample(int32_t slot, int32_t sample);
// The mark of a song change, in columns of the graph.
void DrawSongMark(int32_t x1, int32_t y1, int32_t x2, int32_t y2);

}  // namespace qlm
