// Course files, byte by byte.
#include "files/course_files.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "base/hooks.h"
#include "base/paths.h"
#include "files/data_folder.h"
#include "platform/files.h"
#include "state/courses.h"
#include "tests/support/bytes.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

using namespace std::string_literals;

constexpr TextView kName = u"_qlmfiles\\courselist\\Night.qcl";

SongEntry Song(TextView title, int32_t lengthMs) {
  SongEntry song;
  song.title = title;
  song.lengthMs = lengthMs;
  song.path = Join(u"\\s\\", title, u".bms");
  return song;
}

// A row by hand: title, two empty texts, three numbers, a text, four numbers of which the last is the length,
// a text, two numbers, the path.
std::string Row(const std::string& title, const std::string& length) {
  const auto counted = [](const std::string& text) { return std::string{char(text.size()), '\0'} + text; };
  return counted(title) + std::string(2 + 2 + 12 + 2 + 12, '\0') + length + std::string(2 + 8, '\0') +
         counted("\\s\\" + title + ".bms");
}

std::vector<FileField> FieldsOf(const std::string& stars, const std::string& songs,
                                const std::string& length) {
  return {{"magic", "qlmcourse2"}, {"blanks", std::string(14, ' ')},       {"courseStars", stars},
          {"numsongs", songs},     {"length of courseTitle", "\x00\x00"s}, {"courseLength", length}};
}

std::string Bytes(const std::vector<FileField>& fields) {
  std::string bytes;
  for (const FileField& field : fields) bytes += field.bytes;
  return bytes;
}

// Two songs of 0x10 and 0x200 ms.
std::vector<FileField> TwoSongs() {
  std::vector<FileField> fields = FieldsOf("\x07", "\x02", "\x10\x02\x00\x00"s);
  fields.push_back({"song 0", Row("A", "\x10\x00\x00\x00"s)});
  fields.push_back({"song 1", Row("B", "\x00\x02\x00\x00"s)});
  return fields;
}

// Six rows of 1, 2, 4, 8, 16 and 32 ms, with anything behind the word.
std::string OldFile() {
  std::string bytes = "qlm_course" + std::string(14, '\xAB');
  for (int i = 0; i < 6; ++i) {
    bytes += Row(std::string(1, static_cast<char>('A' + i)),
                 std::string{static_cast<char>(1 << i), '\0', '\0', '\0'});
  }
  return bytes;
}

std::string Titles() {
  std::string titles;
  for (const SongEntry& song : CourseSongs) titles.append("[").append(Utf8(song.title)).append("]");
  return titles;
}

class CourseFilesTest : public GameTest {
 protected:
  CourseFilesTest() { setenv("XDG_DATA_HOME", (SystemFolder() + "/home").c_str(), 1); }
  ~CourseFilesTest() override { unsetenv("XDG_DATA_HOME"); }

  Text Write(std::string_view bytes) const { return WriteData(kName, bytes); }
  Text Path() const { return Join(AppPath, u"\\", kName); }
  // A course in memory before a load.
  static void TakeAnother() {
    courseStars = 9;
    numsongs = 1;
    courseTitle = u"old";
    courseLength = 77;
    CourseSongs = {Song(u"Z", 77)};
  }
  static void TakeTwoSongs() {
    courseStars = 7;
    numsongs = 2;
    courseTitle.clear();
    courseLength = 0x210;
    CourseSongs = {Song(u"A", 0x10), Song(u"B", 0x200), Song(u"C", 1)};
  }
};

TEST_F(CourseFilesTest, IsWrittenWithAsManyRowsAsItHasSongs) {
  TakeTwoSongs();
  Write("");
  ASSERT_TRUE(CourseSave(Path()));
  EXPECT_TRUE(HasFields(ReadBytes(Path()), TwoSongs()));
}

TEST_F(CourseFilesTest, RowsThatMemoryLacksAreWrittenEmpty) {
  TakeTwoSongs();
  CourseSongs.resize(1);
  Write("");
  ASSERT_TRUE(CourseSave(Path()));
  std::vector<FileField> fields = TwoSongs();
  // Six empty texts of 2 bytes and nine numbers of 4.
  fields.back() = {"empty song", std::string(48, '\0')};
  EXPECT_TRUE(HasFields(ReadBytes(Path()), fields));
}

TEST_F(CourseFilesTest, ALongerFileKeepsItsEnd) {
  TakeTwoSongs();
  const std::string bytes = Bytes(TwoSongs());
  Write(std::string(bytes.size(), 'x') + "tail");
  ASSERT_TRUE(CourseSave(Path()));
  EXPECT_EQ(ReadBytes(Path()), bytes + "tail");
  CourseLoad(Path(), false);
  EXPECT_EQ(numsongs, 2);
  EXPECT_EQ(Titles().substr(0, 6), "[A][B]");
}

TEST_F(CourseFilesTest, AFileThatCannotBeWrittenStaysAndIsTold) {
  static int told;
  told = 0;
  hooks.unwritten = [](TextView) { ++told; };
  TakeTwoSongs();
  EXPECT_FALSE(CourseSave(Join(AppPath, u"\\no folder\\a.qcl")));
  EXPECT_EQ(told, 1);
}

TEST_F(CourseFilesTest, IsReadWithOneEmptyRowBehindItsSongs) {
  CourseLoad(Write(Bytes(TwoSongs())), false);
  EXPECT_EQ(courseStars, 7);
  EXPECT_EQ(numsongs, 2);
  EXPECT_EQ(courseTitle, u"");
  EXPECT_EQ(courseLength, 0x210);
  ASSERT_EQ(CourseSongs.size(), 3U);
  EXPECT_EQ(CourseSongs[0], Song(u"A", 0x10));
  EXPECT_EQ(CourseSongs[1], Song(u"B", 0x200));
  EXPECT_EQ(CourseSongs[2], SongEntry());
  EXPECT_EQ(log, (std::vector<Text>{u"[CourseLoad] Night.qcl", u"course loaded."}));
}

// So a stock course finds its songs in the folder of each person.
TEST_F(CourseFilesTest, TheWordForTheProgramsFolderLeadsToIt) {
  std::vector<FileField> fields = FieldsOf("\x07", "\x01", "\x10\x00\x00\x00"s);
  std::string row = Row("A", "\x10\x00\x00\x00"s);
  const size_t path = row.size() - 10;  // 2 bytes of length, "\s\A.bms"
  row.replace(path, 10, "\x14\x00<CURRENTDIR>\\s\\A.bms"s);
  fields.push_back({"song 0", row});
  CourseLoad(Write(Bytes(fields)), false);
  EXPECT_EQ(CourseSongs[0].path, Join(AppPath, u"\\s\\A.bms"));
}

TEST_F(CourseFilesTest, ATitleInTheFileIsRead) {
  std::vector<FileField> fields = TwoSongs();
  fields[4].bytes = "\x02\x00\x8F\x74"s;  // 春
  CourseLoad(Write(Bytes(fields)), false);
  EXPECT_EQ(courseTitle, u"春");
  EXPECT_EQ(courseLength, 0x210);
  EXPECT_EQ(Titles(), "[A][B][]");
}

TEST_F(CourseFilesTest, WithoutSongsItIsACourseOfNone) {
  TakeAnother();
  CourseLoad(Write(Bytes(FieldsOf("\x03", "\x00"s, "\x00\x00\x00\x00"s))), false);
  EXPECT_EQ(courseStars, 3);
  EXPECT_EQ(numsongs, 0);
  EXPECT_EQ(CourseSongs, (std::vector<SongEntry>{SongEntry()}));
}

TEST_F(CourseFilesTest, AnyOtherFirstBytesAreTheCurrentFormat) {
  for (const std::string& word : {"qlm_Course"s, "anything at all"s, "qlm_cours"s, ""s}) {
    TakeAnother();
    std::string bytes = Bytes(TwoSongs());
    bytes.replace(0, 24, word + std::string(24 - word.size(), '\0'));
    CourseLoad(Write(bytes), false);
    EXPECT_EQ(numsongs, 2) << word;
    EXPECT_EQ(Titles(), "[A][B][]") << word;
    EXPECT_EQ(ReadBytes(Path()), bytes) << word;
  }
}

TEST_F(CourseFilesTest, TheHeadAloneLeavesTheSongs) {
  TakeAnother();
  CourseLoad(Write(Bytes(TwoSongs())), true);
  EXPECT_EQ(courseStars, 7);
  EXPECT_EQ(numsongs, 2);
  EXPECT_EQ(courseTitle, u"");
  EXPECT_EQ(courseLength, 0x210);
  EXPECT_EQ(Titles(), "[Z]");
  EXPECT_TRUE(log.empty()) << "it is quiet";
}

TEST_F(CourseFilesTest, AMissingFileChangesNothing) {
  TakeAnother();
  CourseLoad(Path(), false);
  EXPECT_EQ(courseStars, 9);
  EXPECT_EQ(numsongs, 1);
  EXPECT_EQ(courseTitle, u"old");
  EXPECT_EQ(courseLength, 77);
  EXPECT_EQ(Titles(), "[Z]");
  EXPECT_EQ(log, (std::vector<Text>{u"[CourseLoad] Night.qcl"}));
}

TEST_F(CourseFilesTest, WhatAFileThatBreaksOffLacksIsEmpty) {
  const std::string whole = Bytes(TwoSongs());
  const size_t second = whole.size() - Row("B", "xxxx").size();
  for (size_t size = 0; size <= whole.size(); ++size) {
    TakeAnother();
    CourseLoad(Write(whole.substr(0, size)), false);
    EXPECT_EQ(courseStars, size > 24 ? 7 : 0) << size;
    EXPECT_EQ(numsongs, size > 25 ? 2 : 0) << size;
    EXPECT_EQ(courseLength, size >= 32 ? 0x210 : 0) << size;
    ASSERT_EQ(CourseSongs.size(), numsongs + 1U) << size;
    EXPECT_EQ(CourseSongs.back(), SongEntry()) << size;
    if (numsongs < 2) continue;
    EXPECT_EQ(CourseSongs[0] == Song(u"A", 0x10), size >= second) << size;
    // The second title takes three bytes.
    EXPECT_EQ(CourseSongs[1].title, size >= second + 3 ? u"B" : u"") << size;
  }
  EXPECT_FALSE(Logged(u"# ")) << "nothing is reported";
}

TEST_F(CourseFilesTest, ATextLongerThanTheFileEndsTheReading) {
  std::string bytes = Bytes(TwoSongs());
  const size_t second = bytes.size() - Row("B", "xxxx").size();
  bytes.replace(second, 2, "\xFF\xFF");  // -1 as a signed number, 65,535 as the count that it is
  CourseLoad(Write(bytes), false);
  EXPECT_EQ(Titles(), "[A][][]");
  EXPECT_EQ(CourseSongs[1], SongEntry());
}

TEST_F(CourseFilesTest, TheMostSongsAreRead) {
  std::string bytes = Bytes(FieldsOf("\xFF", "\xFF", "\x00\x00\x00\x00"s));
  for (int i = 0; i < 255; ++i) bytes += Row("S", "\x01\x00\x00\x00"s);
  CourseLoad(Write(bytes), false);
  EXPECT_EQ(courseStars, 255);
  EXPECT_EQ(numsongs, 255);
  ASSERT_EQ(CourseSongs.size(), 256U);
  EXPECT_EQ(CourseSongs[254].title, u"S");
  EXPECT_EQ(CourseSongs[255], SongEntry());
}

TEST_F(CourseFilesTest, AnOldFileIsConvertedAtItsFirstReading) {
  TakeAnother();
  const std::string old = OldFile();
  CourseLoad(Write(old), false);
  EXPECT_EQ(courseStars, 5);
  EXPECT_EQ(numsongs, 5);
  EXPECT_EQ(courseTitle, u"");
  EXPECT_EQ(courseLength, 1 + 2 + 4 + 8 + 16) << "not the sixth";
  EXPECT_EQ(Titles(), "[A][B][C][D][E][F]");
  std::vector<FileField> fields = FieldsOf("\x05", "\x05", "\x1F\x00\x00\x00"s);
  fields.push_back({"six rows", old.substr(24)});
  EXPECT_TRUE(HasFields(ReadBytes(Path()), fields));
  const std::string converted = ReadBytes(Path());
  CourseLoad(Path(), false);
  EXPECT_EQ(ReadBytes(Path()), converted);
  EXPECT_EQ(Titles(), "[A][B][C][D][E][F]");
}

TEST_F(CourseFilesTest, TheHeadOfAnOldFileAloneConvertsItToo) {
  TakeAnother();
  CourseLoad(Write(OldFile()), true);
  EXPECT_EQ(ReadBytes(Path()).substr(0, 10), "qlmcourse2");
  EXPECT_EQ(courseStars, 5);
  EXPECT_EQ(courseLength, 31);
  EXPECT_EQ(Titles(), "[Z]");
}

TEST_F(CourseFilesTest, AnOldFileThatBreaksOffHasEmptyRows) {
  CourseLoad(Write(OldFile().substr(0, 24 + Row("A", "xxxx").size())), false);
  EXPECT_EQ(numsongs, 5);
  EXPECT_EQ(courseLength, 1);
  EXPECT_EQ(Titles(), "[A][][][][][]");
}

TEST_F(CourseFilesTest, AnOldFileThatCannotBeWrittenIsConvertedInMemory) {
  const Text path = Write(OldFile());
  keepsDataFolder = false;  // another program has it
  CourseLoad(path, false);
  keepsDataFolder = true;
  EXPECT_EQ(ReadBytes(path), OldFile());
  EXPECT_EQ(numsongs, 5);
  EXPECT_EQ(courseLength, 31);
  EXPECT_EQ(Titles(), "[A][B][C][D][E][F]");
}

TEST_F(CourseFilesTest, ALengthThatLeavesItsNumberKeepsWhatItWas) {
  const std::vector<SongEntry> songs = {Song(u"A", 5), Song(u"B", INT32_MAX), Song(u"C", 7)};
  EXPECT_EQ(LengthOfSongs(songs), 12);
}

TEST_F(CourseFilesTest, ADeletedCourseLiesInTheTrash) {
  const Text path = Write("songs");
  EXPECT_TRUE(CourseDelete(path));
  EXPECT_FALSE(FileExists(path));
  EXPECT_EQ(ReadBytes(Join(AppPath, u"\\home\\Trash\\files\\Night.qcl")), "songs");
  EXPECT_EQ(log, (std::vector<Text>{u"moved to the trash: Night.qcl"}));
}

TEST_F(CourseFilesTest, WithoutATrashACourseIsRemoved) {
  WriteData(u"home", "no folder can be made below a file");
  // The disk's own trash would be next; where the tests may make one, nothing is left to be seen.
  const Text path = Write("songs");
  EXPECT_TRUE(CourseDelete(path));
  EXPECT_FALSE(FileExists(path));
  EXPECT_TRUE(Logged(u"removed: Night.qcl") || Logged(u"moved to the trash: Night.qcl"));
}

TEST_F(CourseFilesTest, WhatAnotherProgramKeepsIsNotDeleted) {
  const Text path = Write("songs");
  keepsDataFolder = false;
  EXPECT_FALSE(CourseDelete(path));
  keepsDataFolder = true;
  EXPECT_TRUE(FileExists(path));
  EXPECT_TRUE(Logged(u"# cannot be deleted: Night.qcl"));
}

}  // namespace
}  // namespace qlm
