// Score tables and their files.
#include "files/scores.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <thread>

#include "base/hooks.h"
#include "base/paths.h"
#include "files/data_folder.h"
#include "platform/files.h"
#include "state/chart.h"
#include "state/lists.h"
#include "state/settings.h"
#include "tests/support/bytes.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

class ScoresTest : public GameTest {
 protected:
  ScoresTest() {
    unwritten.clear();
    hooks.unwritten = [](TextView path) { unwritten.emplace_back(path); };
    BMSPath = WriteData(u"songs\\march\\march7.bme", "chart");
  }
  ~ScoresTest() override {
    keepsDataFolder = true;
    std::error_code error;
    fs::permissions(SystemFolder() + "/songs/march", fs::perms::owner_all, error);
  }

  void MakeReadOnly() const {
    fs::permissions(SystemFolder() + "/songs/march", fs::perms::owner_read | fs::perms::owner_exec);
  }
  void MakeWritable() const { fs::permissions(SystemFolder() + "/songs/march", fs::perms::owner_all); }
  Text Beside() const { return Join(AppPath, u"\\songs\\march\\march7.qsd"); }
  Text Kept() const { return DataPath(u"ro_score\\march\\march7.qsd"); }

  static inline std::vector<Text> unwritten;
};

ScoreEntry FullEntry() {
  ScoreEntry entry;
  entry.clear = -1;
  std::memcpy(entry.name.data(), "QuIl :- ", 8);
  entry.score = 200000;
  entry.jpts = -1.5F;
  entry.hiSpeed = 2.25F;
  entry.realHiSpeed = 1;
  entry.maxCombo = 300;
  entry.classIndex = 6;
  entry.options1 = 5;
  entry.options2 = 2;
  entry.options3 = 7;
  entry.reserved = 0;
  entry.counts = {1, 2, 3, 4, 515};
  return entry;
}

// One row by hand: 200000 is 1.52587890625 * 2^17, -1.5 is -1.5 * 2^0, 2.25 is 1.125 * 2^1.
std::vector<FileField> FullFields() {
  return {{"clear", FromHex("FF FF")},         {"name", "QuIl :- "},
          {"score", FromHex("00 50 43 48")},   {"jpts", FromHex("00 00 C0 BF")},
          {"hiSpeed", FromHex("00 00 10 40")}, {"realHiSpeed", FromHex("00 00 80 3F")},
          {"maxCombo", FromHex("2C 01")},      {"class", FromHex("06")},
          {"options 1", FromHex("05")},        {"options 2", FromHex("02")},
          {"options 3", FromHex("07")},        {"reserved", FromHex("00 00")},
          {"PERFECT", FromHex("01 00")},       {"GREAT", FromHex("02 00")},
          {"GOOD", FromHex("03 00")},          {"BAD", FromHex("04 00")},
          {"POOR", FromHex("03 02")}};
}

TEST_F(ScoresTest, FileIsCountTenRowsAndTheClearFlag) {
  scores.playCount = 258;
  scores.cleared = -1;
  scores.ScoreTable[0] = FullEntry();
  std::vector<FileField> fields = {{"play count", FromHex("02 01 00 00")}};
  for (const FileField& field : FullFields()) fields.push_back(field);
  for (int32_t row = 1; row <= 9; ++row) fields.push_back({"a row never filled", std::string(44, '\0')});
  fields.push_back({"cleared", FromHex("FF FF")});
  EXPECT_TRUE(HasFields(ScoreBytes(), fields));
  EXPECT_EQ(ScoreBytes().size(), kScoreFileBytes);
}

TEST_F(ScoresTest, WhatIsWrittenIsRead) {
  scores.playCount = -7;
  for (ScoreEntry& entry : scores.ScoreTable) {
    entry = FullEntry();
    entry.counts[0] = static_cast<int16_t>(entry.counts[0] - 3);
  }
  const auto table = scores.ScoreTable;
  const std::string bytes = ScoreBytes();
  scores = {};
  TakeScores(bytes + "and more");
  EXPECT_EQ(scores.playCount, -7);
  for (int32_t row = 0; row <= 9; ++row) EXPECT_EQ(scores.ScoreTable[row], table[row]) << row;
  EXPECT_EQ(ScoreBytes(), bytes);
}

// A Boolean of another program, any number but 0, is kept as it stands.
TEST_F(ScoresTest, FlagsKeepTheirBytes) {
  std::string bytes(kScoreFileBytes, '\0');
  bytes[4] = 1;
  bytes[445] = 2;
  TakeScores(bytes);
  EXPECT_EQ(scores.ScoreTable[0].clear, 1);
  EXPECT_EQ(scores.cleared, 0x200);
  EXPECT_EQ(ScoreBytes(), bytes);
}

TEST_F(ScoresTest, WhatAShortFileLacksIsZero) {
  scores.ScoreTable[0] = FullEntry();
  scores.cleared = -1;
  const std::string bytes = ScoreBytes();
  for (size_t length = 0; length < bytes.size(); ++length) {
    scores.ScoreTable.Fill(FullEntry());
    TakeScores(bytes.substr(0, length));
    EXPECT_EQ(scores.cleared, 0) << length;
    EXPECT_EQ(scores.ScoreTable[9], ScoreEntry()) << length;
    EXPECT_EQ(scores.ScoreTable[0].clear, length >= 6 ? -1 : 0) << length;
    EXPECT_EQ(scores.ScoreTable[0].maxCombo, length >= 32 ? 300 : 0) << length;
  }
}

TEST_F(ScoresTest, WithoutAFileTheTableIsEmpty) {
  scores.playCount = 5;
  scores.cleared = -1;
  scores.ScoreTable.Fill(FullEntry());
  scores.PlayerName = u"Me";
  LoadScoreDat();
  EXPECT_EQ(scores.playCount, 0);
  EXPECT_EQ(scores.cleared, 0);
  for (const ScoreEntry& entry : scores.ScoreTable) EXPECT_EQ(entry, ScoreEntry());
  EXPECT_EQ(scores.PlayerName, u"Me") << "kept as long as the program runs";
}

TEST_F(ScoresTest, EachSaveCountsAPlayInTheFileBesideTheChart) {
  scores.ScoreTable[3] = FullEntry();
  SaveScoreDat();
  SaveScoreDat();
  EXPECT_EQ(ReadBytes(Beside()).substr(0, 4), FromHex("02 00 00 00"));
  EXPECT_EQ(platform::ListFolder(GetFolder(Beside())).size(), 2U) << "the chart and the table";
  scores = {};
  LoadScoreDat();
  EXPECT_EQ(scores.playCount, 2);
  EXPECT_EQ(scores.ScoreTable[3], FullEntry());
}

TEST_F(ScoresTest, BytesBehindTheTableStay) {
  const std::string longer = std::string(446, '\x7F') + "someone's own";
  platform::WriteFile(Beside(), longer);
  LoadScoreDat();
  SaveScoreDat();
  // 0x7F7F7F7F plays and one.
  EXPECT_EQ(ReadBytes(Beside()), FromHex("80 7F 7F 7F") + longer.substr(4));
}

TEST_F(ScoresTest, CountThatIsFullStays) {
  scores.playCount = INT32_MAX;
  SaveScoreDat();
  EXPECT_EQ(scores.playCount, INT32_MAX);
}

TEST_F(ScoresTest, TableIsThatOfTheRowUnderTheCursor) {
  songList.resize(2);
  songList[1].path = WriteData(u"songs\\other\\b.bms", "chart");
  lastSong = 1;
  listCursor = 1;
  EXPECT_EQ(ScoredChart(), songList[1].path);
  SaveScoreDat();
  EXPECT_TRUE(FileExists(Join(AppPath, u"\\songs\\other\\b.qsd")));
  for (const int32_t cursor : {-1, 2}) {
    listCursor = cursor;
    EXPECT_EQ(ScoredChart(), BMSPath) << cursor;
  }
}

TEST_F(ScoresTest, WithoutAChartNothingIsWritten) {
  BMSPath.clear();
  SaveScoreDat();
  EXPECT_EQ(scores.playCount, 1);
  EXPECT_TRUE(unwritten.empty());
}

TEST_F(ScoresTest, OnlyTheLastExtensionOfTheFileNameIsReplaced) {
  EXPECT_EQ(ScoreFileOf(u"\\a.b\\c.d.bms"), u"\\a.b\\c.d.qsd");
  EXPECT_EQ(ScoreFileOf(u"\\a.b\\chart"), u"\\a.b\\chart.qsd") << "and the chart is not written over";
}

TEST_F(ScoresTest, TableOfAReadOnlyFolderGoesBelowTheDataFolder) {
  MakeReadOnly();
  ASSERT_TRUE(platform::FolderIsReadOnly(GetFolder(BMSPath)));
  SaveScoreDat();
  EXPECT_FALSE(FileExists(Beside()));
  EXPECT_EQ(ReadBytes(Kept()).size(), kScoreFileBytes);
  scores = {};
  LoadScoreDat();
  EXPECT_EQ(scores.playCount, 1);
  EXPECT_EQ(ScoreFileOf(BMSPath), Kept());
  EXPECT_TRUE(unwritten.empty());
}

TEST_F(ScoresTest, ReadingPrefersTheTableBelowTheDataFolder) {
  SaveScoreDat();
  SaveScoreDat();
  MakeReadOnly();
  scores = {};
  SaveScoreDat();
  MakeWritable();
  LoadScoreDat();
  EXPECT_EQ(scores.playCount, 1);
  // What is now written lies beside the chart, and is not seen.
  SaveScoreDat();
  EXPECT_EQ(ReadBytes(Beside())[0], 2);
  LoadScoreDat();
  EXPECT_EQ(scores.playCount, 1);
}

TEST_F(ScoresTest, ReadOnlyFoldersOfOneNameShareATable) {
  EXPECT_EQ(ScoreFileOf(u"\\x\\march\\march7.bms"), u"\\x\\march\\march7.qsd");
  MakeReadOnly();
  SaveScoreDat();
  EXPECT_EQ(ScoreFileOf(u"\\x\\march\\march7.bms"), Kept());
}

TEST_F(ScoresTest, ASecondProgramWritesBesideChartsAlone) {
  keepsDataFolder = false;
  SaveScoreDat();
  EXPECT_TRUE(FileExists(Beside()));
  MakeReadOnly();
  SaveScoreDat();
  EXPECT_FALSE(platform::IsFolder(DataPath(u"ro_score")));
  EXPECT_TRUE(unwritten.empty());
}

TEST_F(ScoresTest, FolderThatIsGoneIsToldAndPassedOver) {
  BMSPath = Join(AppPath, u"\\none\\a.bms");
  SaveScoreDat();
  EXPECT_EQ(unwritten, std::vector<Text>{Join(AppPath, u"\\none\\a.qsd")});
}

TEST_F(ScoresTest, AFullDiskLeavesTheOldTable) {
  SaveScoreDat();
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit before = {};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit full = {100, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &full);
  SaveScoreDat();
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(unwritten, std::vector<Text>{Beside()});
  EXPECT_EQ(ReadBytes(Beside()).size(), kScoreFileBytes);
  EXPECT_EQ(ReadBytes(Beside())[0], 1);
  EXPECT_EQ(platform::ListFolder(GetFolder(Beside())).size(), 2U) << "no half file stays behind";
}

// A program that is killed while it saves leaves the old file or the new one.
TEST_F(ScoresTest, KillsAtAnyMomentLeaveAWholeTable) {
  constexpr int kKills = 60;
  // Each save's table says which one it is, in the count and at the other end of the rows.
  const auto saveOnAndOn = [] {
    for (int32_t save = scores.playCount;; save = scores.playCount) {
      scores.ScoreTable[9].counts[4] = static_cast<int16_t>(save + 1);
      SaveScoreDat();
    }
  };
  SaveScoreDat();
  int32_t last = 0;
  int changes = 0;
  for (int kill_ = 0; kill_ < kKills; ++kill_) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) saveOnAndOn();
    std::this_thread::sleep_for(std::chrono::microseconds(500 + 371 * kill_));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    const std::string bytes = ReadBytes(Beside());
    ASSERT_EQ(bytes.size(), kScoreFileBytes) << "kill " << kill_;
    TakeScores(bytes);
    ASSERT_GE(scores.playCount, last);
    if (scores.playCount > 1) {
      ASSERT_EQ(scores.ScoreTable[9].counts[4], static_cast<int16_t>(scores.playCount));
    }
    if (scores.playCount > last) ++changes;
    last = scores.playCount;
    // A temporary file that was left behind is in nobody's way.
    SaveScoreDat();
    LoadScoreDat();
    ASSERT_EQ(scores.playCount, ++last);
    scores.ScoreTable[9].counts[4] = static_cast<int16_t>(last);
    ASSERT_TRUE(platform::WriteFile(Beside(), ScoreBytes()));
  }
  EXPECT_GT(changes, 0) << "no program came to save anything: how many do hangs on the disk";
}

TEST(FolderIsReadOnly, IsSoWithoutAnyRightToWrite) {
  std::string name = (fs::temp_directory_path() / "quillmarch-folder-XXXXXX").string();
  ASSERT_NE(mkdtemp(name.data()), nullptr);
  const Text folder = platform::InnerPath(name);
  EXPECT_FALSE(platform::FolderIsReadOnly(folder));
  fs::permissions(name, fs::perms::owner_read | fs::perms::owner_exec);
  EXPECT_TRUE(platform::FolderIsReadOnly(folder));
  EXPECT_TRUE(platform::FolderIsReadOnly(EnsureBackslash(folder)));
  fs::permissions(name, fs::perms::owner_all);
  if (geteuid() == 0) {
    // To one who has no right there it is read-only, too.
    fs::permissions(name, fs::perms::owner_all | fs::perms::others_read | fs::perms::others_exec);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    constexpr uid_t kNobody = 65534;
    if (child == 0) _exit(setuid(kNobody) == 0 && platform::FolderIsReadOnly(folder) ? 0 : 1);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  }
  fs::remove(name);
  EXPECT_FALSE(platform::FolderIsReadOnly(folder)) << "there is none";
  EXPECT_FALSE(platform::FolderIsReadOnly(u""));
}

TEST_F(ScoresTest, WidePlaysHaveTablesOfTheirOwn) {
  SaveScoreDat();
  SaveScoreDat();
  WideCharts = true;
  LoadScoreDat();
  EXPECT_EQ(scores.playCount, 0);
  SaveScoreDat();
  EXPECT_EQ(ScoreFileOf(u"\\a\\c.bms"), u"\\a\\c.w.qsd");
  EXPECT_EQ(ScoreFileOf(u"\\a\\c.qcl"), u"\\a\\c.w.qsd");
  EXPECT_EQ(ReadBytes(WithExtension(BMSPath, u".w.qsd")).substr(0, 4), FromHex("01 00 00 00"));
  WideCharts = false;
  LoadScoreDat();
  EXPECT_EQ(scores.playCount, 2);
}

}  // namespace
}  // namespace qlm
