// The dictionary of titles, entry by entry.
#include "files/title_dictionary.h"

#include "base/paths.h"
#include "state/titles.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

using Words = std::vector<Text>;

class TitleDictionaryTest : public GameTest {};

TEST_F(TitleDictionaryTest, WithoutAFileThereIsOneEmptyEntry) {
  LoadTitleDictionary();
  EXPECT_EQ(DictFrom, (Words{u""}));
  EXPECT_EQ(DictTo, (Words{u""}));
  EXPECT_TRUE(log.empty());
}

TEST_F(TitleDictionaryTest, EachLineIsAWordATabAndAnother) {
  WriteText(u"_qlmfiles\\cnvdict.txt", u"羽\tHANE\r\n表\tOMOTE");
  LoadTitleDictionary();
  EXPECT_EQ(DictFrom, (Words{u"羽", u"表"}));
  EXPECT_EQ(DictTo, (Words{u"HANE", u"OMOTE"}));
  EXPECT_EQ(log, (Words{u"convdict: 1 words are avilable."}));
}

TEST_F(TitleDictionaryTest, ALastLineEndGivesAnEmptyEntryThatCounts) {
  WriteText(u"_qlmfiles\\cnvdict.txt", u"a\tb\r\nc\td\r\n");
  LoadTitleDictionary();
  EXPECT_EQ(DictFrom, (Words{u"a", u"c", u""}));
  EXPECT_EQ(DictTo, (Words{u"b", u"d", u""}));
  EXPECT_EQ(log, (Words{u"convdict: 2 words are avilable."}));
}

TEST_F(TitleDictionaryTest, AnEmptyFileIsOneEmptyEntry) {
  WriteText(u"_qlmfiles\\cnvdict.txt", u"");
  LoadTitleDictionary();
  EXPECT_EQ(DictFrom, (Words{u""}));
  EXPECT_EQ(log, (Words{u"convdict: 0 words are avilable."}));
}

TEST_F(TitleDictionaryTest, FieldsMayLackOrAbound) {
  TakeTitleDictionary("gone\r\na\tb\tc\td\r\n\tx\r\ny\t\r\nz\nq");
  EXPECT_EQ(DictFrom, (Words{u"gone", u"a", u"", u"y", u"z\nq"}));
  EXPECT_EQ(DictTo, (Words{u"", u"b", u"x", u"", u""}));
}

TEST_F(TitleDictionaryTest, AnotherFileTakesThePlaceOfTheFirst) {
  TakeTitleDictionary("a\tb");
  EXPECT_FALSE(LoadTitleDictionary(Join(AppPath, u"\\none.txt")));
  EXPECT_EQ(DictFrom, (Words{u""}));
  EXPECT_TRUE(LoadTitleDictionary(WriteText(u"mine.txt", u"c\td")));
  EXPECT_EQ(DictFrom, (Words{u"c"}));
}

// Of more than a mebibyte nothing is read, and the log says so.
TEST_F(TitleDictionaryTest, AFileWithoutEndIsNotRead) {
  WriteData(u"_qlmfiles\\cnvdict.txt", std::string((size_t{1} << 20) + 1, 'x'));
  LoadTitleDictionary();
  EXPECT_EQ(DictFrom, (Words{u""}));
  ASSERT_EQ(log.size(), 2U);
  EXPECT_TRUE(log[0].starts_with(u"# ")) << Utf8(log[0]);
}

}  // namespace
}  // namespace qlm
