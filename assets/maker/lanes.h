// Laying notes under the hands.
#pragma once

#include <vector>

#include "score.h"

namespace assetmaker {

// The keys of one hand from left to right, and its turntable, as channels of a chart.
struct Hand {
  std::vector<int> keys;
  int turntable;
};

// How the notes of a task find their lanes.
enum class Fingering {
  contour,  // higher notes further right, the same note on the same key throughout a phrase of two measures
  rhythm,   // the same place in the bar on the same key, away from what the hand holds already
  turntable,
};

// Which of the notes are played; the others sound by themselves.
enum class Keep { all, quarters, halves, accents };

// One thing that a hand does: the notes of a role, in some of the sections.
struct Task {
  std::vector<SectionName> sections;
  Role role;
  Keep keep;
  Fingering fingering;
  Hand hand;
  int most = 2;  // the note is left out if the hand has so many at once already
};

// For every event of the score its channel: a lane, or 1 for the background. Earlier tasks choose their lanes
// first.
std::vector<int> ChooseLanes(const Score& score, const std::vector<Task>& tasks);

}  // namespace assetmaker
