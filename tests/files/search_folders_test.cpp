// The search file, line by line.
#include "files/search_folders.h"

#include <filesystem>

#include "base/paths.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

using Lines = std::vector<Text>;

class SearchFoldersTest : public GameTest {
 protected:
  static Text Folder(TextView line) { return SearchedFolder(line).value_or(u"none"); }
};

TEST_F(SearchFoldersTest, LinesEndInCrLfOrLf) {
  EXPECT_EQ(SearchLines("a\r\nb\nc"), (Lines{u"a", u"b", u"c"}));
  EXPECT_EQ(SearchLines("a\r\n"), (Lines{u"a", u""}));
  EXPECT_EQ(SearchLines(""), (Lines{u""}));
}

TEST_F(SearchFoldersTest, TextEndsAtTheFirstZeroByte) {
  EXPECT_EQ(SearchLines(std::string_view("a\r\nb\0c\r\nd", 9)), (Lines{u"a", u"b"}));
}

TEST_F(SearchFoldersTest, TextIsCodePage932OrUtf8) {
  EXPECT_EQ(SearchLines("\\\x95\x5C"), (Lines{u"\\表"}));
  EXPECT_EQ(SearchLines("/\xE8\xA1\xA8"), (Lines{u"/表"}));
  EXPECT_EQ(SearchLines("\xEF\xBB\xBF/a"), (Lines{u"/a"}));
}

TEST_F(SearchFoldersTest, MissingFileAndEmptyFileAreTwoThings) {
  EXPECT_FALSE(ReadSearchFile().has_value());
  WriteData(u"_qlmfiles\\qlm_searchdir.txt", "");
  EXPECT_EQ(ReadSearchFile(), (Lines{u""}));
}

TEST_F(SearchFoldersTest, FileThatCannotBeReadHasNoFolderAndIsLogged) {
  std::filesystem::create_directory(SystemFolder() + "/_qlmfiles/qlm_searchdir.txt");
  EXPECT_EQ(ReadSearchFile(), (Lines{u""}));
  EXPECT_TRUE(Logged(Join(u"# ", DataPath(u"qlm_searchdir.txt"), u": This is no file")));
}

TEST_F(SearchFoldersTest, PlainLineIsAFolder) {
  EXPECT_EQ(Folder(u"\\bms\\a b"), u"\\bms\\a b");
  EXPECT_EQ(Folder(u"\\bms\\"), u"\\bms\\");
}

TEST_F(SearchFoldersTest, ProgramFolderIsPutInInAnyLetterCase) {
  AppPath = Text(u"\\x");
  EXPECT_EQ(Folder(u"<CURRENTDIR>\\songs"), u"\\x\\songs");
  EXPECT_EQ(Folder(u"<currentDir>\\a<CURRENTDIR>"), u"\\x\\a\\x");
}

TEST_F(SearchFoldersTest, LineIsCutInFrontOfTheFirstDoubleSlash) {
  EXPECT_EQ(Folder(u"\\bms// a // b"), u"\\bms");
  EXPECT_EQ(Folder(u"// all"), u"none");
}

TEST_F(SearchFoldersTest, BlankInFrontOfACommentStays) { EXPECT_EQ(Folder(u"\\bms // a"), u"\\bms "); }

TEST_F(SearchFoldersTest, LineWithoutHashIsNotTrimmed) { EXPECT_EQ(Folder(u"  \\bms "), u"  \\bms "); }

TEST_F(SearchFoldersTest, LineThatBeginsWithHashIsSwitchedOff) {
  EXPECT_EQ(Folder(u"#\\bms"), u"none");
  EXPECT_EQ(Folder(u"#"), u"none");
}

// " \bms #x": four more characters than the blank stand before the #, the trimmed line begins at the "\".
TEST_F(SearchFoldersTest, HashCutsTheTrimmedLineAtItsPlaceInTheUntrimmedOne) {
  EXPECT_EQ(Folder(u"\\bms#x"), u"\\bms");
  EXPECT_EQ(Folder(u" \\bms#x"), u"\\bms#");
  EXPECT_EQ(Folder(u" #x"), u"#");
}

TEST_F(SearchFoldersTest, CommentIsCutBeforeTheHashIsLookedFor) {
  EXPECT_EQ(Folder(u" \\bms // #1"), u" \\bms ");
}

TEST_F(SearchFoldersTest, SystemsFormIsTakenToo) {
  EXPECT_EQ(Folder(u"/home/me/bms/"), u"\\home\\me\\bms\\");
}

std::vector<std::string> Shown(const SearchFolders& search) {
  std::vector<std::string> lines;
  for (const SearchFolder& each : search.folders)
    lines.push_back(Utf8(Join(each.ticked ? u"" : u"#", each.folder)));
  return lines;
}

TEST_F(SearchFoldersTest, PersonsListIsWrittenBackWithItsCommentsFirst) {
  EXPECT_TRUE(ReadSearchFolders().folders.empty());
  WriteText(u"_qlmfiles\\qlm_searchdir.txt", u"\\表\r\n/ a\r\n\r\n#\\b\r\n//c\r\n \\d\r\n");
  const SearchFolders search = ReadSearchFolders();
  EXPECT_EQ(Utf8(search.comments), "/ a\r\n//c\r\n");
  EXPECT_EQ(Shown(search), (std::vector<std::string>{"\\表", "#\\b", " \\d"}));
  EXPECT_TRUE(SaveSearchFolders(search));
  EXPECT_EQ(ReadBytes(DataPath(u"qlm_searchdir.txt")), "/ a\r\n//c\r\n\\\x95\x5C\r\n#\\b\r\n \\d\r\n");
}

TEST_F(SearchFoldersTest, LineThatCodePage932CannotHoldIsKeptAsUtf8) {
  const std::string bytes = "\\caf\xC3\xA9\r\n";
  WriteData(u"_qlmfiles\\qlm_searchdir.txt", bytes);
  EXPECT_EQ(SearchFileBytes(ReadSearchFolders()), bytes);
}

TEST_F(SearchFoldersTest, LettersThatTheFileCannotHoldAreNamedOnce) {
  EXPECT_EQ(Utf8(LettersNotStored(u"\\home\\羽\\a b")), "");
  EXPECT_EQ(Utf8(LettersNotStored(u"\\é\\x#é\U0001F3B5y")), "é#\U0001F3B5");
}

}  // namespace
}  // namespace qlm
