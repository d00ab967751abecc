// The result screen and the score tables.
#pragma once

namespace qlm {

// The result screen, from its opening to its end.
void ShowResults();
// The score table of the current chart, empty when there is no file.
void LoadScoreDat();
// Ranks the play in the table, asking for a name.
void AddScoreDat();
// Counts the play and writes the table.
void SaveScoreDat();

}  // namespace qlm
