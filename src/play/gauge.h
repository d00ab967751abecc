// What a judgement is worth: gauge, score, accuracy and class, and the easing of the figures on screen.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qlm {

// J-PTS that one judgement can earn: the count of judgements is JPtsMax over it.
constexpr int32_t kJPtsANote = 18;

// Gauge and score of one judgement. `side` is a score side, `grade` 4 PERFECT to 0 POOR, `delta` the
// deviation behind the forgiveness of even timing: a POOR of exactly kMissUnits costs the normal gauge twice
// as much.
void RateGrade(size_t side, int32_t grade, float delta);
// Keeps the gauge from 0 to 100. A hazard gauge that went below 0 has failed the play.
void BoundGauge(size_t side);
// Accuracy of one judgement: 18 for a dead-on note, lateness past 18 units counts double.
void AddJPts(size_t side, float delta);

// ExPTS so far: two for a PERFECT, one for a GREAT of side 0.
int32_t ExPts();

// Draws the shown gauge, score and J-PTS nearer to the real ones, at 10 and 18 times the way a second.
// Nothing happens while the frame rate is 1 or less.
void EaseShownFigures();

}  // namespace qlm
