// Whole plays by scripted hands. At 125 beats a minute a position unit lasts 10 ms, and at 100 turns a second
// each turn is one unit further, so that every figure can be worked out on paper. The transcripts stand in
// tests/data/golden/hands; with QLM_WRITE_GOLDEN set they are written anew, after a change that is meant.
#include <algorithm>
#include <array>
#include <map>
#include <ostream>
#include <sstream>
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

// What a play comes to.
struct Figures {
  std::array<int32_t, 5> counts{};  // PERFECT, GREAT, GOOD, BAD, POOR
  int32_t maxCombo = 0;

  bool operator==(const Figures&) const = default;
};

void PrintTo(const Figures& figures, std::ostream* out) {
  *out << testing::PrintToString(figures.counts) << ", longest combo " << figures.maxCombo;
}

// What each play has to come to, worked out from Notes(), the hands and these rules alone, and not from the
// stored transcripts: PERFECT is under 3 units, GREAT under 6, GOOD under 18, BAD under 24; a press further
// ahead is a POOR that leaves the note. A lane's note is the first that is not behind the line yet and at
// most 96 units ahead; it stays the lane's until it is hit or 48 units behind. A key that is down cannot go
// down again, so that a lane takes no press within 40 ms behind another.
const std::map<std::string, Figures> kWorkedOut = {
    {"exact", {{39, 0, 0, 0, 0}, 39}},
    // Four units are a GREAT, and as late as the note before is as good as exact.
    {"evenly-late", {{38, 1, 0, 0, 0}, 39}},
    // GREATs, but for two: the early note of the first chord is as early as the note before, and the chord's
    // second late one as late as its first.
    {"alternating", {{2, 37, 0, 0, 0}, 39}},
    // Of five notes one each is 0, 5, -12, 20 and 30 off. Where notes follow closely, a late press meets the
    // next note: on lane 1, 648 is met 24 late by the press for 672, then 696, 720 and 744 are met 18, 19 and
    // 36 ahead, the last again 20 late. On the turntable, 948 is met 12 late by the press for 960, and its
    // own, at 978, is 30 ahead of 1008.
    {"every-grade", {{6, 7, 8, 10, 8}, 3}},
    // While one note waits to be missed, those that pass go unjudged: 6 on lane 1 (600, 624, 672, 696, 744,
    // 768) and 2 on the turntable (960, 1056).
    {"no-hands", {{0, 0, 0, 0, 31}, 0}},
    // All eight keys every 13 units. What is 24 or more ahead is a POOR that leaves the note.
    {"mashing", {{0, 0, 23, 16, 166}, 6}},
    // Each note has a press 30 ahead, a POOR, and an exact one. In the run on lane 1, the early press for a
    // note meets the one before 6 ahead (8 GOODs), and the exact press the next one 24 ahead. On the
    // turntable, 948 is met 18 ahead (BAD) by the early press for 960, 960 12 ahead (GOOD), 1008 48 ahead. So
    // 29 stay exact; 33 notes are hit before the BAD.
    {"early", {{29, 0, 9, 1, 39}, 33}},
    // The first note of the first chord is five units off; all behind it are as late as the one before.
    {"late-chords", {{38, 1, 0, 0, 0}, 39}},
    {"both-directions", {{39, 0, 0, 0, 0}, 39}},
    {"pause", {{39, 0, 0, 0, 0}, 39}},
    // Exact up to 4320 ms; then position = 0.105 ms - 20 from 4100 ms, 0.11 ms - 41 from 4200 ms: later with
    // each note.
    {"speed-keys", {{10, 1, 8, 3, 17}, 12}},
    // From 2500 ms on the tempo is 2 - t / 2000 of the chart's, set anew with two ticks a turn, each of which
    // moves the position to a whole unit from where it was: 288 is struck 21.3 late, and 9 notes pass ahead
    // of their presses, of which four more come 24 to 48 early for the note behind (432, 672, 696 twice). The
    // tempo stands at 0 near 6500 ms; as it comes back, 648 and 672 are met 8.9 and 20.9 off. From 696 on the
    // 22 presses are all 8 units off, more than the GREAT window forgives.
    {"attack-1", {{2, 0, 24, 2, 13}, 23}},
    // Notes fall faster, and not earlier.
    {"attack-2", {{39, 0, 0, 0, 0}, 39}},
    // 0.5 + t / 2000 of the tempo: slow first, so that presses come ahead (2.3 for 288, 19.5 for 336, 26.7
    // for the chord at 384, which stays to be missed, 10.9 for both notes at 432, 28 for both at 480), and
    // then fast: 20 notes are missed, and the presses for the run meet what is ahead of it, 648 27.9, 696 31,
    // 744 39.9 and 864 17.5 late, and 1104 44 early.
    {"attack-3", {{3, 0, 3, 1, 29}, 3}},
    // Notes between 256 and 384 units ahead are thrown with every tick. From 0.15, 0.45 and 0.95 by nine come
    // the lanes 12, 15 and 19, so that what is thrown lies there; the notes up to 480 had come nearer by
    // then. Of those behind, the turntable's six are exact, the press of 12 for 780 meets 792, thrown there,
    // 12 early, presses meet three notes 36 late, and ten are missed.
    {"attack-4", {{17, 0, 1, 0, 13}, 11}},
    // All stands from 2500 to 3510 ms and takes no press; from then on the hands are 101 units ahead.
    {"attack-5", {{14, 3, 1, 0, 23}, 8}},
    // In the order of the presses 0, 1, 2, 3 late, then the first chord's notes 0, 4 and 26 late, which ends
    // it.
    {"pressure", {{4, 2, 0, 0, 1}, 6}},
    // Every second note 26 late. In the run on lane 1 the press for the next meets the note 24 late, and the
    // late one comes while the key is down: 4 POORs for 8 notes.
    {"hazard", {{16, 0, 0, 0, 19}, 2}},
    // 2 a POOR from 100: the 51st goes below 0. No note is hit.
    {"hazard-fails", {{0, 0, 0, 0, 51}, 0}},
    // Of the looks no one moves a note in time: two units are a PERFECT.
    {"option-Hidden", {{39, 0, 0, 0, 0}, 39}},
    {"option-Sudden", {{39, 0, 0, 0, 0}, 39}},
    {"option-Stealth", {{39, 0, 0, 0, 0}, 39}},
    {"option-Accel", {{39, 0, 0, 0, 0}, 39}},
    {"option-Quil", {{39, 0, 0, 0, 0}, 39}},
    {"option-HalfField", {{39, 0, 0, 0, 0}, 39}},
    {"option-FourDMode", {{39, 0, 0, 0, 0}, 39}},
    {"option-RandomHiSpeed", {{39, 0, 0, 0, 0}, 39}},
    {"option-ComboHiSpeed", {{39, 0, 0, 0, 0}, 39}},
    {"option-HiSpeed", {{39, 0, 0, 0, 0}, 39}},
    // Position = ms / 8 under hands of ms / 10: the first note is missed by 48 and more.
    {"option-RealHiSpeed", {{1, 0, 3, 2, 30}, 3}},
    // 0.1, 0.6, 0.35 and 0.85 by nine draw the lanes 11, 16 (drawn again), 14 and 18: in the shuffled map 11
    // leads to 19, on to 12, 14, 15 and back to 11, and 13 to 18 and back. Each note of a line goes a step
    // further. The turntable's six notes, 384 on lane 11, 432 on 14, 888 on 13 and 924 on 18 are where their
    // presses are; 804 on 15 is met 14 late (GOOD) and 672 on 11 22 early (BAD). Of the POORs 21 are misses,
    // 4 presses 26 and 38 late, and 16 presses far ahead.
    {"option-Random", {{10, 0, 1, 1, 41}, 3}},
    // The same lanes in turn, drawn for each note in each frame in which it is 256 to 384 units ahead, in the
    // 100 frames of the pre-roll too, where a chord's second note draws again. Six of the turntable, 192,
    // 384, 240, 480, 828 and 900 are where their presses are. Those of the run on lane 11 meet 624, 696, 768
    // and 888 22 early (BAD). 15 are missed, 780 is met 26 late, and 7 presses come far ahead.
    {"option-ExRandom", {{12, 0, 0, 4, 23}, 3}},
    // Without the 12 notes of lane 1 and the 6 of the turntable.
    {"option-AutoLane", {{21, 0, 0, 0, 0}, 21}},
    // Esc from 4000 ms on ends the play at 4500 ms: 4 steps, 3 and 2 notes of chords.
    {"esc", {{9, 0, 0, 0, 0}, 9}},
    // Double speed from position 480 on: 11 exact notes, then the hands fall behind. One press happens to
    // meet the note at 864, which follows the one that it was meant for.
    {"tempo", {{12, 0, 0, 0, 21}, 11}},
};

int32_t NumberBehind(const std::string& text, const std::string& words, size_t from = 0) {
  const size_t at = text.find(words, from);
  return at == std::string::npos ? -1 : std::stoi(text.substr(at + words.size()));
}

Figures PrintedFigures(const std::string& output) {
  Figures figures;
  std::istringstream counts(output.substr(output.find("\"counts\": [\n    [") + 17));
  for (int32_t& count : figures.counts) {
    counts >> count;
    counts.ignore(1);
  }
  figures.maxCombo = NumberBehind(output, "\"maxCombo\": [");
  return figures;
}

// The figures by the list of the judgements: only a POOR ahead of its time leaves the combo alone.
Figures FiguresOfJudgements(const std::string& output) {
  constexpr int32_t kPerfect = 4;
  constexpr int32_t kGood = 2;
  Figures figures;
  int32_t combo = 0;
  for (size_t at = output.find("{\"turn\""); at != std::string::npos; at = output.find("{\"turn\"", at + 1)) {
    const int32_t grade = NumberBehind(output, "\"grade\": ", at);
    const std::string line = output.substr(at, output.find('}', at) - at);
    ++figures.counts.at(static_cast<size_t>(kPerfect - grade));
    if (grade >= kGood) {
      ++combo;
    } else if (line.find("\"tooEarly\": false") != std::string::npos) {
      combo = 0;
    }
    figures.maxCombo = std::max(figures.maxCombo, combo);
  }
  return figures;
}

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

  // Plays with these hands; the transcript has to be the stored one, and its figures those of its list and
  // those worked out.
  void Play(const std::string& name, const Hands& hands, std::vector<std::string> options = {},
            const std::vector<std::string>& lines = {}) const {
    WriteData(u"hands.txt", hands.Text());
    std::vector<std::string> words = {"play", HandsChart(lines), "--events", At("hands.txt"), "--fps", "100"};
    words.insert(words.end(), options.begin(), options.end());
    const ProcessResult result = Probe(words);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    CompareWithGolden("hands/" + name + ".json", result.output);
    const Figures printed = PrintedFigures(result.output);
    EXPECT_EQ(printed, FiguresOfJudgements(result.output)) << name;
    const auto workedOut = kWorkedOut.find(name);
    ASSERT_NE(workedOut, kWorkedOut.end()) << name;
    EXPECT_EQ(printed, workedOut->second) << name;
  }
};

TEST_F(HandsTest, ExactHandsMakeNothingButPerfects) { Play("exact", Hands().PlayAll({0})); }

TEST_F(HandsTest, OneConstantOffsetIsForgivenBehindTheFirstNote) {
  Play("evenly-late", Hands().PlayAll({4}));
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
  Play("late-chords", hands);
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
