// The March of the Quill as its composer writes it down: sections of lines of text.
#pragma once

#include <string_view>
#include <vector>

#include "score.h"

namespace assetmaker {

// How the text of a tune becomes notes.
enum class Reading {
  notes,   // as written
  chords,  // held as long as written
  struck,  // chords, struck in a rhythm
  broken,  // chords, one tone after another
};

struct Tune {
  Role role;
  Voice voice;
  Reading reading;
  std::string_view text;
  int transposed = 0;            // semitones
  std::string_view rhythm = {};  // of struck chords
};

// One line of strokes, a text for each bar; if there are fewer than bars, they begin anew.
using Strokes = std::vector<std::string_view>;

// A tempo inside a section.
struct Nudge {
  int bar;   // of the section, from 0
  int tick;  // in the bar
  double tempo;
};

struct Section {
  SectionName name;
  double tempo;
  std::vector<int> barLengths;  // in ticks
  std::vector<Tune> tunes;
  std::vector<Strokes> strokes;
  std::vector<Nudge> nudges = {};
};

const std::vector<Section>& MarchSections();

}  // namespace assetmaker
