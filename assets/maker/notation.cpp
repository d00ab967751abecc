// A line is split at its blanks; every word is a bar line, or a name and a length with a slash between.
#include "notation.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace assetmaker {
namespace {

std::optional<int> LengthNamed(std::string_view name) {
  const bool dotted = name.ends_with('.');
  if (dotted) name.remove_suffix(1);
  constexpr std::array<std::pair<std::string_view, int>, 5> lengths = {
      {{"1", 48}, {"2", 24}, {"4", 12}, {"8", 6}, {"16", 3}}};
  for (const auto& [text, ticks] : lengths) {
    if (text == name) return dotted ? ticks * 3 / 2 : ticks;
  }
  return std::nullopt;
}

std::optional<std::vector<Pitch>> OneNote(std::string_view name) {
  if (name == "R") return std::vector<Pitch>{};
  const std::optional<Pitch> pitch = PitchNamed(name);
  if (!pitch) return std::nullopt;
  return std::vector<Pitch>{*pitch};
}

// The tones of a chord in semitones above its root.
std::optional<std::vector<int>> ToneSteps(std::string_view kind) {
  const std::array<std::pair<std::string_view, std::vector<int>>, 7> kinds = {{{"", {0, 4, 7}},
                                                                               {"m", {0, 3, 7}},
                                                                               {"7", {0, 4, 7, 10}},
                                                                               {"m7", {0, 3, 7, 10}},
                                                                               {"maj7", {0, 4, 7, 11}},
                                                                               {"m6", {0, 3, 7, 9}},
                                                                               {"sus4", {0, 5, 7}}}};
  for (const auto& [name, steps] : kinds) {
    if (name == kind) return steps;
  }
  return std::nullopt;
}

std::optional<std::vector<Pitch>> OneChord(std::string_view name) {
  if (name == "R") return std::vector<Pitch>{};
  constexpr Pitch lowest = 55;  // G3: each tone lies in the octave from here
  const std::optional<int> root = TakePitchClass(name);
  if (!root) return std::nullopt;
  const std::optional<std::vector<int>> steps = ToneSteps(name);
  if (!steps) return std::nullopt;
  std::vector<Pitch> pitches;
  for (const int step : *steps) pitches.push_back(lowest + (*root + step - lowest % 12 + 12) % 12);
  std::sort(pitches.begin(), pitches.end());
  return pitches;
}

}  // namespace

std::optional<std::vector<Note>> ReadNamed(std::string_view text, const std::vector<int>& barLengths,
                                           const Naming& naming, NotationError& error) {
  std::vector<Note> notes;
  std::size_t bar = 0;
  int tick = 0, barEnd = barLengths.empty() ? 0 : barLengths[0];
  const auto closeBar = [&] {
    if (tick != barEnd || bar == barLengths.size()) return false;
    if (++bar < barLengths.size()) barEnd += barLengths[bar];
    return true;
  };
  constexpr std::string_view blanks = " \t\n";
  std::size_t end = 0;  // of the last word
  while (true) {
    const std::size_t at = text.find_first_not_of(blanks, end);
    if (at == std::string_view::npos) break;
    end = std::min(text.find_first_of(blanks, at), text.size());
    const std::string_view word = text.substr(at, end - at);
    if (word == "|") {
      if (closeBar()) continue;
      error = {"bar " + std::to_string(bar + 1) + " does not end at its bar line", at};
      return std::nullopt;
    }
    const std::size_t slash = word.rfind('/');
    const auto pitches = naming(word.substr(0, slash));
    const auto length = slash == std::string_view::npos ? std::nullopt : LengthNamed(word.substr(slash + 1));
    if (!pitches || !length) {
      error = {"cannot read \"" + std::string(word) + "\"", at};
      return std::nullopt;
    }
    if (!pitches->empty()) notes.push_back({tick, *length, *pitches});
    tick += *length;
  }
  if (bar != barLengths.size()) {
    error = {"the line ends after bar " + std::to_string(bar), end};
    return std::nullopt;
  }
  return notes;
}

std::optional<std::vector<Note>> ReadNotes(std::string_view text, const std::vector<int>& barLengths,
                                           NotationError& error) {
  return ReadNamed(text, barLengths, OneNote, error);
}

std::optional<std::vector<Note>> ReadChords(std::string_view text, const std::vector<int>& barLengths,
                                            NotationError& error) {
  return ReadNamed(text, barLengths, OneChord, error);
}

std::vector<Note> Transposed(std::vector<Note> notes, int semitones) {
  for (Note& note : notes) {
    for (Pitch& pitch : note.pitches) pitch += semitones;
  }
  return notes;
}

std::vector<Note> Struck(const std::vector<Note>& chords, std::string_view rhythm,
                         const std::vector<int>& barLengths) {
  constexpr int eighth = wholeNote / 8;
  std::vector<Note> struck;
  int barStart = 0;
  for (const int barLength : barLengths) {
    for (int step = 0; step * eighth < barLength; ++step) {
      const int tick = barStart + step * eighth;
      const auto sounding = std::find_if(chords.begin(), chords.end(), [&](const Note& chord) {
        return chord.tick <= tick && tick < chord.tick + chord.length;
      });
      if (rhythm[static_cast<std::size_t>(step) % rhythm.size()] == 'x' && sounding != chords.end()) {
        struck.push_back({tick, eighth, sounding->pitches});
      }
    }
    barStart += barLength;
  }
  return struck;
}

std::vector<Note> Broken(const std::vector<Note>& chords) {
  constexpr int eighth = wholeNote / 8;
  std::vector<Note> broken;
  for (const Note& chord : chords) {
    const int tones = static_cast<int>(chord.pitches.size());
    for (int step = 0; step * eighth < chord.length; ++step) {
      const int turn = step % (2 * tones - 2);
      const int tone = turn < tones ? turn : 2 * tones - 2 - turn;
      broken.push_back({chord.tick + step * eighth, eighth, {chord.pitches[static_cast<std::size_t>(tone)]}});
    }
  }
  return broken;
}

}  // namespace assetmaker
