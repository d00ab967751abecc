// Whole conversions, stage by stage in the log.
#include "chart/titles.h"

#include <string>

#include "files/title_dictionary.h"
#include "platform/text.h"
#include "state/titles.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

using Texts = std::vector<Text>;

class TitlesTest : public GameTest {
 protected:
  static void Dictionary(TextView text) { TakeTitleDictionary(platform::EncodeCp932(text)); }
};

TEST_F(TitlesTest, AnEmptyTitleStaysEmpty) { EXPECT_EQ(Cvt2ASCII(u""), u""); }

TEST_F(TitlesTest, AsciiComesOutAsItWentIn) {
  Text ascii;
  for (char16_t c = u' '; c <= u'~'; ++c) ascii += c;
  EXPECT_EQ(Cvt2ASCII(ascii), ascii);
  EXPECT_EQ(Cvt2ASCII(u"  Song / Me     "), u"  Song / Me     ");
}

TEST_F(TitlesTest, EachStageIsLogged) {
  Dictionary(u"Ｚ\tＹ");
  EXPECT_EQ(Cvt2ASCII(u"Ｚ漢字"), u"YKANJI");
  EXPECT_EQ(log, (Texts{u"[Cvt2ASCII]: Ｚ漢字", u"    byDict: Ｙ漢字", u"    byMSIME: Ｙカンジ",
                        u"    toNarrow: Yｶﾝｼﾞ", u"    -- RESULT:YKANJI"}));
  log.clear();
  Cvt2ASCII(u"a");
  EXPECT_EQ(log.front(), u"[Cvt2ASCII]: a");
}

TEST_F(TitlesTest, Kana) {
  EXPECT_EQ(Cvt2ASCII(u"ｶﾞ"), u"GA");
  EXPECT_EQ(Cvt2ASCII(u"ﾁﾞ"), u"DI");
  EXPECT_EQ(Cvt2ASCII(u"ﾂﾞ"), u"DU");
  EXPECT_EQ(Cvt2ASCII(u"ﾊﾟ"), u"PA");
  EXPECT_EQ(Cvt2ASCII(u"ﾌﾞ"), u"BU");
  EXPECT_EQ(Cvt2ASCII(u"ｼﾞ"), u"JI");
  EXPECT_EQ(Cvt2ASCII(u"ｶｯﾀ"), u"KATTA");
  EXPECT_EQ(Cvt2ASCII(u"ﾏｯﾁ"), u"MATCHI");
  EXPECT_EQ(Cvt2ASCII(u"ﾌｧ"), u"FUH");
  EXPECT_EQ(Cvt2ASCII(u"ﾗｰﾒﾝ"), u"RA-MEN");
  EXPECT_EQ(Cvt2ASCII(u"らーめん"), u"RA-MEN");
  EXPECT_EQ(Cvt2ASCII(u"ギャラクシー・ロード"), u"GYARAKUSI-.RO-DO");
}

TEST_F(TitlesTest, WordsReplaceEveryOccurrenceInFileOrder) {
  Dictionary(u"a\tb\r\nb\tcd\r\nd\t");
  EXPECT_EQ(Cvt2ASCII(u"aba A"), u"ccc A");
}

TEST_F(TitlesTest, AWordOfAWholeTitleComesBeforeItsKana) {
  Dictionary(u"羽ペンの行進\tQuill March");
  EXPECT_EQ(Cvt2ASCII(u"羽ペンの行進"), u"Quill March");
}

TEST_F(TitlesTest, AnEmptyWordIsPassedOver) {
  Dictionary(u"\tx\r\na\tb\r\n");
  EXPECT_EQ(Cvt2ASCII(u"aa"), u"bb");
}

// Sixty entries that double the title each: only those that leave it within 65535 characters count.
TEST_F(TitlesTest, WordsCannotMakeATitleGrowWithoutEnd) {
  Text lines;
  for (int i = 0; i < 60; ++i) lines += u"a\taa\r\n";
  Dictionary(lines);
  EXPECT_EQ(Cvt2ASCII(u"a").size(), 32768U);
}

TEST_F(TitlesTest, WhatIsLeftBecomesQuestionMarks) {
  EXPECT_EQ(Cvt2ASCII(u"♪"), u"??");  // two bytes of the code page
  EXPECT_EQ(Cvt2ASCII(u"ヰ"), u"??");
  EXPECT_EQ(Cvt2ASCII(u"é"), u"?");    // none
  EXPECT_EQ(Cvt2ASCII(u"😀x"), u"?x");  // none, of two units
  EXPECT_EQ(Cvt2ASCII(u"\t\x7F\n"), u"???");
  EXPECT_EQ(Cvt2ASCII(Text(1, u'\0')), u"?");
}

TEST_F(TitlesTest, BracketsOfAllKinds) { EXPECT_EQ(Cvt2ASCII(u"「あ」【い】『う』"), u"[A][I][U]"); }

}  // namespace
}  // namespace qlm
