// The result screen and the score tables.
#pragma once

#include <cstdint>

namespace qlm {

// The result screen, from its opening to its end.
void ShowResults();
// The score table of the current chart, empty when there is no file.
void LoadScoreDat();
// Ranks the play in the table, asking for a name.
void AddScoreDat();
// A character of the name that is being entered; 13 and 27 end the entry.
void ProcessKey_EnterName(int32_t character);
// Counts the play and writes the table.
void SaveScoreDat();

}  // namespace qlm
