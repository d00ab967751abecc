// One program writes into a data folder; what cannot be written is told.
#include "files/data_folder.h"

#include "base/hooks.h"
#include "base/log.h"
#include "base/paths.h"
#include "files/key_table.h"
#include "files/settings_file.h"
#include "platform/files.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class DataFolderTest : public GameTest {
 protected:
  DataFolderTest() {
    unwritten.clear();
    hooks.unwritten = [](TextView path) { unwritten.emplace_back(path); };
  }
  ~DataFolderTest() override { keepsDataFolder = true; }

  static inline std::vector<Text> unwritten;
};

TEST_F(DataFolderTest, TheFirstKeepsIt) {
  EXPECT_TRUE(TakeDataFolder());
  DebugLog(u"a");
  EXPECT_TRUE(FileExists(LogPath()));
  EXPECT_TRUE(SaveDataFile(u"f", "new"));
  EXPECT_EQ(ReadBytes(DataPath(u"f")), "new");
}

TEST_F(DataFolderTest, ASecondTakesNothingAway) {
  WriteData(u"_qlmfiles\\f", "old");
  WriteData(u"_qlmfiles\\debug.txt", "log");
  ASSERT_TRUE(platform::LockFile(DataPath(u"debug.lock")));  // the first
  EXPECT_FALSE(TakeDataFolder());
  DebugLog(u"a");
  EXPECT_TRUE(SaveDataFile(u"f", "new"));
  EXPECT_TRUE(SaveSettings());
  EXPECT_TRUE(SaveKeyTable());
  EXPECT_EQ(ReadBytes(LogPath()), "log");
  EXPECT_EQ(ReadBytes(DataPath(u"f")), "old");
  EXPECT_FALSE(FileExists(DataPath(u"qlm_conf.ini")));
  EXPECT_FALSE(FileExists(DataPath(u"qlm_keycnf.dat")));
  EXPECT_TRUE(unwritten.empty());
}

// Where a folder stands in their place, files cannot be written by anyone.
TEST_F(DataFolderTest, WhatCannotBeWrittenIsTold) {
  platform::MakeFolder(DataPath(u"qlm_conf.ini"));
  platform::MakeFolder(DataPath(u"qlm_keycnf.dat"));
  EXPECT_FALSE(SaveKeyTable());
  EXPECT_FALSE(SaveSettings());
  EXPECT_EQ(unwritten, (std::vector<Text>{DataPath(u"qlm_keycnf.dat"), DataPath(u"qlm_conf.ini")}));
}

}  // namespace
}  // namespace qlm
