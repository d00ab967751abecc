// The command `scan`, and what `dump` prints of list files.
#include <cstdint>
#include <filesystem>

#include "tests/tools/probe.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

class ScanCommandTest : public ProbeTest {
 protected:
  ScanCommandTest() {
    fs::create_directories(At("bms/deep/deeper"));
    Chart("bms/a.bms", {"#TITLE b", "#PLAYLEVEL 9", "#BPM 125", "#00111:01"});
    Chart("bms/deep/b.bme", {"#TITLE a", "#PLAYLEVEL 12"});
    Chart("bms/deep/deeper/c.bms", {"#TITLE c"});
  }

  // The titles of an output, one behind the other.
  static std::string Titles(const std::string& output) {
    const std::string key = "\"title\": \"";
    std::string titles;
    for (size_t at = output.find(key); at != std::string::npos; at = output.find(key, at + 1)) {
      titles += output[at + key.size()];
    }
    return titles;
  }
};

TEST_F(ScanCommandTest, RowsAreThoseOfTheHeaderWithTheirPath) {
  const ProcessResult result = Probe({"scan", At("bms/deep")});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "") << "no progress where nobody watches";
  std::string folder = At("bms/deep/");
  for (size_t at = 0; (at = folder.find('/', at)) != std::string::npos; at += 2)
    folder.replace(at, 1, "\\\\");
  EXPECT_TRUE(Holds(result.output,
                    "{\n  \"rows\": [\n"
                    "    {\"title\": \"a\", \"artist\": \"\", \"genre\": \"\", \"bpm\": 0, \"player\": 1, "
                    "\"playLevel\": 12, \"midiFile\": \"\", \"rank\": 2, \"volWav\": 0, \"total\": 0, "
                    "\"lengthMs\": 0, \"stageFile\": \"\", \"numWav\": 0, \"numBmp\": 0, \"path\": \"" +
                        folder + "b.bme\"},\n"));
  EXPECT_TRUE(result.output.ends_with("],\n  \"unreadable\": []\n}\n")) << result.output;
}

TEST_F(ScanCommandTest, DepthIsLimitedUnlessLifted) {
  EXPECT_EQ(Titles(Probe({"scan", At("bms")}).output), "ba");
  EXPECT_EQ(Titles(Probe({"scan", At("bms"), "--no-limit"}).output), "bac");
}

TEST_F(ScanCommandTest, FoldersFollowEachOther) {
  EXPECT_EQ(Titles(Probe({"scan", At("bms/deep/deeper"), At("bms")}).output), "cba");
}

TEST_F(ScanCommandTest, RowsAreSortedOnDemand) {
  EXPECT_EQ(Titles(Probe({"scan", At("bms"), "--no-limit", "--sort", "title"}).output), "abc");
  EXPECT_EQ(Titles(Probe({"scan", At("bms"), "--no-limit", "--sort", "level"}).output), "cba");
  const ProcessResult wrong = Probe({"scan", At("bms"), "--sort", "length"});
  EXPECT_EQ(wrong.exitStatus, 2);
  EXPECT_TRUE(Holds(wrong.errors, "--sort wants level, genre, title or artist"));
}

TEST_F(ScanCommandTest, WhatCannotBeReadIsListedWithTheReason) {
  fs::create_symlink("nowhere", At("bms/x.bms"));
  const ProcessResult result = Probe({"scan", At("bms")});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(Titles(result.output), "ba");
  EXPECT_TRUE(Holds(result.output, "x.bms\", \"why\": \"It is no file, or a link to none\"}"));
}

TEST_F(ScanCommandTest, FolderThatIsNoneIsRefused) {
  for (const char* name : {"none", "bms/a.bms"}) {
    const ProcessResult result = Probe({"scan", At("bms"), At(name)});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(Holds(result.errors, At(name) + ": there is no such folder\n"));
  }
}

TEST_F(ScanCommandTest, ListIsWrittenAndDumped) {
  EXPECT_EQ(Probe({"scan", At("bms"), "--sort", "title", "--out", At("a.qbl")}).exitStatus, 0);
  const ProcessResult dump = Probe({"dump", At("a.qbl")});
  EXPECT_EQ(dump.exitStatus, 0);
  EXPECT_TRUE(dump.output.starts_with("{\n  \"lastSong\": 1,\n  \"rows\": [\n    {\"title\": \"a\""))
      << dump.output;
  EXPECT_TRUE(dump.output.ends_with("],\n  \"bytes\": " + std::to_string(fs::file_size(At("a.qbl"))) +
                                    ",\n  \"unread\": 0\n}\n"))
      << dump.output;
  fs::resize_file(At("a.qbl"), fs::file_size(At("a.qbl")) + 3);
  EXPECT_TRUE(Probe({"dump", At("a.qbl")}).output.ends_with("\"unread\": 3\n}\n"));
  fs::resize_file(At("a.qbl"), 10);
  EXPECT_EQ(Probe({"dump", At("a.qbl")}).output,
            "{\n  \"lastSong\": -1,\n  \"rows\": [],\n  \"bytes\": 10,\n  \"unread\": 0\n}\n");
}

TEST_F(ScanCommandTest, EmptyScanWritesNoList) {
  fs::create_directory(At("empty"));
  EXPECT_EQ(Probe({"scan", At("empty"), "--out", At("a.qbl")}).exitStatus, 0);
  EXPECT_FALSE(fs::exists(At("a.qbl")));
}

TEST_F(ScanCommandTest, ListThatCannotBeWrittenIsTold) {
  const ProcessResult result = Probe({"scan", At("bms"), "--out", At("none/a.qbl")});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_TRUE(Holds(result.errors, "the file cannot be written"));
}

TEST_F(ScanCommandTest, HelpNamesTheCommand) {
  EXPECT_TRUE(Holds(Probe({"--help"}).output, "\n  scan "));
  EXPECT_TRUE(Holds(Probe({"scan", "--help"}).output, "Usage: qlmprobe scan FOLDER..."));
}

}  // namespace
}  // namespace qlm
