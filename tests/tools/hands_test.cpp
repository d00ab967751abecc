// Whole plays by scripted hands. At 125 beats a minute a position unit lasts 10 ms, and at 100 turns a second
// each turn is one unit further, so that every figure can be worked out on paper. The transcripts stand in
// tests/data/golden/hands; with QLM_WRITE_GOLDEN set they are written anew, after a change that is meant.
#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/tools/golden.h"
#include "tests/tools/probe.h"

namespace qlm {
namespace {

constexpr int32_t kMsAUnit = 10;
constexpr int32_t kMeasure = 192;
constexpr int32_t kCells = 16;  // of a line of the chart, 12 units each

struct Note {
  int32_t channel;
  int32_t pos;
};

// Steps of one hand, then chords, then a run on one lane and over all lanes, then the turntable.
std::vector<Note> Notes() {
  std::vector<Note> notes;
  for (const int32_t beat : {0, 48, 96, 144}) notes.push_back({11 + beat / 48, kMeasure + beat});
  for (const int32_t channel : {11, 13, 15}) notes.push_back({channel, 2 * kMeasure});
  for (const int32_t channel : {12, 14}) notes.push_back({channel, 2 * kMeasure + 48});
  for (const int32_t channel : {18, 19}) notes.push_back({channel, 2 * kMeasure + 96});
  for (int32_t i = 0; i < 8; ++i) notes.push_back({11, 3 * kMeasure + 24 * i});
  constexpr std::array<int32_t, 8> kLanes = {11, 12, 13, 14, 15, 18, 19, 16};
  for (int32_t i = 0; i < 16; ++i)
    notes.push_back({kLanes[static_cast<size_t>(i) % 8], 4 * kMeasure + 12 * i});
  for (int32_t i = 0; i < 4; ++i) notes.push_back({16, 5 * kMeasure + 48 * i});
  return notes;
}

// The key that the default map gives a lane.
int32_t KeyOf(int32_t channel) {
  static const std::map<int32_t, int32_t> kKeys = {{11, 44}, {12, 31}, {13, 45}, {14, 32},
                                                   {15, 46}, {16, 57}, {18, 33}, {19, 47}};
  return kKeys.at(channel);
}

// Key events by time; those of one time in the order in which they were added.
class Hands {
 public:
  Hands& At(int32_t ms, const std::string& way, int32_t key) {
    events_.insert({ms, std::to_string(ms) + " " + way + " " + std::to_string(key)});
    return *this;
  }
  Hands& Tap(int32_t ms, int32_t key) { return At(ms, "down", key).At(ms + 40, "up", key); }
  // Every note, `offsets` units behind its place in turn.
  Hands& PlayAll(const std::vector<int32_t>& offsets) {
    size_t next = 0;
    for (const Note& note : Notes()) {
      Tap((note.pos + offsets[next++ % offsets.size()]) * kMsAUnit, KeyOf(note.channel));
    }
    return *this;
  }
  std::string Text() const {
    std::string text;
    for (const auto& [ms, line] : events_) text += line + "\n";
    return text;
  }

 private:
  std::multimap<int32_t, std::string> events_;
};

// PERFECT to POOR as the transcript has them.
std::string Counts(const std::string& figures) { return "\"counts\": [\n    [" + figures + "],"; }

class HandsTest : public ProbeTest {
 protected:
  // The notes as lines of a chart, with a sound each lane and a last measure of rest.
  std::string HandsChart(std::vector<std::string> lines = {}) const {
    std::map<std::pair<int32_t, int32_t>, std::string> cells;
    for (const Note& note : Notes()) {
      std::string& line = cells[{note.pos / kMeasure, note.channel}];
      if (line.empty()) line = std::string(kCells * 2, '0');
      line.replace(static_cast<size_t>(note.pos % kMeasure / 12) * 2, 2, std::to_string(note.channel));
    }
    lines.insert(lines.begin(), {"#PLAYER 1", "#TITLE hands", "#BPM 125", "#RANK 2", "#TOTAL 160"});
    for (const auto& [place, line] : cells) {
      lines.push_back("#00" + std::to_string(place.first) + std::to_string(place.second) + ":" + line);
    }
    lines.push_back("#00601:01");
    return Chart("hands.bms", lines);
  }

  // Plays with these hands and compares the transcript; gives the probe's output.
  std::string Play(const std::string& name, const Hands& hands, std::vector<std::string> options = {},
                   const std::vector<std::string>& lines = {}) const {
    WriteData(u"hands.txt", hands.Text());
    std::vector<std::string> words = {"play", HandsChart(lines), "--events", At("hands.txt"), "--fps", "100"};
    words.insert(words.end(), options.begin(), options.end());
    const ProcessResult result = Probe(words);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    CompareWithGolden("hands/" + name + ".json", result.output);
    return result.output;
  }
};

TEST_F(HandsTest, ExactHandsMakeNothingButPerfects) {
  const std::string output = Play("exact", Hands().PlayAll({0}));
  EXPECT_TRUE(Holds(output, Counts("39, 0, 0, 0, 0")));
}

TEST_F(HandsTest, OneConstantOffsetIsForgivenBehindTheFirstNote) {
  const std::string output = Play("evenly-late", Hands().PlayAll({4}));
  EXPECT_TRUE(Holds(output, Counts("38, 1, 0, 0, 0")));
}

TEST_F(HandsTest, AlternatingOffsetsAreGreats) { Play("alternating", Hands().PlayAll({4, -4})); }

TEST_F(HandsTest, EveryGradeInTurn) { Play("every-grade", Hands().PlayAll({0, 5, -12, 20, 30})); }

TEST_F(HandsTest, NoHandsMissEverything) { Play("no-hands", Hands()); }

TEST_F(HandsTest, MashingAllKeys) {
  Hands hands;
  for (int32_t ms = 1000; ms < 12'000; ms += 130) {
    for (const int32_t channel : {11, 12, 13, 14, 15, 16, 18, 19}) hands.Tap(ms, KeyOf(channel));
  }
  Play("mashing", hands);
}

TEST_F(HandsTest, EarlyPressesCostGaugeAndLeaveTheNote) {
  Hands hands;
  for (const Note& note : Notes()) hands.Tap((note.pos - 30) * kMsAUnit, KeyOf(note.channel));
  Play("early", hands.PlayAll({0}));
}

TEST_F(HandsTest, ChordsStruckLateInOneGo) {
  Hands hands;
  for (const Note& note : Notes()) {
    const bool chord = note.pos / kMeasure == 2;
    hands.Tap((note.pos + (chord ? 5 : 0)) * kMsAUnit, KeyOf(note.channel));
  }
  // The first note of the first chord is five units off; all behind it are as late as the one before.
  EXPECT_TRUE(Holds(Play("late-chords", hands), Counts("38, 1, 0, 0, 0")));
}

TEST_F(HandsTest, BothDirectionsOfTheTurntable) {
  Hands hands;
  bool left = true;
  for (const Note& note : Notes()) {
    const bool scratch = note.channel == 16;
    hands.Tap(note.pos * kMsAUnit, scratch && (left = !left) ? 30 : KeyOf(note.channel));
  }
  const std::string keys = At("keys.dat");
  ASSERT_EQ(Probe({"keys", keys, "--set", "30=17"}).exitStatus, 0);
  Play("both-directions", hands, {"--set", "keys=" + keys});
}

TEST_F(HandsTest, APauseStopsTheNotes) {
  constexpr int32_t kF12 = 88;
  Hands hands;
  hands.Tap(3000, kF12).Tap(3500, 45).Tap(5000, kF12);
  for (const Note& note : Notes()) {
    const int32_t ms = note.pos * kMsAUnit;
    hands.Tap(ms < 3000 ? ms : ms + 2000, KeyOf(note.channel));
  }
  Play("pause", hands);
}

TEST_F(HandsTest, ScrollAndTempoKeys) {
  Hands hands;
  hands.At(500, "down", 5).Tap(600, 3).Tap(700, 3).Tap(800, 2).At(900, "up", 5);  // scroll: up, up, down
  hands.At(4000, "down", 4).Tap(4100, 3).Tap(4200, 3).At(4300, "up", 4);          // tempo: up, up
  Play("speed-keys", hands.PlayAll({0}));
}

// The pad's 9 strikes one of five, by Rnd.
TEST_F(HandsTest, EveryAttack) {
  int32_t kind = 0;
  for (const char* const number : {"0.1", "0.3", "0.5", "0.7,0.15,0.45,0.95", "0.9"}) {
    Play("attack-" + std::to_string(++kind), Hands().Tap(2500, 73).PlayAll({0}), {"--rnd", number});
  }
}

TEST_F(HandsTest, PressureEndsThePlayWithTheFirstMiss) {
  Play("pressure", Hands().PlayAll({0, 1, 2, 3, 4, 26}), {"--set", "Pressure=1"});
}

TEST_F(HandsTest, TheHazardGaugeHoldsOut) { Play("hazard", Hands().PlayAll({0, 26}), {"--hazard"}); }

TEST_F(HandsTest, TheHazardGaugeEndsThePlay) {
  // Ten presses of each key far ahead of each note: 2 each.
  Hands hands;
  for (const Note& note : Notes()) {
    for (int32_t i = 0; i < 5; ++i) hands.Tap((note.pos - 60 + 5 * i) * kMsAUnit, KeyOf(note.channel));
  }
  Play("hazard-fails", hands, {"--hazard"});
}

TEST_F(HandsTest, EveryOption) {
  for (const char* const option : {"Hidden", "Sudden", "Stealth", "Accel", "Quil", "HalfField", "Random",
                                   "ExRandom", "FourDMode", "RandomHiSpeed", "ComboHiSpeed"}) {
    Play(std::string("option-") + option, Hands().PlayAll({2}),
         {"--set", std::string(option) + "=1", "--rnd", "0.1,0.6,0.35,0.85"});
  }
  Play("option-HiSpeed", Hands().PlayAll({2}), {"--set", "HiSpeed=8"});
  Play("option-RealHiSpeed", Hands().PlayAll({2}), {"--set", "RealHiSpeed=1.25"});
  Play("option-AutoLane", Hands().PlayAll({2}), {"--set", "AutoLane=11+16"});
}

TEST_F(HandsTest, EscHeldEndsThePlay) {
  constexpr int32_t kEsc = 1;
  Play("esc", Hands().At(4000, "down", kEsc).PlayAll({0}));
}

TEST_F(HandsTest, TempoChangesUnderTheHands) {
  Play("tempo", Hands().PlayAll({0}), {}, {"#BPM01 250", "#00208:0001"});
}

}  // namespace
}  // namespace qlm
