// Score tables, beside their charts.
#pragma once

namespace qlm {

// The score table of the current chart, empty when there is no file.
void LoadScoreDat();
// Counts the play and writes the table.
void SaveScoreDat();

}  // namespace qlm
