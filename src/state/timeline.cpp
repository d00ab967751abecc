// Start values of clock, position and cursors.
#include "state/timeline.h"

namespace qlm {

void ResetTimeline() {
  playStart = 0;
  playClock = 0;
  playPos = pixPerMs = 0;
  rawBPM = curBPM = shownBPM = unitsPerSec = 0;
  posOffset = objCursor = keySoundCursor = 0;
  LaneSound = {};
  LaneNote = {};
  curMeasure = 0;
  curMeasurePos = 0;
  for (auto& side : GaugeHistory) side.Clear();
  HistoryNext = {};
  HistoryStep = 0;
  CourseExPts.Clear();
  loopCounter = 0;
}

}  // namespace qlm
