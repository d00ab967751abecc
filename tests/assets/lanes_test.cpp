// How notes find their lanes.
#include "assets/maker/lanes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace assetmaker {
namespace {

struct Laid {
  int tick;
  Pitch pitch;  // 0 for strokes
  int channel;  // 1 for the background
};

// What the tasks of a chart make of some music: a first bar of rest, and behind it this section.
std::vector<Laid> Lay(const std::string& tasks, const std::string& bars, const std::string& music,
                      int keys = 7) {
  const std::string text = "chart a.bms [A] keys " + std::to_string(keys) + " level 1 rank 2 total 200\n" +
                           tasks +
                           "section start\nbeats 4\ntempo 120\n"
                           "section tune\nbeats" +
                           bars + "\ntempo 120\n" + music;
  ScoreError error;
  const auto score = ReadScore(text, error);
  EXPECT_TRUE(score) << error.line << ": " << error.message;
  if (!score) return {};
  const std::vector<int> channels = ChooseLanes(*score, score->head.charts.front().tasks);
  std::vector<Laid> laid;
  for (std::size_t i = 0; i < channels.size(); ++i) {
    const std::vector<Pitch>& pitches = score->events[i].sample.pitches;
    laid.push_back({score->events[i].tick - wholeNote, pitches.empty() ? 0 : pitches.back(), channels[i]});
  }
  return laid;
}

// Keys from left to right; the channels 18 and 19 lie behind 15.
int PlaceOf(int channel) { return channel >= 18 ? channel - 13 : channel - 11; }

TEST(Lanes, FirstBarIsNeverUnderTheHands) {
  const std::string text =
      "chart a.bms [A] keys 7 level 1 rank 2 total 200\n"
      "  melody all contour\n"
      "section tune\nbeats 4 4\ntempo 120\n"
      "part melody piano notes\n  D5/4 E5/4 F5/4 G5/4 | A5/2 D5/2 |\n";
  ScoreError error;
  const auto score = ReadScore(text, error);
  ASSERT_TRUE(score) << error.message;
  const std::vector<int> channels = ChooseLanes(*score, score->head.charts.front().tasks);
  ASSERT_EQ(channels.size(), 6u);
  EXPECT_EQ(std::vector<int>(channels.begin(), channels.begin() + 4), (std::vector<int>{1, 1, 1, 1}));
  EXPECT_GT(channels[4], 10);
  EXPECT_GT(channels[5], 10);
}

TEST(Lanes, HigherNotesOfAPhraseLieFurtherRight) {
  const std::vector<Laid> laid = Lay("  melody all contour\n", " 4 4",
                                     "part melody piano notes\n"
                                     "  D5/4 A5/4 F5/4 D5/4 | Bb5/4 A5/4 E5/4 D5/4 |\n");
  std::map<Pitch, int> keys;
  for (const Laid& note : laid) {
    const auto [key, isNew] = keys.emplace(note.pitch, PlaceOf(note.channel));
    EXPECT_EQ(key->second, PlaceOf(note.channel)) << "a note changes its key: " << note.pitch;
  }
  ASSERT_EQ(keys.size(), 5u);
  int before = -1;
  for (const auto& [pitch, key] : keys) {
    EXPECT_GT(key, before) << pitch;
    before = key;
  }
}

TEST(Lanes, PitchesThatAreTooManyShareNeighbouringKeys) {
  const std::vector<Laid> laid = Lay("  melody all contour\n", " 4 4",
                                     "part melody piano notes\n"
                                     "  C5/8 D5/8 E5/8 F5/8 G5/8 A5/8 B5/8 C6/8 | D6/1 |\n",
                                     5);
  ASSERT_EQ(laid.size(), 9u);
  std::set<int> keys;
  for (std::size_t i = 0; i < laid.size(); ++i) {
    keys.insert(laid[i].channel);
    if (i > 0) {
      EXPECT_GE(laid[i].channel, laid[i - 1].channel);
    }
  }
  EXPECT_EQ(keys, (std::set<int>{11, 12, 13, 14, 15}));
}

// Two pitches at a time: seven phrases of eight notes give each of the seven keys its eight.
TEST(Lanes, KeysHaveTheirShareInTurn) {
  std::string bars, music = "part melody piano notes\n";
  for (int phrase = 0; phrase < 7; ++phrase) {
    bars += " 4 4";
    music += "  D5/4 A5/4 D5/4 A5/4 | D5/4 A5/4 D5/4 A5/4 |\n";
  }
  std::map<int, int> notes;
  for (const Laid& note : Lay("  melody all contour\n", bars, music)) ++notes[note.channel];
  EXPECT_EQ(notes.size(), 7u);
  for (const auto& [channel, count] : notes) EXPECT_EQ(count, 8) << channel;
}

TEST(Lanes, APlaceInTheBarKeepsItsKeyForAPhrase) {
  const std::vector<Laid> laid =
      Lay("  field all rhythm\n", " 4 4 4 4", "strokes\n  X..x X... X.xx .... |\n");
  std::map<std::pair<int, int>, std::set<int>> keys;  // by phrase and place
  std::map<int, int> notes;
  for (const Laid& note : laid) {
    keys[{note.tick / (2 * wholeNote), note.tick % wholeNote}].insert(note.channel);
    ++notes[note.channel];
  }
  EXPECT_EQ(keys.size(), 2u * 6);
  for (const auto& [place, channels] : keys) EXPECT_EQ(channels.size(), 1u) << place.second;
  EXPECT_EQ(notes.size(), 7u);  // 24 notes on 7 keys
  for (const auto& [channel, count] : notes) EXPECT_LE(count, 4) << channel;
}

TEST(Lanes, AKeyRestsBetweenQuickStrokes) {
  std::map<int, int> last;
  for (const Laid& note : Lay("  field all rhythm\n", " 4 4", "strokes\n  XxXx XxXx XxXx XxXx |\n", 5)) {
    const auto before = last.find(note.channel);
    if (before != last.end()) {
      EXPECT_GE(note.tick - before->second, 2 * sixteenth) << note.tick;
    }
    last[note.channel] = note.tick;
  }
}

}  // namespace
}  // namespace assetmaker
