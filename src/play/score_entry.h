// The row that a play comes to, for the score table and for its record.
#pragma once

#include "base/text.h"
#include "state/scores.h"

namespace qlm {

// Figures of side 0, options and speeds as they stand, and PlayerName. A figure that is too great for its
// field leaves what stood there.
void FillEntry(ScoreEntry& entry);

// A name as a row holds it: 8 bytes of code page 932, cut or filled up with blanks.
std::array<char, 8> NameOfRow(TextView name);

}  // namespace qlm
