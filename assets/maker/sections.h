// A song as its composer writes it down: the head and the sections of a score file.
#pragma once

#include <optional>
#include <string>
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

// Lines of music, as they stand in the file.
struct Music {
  std::string text;
  int firstLine = 0;
};

struct Tune {
  int line;  // of its order in the file
  Role role;
  Voice voice;
  Reading reading;
  std::string rhythm;  // of struck chords
  Music music;
  int transposed = 0;  // semitones
};

// A tempo inside a section.
struct Nudge {
  int bar;   // of the section, from 0
  int tick;  // in the bar
  double tempo;
};

// What is seen on a channel of pictures.
struct Show {
  int line;  // of its order in the file
  int channel;
  Music music;  // names of pictures, as long as they are to be seen
};

struct Section {
  int line;  // of its order in the file
  std::string name;
  double tempo = 0;
  std::vector<int> barLengths;  // in ticks
  std::vector<Tune> tunes;
  std::vector<Music> strokes;
  std::vector<Nudge> nudges;
  std::vector<Show> shows;
};

struct SongText {
  SongHead head;
  std::vector<Section> sections;
};

// Reads a score file; the head of assets/songs/march.score explains what one holds. Whether bars add up is
// not looked at. On an error nothing is returned and `error` is set.
std::optional<SongText> ReadSongText(std::string_view text, ScoreError& error);

}  // namespace assetmaker
