// A song in time: measures, tempo, and everything that sounds.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "notation.h"
#include "plan.h"
#include "voices.h"

namespace assetmaker {

// What a song says about itself.
struct SongHead {
  std::string title, genre;  // in code page 932
  std::string stageFile;
  double level = 0;    // dB by which its voices are louder than those of a song without a level
  bool asMp3 = false;  // how its sounds are stored; otherwise as WAV
  std::map<int, std::string> pictures;  // files by slot
  std::vector<ChartPlan> charts;
};

struct Measure {
  int tick;    // where it begins
  int length;  // in ticks; `wholeNote` unless it is a short one
  std::string section;
  int inSection;  // 0 for the first measure of its section
};

struct Event {
  int tick;
  Role role;
  Sample sample;
};

// A tempo in quarter notes a minute, from this tick on.
struct TempoChange {
  int tick;
  double tempo;
};

// A picture that is shown from this tick on.
struct PictureChange {
  int tick;
  int channel;  // of the chart
  int slot;
};

struct Score {
  SongHead head;
  std::vector<Measure> measures;
  std::vector<TempoChange> tempi;  // the first is at tick 0
  std::vector<Event> events;       // in order of time
  std::vector<PictureChange> pictures;
};

// The tick behind the last measure.
int EndTick(const Score& score);

// When a tick sounds, in seconds from the start.
double SecondsAt(const Score& score, int tick);

// What is wrong with a score file, and on which of its lines.
struct ScoreError {
  int line = 0;  // from 1
  std::string message;
};

// The song of a score file; the head of assets/songs/march.score explains how one is written. Nothing, and
// `error` set, when it cannot be read or its bars do not add up.
std::optional<Score> ReadScore(std::string_view text, ScoreError& error);

}  // namespace assetmaker
