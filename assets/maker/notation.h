// Music written as text, read into notes.
//
// A line of notes:  "D5/4 A4/8. A4/16 R/2 |"   pitch/length, R for a rest, a dot for half as long again
// A line of chords: "Dm/1 | C7/2 F/2 |"        chord name/length
// Every bar ends with a bar line, and has to have its full length there.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pitch.h"

namespace assetmaker {

// Time in the score: 48 ticks are a whole note, 3 a sixteenth.
constexpr int wholeNote = 48;
constexpr int sixteenth = wholeNote / 16;

// One or more pitches at once.
struct Note {
  int tick;    // from the start of the line
  int length;  // in ticks
  std::vector<Pitch> pitches;
};

// What is wrong with a line of music, for whoever wrote it.
struct NotationError {
  std::string message;
  std::size_t at = 0;  // where in the text
};

// `barLengths` are those of the bars that the line has to fill. On an error nothing is returned and `error`
// is set.
std::optional<std::vector<Note>> ReadNotes(std::string_view text, const std::vector<int>& barLengths,
                                           NotationError& error);

// As ReadNotes; each chord lies close together around middle C.
std::optional<std::vector<Note>> ReadChords(std::string_view text, const std::vector<int>& barLengths,
                                            NotationError& error);

// What the words of a line stand for: the pitches of a name, none of them for a rest; nothing for an unknown
// name.
using Naming = std::function<std::optional<std::vector<Pitch>>(std::string_view name)>;

// As ReadNotes, for lines whose words are names of another kind.
std::optional<std::vector<Note>> ReadNamed(std::string_view text, const std::vector<int>& barLengths,
                                           const Naming& naming, NotationError& error);

// The same notes moved by so many semitones.
std::vector<Note> Transposed(std::vector<Note> notes, int semitones);

// The chords struck anew at every 'x' of a bar's rhythm, which has one character an eighth: "..x...x.".
std::vector<Note> Struck(const std::vector<Note>& chords, std::string_view rhythm,
                         const std::vector<int>& barLengths);

// The chords' tones one after another, an eighth each, up and down again from the start of every chord.
std::vector<Note> Broken(const std::vector<Note>& chords);

}  // namespace assetmaker
