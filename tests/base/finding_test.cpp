// Finding words in texts.
#include "base/finding.h"

#include <gtest/gtest.h>

#include <string>

namespace qlm {
namespace {

// Whether what is typed finds the text.
bool Finds(TextView typed, TextView text) {
  const Text folded = FoldForFinding(text);
  for (const FoundWord& word : FoundWords(typed)) {
    if (!word.IsIn(folded)) return false;
  }
  return true;
}

TEST(Finding, CaseWidthAndKindOfKanaAreFoldedAway) {
  EXPECT_EQ(FoldForFinding(u"Ａｂ　１！"), u"ab 1!");
  EXPECT_EQ(FoldForFinding(u"ひらがなヴゔ"), u"ヒラガナヴヴ");
  EXPECT_EQ(FoldForFinding(u"ﾊﾟﾝﾀﾞｳﾞｰ･｡"), u"パンダヴー・。");
  EXPECT_EQ(FoldForFinding(u"か\u3099は゜"), u"ガパ");
  EXPECT_EQ(FoldForFinding(u"éÀ漢"), u"ÉÀ漢");
}

TEST(Finding, AMarkWithoutItsKanaChangesNothing) {
  EXPECT_EQ(FoldForFinding(u"ﾞﾟ"), u"");
  EXPECT_EQ(FoldForFinding(u"aﾞナ゜"), u"aナ");
}

TEST(Finding, AWordIsFoundAnywhereAndNothingElseIs) {
  EXPECT_TRUE(Finds(u"march", u"The MARCH of the Quill"));
  EXPECT_TRUE(Finds(u"quill", u"The March of the Quill"));
  EXPECT_FALSE(Finds(u"marsh", u"The March of the Quill"));
  EXPECT_FALSE(Finds(u"quills", u"The March of the Quill"));
  EXPECT_TRUE(Finds(u"aab", u"aaab")) << "a beginning that fails hides none that does not";
}

TEST(Finding, AllWordsAreToBeThereInAnyOrder) {
  EXPECT_TRUE(Finds(u"quill  march", u"The March of the Quill"));
  EXPECT_TRUE(Finds(u"quill　march ", u"The March of the Quill"));
  EXPECT_FALSE(Finds(u"quill walk", u"The March of the Quill"));
}

TEST(Finding, KanaOfEachKindFindEachOther) {
  for (const TextView typed : {u"ぺん", u"ペン", u"ﾍﾟﾝ"}) {
    for (const TextView text : {u"羽ぺんの行進", u"羽ペンの行進", u"羽ﾍﾟﾝの行進"}) {
      EXPECT_TRUE(Finds(typed, text));
    }
  }
  EXPECT_FALSE(Finds(u"べん", u"羽ペンの行進"));
}

TEST(Finding, LatinLettersFindKanaByEachSpelling) {
  for (const TextView typed : {u"sinsya", u"shinsha", u"shinnsya", u"SHINSHA"}) {
    EXPECT_TRUE(Finds(typed, u"しんしゃ")) << std::string(typed.begin(), typed.end());
  }
  for (const TextView typed : {u"zya", u"jya", u"ja"}) EXPECT_TRUE(Finds(typed, u"ジャズ"));
  for (const TextView typed : {u"tuduki", u"tsuduki", u"tsuzuki"}) EXPECT_TRUE(Finds(typed, u"つづき"));
  EXPECT_TRUE(Finds(u"fantazii", u"ファンタジー"));
  EXPECT_TRUE(Finds(u"pa-thi", u"パーティ"));
  EXPECT_FALSE(Finds(u"sa", u"しゃ"));
  EXPECT_FALSE(Finds(u"ka", u"が"));
}

TEST(Finding, SmallVowelsOfForeignWordsAreSpeltAsTheyAreTyped) {
  EXPECT_TRUE(Finds(u"fyu-jon", u"フュージョン"));
  for (const TextView typed : {u"dyuo", u"dhuo"}) EXPECT_TRUE(Finds(typed, u"デュオ"));
  for (const TextView typed : {u"tyu-ba", u"thu-ba"}) EXPECT_TRUE(Finds(typed, u"テューバ"));
  EXPECT_TRUE(Finds(u"yei", u"イェイ"));
  EXPECT_TRUE(Finds(u"vyu", u"ヴュ"));
  EXPECT_TRUE(Finds(u"gwaba", u"グァバ"));
  for (const TextView typed : {u"uindo", u"windo"}) EXPECT_TRUE(Finds(typed, u"ウィンド"));
}

TEST(Finding, DoubledConsonantsAreSmallTsu) {
  EXPECT_TRUE(Finds(u"rokku", u"ロック"));
  EXPECT_TRUE(Finds(u"macchi", u"マッチ"));
  EXPECT_TRUE(Finds(u"matchi", u"マッチ"));
  EXPECT_TRUE(Finds(u"roxtuku", u"ロック"));
  EXPECT_FALSE(Finds(u"roku", u"ロック"));
  EXPECT_FALSE(Finds(u"rokku", u"ロク"));
}

TEST(Finding, LongVowelsMayBeLeftOutOrWritten) {
  for (const TextView typed : {u"supa", u"su-pa-", u"suupaa", u"スーパー"}) {
    EXPECT_TRUE(Finds(typed, u"スーパー"));
  }
  EXPECT_TRUE(Finds(u"スーパー", u"supa"));
  EXPECT_TRUE(Finds(u"スーパー", u"Suupaa"));
  EXPECT_TRUE(Finds(u"スーパー", u"supa mix"));
  EXPECT_FALSE(Finds(u"パー", u"パンダ"));
  EXPECT_FALSE(Finds(u"suipa", u"スーパー"));
}

// As one types, no row that the whole word finds goes away for a moment.
TEST(Finding, EachBeginningOfASpellingFinds) {
  const Text texts[] = {u"ちゃっかりシャッフル", u"ロックンロール", u"チェッカー・フラッグ"};
  const Text typed[] = {u"chakkarishaffuru", u"rokkunro-ru", u"chekka-furaggu"};
  for (size_t i = 0; i < 3; ++i) {
    for (size_t length = 1; length <= typed[i].size(); ++length) {
      EXPECT_TRUE(Finds(typed[i].substr(0, length), texts[i])) << i << " " << length;
    }
  }
}

TEST(Finding, KanaFindLatinLetters) {
  EXPECT_TRUE(Finds(u"ハネペン", u"hanepen"));
  EXPECT_TRUE(Finds(u"しんしゃ", u"SHINSHA"));
  EXPECT_TRUE(Finds(u"ロック", u"rokku"));
  EXPECT_FALSE(Finds(u"ロック", u"roku"));
}

TEST(Finding, AnEmptyWordIsEverywhere) {
  EXPECT_TRUE(FoundWord(u"").IsIn(u""));
  EXPECT_TRUE(FoundWords(u"  ").empty());
  EXPECT_FALSE(FoundWord(u"a").IsIn(u""));
}

TEST(Finding, OfALongWordTheFirstUnitsCount) {
  const Text text(63, u'a');
  EXPECT_TRUE(Finds(Text(100, u'a'), text));
  EXPECT_FALSE(Finds(Text(100, u'a'), text.substr(1)));
}

// Each of these could be cut in more ways than one could ever follow one by one.
TEST(Finding, AmbiguousTextsTakeNoLonger) {
  const Text text(65'535, u'ン');
  EXPECT_FALSE(Finds(Text(62, u'n') + u'x', text));
  EXPECT_TRUE(Finds(Text(63, u'n'), text));
  EXPECT_FALSE(Finds(Text(62, u'ー') + u'x', Text(65'535, u'ー')));
  EXPECT_FALSE(Finds(u"ア" + Text(61, u'ー') + u'x', Text(65'535, u'a')));
}

}  // namespace
}  // namespace qlm
