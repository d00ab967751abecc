// What a score says about its charts: what a sound does in the music, and what of it lies under the hands.
#pragma once

#include <string>
#include <vector>

#include "voices.h"

namespace assetmaker {

// What a sound does in the music; charts choose by it what lies under the hands.
enum class Role {
  melody,
  harmony,
  bells,
  chords,
  pad,
  bass,
  field,
  lowDrum,
  metal,
  brush,
  pen,
  tap,
  scratch
};

// How the notes of a task find their lanes.
enum class Fingering {
  contour,  // higher notes further right, the same note on the same key throughout a phrase of two measures
  rhythm,   // the same place in the bar on the same key, away from what the hand holds already
  turntable,
};

// Which of the notes are played; the others sound by themselves.
enum class Keep { all, eighths, quarters, halves, accents };

// The keys of one hand from left to right, and its turntable, as channels of a chart.
struct Hand {
  std::vector<int> keys;
  int turntable = 0;
};

// One thing that a hand does: the notes of a role, in some of the sections.
struct Task {
  std::vector<std::string> sections;  // none means all
  Role role;
  Keep keep;
  Fingering fingering;
  Hand hand;
  int most = 2;  // the note is left out if the hand has so many at once already
};

// What a press on an idle lane sounds like from the start of these sections on.
struct IdleSound {
  Voice voice;
  std::vector<std::string> sections;
};

struct ChartPlan {
  int line;  // of its order in the score file
  std::string fileName;
  std::string suffix;  // of the title, as in "[7KEYS]"
  int keys;            // 5, 7, or 14 for two hands
  int playLevel;
  int rank;   // 0 to 3; higher is easier
  int total;  // what a perfect play adds to the gauge, in percent
  std::vector<Task> tasks;
  std::vector<IdleSound> idle;
};

}  // namespace assetmaker
