// Cutting of paths, and the questions to the disk.
#include "base/paths.h"

#include <regex>

#include "platform/files.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class PathsTest : public GameTest {};

TEST_F(PathsTest, FolderGoesUpToTheLastBackslash) {
  EXPECT_EQ(GetFolder(u"\\a\\b.bms"), u"\\a\\");
  EXPECT_EQ(GetFolder(u"b.bms"), u"");
}

TEST_F(PathsTest, FileNameStandsBehindTheLastBackslash) {
  EXPECT_EQ(GetFileName(u"\\a\\b.bms"), u"b.bms");
  EXPECT_EQ(GetFileName(u"b.bms"), u"b.bms");
  EXPECT_EQ(GetFileName(u"\\a\\"), u"");
}

TEST_F(PathsTest, ExtensionIsInCapitalsAndTheWholeNameWithoutADot) {
  EXPECT_EQ(GetExtension(u"\\a.b\\c.bMe"), u"BME");
  EXPECT_EQ(GetExtension(u"\\a.b\\name"), u"NAME");
  EXPECT_EQ(GetExtension(u"\\a\\x.tar.gz"), u"GZ");
}

TEST_F(PathsTest, BackslashIsAddedOnce) {
  EXPECT_EQ(EnsureBackslash(u"\\a"), u"\\a\\");
  EXPECT_EQ(EnsureBackslash(u"\\a\\"), u"\\a\\");
}

TEST_F(PathsTest, OnlyAFileExists) {
  const Text path = WriteData(u"x\\y.txt", "1");
  EXPECT_TRUE(FileExists(path));
  EXPECT_FALSE(FileExists(Join(AppPath, u"\\x")));
  EXPECT_FALSE(FileExists(Join(AppPath, u"\\z.txt")));
  EXPECT_FALSE(FileExists(u""));
}

TEST_F(PathsTest, AFileStandsForItsStemInTheOrderOfTheKinds) {
  constexpr TextView kKinds[] = {u".one", u".two"};
  const Text folder = Join(AppPath, u"\\x.y\\");
  EXPECT_EQ(FindFileOfKinds(Join(folder, u"a.three"), kKinds), std::nullopt);
  WriteData(u"x.y\\a.TWO", "");
  EXPECT_EQ(FindFileOfKinds(Join(folder, u"a.three"), kKinds), Join(folder, u"a.two"));
  EXPECT_EQ(FindFileOfKinds(Join(folder, u"a"), kKinds), Join(folder, u"a.two"));
  WriteData(u"x.y\\a.one", "");
  EXPECT_EQ(FindFileOfKinds(Join(folder, u"a.b"), kKinds), Join(folder, u"a.one"));
  EXPECT_EQ(FindFileOfKinds(Join(folder, u"a.two"), kKinds), Join(folder, u"a.two"));
  EXPECT_EQ(FindFileOfKinds(folder, kKinds), std::nullopt);
  EXPECT_EQ(FindFileOfKinds(Join(AppPath, u"/x.y/a"), kKinds), Join(AppPath, u"/x.y/a.one"));
}

TEST_F(PathsTest, FoldersAreMadeLevelByLevel) {
  MakeFolders(Join(AppPath, u"\\p\\q\\r"));
  EXPECT_TRUE(platform::IsFolder(Join(AppPath, u"\\p\\q\\r")));
}

TEST_F(PathsTest, MemoryIsToldInKilobytes) {
  const std::string text = Utf8(MemoryStatus());
  EXPECT_TRUE(std::regex_match(text, std::regex("[0-9]*\\.[0-9] / [0-9]+\\.[0-9]"))) << text;
}

}  // namespace
}  // namespace qlm
