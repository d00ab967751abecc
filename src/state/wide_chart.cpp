// The start values of what the wide reading keeps.
#include "state/wide_chart.h"

namespace qlm {

void ResetWideChart() {
  LongNotes.clear();
  Stops.clear();
  HdrPreview.clear();
  ChartVolume = 0;
  posRest = 0;
  courseTempi = 0;
}

}  // namespace qlm
