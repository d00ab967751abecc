// Where a position stands on the screen.
#include "play_screen/shown_place.h"

#include <algorithm>

#include "state/wide_chart.h"

namespace qlm {

double ShownPlace(double pos) {
  // The last stop that begins at the position or before it; those before that one are over.
  const auto next = std::upper_bound(Stops.begin(), Stops.end(), pos,
                                     [](double place, const Stop& stop) { return place < stop.pos; });
  if (next == Stops.begin()) return pos;
  const Stop& stop = *std::prev(next);
  return pos - static_cast<double>(stop.before) - std::min(pos - stop.pos, static_cast<double>(stop.units));
}

}  // namespace qlm
