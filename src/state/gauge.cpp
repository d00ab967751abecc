// Start values of gauge and score.
#include "state/gauge.h"

namespace qlm {

void ResetGauge() {
  Gauge = GaugeShown = GaugeGain = {};
  Score = ScoreShown = ScorePerNote = {};
  JPts = JPtsShown = {};
  JPtsMax = {};
  JudgeCount = {};
  Combo = MaxCombo = {};
  HazardGauge = false;
}

}  // namespace qlm
