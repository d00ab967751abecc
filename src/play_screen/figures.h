// Numbers on the play screen.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace qlm {

// Draws a figure with strip `number` from (x, y) on. With `digits` above 0 a whole number is filled with
// zeros to that many characters, its sign among them. Zeros ahead of other digits leave their cells empty.
void DrawNumber(int32_t number, int64_t x, int64_t y, std::string_view text, int32_t digits);
// The same for a whole number.
void DrawNumber(int32_t number, int64_t x, int64_t y, int64_t value, int32_t digits);

// Tempo, times, frame rate, stage and the chart's progress.
void DrawChartFigures();
// Counts of the judgements, score, accuracy, best combo and gauge of a side. Score and accuracy are rounded
// half to even; of the gauge its whole part shows.
void DrawSideFigures(size_t side);

}  // namespace qlm
