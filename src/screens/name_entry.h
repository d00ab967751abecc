// The ranking of a play in the score table, and the entry of a name for it.
#pragma once

#include <cstdint>

namespace qlm {

// Ranks the play in the score table, asking for a name: 1 for the best row, 10 for the last, 0 for none.
// While the name is asked for, GameState is kStateEnterName and its frames are shown.
int32_t AddScoreDat();
// A character of the name that is being entered; 8 takes the last one back, 13 and 27 end the entry.
void ProcessKey_EnterName(int32_t character);

}  // namespace qlm
