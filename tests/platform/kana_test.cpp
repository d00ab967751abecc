// Width and script of every character; readings by the installed dictionary.
#include "platform/kana.h"

#include <gtest/gtest.h>

#include <string>

namespace platform {
namespace {

using std::u16string;
using std::u16string_view;

TEST(KanaTest, WideLettersAndTheWideBlankAreNarrowed) {
  for (char16_t wide = u'！'; wide <= u'～'; ++wide) {
    EXPECT_EQ(NarrowKatakana({&wide, 1}), u16string(1, static_cast<char16_t>(wide - u'！' + u'!')));
  }
  EXPECT_EQ(NarrowKatakana(u"Ａ　ｂ"), u"A b");
}

TEST(KanaTest, KanaOfBothScripts) {
  const u16string_view hiragana =
      u"あいうえおかきくけこさしすせそたちつてとなにぬねのはひふへほまみむめもやゆよらりるれろわをんっゃゅょ"
      u"ぁぃぅぇぉ";
  const u16string_view katakana =
      u"アイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワヲンッャュョ"
      u"ァィゥェォ";
  const u16string_view narrow = u"ｱｲｳｴｵｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾅﾆﾇﾈﾉﾊﾋﾌﾍﾎﾏﾐﾑﾒﾓﾔﾕﾖﾗﾘﾙﾚﾛﾜｦﾝｯｬｭｮｧｨｩｪｫ";
  EXPECT_EQ(NarrowKatakana(hiragana), narrow);
  EXPECT_EQ(NarrowKatakana(katakana), narrow);
  EXPECT_EQ(NarrowKatakana(narrow), narrow);
}

TEST(KanaTest, VoicedKanaBecomeTwoCharacters) {
  EXPECT_EQ(NarrowKatakana(u"がざだばぱゔ"), u"ｶﾞｻﾞﾀﾞﾊﾞﾊﾟｳﾞ");
  EXPECT_EQ(NarrowKatakana(u"ガザダバパヴ"), u"ｶﾞｻﾞﾀﾞﾊﾞﾊﾟｳﾞ");
  EXPECT_EQ(NarrowKatakana(u"か゛ハ゜"), u"ｶﾞﾊﾟ");
  // All voiced: the text doubles.
  EXPECT_EQ(NarrowKatakana(u16string(1000, u'ガ')).size(), 2000U);
}

TEST(KanaTest, Signs) { EXPECT_EQ(NarrowKatakana(u"。「」、・ー゛゜"), u"｡｢｣､･ｰﾞﾟ"); }

TEST(KanaTest, WhatHasNoNarrowFormStays) {
  const u16string_view others = u"ヮヰヱヵヶ漢字『』【】〜…♪①￥￠￣│■○ABC 123";
  EXPECT_EQ(NarrowKatakana(others), others);
}

TEST(KanaTest, NothingElseOfTheFirstPlaneChanges) {
  for (int unit = 1; unit < 0x10000; ++unit) {
    const u16string text(1, static_cast<char16_t>(unit));
    const bool kana = unit >= 0x3041 && unit <= 0x30FC;
    const bool sign = unit >= 0x3000 && unit <= 0x3002;
    const bool bracket = unit == 0x300C || unit == 0x300D;
    const bool wide = unit >= 0xFF01 && unit <= 0xFF5E;
    if (kana || sign || bracket || wide) continue;
    ASSERT_EQ(NarrowKatakana(text), text) << std::hex << unit;
  }
}

class ReadingTest : public testing::Test {
 protected:
  static u16string Read(u16string_view text) { return ReadKanji(text).value_or(u"no dictionary"); }
};

TEST_F(ReadingTest, KanjiAreRead) {
  EXPECT_EQ(Read(u"漢字"), u"カンジ");
  EXPECT_EQ(Read(u"東京"), u"トウキョウ");
}

// は is written HA where it is pronounced WA.
TEST_F(ReadingTest, ReadingsAreThoseOfWriting) {
  EXPECT_EQ(Read(u"私は学校へ行く"), u"ワタシハガッコウヘイク");
}

TEST_F(ReadingTest, BlanksAndSpellingStay) {
  EXPECT_EQ(Read(u"  ab  漢字 12　ＢＭＳ９!  "), u"  ab  カンジ 12　ＢＭＳ９!  ");
  EXPECT_EQ(Read(u""), u"");
  EXPECT_EQ(Read(u"A song, 7 keys"), u"A song, 7 keys");
}

TEST_F(ReadingTest, AWordThatIsNotKnownStays) {
  EXPECT_EQ(Read(u"ピョケラッチョ"), u"ピョケラッチョ");
  EXPECT_EQ(Read(u"☃☄"), u"☃☄");
}

TEST_F(ReadingTest, HalfWidthKanaAreWidened) {
  EXPECT_EQ(Read(u"ｶﾞｯｺｳ"), u"ガッコウ");
  EXPECT_EQ(Read(u"｢ﾞ｣"), u"「゛」");
}

TEST_F(ReadingTest, LongTextsAreReadWhole) {
  u16string kanji;
  u16string kana;
  for (int i = 0; i < 1000; ++i) {
    kanji += u"東京、";
    kana += u"トウキョウ、";
  }
  EXPECT_EQ(Read(kanji), kana);
  EXPECT_TRUE(Read(u16string(100000, u'ん')) == u16string(100000, u'ン'));
}

}  // namespace
}  // namespace platform
