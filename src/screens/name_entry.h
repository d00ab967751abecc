// The entry of a name for a play that ranks.
#pragma once

#include <cstdint>

namespace qlm {

// Ranks the play in the score table, asking for a name.
void AddScoreDat();
// A character of the name that is being entered; 13 and 27 end the entry.
void ProcessKey_EnterName(int32_t character);

}  // namespace qlm
