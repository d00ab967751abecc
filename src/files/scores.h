// Score tables, each beside its chart. The file NAME.qsd: the play count, the ten rows, and whether the chart
// has ever been cleared.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/bytes.h"
#include "base/cursor.h"
#include "base/text.h"
#include "state/scores.h"

namespace qlm {

constexpr size_t kScoreFileBytes = 446;

// One row, of 44 bytes. What is missing at the end of the bytes is 0.
ScoreEntry TakeScoreEntry(Cursor& cursor);
void PutScoreEntry(ByteWriter& bytes, const ScoreEntry& entry);

// Table, play count and clear flag as the file holds them. Bytes behind them are passed over; what a short
// file lacks is 0.
void TakeScores(std::string_view bytes);
std::string ScoreBytes();

// The chart, or the course, whose table `scores` holds: the row under the cursor, or the chart read last
// where there is no list.
Text ScoredChart();
// The score file of a chart that may be read: the one below \_qlmfiles\ro_score where there is one, else that
// beside the chart. Neither need exist.
Text ScoreFileOf(TextView chart);
// The same for any file that goes with a chart, by its extension, as in ".qpd".
Text ReadableBeside(TextView chart, TextView extension);

// The score table of ScoredChart(), empty when there is no file.
void LoadScoreDat();
// Counts one more play.
void CountPlay();
// Counts the play and writes the table: beside the chart, or below \_qlmfiles\ro_score when its folder is
// read-only.
void SaveScoreDat();

}  // namespace qlm
