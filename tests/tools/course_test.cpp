// Course files under the probe: what they hold, what their join leaves in memory, and whole plays of them.
// The transcripts stand in tests/data/golden/course; with QLM_WRITE_GOLDEN set they are written anew, after a
// change that is meant.
#include <array>
#include <fstream>
#include <string>
#include <vector>

#include "tests/support/whole_file.h"
#include "tests/tools/golden.h"
#include "tests/tools/probe.h"

namespace qlm {
namespace {

std::string Counted(const std::string& text) {
  return std::string{static_cast<char>(text.size() & 255), static_cast<char>(text.size() >> 8)} + text;
}

std::string Number(int32_t value) {
  std::string bytes;
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift & 255);
  return bytes;
}

class CourseTest : public ProbeTest {
 protected:
  // A row of a title, a length and a path. All its other texts are empty and its numbers 0, but for one
  // player.
  static std::string Row(const std::string& title, int32_t lengthMs, std::string path) {
    for (char& letter : path) letter = letter == '/' ? '\\' : letter;
    std::string row = Counted(title);
    row += Counted("") + Counted("") + Number(0) + Number(1) + Number(0) + Counted("");
    row += Number(2) + Number(0) + Number(0) + Number(lengthMs) + Counted("") + Number(0) + Number(0);
    return row + Counted(path);
  }
  std::string Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(At(name), std::ios::binary) << bytes;
    return At(name);
  }
  std::string Read(const std::string& name) const { return WholeFile(At(name)); }
  // Four stars; two songs at 125 and 250 beats a minute, 10 and 5 ms a unit, with one between that is gone.
  std::string Course() const {
    WriteWav("one.wav", {1, 2, 3});
    WriteWav("two.wav", {1, 2, 3});
    const std::string first =
        Chart("first.bms", {"#TITLE First", "#BPM 125", "#RANK 3", "#WAV01 one.wav", "#00011:01000001"});
    const std::string last =
        Chart("last.bms", {"#TITLE Last", "#BPM 250", "#RANK 1", "#WAV01 two.wav", "#00012:01010101"});
    return Write("day.qcl", "qlmcourse2" + std::string(14, ' ') + "\x04\x03" + Counted("") + Number(4200) +
                                Row("First", 2000, first) + Row("Gone", 1200, At("gone.bms")) +
                                Row("Last", 1000, last));
  }
  std::string OldCourse() const {
    std::string bytes = "qlm_course" + std::string(14, 'x');
    for (int32_t i = 0; i < 6; ++i) {
      bytes += Row("Song", 100, Chart("song.bms", {"#TITLE Song", "#BPM 125", "#00011:01"}));
    }
    return Write("old.qcl", bytes);
  }
};

TEST_F(CourseTest, DumpTellsHeadAndSongs) {
  const ProcessResult result = Probe({"dump", Course()});
  ASSERT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output,
                    "{\n  \"old\": false,\n  \"stars\": 4,\n  \"numsongs\": 3,\n  \"title\": \"\",\n"
                    "  \"length\": 4200,\n  \"songs\": [\n    {\"title\": \"First\", \"artist\": \"\", "));
  EXPECT_TRUE(Holds(result.output, "\"lengthMs\": 1200, "));
  EXPECT_TRUE(Holds(result.output, "\\\\last.bms\"}\n  ],\n  \"bytes\": " +
                                       std::to_string(Read("day.qcl").size()) + ",\n  \"unread\": 0\n}"));
  // Behind the songs one more row is read. This one breaks off.
  Write("tail.qcl", Read("day.qcl") + "\x01");
  EXPECT_TRUE(Holds(Probe({"dump", At("tail.qcl")}).output, "\"unread\": 0\n"));
  Write("tail.qcl", Read("day.qcl") + Row("Extra", 1, "") + "tail");
  const std::string output = Probe({"dump", At("tail.qcl")}).output;
  EXPECT_TRUE(Holds(output, "\"unread\": 4\n"));
  EXPECT_EQ(output.find("Extra"), std::string::npos);
}

TEST_F(CourseTest, OldFilesAreConvertedInMemoryAlone) {
  const std::string course = OldCourse(), bytes = Read("old.qcl");
  const std::string dump = Probe({"dump", course}).output;
  EXPECT_TRUE(Holds(dump, "{\n  \"old\": true,\n  \"stars\": 5,\n  \"numsongs\": 5,\n"));
  EXPECT_TRUE(Holds(dump, "\"length\": 500,\n"));
  EXPECT_TRUE(Holds(Probe({"course", course}).output, "[BMSLoad:Course] numsongs:5"));
  EXPECT_EQ(Probe({"play", course}).exitStatus, 0);
  EXPECT_EQ(Read("old.qcl"), bytes);
}

TEST_F(CourseTest, CourseJoinsTheSongsOfTheFile) {
  const ProcessResult result = Probe({"course", Course()});
  ASSERT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "[BMSLoad:Course] numsongs:3"));
  // What is gone has a chart's start values, and the tempo of the header that was read before it.
  EXPECT_TRUE(Holds(result.output,
                    "\"courseSongs\": [\n    {\"rank\": 3, \"playLevel\": 3, \"bpm\": 125},\n"
                    "    {\"rank\": 2, \"playLevel\": 3, \"bpm\": 120},\n"
                    "    {\"rank\": 1, \"playLevel\": 3, \"bpm\": 250}\n  ]"));
  EXPECT_TRUE(Holds(result.output, "\"wav\": {\n    \"01\": \"two.wav\"\n  }"));
}

TEST_F(CourseTest, FilesThatAreGoneOrNotAloneAreRefused) {
  EXPECT_EQ(Probe({"course", Course(), Course()}).exitStatus, 2);
  for (const std::string command : {"course", "play", "dump"}) {
    const ProcessResult result = Probe({command, At("none.qcl")});
    EXPECT_EQ(result.exitStatus, 1) << command;
    EXPECT_EQ(result.errors, "qlmprobe: " + At("none.qcl") + ": there is no such file\n");
  }
}

TEST_F(CourseTest, OfNoSongsEndsAtOnce) {
  Write("none.qcl", "qlmcourse2");
  const ProcessResult result = Probe({"play", At("none.qcl")});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "\"playCleared\": true"));
  EXPECT_TRUE(Holds(result.output, "\"starts\": []"));
}

// No way of loading may move a note or a sound. The course begins at its last song's tempo, 5 ms a unit, so
// that its first note, 211 units on, is due at 1055 ms and comes in the turn at 1060. The second lies 144
// units of 10 ms behind it.
TEST_F(CourseTest, WholePlayIsTheSameWithEveryLoadMode) {
  const std::string course = Course();
  for (const std::string mode : {"0", "1", "2"}) {
    const ProcessResult result =
        Probe({"play", course, "--fps", "100", "--set", "CourseLoadMode=" + mode, "--log", At("log")});
    ASSERT_EQ(result.exitStatus, 0) << result.errors;
    CompareWithGolden("course/machine.json", result.output);
    EXPECT_TRUE(Holds(result.output, "\"counts\": [\n    [6, 0, 0, 0, 0],"));
  }
}

TEST_F(CourseTest, MissesTakeFromTheHazardGauge) {
  Write("hands", "");
  const ProcessResult result =
      Probe({"play", Course(), "--fps", "100", "--events", At("hands"), "--set", "CourseLoadMode=1"});
  ASSERT_EQ(result.exitStatus, 0) << result.errors;
  CompareWithGolden("course/no-hands.json", result.output);
  // Both notes of the first song are missed, and two of the last one's, as every second note passes while the
  // one before it waits to be missed. A POOR takes 2 from 100.
  EXPECT_TRUE(Holds(result.output, "\"gauge\": [92, 100]"));
}

}  // namespace
}  // namespace qlm
