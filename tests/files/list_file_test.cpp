// List files, byte by byte.
#include "files/list_file.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "base/paths.h"
#include "files/data_folder.h"
#include "platform/files.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

using namespace std::string_literals;

struct Field {
  std::string name;
  std::string bytes;
};

std::string AllBytes(const std::vector<Field>& fields) {
  std::string bytes;
  for (const Field& field : fields) bytes += field.bytes;
  return bytes;
}

// Tells the field of every byte that differs.
void ExpectFields(const std::string& bytes, const std::vector<Field>& fields) {
  size_t at = 0;
  for (const Field& field : fields) {
    for (size_t i = 0; i < field.bytes.size(); ++i, ++at) {
      const int expected = static_cast<unsigned char>(field.bytes[i]);
      const int found = at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : -1;
      EXPECT_EQ(found, expected) << "offset " << at << ", byte " << i << " of " << field.name;
    }
  }
  EXPECT_EQ(bytes.size(), at);
}

SongEntry FullEntry() {
  SongEntry song;
  song.title = u"春 A";
  song.artist = u"me";
  song.genre = u"";
  song.bpm = 150.5F;
  song.player = 3;
  song.playLevel = -1;
  song.midiFile = u"a.mid";
  song.rank = 2;
  song.volWav = 256;
  song.total = 65536;
  song.lengthMs = 0x01020304;
  song.stageFile = u"s";
  song.numWav = 255;
  song.numBmp = 0;
  song.path = u"\\b\\表.bms";
  return song;
}

// By hand: 150.5 is 0x43168000; 春 is 8F 74 and 表 is 95 5C in code page 932.
std::vector<Field> FieldsOfFullEntry() {
  return {{"length of title", "\x04\x00"s},     {"title", "\x8F\x74 A"s},
          {"length of artist", "\x02\x00"s},    {"artist", "me"s},
          {"length of genre", "\x00\x00"s},     {"bpm", "\x00\x80\x16\x43"s},
          {"player", "\x03\x00\x00\x00"s},      {"playLevel", "\xFF\xFF\xFF\xFF"s},
          {"length of midiFile", "\x05\x00"s},  {"midiFile", "a.mid"s},
          {"rank", "\x02\x00\x00\x00"s},        {"volWav", "\x00\x01\x00\x00"s},
          {"total", "\x00\x00\x01\x00"s},       {"lengthMs", "\x04\x03\x02\x01"s},
          {"length of stageFile", "\x01\x00"s}, {"stageFile", "s"s},
          {"numWav", "\xFF\x00\x00\x00"s},      {"numBmp", "\x00\x00\x00\x00"s},
          {"length of path", "\x09\x00"s},      {"path", "\\b\\\x95\x5C.bms"s}};
}

std::vector<Field> Head(const std::string& lastSong) {
  return {{"magic", "qlm_juke"s},
          {"zero bytes", std::string(11, '\0')},
          {"version", "\x01"s},
          {"lastSong", lastSong}};
}

std::vector<Field> FileOfOne() {
  std::vector<Field> fields = Head("\x00\x00\x00\x00"s);
  for (const Field& field : FieldsOfFullEntry()) fields.push_back(field);
  return fields;
}

class ListFileTest : public GameTest {};

TEST_F(ListFileTest, ListOfOneRowHasLastSong0AndEachFieldInItsPlace) {
  ExpectFields(ListFileBytes(std::vector{FullEntry()}), FileOfOne());
}

TEST_F(ListFileTest, RowsFollowEachOtherWithoutGaps) {
  std::vector<Field> fields = Head("\x01\x00\x00\x00"s);
  for (int row = 0; row < 2; ++row) {
    for (const Field& field : FieldsOfFullEntry()) fields.push_back(field);
  }
  ExpectFields(ListFileBytes(std::vector(2, FullEntry())), fields);
}

TEST_F(ListFileTest, EmptyListHasLastSongMinus1) {
  ExpectFields(ListFileBytes({}), Head("\xFF\xFF\xFF\xFF"s));
}

TEST_F(ListFileTest, BytesWrittenByHandAreRead) {
  const ListFile list = ReadListFile(AllBytes(FileOfOne()));
  EXPECT_EQ(list.lastSong, 0);
  EXPECT_TRUE(list.whole);
  EXPECT_EQ(list.unread, 0U);
  EXPECT_EQ(list.rows, std::vector{FullEntry()});
}

TEST_F(ListFileTest, HeadIsNotLookedAt) {
  std::string bytes = AllBytes(FileOfOne());
  bytes.replace(0, 20, "a head of 20 letters");
  EXPECT_EQ(ReadListFile(bytes).rows, std::vector{FullEntry()});
}

TEST_F(ListFileTest, BytesBehindTheLastRowAreLeftUnread) {
  const ListFile list = ReadListFile(AllBytes(FileOfOne()) + "tail");
  EXPECT_TRUE(list.whole);
  EXPECT_EQ(list.unread, 4U);
  EXPECT_EQ(list.rows.size(), 1U);
}

TEST_F(ListFileTest, CutFileKeepsWhatItHolds) {
  const std::string whole = AllBytes(FileOfOne());
  for (size_t length = 0; length < whole.size(); ++length) {
    const ListFile list = ReadListFile(whole.substr(0, length));
    EXPECT_FALSE(list.whole) << length;
    EXPECT_EQ(list.rows.size(), length > 24 ? 1U : 0U) << length;
    EXPECT_EQ(list.lastSong, length >= 24 ? 0 : -1) << length;
    if (length <= 24) continue;
    // The title ends at offset 30, bpm at 40.
    EXPECT_EQ(list.rows[0].title, length >= 30 ? FullEntry().title : Text()) << length;
    EXPECT_EQ(list.rows[0].bpm, length >= 40 ? 150.5F : 0.0F) << length;
    EXPECT_EQ(list.rows[0].path, Text()) << length;
  }
}

TEST_F(ListFileTest, RowsThatTheBytesDoNotHoldAreNotMade) {
  std::string bytes = AllBytes(FileOfOne());
  for (const std::string& claim : {"\x01\x00\x00\x00"s, "\xFE\xFF\xFF\x7F"s, "\xFF\xFF\xFF\x7F"s}) {
    bytes.replace(20, 4, claim);
    const ListFile list = ReadListFile(bytes);
    EXPECT_EQ(list.rows, std::vector{FullEntry()});
    EXPECT_FALSE(list.whole);
  }
  EXPECT_EQ(ReadListFile(bytes).lastSong, INT32_MAX);
}

TEST_F(ListFileTest, NegativeLastSongGivesNoRow) {
  std::string bytes = AllBytes(FileOfOne());
  bytes.replace(20, 4, "\xFF\xFF\xFF\xFF");
  EXPECT_TRUE(ReadListFile(bytes).rows.empty());
  EXPECT_TRUE(ReadListFile(bytes).whole);
  bytes.replace(20, 4, "\x00\x00\x00\x80"s);
  EXPECT_EQ(ReadListFile(bytes).lastSong, INT32_MIN);
  EXPECT_TRUE(ReadListFile(bytes).rows.empty());
  EXPECT_FALSE(ReadListFile(bytes).whole);
}

TEST_F(ListFileTest, LongTextIsCutBehindAWholeCharacter) {
  SongEntry song;
  song.title = Text(1, u'a') + Text(40'000, u'春');  // 80,001 bytes
  song.artist = Text(70'000, u'b');
  const ListFile list = ReadListFile(ListFileBytes(std::vector{song}));
  ASSERT_EQ(list.rows.size(), 1U);
  EXPECT_TRUE(list.whole);
  EXPECT_EQ(list.rows[0].title, Text(1, u'a') + Text(32'767, u'春'));
  EXPECT_EQ(list.rows[0].artist, Text(65'535, u'b'));
}

TEST_F(ListFileTest, LettersOutsideTheCodePageBecomeQuestionMarks) {
  SongEntry song;
  song.title = u"a♥한";
  EXPECT_EQ(ReadListFile(ListFileBytes(std::vector{song})).rows[0].title, u"a??");
}

// EF BB BF, then UTF-8: 한 is ED 95 9C.
TEST_F(ListFileTest, PathOutsideTheCodePageStandsInUtf8) {
  SongEntry song;
  song.path = u"\\한.bms";
  const std::string bytes = ListFileBytes(std::vector{song});
  EXPECT_EQ(bytes.substr(24 + 46), "\x0B\x00\xEF\xBB\xBF\\\xED\x95\x9C.bms"s);
  EXPECT_EQ(ReadListFile(bytes).rows[0].path, song.path);
}

TEST_F(ListFileTest, ChartIsFoundAgainWhateverItsNameIs) {
  for (const std::string& name :
       {"plain.bms"s, "\xED\x95\x9C.bms"s /* 한 */, "caf\x65\xCC\x81.bms"s /* e, accent */,
        "\xE3\x80\x9C.bms"s /* 〜, U+301C */, "\xF0\x9F\x8E\xB5.bms"s /* beyond 16 bits */,
        "\x95\x5C.bms"s /* 表 in code page 932 */, "\xFF\x81.bms"s /* neither */}) {
    const std::string system = SystemFolder() + "/" + name;
    std::FILE* const file = std::fopen(system.c_str(), "wb");
    ASSERT_NE(file, nullptr);
    std::fputs("here", file);
    std::fclose(file);
    SongEntry song;
    song.path = platform::InnerPath(system);
    const ListFile list = ReadListFile(ListFileBytes(std::vector{song}));
    EXPECT_EQ(ReadBytes(list.rows[0].path), "here") << name;
    std::remove(system.c_str());
  }
}

TEST_F(ListFileTest, SecondProgramWritesNoList) {
  const Text path = DataPath(u"jukelist\\a.qbl");
  MakeFolders(GetFolder(path));
  keepsDataFolder = false;
  EXPECT_TRUE(WriteListFile(path, {}));
  keepsDataFolder = true;
  EXPECT_FALSE(FileExists(path));
  EXPECT_TRUE(WriteListFile(path, {}));
  EXPECT_EQ(ReadBytes(path).size(), 24U);
}

TEST_F(ListFileTest, ShorterListKeepsTheEndOfTheLongerOne) {
  const Text path = Join(AppPath, u"\\a.qbl");
  EXPECT_TRUE(WriteListFile(path, std::vector(3, FullEntry())));
  const std::string longer = ReadBytes(path);
  EXPECT_TRUE(WriteListFile(path, std::vector{FullEntry()}));
  const std::string bytes = ReadBytes(path);
  const std::string shorter = AllBytes(FileOfOne());
  ASSERT_GT(longer.size(), shorter.size());
  EXPECT_EQ(bytes, shorter + longer.substr(shorter.size()));
  EXPECT_EQ(ReadListFile(bytes).rows.size(), 1U);
}

TEST_F(ListFileTest, ListThatCannotBeWrittenIsTold) {
  EXPECT_FALSE(WriteListFile(Join(AppPath, u"\\none\\a.qbl"), {}));
}

}  // namespace
}  // namespace qlm
