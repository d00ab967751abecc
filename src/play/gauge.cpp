// Gauge, score and accuracy.
#include "play/gauge.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "platform/clock.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/session.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

// What a grade adds to the gauge.
double GaugeStepOf(size_t side, int32_t grade) {
  const double gain = GaugeGain[side];
  switch (grade) {
    case kPerfect: return HazardGauge ? 0.05 : gain;
    case kGreat: return HazardGauge ? 0.025 : gain;
    case kGood: return HazardGauge ? 0.01 : gain / 3;
    case kBad: return -1;
    default: return HazardGauge ? -2 : -3;
  }
}

double ScoreStepOf(size_t side, int32_t grade) {
  switch (grade) {
    case kPerfect: return 2 * ScorePerNote[side];
    case kGreat: return ScorePerNote[side];
    case kGood: return HazardGauge ? 0 : ScorePerNote[side] / 2;
    default: return 0;
  }
}

void AddToGauge(size_t side, double step) { Assign(Gauge[side], Narrow(Gauge[side] + step)); }

// One step of a shown figure towards the real one; once less than 0.1 away it is there.
double Eased(double shown, double real, double part) { return shown + (real - shown) * part; }
bool IsThere(double shown, double real) { return std::abs(real - shown) < 0.1; }

void Ease(float& shown, float real, double part) {
  if (shown == real) return;
  Assign(shown, Narrow(Eased(shown, real, part)));
  if (IsThere(shown, real)) shown = real;
}

void Ease(double& shown, double real, double part) {
  if (shown == real) return;
  shown = Eased(shown, real, part);
  if (IsThere(shown, real)) shown = real;
}

}  // namespace

void RateGrade(size_t side, int32_t grade, float delta) {
  AddToGauge(side, GaugeStepOf(side, grade));
  // Quirk: the surcharge of a missed note goes by the number: a press or a record that is off by exactly as
  // much pays it too.
  if (grade == kPoor && !HazardGauge && delta == kMissUnits) AddToGauge(side, -3);
  Score[side] += ScoreStepOf(side, grade);
}

void BoundGauge(size_t side) {
  if (Gauge[side] >= 100) Gauge[side] = 100;
  if (Gauge[side] >= 0) return;
  Gauge[side] = 0;
  if (!HazardGauge) return;
  PlayFailed = true;
  PlayFailedTime = platform::Now();
}

void AddJPts(size_t side, float delta) {
  double points = kJPtsANote - double{delta};
  if (delta >= kJPtsANote) points *= 2;
  Assign(JPts[side], Narrow(JPts[side] + points));
  JPtsMax[side] += kJPtsANote;
}

int32_t ExPts() { return JudgeCount[0][0] * 2 + JudgeCount[0][1]; }

void EaseShownFigures() {
  if (Fps <= 1) return;
  const double step = 1 / Fps;
  for (size_t side = 0; side < Gauge.size(); ++side) {
    Ease(GaugeShown[side], Gauge[side], step * 10);
    Ease(ScoreShown[side], Score[side], step * 18);
    Ease(JPtsShown[side], JPts[side], step * 18);
  }
}

}  // namespace qlm
