// Files under the names that charts give them.
#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "base/paths.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class FilesTest : public GameTest {
 protected:
  // A file below AppPath under the system's own bytes.
  void WriteSystem(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories(std::filesystem::path(SystemFolder() + "/" + name).parent_path());
    std::ofstream(SystemFolder() + "/" + name, std::ios::binary) << bytes;
  }
  std::string Read(TextView name) const {
    return platform::ReadFile(Join(AppPath, u"\\", name)).value_or("(none)");
  }
};

TEST_F(FilesTest, ReadsWhatWasWritten) {
  const Text path = WriteData(u"a\\b.bin", std::string_view("1\0002", 3));
  EXPECT_EQ(platform::ReadFile(path), std::string("1\0002", 3));
  EXPECT_EQ(platform::FileLength(path), 3);
}

TEST_F(FilesTest, FindsNamesInWrongLetterCaseInEveryPartOfThePath) {
  WriteSystem("Songs/KICK.WAV", "k");
  EXPECT_EQ(Read(u"songs\\kick.wav"), "k");
}

TEST_F(FilesTest, PrefersTheExactName) {
  WriteSystem("kick.wav", "small");
  WriteSystem("KICK.WAV", "large");
  EXPECT_EQ(Read(u"kick.wav"), "small");
  EXPECT_EQ(Read(u"KICK.WAV"), "large");
}

TEST_F(FilesTest, FindsNamesInAnotherNormalForm) {
  WriteSystem("か\xE3\x82\x99.wav", "ga");  // written as two characters
  EXPECT_EQ(Read(u"が.wav"), "ga");
}

TEST_F(FilesTest, FindsNamesStoredAsRawCodePageBytes) {
  WriteSystem("\x95\x5C/\x83\x65.wav", "te");  // 表/テ.wav; the first holds a backslash byte
  EXPECT_EQ(Read(u"表\\テ.wav"), "te");
}

TEST_F(FilesTest, FindsRawNamesInWrongLetterCase) {
  WriteSystem("\x83\x65.WAV", "te");
  EXPECT_EQ(Read(u"テ.wav"), "te");
}

TEST_F(FilesTest, TakesTheLeastOfSeveralNamesAlike) {
  WriteSystem("Kick.wav", "middle");
  WriteSystem("KICK.wav", "least");
  WriteSystem("kicK.wav", "greatest");
  EXPECT_EQ(Read(u"kick.WAV"), "least");
}

// The wait is longer than the steps in which file systems tell the time, so that what is known of the folder
// before each change may be relied on.
TEST_F(FilesTest, SeesEachChangeOfAFolderWhoseNamesItKnows) {
  WriteSystem("Songs/KICK.WAV", "first");
  std::this_thread::sleep_for(std::chrono::seconds(4));
  EXPECT_EQ(Read(u"songs\\kick.wav"), "first");
  EXPECT_EQ(Read(u"songs\\snare.wav"), "(none)");
  WriteSystem("Songs/SNARE.WAV", "added");
  EXPECT_EQ(Read(u"songs\\snare.wav"), "added");
  std::filesystem::rename(SystemFolder() + "/Songs/KICK.WAV", SystemFolder() + "/Songs/Tom.wav");
  EXPECT_EQ(Read(u"songs\\kick.wav"), "(none)");
  EXPECT_EQ(Read(u"songs\\tom.wav"), "first");
  std::filesystem::rename(SystemFolder() + "/Songs", SystemFolder() + "/Other");
  EXPECT_EQ(Read(u"songs\\tom.wav"), "(none)");
  EXPECT_EQ(Read(u"other\\tom.wav"), "first");
}

// Unpacking programs do so.
TEST_F(FilesTest, SeesAChangeBehindWhichTheFoldersTimeWasPutBack) {
  WriteSystem("Songs/KICK.WAV", "first");
  const std::filesystem::path folder(SystemFolder() + "/Songs");
  const auto longAgo = std::filesystem::last_write_time(folder) - std::chrono::hours(1);
  std::filesystem::last_write_time(folder, longAgo);
  EXPECT_EQ(Read(u"Songs\\snare.wav"), "(none)");
  WriteSystem("Songs/SNARE.WAV", "added");
  std::filesystem::last_write_time(folder, longAgo);
  EXPECT_EQ(Read(u"Songs\\snare.wav"), "added");
}

TEST_F(FilesTest, ListsNamesAsText) {
  WriteSystem("list/\x83\x65.wav", "");
  WriteSystem("list/sub/x", "");
  std::vector<Text> names;
  for (const platform::FolderEntry& entry : platform::ListFolder(Join(AppPath, u"\\list"))) {
    names.push_back(Join(entry.name, entry.isFolder ? u"/" : u""));
  }
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<Text>{u"sub/", u"テ.wav"}));
}

TEST_F(FilesTest, TurnsSystemPathsIntoTheInnerForm) {
  EXPECT_EQ(platform::InnerPath("/a/b.bms"), u"\\a\\b.bms");
  EXPECT_EQ(platform::InnerPath("/a/../b/./c"), u"\\b\\c");
  EXPECT_EQ(platform::InnerPath("/\x83\x65/羽"), u"\\テ\\羽");
  EXPECT_TRUE(platform::InnerPath("x.bms").starts_with(u"\\"));
}

TEST_F(FilesTest, TakesSlashesWhereAPersonWroteThem) {
  WriteSystem("d/e.txt", "e");
  EXPECT_EQ(platform::ReadFile(Join(AppPath, u"/d/e.txt")), "e");
}

TEST_F(FilesTest, MissingFilesAndFoldersGiveNothing) {
  WriteSystem("d/e.txt", "e");
  EXPECT_FALSE(platform::ReadFile(Join(AppPath, u"\\nothing")));
  EXPECT_FALSE(platform::ReadFile(Join(AppPath, u"\\d")));
  EXPECT_FALSE(platform::FileLength(Join(AppPath, u"\\d")));
  EXPECT_FALSE(platform::FindPath(u""));
  EXPECT_TRUE(platform::ListFolder(Join(AppPath, u"\\nothing")).empty());
}

TEST_F(FilesTest, AFileWithASeparatorBehindItIsNone) {
  WriteSystem("Song.bms", "x");
  for (const TextView name : {u"\\Song.bms\\", u"\\SONG.bms\\", u"\\song.BMS\\\\"}) {
    EXPECT_FALSE(platform::FindPath(Join(AppPath, name))) << Utf8(name);
    EXPECT_FALSE(platform::FileLength(Join(AppPath, name))) << Utf8(name);
  }
}

TEST_F(FilesTest, NeverWaitsForAPipe) {
  ASSERT_EQ(mkfifo((SystemFolder() + "/pipe.bms").c_str(), 0600), 0);
  EXPECT_FALSE(platform::ReadFile(Join(AppPath, u"\\pipe.bms")));
}

TEST_F(FilesTest, ReadsPartsAndStopsAtTheEnd) {
  const Text path = WriteData(u"p", "abcdef");
  EXPECT_EQ(platform::ReadFilePart(path, 2, 3), "cde");
  EXPECT_EQ(platform::ReadFilePart(path, 4, 99), "ef");
  EXPECT_EQ(platform::ReadFilePart(path, 99, 1), "");
  EXPECT_EQ(platform::ReadFilePart(path, 0, -1), "");
}

TEST_F(FilesTest, WritingReplacesTheWholeFileAndLeavesNothingBeside) {
  const Text path = WriteData(u"w\\f", "a long content");
  EXPECT_TRUE(platform::WriteFile(path, "b"));
  EXPECT_EQ(platform::ReadFile(path), "b");
  EXPECT_EQ(platform::ListFolder(Join(AppPath, u"\\w")).size(), 1U);
}

TEST_F(FilesTest, WritingTouchesNoOtherFileOfTheFolder) {
  const Text other = WriteData(u"w\\f.new", "somebody's");
  const Text path = WriteData(u"w\\f", "a");
  EXPECT_TRUE(platform::WriteFile(path, "b"));
  EXPECT_EQ(platform::ReadFile(other), "somebody's");
}

TEST_F(FilesTest, WritingOverAFolderFailsAndLeavesNothingBeside) {
  WriteData(u"w\\f\\inside", "a");
  EXPECT_FALSE(platform::WriteFile(Join(AppPath, u"\\w\\f"), "b"));
  EXPECT_EQ(platform::ListFolder(Join(AppPath, u"\\w")).size(), 1U);
}

TEST_F(FilesTest, ALockedFileIsLockedOnce) {
  const Text path = Join(AppPath, u"\\lock");
  EXPECT_TRUE(platform::LockFile(path));
  EXPECT_FALSE(platform::LockFile(path));
  EXPECT_TRUE(platform::LockFile(Join(AppPath, u"\\nothing\\lock"))) << "nobody can hold what cannot be made";
}

TEST_F(FilesTest, WritingIntoNoFolderFails) {
  EXPECT_FALSE(platform::WriteFile(Join(AppPath, u"\\nothing\\f"), "b"));
}

TEST_F(FilesTest, AppendsAndDeletes) {
  const Text path = Join(AppPath, u"\\log");
  EXPECT_TRUE(platform::AppendFile(path, "a"));
  EXPECT_TRUE(platform::AppendFile(path, "b"));
  EXPECT_EQ(platform::ReadFile(path), "ab");
  EXPECT_TRUE(platform::DeleteFile(path));
  EXPECT_FALSE(platform::DeleteFile(path));
}

TEST_F(FilesTest, MakesOneLevelAndIsContentWithWhatExists) {
  EXPECT_TRUE(platform::MakeFolder(Join(AppPath, u"\\m")));
  EXPECT_TRUE(platform::MakeFolder(Join(AppPath, u"\\m")));
  EXPECT_FALSE(platform::MakeFolder(Join(AppPath, u"\\n\\o")));
}

}  // namespace
}  // namespace qlm
