// The gauge graph.
#include "graphics/graph.h"

namespace qlm {

void PaintGraph() {}
void DrawGaugeSample(int32_t, int32_t) {}
void DrawSongMark(int32_t, int32_t, int32_t, int32_t) {}

}  // namespace qlm
