// Where a position stands on the screen.
#pragma once

namespace qlm {

// Pixels from the line beyond which Sudden hides notes, and within which Hidden does.
constexpr double kSuddenPixels = 124;
constexpr double kHiddenPixels = 120;

// Position units from the start of the chart without the stops, during which nothing moves.
double ShownPlace(double pos);

}  // namespace qlm
