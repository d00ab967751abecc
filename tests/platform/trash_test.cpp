// What is deleted lies in the trash as desktops expect it.
#include "platform/trash.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>

#include "base/paths.h"
#include "platform/files.h"
#include "tests/support/game_test.h"
#include "tests/support/whole_file.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

class TrashTest : public GameTest {
 protected:
  TrashTest() { SetHome(SystemFolder() + "/home/me"); }
  ~TrashTest() override { unsetenv("XDG_DATA_HOME"); }

  static void SetHome(const std::string& folder) { setenv("XDG_DATA_HOME", folder.c_str(), 1); }
  fs::path Trash() const { return SystemFolder() + "/home/me/Trash"; }
};

TEST_F(TrashTest, TakesAFileWithWhatItHeldAndTellsWhereItLay) {
  const Text path = WriteData(u"list\\my 夜.qcl", "songs");
  ASSERT_TRUE(platform::MoveToTrash(path));
  EXPECT_FALSE(FileExists(path));
  EXPECT_EQ(WholeFile(Trash() / "files/my 夜.qcl"), "songs");
  const std::string info = WholeFile(Trash() / "info/my 夜.qcl.trashinfo");
  // 夜 is E5 A4 9C in UTF-8.
  EXPECT_TRUE(std::regex_match(info, std::regex("\\[Trash Info\\]\nPath=/.*/list/my%20%E5%A4%9C\\.qcl\n"
                                                "DeletionDate=\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\n")))
      << info;
  struct stat status = {};
  ASSERT_EQ(stat((Trash() / "files").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0700U) << "nobody else looks into it";
}

TEST_F(TrashTest, KeepsAllFilesOfOneName) {
  for (const char* bytes : {"one", "two", "three"}) {
    ASSERT_TRUE(platform::MoveToTrash(WriteData(u"a.qcl", bytes)));
  }
  EXPECT_EQ(WholeFile(Trash() / "files/a.qcl"), "one");
  EXPECT_EQ(WholeFile(Trash() / "files/a.2.qcl"), "two");
  EXPECT_EQ(WholeFile(Trash() / "files/a.3.qcl"), "three");
  EXPECT_TRUE(fs::exists(Trash() / "info/a.3.qcl.trashinfo"));
}

TEST_F(TrashTest, NeverReplacesAFileThatNoInfoTellsOf) {
  fs::create_directories(Trash() / "files");
  std::ofstream(Trash() / "files/a.qcl") << "lost";
  ASSERT_TRUE(platform::MoveToTrash(WriteData(u"a.qcl", "new")));
  EXPECT_EQ(WholeFile(Trash() / "files/a.qcl"), "lost");
  EXPECT_EQ(WholeFile(Trash() / "files/a.2.qcl"), "new");
}

TEST_F(TrashTest, TakesNeitherFoldersNorWhatIsNotThere) {
  WriteData(u"list\\a.qcl", "");
  EXPECT_FALSE(platform::MoveToTrash(Join(AppPath, u"\\list")));
  EXPECT_FALSE(platform::MoveToTrash(Join(AppPath, u"\\none.qcl")));
  EXPECT_FALSE(platform::MoveToTrash(u""));
  EXPECT_FALSE(fs::exists(Trash()));
}

// Shared memory is a disk of its own on every Linux.
class TrashOfADisk : public TrashTest {
 protected:
  TrashOfADisk() : home_("/dev/shm/quillmarch-trash-" + std::to_string(getpid())) { SetHome(home_); }
  ~TrashOfADisk() override { fs::remove_all(home_); }

  std::string home_;
};

TEST_F(TrashOfADisk, LeavesNoInfoBehindInATrashThatCouldNotTakeTheFile) {
  struct stat home = {}, here = {};
  ASSERT_EQ(stat("/dev/shm", &home), 0);
  ASSERT_EQ(stat(SystemFolder().c_str(), &here), 0);
  if (home.st_dev == here.st_dev) GTEST_SKIP() << "one disk";
  const Text path = WriteData(u"a.qcl", "songs");
  // Whether the disk of the temporary files has a trash hangs on the machine; the file is whole either way.
  const bool taken = platform::MoveToTrash(path);
  EXPECT_EQ(FileExists(path), !taken);
  EXPECT_TRUE(fs::is_empty(home_ + "/Trash/info"));
  EXPECT_TRUE(fs::is_empty(home_ + "/Trash/files"));
}

}  // namespace
}  // namespace qlm
