// What the march sounds like: who is how loud, what is heard above the band, and how its tunes differ.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

#include "assets/maker/filters.h"
#include "assets/maker/loudness.h"
#include "assets/maker/mixdown.h"
#include "tests/support/whole_file.h"
#include "wav.h"

namespace assetmaker {
namespace {

// The score and its samples, made once for all tests.
struct Song {
  Song() {
    const std::string text = qlm::WholeFile(QLM_SOURCE_DIR "/assets/songs/march.score");
    ScoreError error;
    score = ReadScore(text, error).value();
    bank.Fill(score);
    sounds = bank.RenderAll();
    whole = Mixdown(score, bank, sounds);
  }

  Sound Only(Role role) const {
    return Mixdown(score, bank, sounds, [=](const Event& event) { return event.role == role; });
  }
  Sound Without(Role role) const {
    return Mixdown(score, bank, sounds, [=](const Event& event) { return event.role != role; });
  }

  Score score;
  SampleBank bank;
  std::vector<Sound> sounds;
  Sound whole;
};

const Song& March() {
  static const Song song;
  return song;
}

const std::vector<std::string> sectionsWithATune = {"theme", "theme-again", "answer", "bridge",
                                                    "turn",  "finale",      "coda"};

TEST(MarchMusic, IsAsLoudAsSongsAreAndLeavesHeadroom) {
  EXPECT_NEAR(ProgrammeLoudness(March().whole), -16.5, 0.5);
  EXPECT_LT(TruePeakDb(March().whole), -3);
}

TEST(MarchMusic, IsWideAndBright) {
  EXPECT_GT(HighsDb(March().whole), -14.5);
  EXPECT_GT(WidthDb(March().whole), -8);
  EXPECT_LT(WidthDb(March().whole), -3);  // it still has a middle
}

TEST(MarchMusic, ChordsAreAtMostSixDecibelsUnderTheTune) {
  const Sound tune = March().Only(Role::melody), chords = March().Only(Role::chords);
  for (const std::string section : {"theme", "theme-again", "answer", "finale", "coda"}) {
    EXPECT_GT(ProgrammeLoudness(DuringSection(March().score, chords, section)),
              ProgrammeLoudness(DuringSection(March().score, tune, section)) - 6)
        << section;
  }
}

// Neither to the ear, which is less keen on lows, nor by its energy.
TEST(MarchMusic, BassIsNeverAboveTheTune) {
  const Sound tune = March().Only(Role::melody), bass = March().Only(Role::bass);
  for (const std::string& section : sectionsWithATune) {
    const Sound tuneThere = DuringSection(March().score, tune, section);
    const Sound bassThere = DuringSection(March().score, bass, section);
    EXPECT_LT(ProgrammeLoudness(bassThere), ProgrammeLoudness(tuneThere)) << section;
    EXPECT_LT(EnergyDb(bassThere), EnergyDb(tuneThere)) << section;
  }
}

void KeepHighs(Sound& sound) {
  for (const double q : {0.54, 1.31}) Apply(Biquad::HighPass(4000, q), sound);
}

// Above 4 kHz a stroke has about as much of the energy as all that sounds with it, for as long as it is
// drawn.
TEST(MarchMusic, PenIsHeardInTheFinale) {
  Sound pen = March().Only(Role::pen), band = March().Without(Role::pen);
  KeepHighs(pen);
  KeepHighs(band);
  const Score& score = March().score;
  double sum = 0;
  int strokes = 0;
  for (const Measure& measure : score.measures) {
    if (measure.section != "finale") continue;
    for (const Event& event : score.events) {
      if (event.role != Role::pen || event.tick < measure.tick || event.tick >= measure.tick + measure.length)
        continue;
      const std::size_t begin = Samples(SecondsAt(score, event.tick)), end = begin + Samples(0.15);
      double ofPen = 0, ofBand = 0;
      for (std::size_t i = begin; i < end; ++i) {
        ofPen += std::pow(pen.left.at(i), 2) + std::pow(pen.right.at(i), 2);
        ofBand += std::pow(band.left.at(i), 2) + std::pow(band.right.at(i), 2);
      }
      const double above = 10 * std::log10(ofPen / ofBand);
      EXPECT_GT(above, -3) << "at " << SecondsAt(score, event.tick);
      sum += above;
      ++strokes;
    }
  }
  ASSERT_GT(strokes, 20);
  EXPECT_GT(sum / strokes, 0);
}

// The notes of a role in a section: its ticks from the section's start, and how far each pitch lies from the
// first.
using Line = std::vector<std::pair<int, int>>;

Line LineOf(Role role, const std::string& section) {
  const Score& score = March().score;
  int begin = -1, end = 0;
  for (const Measure& measure : score.measures) {
    if (measure.section != section) continue;
    if (begin < 0) begin = measure.tick;
    end = measure.tick + measure.length;
  }
  Line line;
  int first = 0;
  for (const Event& event : score.events) {
    if (event.role != role || event.tick < begin || event.tick >= end) continue;
    if (line.empty()) first = event.sample.pitches.back();
    line.push_back({event.tick - begin, event.sample.pitches.back() - first});
  }
  return line;
}

std::set<int> TicksOf(const Line& line) {
  std::set<int> ticks;
  for (const auto& [tick, height] : line) ticks.insert(tick);
  return ticks;
}

TEST(MarchMusic, ThemeReturnsChangedEachTime) {
  const Line first = LineOf(Role::melody, "theme"), again = LineOf(Role::melody, "theme-again"),
             last = LineOf(Role::melody, "finale");
  EXPECT_GT(first.size(), 30u);
  EXPECT_NE(first, again);
  EXPECT_NE(first, last);
  EXPECT_NE(again, last);
  // It is the theme all the same: the first bar of each has the same notes on its beats.
  for (const auto& [tick, height] : first) {
    if (tick >= wholeNote || tick % (wholeNote / 4) != 0) continue;
    for (const Line* other : {&again, &last})
      EXPECT_NE(std::find(other->begin(), other->end(), std::pair(tick, height)), other->end()) << tick;
  }
}

// The fife has a rhythm of its own: more than a third of its notes begin where none of the tune's does.
TEST(MarchMusic, FinaleHasACountermelody) {
  const Line tune = LineOf(Role::melody, "finale"), fife = LineOf(Role::harmony, "finale");
  EXPECT_GT(fife.size(), 40u);
  const std::set<int> ofTune = TicksOf(tune);
  const auto alone =
      std::count_if(fife.begin(), fife.end(), [&](const auto& note) { return !ofTune.contains(note.first); });
  EXPECT_GT(3 * alone, static_cast<long>(fife.size()));
}

// How many of a line's notes begin behind a beat but on an eighth, and how many on a sixteenth.
struct Rhythm {
  long offBeats, sixteenths, notes;
};

Rhythm RhythmOf(const Line& line) {
  constexpr int eighth = wholeNote / 8;
  const auto count = [&](auto is) { return std::count_if(line.begin(), line.end(), is); };
  return {count([](const auto& note) { return note.first % (2 * eighth) == eighth; }),
          count([](const auto& note) { return note.first % eighth != 0; }), static_cast<long>(line.size())};
}

// The theme stamps on the beats and dots; the answer has no dots, and half of it comes behind the beat.
TEST(MarchMusic, AnswerContrastsInRhythm) {
  const Rhythm theme = RhythmOf(LineOf(Role::melody, "theme")),
               answer = RhythmOf(LineOf(Role::melody, "answer"));
  EXPECT_GT(5 * theme.sixteenths, theme.notes);
  EXPECT_EQ(theme.offBeats, 0);
  EXPECT_EQ(answer.sixteenths, 0);
  EXPECT_GE(2 * answer.offBeats, answer.notes);
}

Sound Read(const std::string& name) {
  const stock::Wav wav = stock::ReadWav(stock::SystemSounds() / (name + ".wav"));
  return {Wave(wav.left.begin(), wav.left.end()), Wave(wav.right.begin(), wav.right.end())};
}

// The sounds of moments are a little louder than a song is on the whole, the list's loop stays far behind it.
TEST(MarchMusic, SystemSoundsStandToTheSong) {
  const double song = ProgrammeLoudness(March().whole);
  for (const std::string name : {"sngchg", "sngdecide", "ready", "fade", "res_clear", "res_fail", "class_a"})
    EXPECT_NEAR(Loudness(Read(name)) - song, 0.7, 0.5) << name;
  EXPECT_NEAR(Loudness(Read("select")) - song, -9.3, 0.5);
}

}  // namespace
}  // namespace assetmaker
