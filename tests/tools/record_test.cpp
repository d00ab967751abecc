// Recording, replaying and ranking of whole plays by the probe, and the files that come of it. At 125 beats a
// minute a position unit lasts 10 ms, and at 100 turns a second each turn is one unit further.
#include <filesystem>
#include <string>
#include <vector>

#include "platform/files.h"
#include "tests/support/bytes.h"
#include "tests/tools/probe.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

constexpr int32_t kMsAUnit = 10;
constexpr int32_t kZ = 44;  // the key of lane 11

class RecordTest : public ProbeTest {
 protected:
  // Notes of lane 11 in cells of 12 units, sixteen a measure from measure 1 on.
  std::string LaneChart(const std::vector<std::string>& measures) const {
    std::vector<std::string> lines = {"#PLAYER 1", "#TITLE lane", "#BPM 125", "#RANK 2", "#TOTAL 160"};
    for (size_t i = 0; i < measures.size(); ++i) {
      std::string line = "#00" + std::to_string(i + 1) + "11:";
      for (const char mark : measures[i]) line += mark == 'x' ? "01" : "00";
      lines.push_back(line);
    }
    lines.push_back("#00801:01");
    return Chart("lane.bms", lines);
  }
  // Presses of lane 11 at these positions, each let go 5 units later.
  std::string Presses(const std::vector<int32_t>& positions) const {
    std::string events;
    for (const int32_t pos : positions) {
      events += std::to_string(pos * kMsAUnit) + " down " + std::to_string(kZ) + "\n";
      events += std::to_string((pos + 5) * kMsAUnit) + " up " + std::to_string(kZ) + "\n";
    }
    WriteData(u"hands.txt", events);
    return At("hands.txt");
  }
  ProcessResult Record(const std::string& chart, const std::string& events,
                       std::vector<std::string> options = {}) const {
    options.insert(options.begin(),
                   {"play", chart, "--fps", "100", "--events", events, "--record", At("a.qpd")});
    return Probe(options);
  }
  ProcessResult Replay(const std::string& chart, std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"play", chart, "--fps", "100", "--replay", At("a.qpd")});
    return Probe(options);
  }
};

// Each judgement's note, deviation and grade, which are what a replay must find again.
std::vector<std::string> Judged(const std::string& output) {
  std::vector<std::string> judged;
  for (size_t at = output.find("{\"turn\""); at != std::string::npos; at = output.find("{\"turn\"", at + 1)) {
    const size_t from = output.find("\"obj\"", at);
    judged.push_back(output.substr(from, output.find(", \"tooEarly\"", at) - from));
  }
  return judged;
}

std::string Line(const std::string& output, const std::string& key) {
  const size_t at = output.find("\"" + key + "\":");
  return at == std::string::npos ? std::string() : output.substr(at, output.find('\n', at) - at);
}

// The first row of counts, and the longest combo.
std::string Figures(const std::string& output) {
  const size_t at = output.find('[', output.find("\"counts\"") + 12);
  return output.substr(at, output.find(']', at) - at + 1) + " " + Line(output, "maxCombo");
}

TEST_F(RecordTest, AReplayGivesTheSameJudgements) {
  const std::string chart = LaneChart({"x...x...x...x...", "x...x...x...x...", "x...x...x...x..."});
  // PERFECTs, GREATs and GOODs, early and late.
  const ProcessResult recorded =
      Record(chart, Presses({192, 244, 284, 347, 390, 418, 480, 532, 576, 624, 666, 729}));
  ASSERT_EQ(recorded.exitStatus, 0) << recorded.errors;
  EXPECT_EQ(Judged(recorded.output).size(), 12U);
  const ProcessResult replayed = Replay(chart);
  ASSERT_EQ(replayed.exitStatus, 0) << replayed.errors;
  EXPECT_EQ(Judged(replayed.output), Judged(recorded.output));
  for (const char* const key : {"combo", "maxCombo", "gauge", "score", "jpts", "jptsMax"}) {
    EXPECT_EQ(Line(replayed.output, key), Line(recorded.output, key));
  }
}

// The note at 240 is pressed 24 early, a POOR that leaves it, then exactly; the one at 480 exactly. The
// replay presses a turn later: 23 early is not too early, so the POOR of 24 takes the note and ends the
// combo, and the exact press finds none.
TEST_F(RecordTest, APoorThatLeftItsNoteTakesItInTheReplay) {
  const std::string chart = LaneChart({"....x...........", "........x......."});
  const ProcessResult recorded = Record(chart, Presses({216, 240, 480}));
  EXPECT_EQ(Figures(recorded.output), "[2, 0, 0, 0, 1] \"maxCombo\": [2, 0],");
  const ProcessResult replayed = Replay(chart);
  EXPECT_EQ(Figures(replayed.output), "[1, 0, 0, 0, 1] \"maxCombo\": [1, 0],");
  EXPECT_TRUE(Holds(recorded.output, "\"pos\": 240, \"delta_used\": 24, \"grade\": 0, \"tooEarly\": true"));
  EXPECT_TRUE(Holds(replayed.output, "\"pos\": 240, \"delta_used\": 24, \"grade\": 0, \"tooEarly\": false"));
}

TEST_F(RecordTest, SpeedChangesComeAgainAtTheSamePositions) {
  const std::string chart = LaneChart({"................", "................", "x..............."});
  // 3 and 2 raise the tempo by 0.05 at 1000 ms, position 100; a scroll step follows at 2000 ms.
  WriteData(
      u"hands.txt",
      "900 down 4\n1000 down 3\n1100 up 3\n1200 up 4\n1900 down 5\n2000 down 3\n2100 up 3\n2200 up 5\n");
  const ProcessResult recorded = Record(chart, At("hands.txt"));
  ASSERT_EQ(recorded.exitStatus, 0) << recorded.errors;
  EXPECT_TRUE(Holds(Probe({"dump", At("a.qpd")}).output, "[100, 1026, 105, 0]"));
  // At 131.25 BPM from 100 on, 200 units are passed at 1000 + 100 / 0.105 ms.
  EXPECT_TRUE(Holds(recorded.output, "[1000, 131.25, -5]"));
  // The replay begins with the speed at the play's end, so that 100 is passed behind 100 / 0.105 ms.
  EXPECT_TRUE(Holds(Replay(chart).output, "\"bpmLog\": [\n    [960, 131.25, 0]\n  ]"));
}

TEST_F(RecordTest, TheReplayOfShuffledLanesDrifts) {
  const std::string chart = LaneChart({"x...x...x...x...", "x...x...x...x..."});
  const std::vector<std::string> shuffled = {"--set", "ExRandom=1", "--rnd", "0.1,0.6,0.35,0.85"};
  const ProcessResult recorded = Record(chart, Presses({192, 240, 288, 336, 384, 432, 480, 528}), shuffled);
  ASSERT_EQ(recorded.exitStatus, 0) << recorded.errors;
  EXPECT_TRUE(Holds(Probe({"dump", At("a.qpd")}).output, "\"options2\": 2"));
  const ProcessResult replayed = Replay(chart, {"--rnd", "0.9,0.2,0.45"});
  ASSERT_EQ(replayed.exitStatus, 0) << replayed.errors;
  EXPECT_NE(Judged(replayed.output), Judged(recorded.output));
}

TEST_F(RecordTest, ARecordOfAnotherChartIsRefused) {
  Record(LaneChart({"x..............."}), Presses({192}));
  const ProcessResult result = Replay(LaneChart({"x...x..........."}));
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_TRUE(Holds(result.errors, "this is no record of a play of this chart"));
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(Probe({"play", At("lane.bms"), "--replay", At("none.qpd")}).exitStatus, 1);
}

TEST_F(RecordTest, DumpShowsARecordWhole) {
  Record(LaneChart({"x..............."}), Presses({192}), {"--set", "HiSpeed=2", "--set", "Hidden=1"});
  const ProcessResult result = Probe({"dump", At("a.qpd")});
  ASSERT_EQ(result.exitStatus, 0) << result.errors;
  // One note: 200000 for its PERFECT, 18 of accuracy, and the gauge full from 160 + 100 by 1.
  EXPECT_TRUE(Holds(result.output,
                    "  \"entry\": {\n    \"clear\": true,\n    \"name\": \"QuIl :-\",\n"
                    "    \"nameBytes\": \"5175496c203a2d20\",\n    \"score\": 200000,\n    \"jpts\": 18,\n"
                    "    \"hiSpeed\": 2,\n    \"realHiSpeed\": 1,\n    \"maxCombo\": 1,\n    \"class\": 0,\n"
                    "    \"options1\": 1,\n    \"options2\": 0,\n    \"options3\": 0,\n"
                    "    \"counts\": [1, 0, 0, 0, 0]\n  },\n  \"count\": 3,\n"));
  EXPECT_TRUE(Holds(result.output, "[192, 11, 0, 65535],\n    [197, -11, 0, 0],\n"));
  EXPECT_TRUE(Holds(result.output, "\"bytes\": 1497,\n  \"unread\": 0\n"));
  const std::string whole = ReadBytes(platform::InnerPath(At("a.qpd")));
  WriteData(u"short.qpd", whole.substr(0, 1470));
  EXPECT_TRUE(Holds(Probe({"dump", At("short.qpd")}).output, "\"bytes\": 1470,\n  \"unread\": 9\n"));
}

TEST_F(RecordTest, APlayRanksInATableAndTheNextBelowIt) {
  const std::string chart = LaneChart({"x...x..........."});
  const std::string table = At("a.qsd");
  const auto play = [&](const std::vector<int32_t>& presses, const std::vector<std::string>& more) {
    std::vector<std::string> words = {"play",           chart,      "--fps", "100", "--events",
                                      Presses(presses), "--scores", table};
    words.insert(words.end(), more.begin(), more.end());
    return Probe(words);
  };
  EXPECT_TRUE(Holds(play({192}, {"--name", "half"}).output, "\"rank\": 1\n}"));
  EXPECT_TRUE(Holds(play({192, 240}, {"--name", "whole and more"}).output, "\"rank\": 1\n}"));
  EXPECT_TRUE(Holds(play({192}, {}).output, "\"rank\": 3\n}"));
  EXPECT_TRUE(Holds(play({}, {}).output, "\"rank\": 0\n}"));
  const std::string rows = Probe({"dump", table}).output;
  EXPECT_TRUE(Holds(rows, "\"plays\": 4,\n  \"cleared\": true,\n"));
  const size_t whole =
      rows.find("\"name\": \"whole an\", \"nameBytes\": \"77686f6c6520616e\", \"score\": 200000");
  const size_t half = rows.find("\"name\": \"half\", \"nameBytes\": \"68616c6620202020\", \"score\": 100000");
  const size_t nobody = rows.find("\"name\": \"QuIl :-\"");
  EXPECT_LT(whole, half);
  EXPECT_LT(half, nobody);
  EXPECT_NE(nobody, std::string::npos);
  EXPECT_TRUE(Holds(rows, "\"bytes\": 446,\n  \"unread\": 0\n"));
}

TEST_F(RecordTest, TheRecordHoldsTheNameThatWasTyped) {
  Record(LaneChart({"x..............."}), Presses({192}), {"--scores", At("a.qsd"), "--name", "Me"});
  EXPECT_TRUE(Holds(Probe({"dump", At("a.qpd")}).output, "\"name\": \"Me\""));
}

TEST_F(RecordTest, APlayOfTheMachineOrOfARecordTouchesNoTable) {
  const std::string chart = LaneChart({"x..............."});
  Record(chart, Presses({192}));
  EXPECT_TRUE(Holds(Probe({"play", chart, "--scores", At("a.qsd")}).output, "\"rank\": 0\n}"));
  EXPECT_TRUE(Holds(Replay(chart, {"--scores", At("a.qsd")}).output, "\"rank\": 0\n}"));
  EXPECT_FALSE(fs::exists(At("a.qsd")));
}

TEST_F(RecordTest, AbortedPlaysAreCountedAndNotRanked) {
  WriteData(u"esc.txt", "100 down 1\n");
  const std::string chart = LaneChart({"x...............", "x..............."});
  const ProcessResult result = Probe({"play", chart, "--events", At("esc.txt"), "--scores", At("a.qsd")});
  EXPECT_TRUE(Holds(result.output, "\"rank\": 0\n}"));
  EXPECT_TRUE(Holds(Probe({"dump", At("a.qsd")}).output, "\"plays\": 1,\n  \"cleared\": false,\n"));
}

TEST_F(RecordTest, ShortTablesAreShownAsFarAsTheyGo) {
  WriteData(u"a.qsd", FromHex("05 00 00 00 FF FF 41"));
  const ProcessResult result = Probe({"dump", At("a.qsd")});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_TRUE(Holds(result.output, "\"plays\": 5,\n"));
  EXPECT_TRUE(Holds(result.output, "{\"clear\": true, \"name\": \"\", \"nameBytes\": \"0000000000000000\""));
  EXPECT_TRUE(Holds(result.output, "\"bytes\": 7,\n  \"unread\": 0\n"));
  WriteData(u"long.QSD", std::string(450, '\0'));
  EXPECT_TRUE(Holds(Probe({"dump", At("long.QSD")}).output, "\"bytes\": 450,\n  \"unread\": 4\n"));
}

TEST_F(RecordTest, WrongUsageIsToldAndWhatCannotBeWrittenToo) {
  const std::string chart = LaneChart({"x..............."});
  EXPECT_EQ(Probe({"play", chart, "--record", At("a.qpd"), "--replay", At("b.qpd")}).exitStatus, 2);
  EXPECT_EQ(Probe({"play", chart, "--name", "Me"}).exitStatus, 2);
  EXPECT_EQ(Probe({"play", chart, "--scores", At("a.qsd"), "--name", "羽"}).exitStatus, 2);
  const ProcessResult result = Record(chart, Presses({192}), {"--scores", At("none/a.qsd")});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_TRUE(Holds(result.errors, "none/a.qsd: the file cannot be written"));
}

}  // namespace
}  // namespace qlm
