// The probe's check of a whole library: a line for each chart, whatever one of them does.
#include "tests/tools/probe.h"

namespace qlm {
namespace {

class LibraryTest : public ProbeTest {
 protected:
  LibraryTest() { WriteWav("lib\\x.wav", {1, 2, 3}); }
  // A chart without a fault, with more lines behind.
  std::string Good(const std::string& name, const std::vector<std::string>& lines = {}) const {
    std::vector<std::string> all = {"#PLAYER 1", "#TITLE t", "#ARTIST a",    "#GENRE g",
                                    "#BPM 120",  "#RANK 2",  "#WAV01 x.wav", "#00011:01"};
    all.insert(all.end(), lines.begin(), lines.end());
    return Chart(name, all);
  }
  std::string Line(const std::string& name, const std::string& rest) const {
    return "{\"file\": \"" + At(name) + "\", " + rest + "}\n";
  }
};

TEST_F(LibraryTest, EachChartHasALineInTheOrderOfFoldersAndNames) {
  Good("lib/b.bms", {"#RANK x", "#RANK y", "#00111:1G"});
  Good("lib/A.bms");
  Good("lib/c.bme");
  Good("lib/deep/er/and/d.bms");
  WriteWav("lib\\deep\\er\\and\\x.wav", {1});
  const ProcessResult result = Probe({"library", At("lib")});
  EXPECT_EQ(
      result.output,
      Line("lib/A.bms", "\"state\": \"clean\"") +
          Line("lib/b.bms", "\"state\": \"found\", \"findings\": {\"cell\": 1, \"number\": 2, \"wide\": 1}") +
          Line("lib/c.bme", "\"state\": \"clean\"") + Line("lib/deep/er/and/d.bms", "\"state\": \"clean\"") +
          "{\"charts\": 4, \"clean\": 3, \"found\": 1, \"unreadable\": 0, \"crashed\": 0}\n");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.errors, "") << "no progress where nobody watches";
}

TEST_F(LibraryTest, NothingFoundIsNothingWrong) {
  Good("lib/a.bms");
  Good("other/b.bms");
  WriteWav("other\\x.wav", {1});
  const ProcessResult result = Probe({"library", At("lib"), At("other")});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_TRUE(Holds(result.output,
                    "{\"charts\": 2, \"clean\": 2, \"found\": 0, \"unreadable\": 0, \"crashed\": 0}\n"));
}

// The classic length of a chart leaves its table tempi out.
TEST_F(LibraryTest, WhatTheWideReadingMakesOtherwiseIsNoFault) {
  Good("lib/a.bms", {"#BPM02 240", "#00108:02", "#03011:01"});
  const ProcessResult result = Probe({"library", At("lib")});
  EXPECT_TRUE(Holds(result.output, Line("lib/a.bms", "\"state\": \"clean\", \"findings\": {\"wide\": 1}")));
  EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(LibraryTest, TheOrderIsTheSameWhicheverChartIsDoneFirst) {
  // Each is longer than the one behind it.
  for (int i = 0; i < 20; ++i) {
    std::vector<std::string> notes(static_cast<size_t>(2000 * (20 - i)), "#00201:01");
    if (i % 2 != 0) notes.push_back("#BPM 0");
    Good("lib/a" + std::to_string(10 + i) + ".bms", notes);
  }
  const std::string output = Probe({"library", At("lib")}).output;
  size_t at = 0;
  for (int i = 0; i < 20; ++i) {
    const size_t found = output.find(
        Line("lib/a" + std::to_string(10 + i) + ".bms",
             i % 2 == 0 ? "\"state\": \"clean\"" : "\"state\": \"found\", \"findings\": {\"tempo\": 1}"));
    EXPECT_EQ(found, at) << output;
    at = output.find('\n', at) + 1;
  }
}

// A line of 250 MB takes some times longer than the second of processor time that this run has.
TEST_F(LibraryTest, AChartThatBringsItsProcessDownIsNamedAndTheOthersAreChecked) {
  Good("lib/a.bms");
  std::string endless = "\r\n#00111:";
  while (endless.size() < 250'000'000) endless += "0102030405060708";
  WriteData(u"lib\\b.bms", endless);
  Good("lib/c.bms");
  const ProcessResult result =
      qlm::Run({"sh", "-c", "ulimit -S -t 1; exec " QLM_BINARY_DIR "/qlmprobe library " + At("lib")});
  EXPECT_EQ(result.output,
            Line("lib/a.bms", "\"state\": \"clean\"") +
                Line("lib/b.bms", "\"state\": \"crashed\", \"signal\": 24") +
                Line("lib/c.bms", "\"state\": \"clean\"") +
                "{\"charts\": 3, \"clean\": 2, \"found\": 0, \"unreadable\": 0, \"crashed\": 1}\n");
  EXPECT_EQ(result.exitStatus, 1);
}

TEST_F(LibraryTest, AFolderThatIsNotThereIsTold) {
  const ProcessResult result = Probe({"library", At("none")});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "qlmprobe: " + At("none") + ": there is no such folder\n");
  EXPECT_EQ(Probe({"library"}).exitStatus, 2);
}

}  // namespace
}  // namespace qlm
