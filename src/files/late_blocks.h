// late_blocks.txt, how many blocks the sound device got too late in the last play.
#pragma once

#include <cstdint>

namespace qlm {

// What the file tells: 0 without it, and where it holds no number.
int32_t SavedLateBlocks();
// Keeps the number of this run's last play; where it is 0 there is no file. A disk that does not take it is
// not worth a word.
void SaveLateBlocks();

}  // namespace qlm
