// The score table of the row in hand: its best row, and the others as a ticker.
#pragma once

namespace qlm {

void DrawScores();

}  // namespace qlm
