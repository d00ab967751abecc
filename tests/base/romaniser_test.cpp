// The letters of each kana, by tables worked out by hand.
#include "base/romaniser.h"

#include <gtest/gtest.h>

namespace qlm {
namespace {

struct Case {
  TextView kana;
  TextView letters;
};

void ExpectAll(std::initializer_list<Case> cases) {
  for (const auto& [kana, letters] : cases) {
    EXPECT_EQ(Romanise(kana), letters) << Romanise(kana).size() << " letters";
  }
}

TEST(RomaniserTest, NothingGivesNothing) { EXPECT_EQ(Romanise(u""), u""); }

TEST(RomaniserTest, RowsOfFive) {
  ExpectAll({{u"ｱｲｳｴｵ", u"AIUEO"},
             {u"ｶｷｸｹｺ", u"KAKIKUKEKO"},
             {u"ｻｼｽｾｿ", u"SASISUSESO"},
             {u"ﾀﾁﾂﾃﾄ", u"TACHITSUTETO"},
             {u"ﾅﾆﾇﾈﾉ", u"NANINUNENO"},
             {u"ﾊﾋﾌﾍﾎ", u"HAHIFUHEHO"},
             {u"ﾏﾐﾑﾒﾓ", u"MAMIMUMEMO"},
             {u"ﾔﾕﾖ", u"YAYUYO"},
             {u"ﾗﾘﾙﾚﾛ", u"RARIRURERO"},
             {u"ﾜｦﾝ", u"WAWON"}});
}

TEST(RomaniserTest, Signs) {
  ExpectAll({{u"ﾗｰﾒﾝ", u"RA-MEN"},
             {u"｢『【≪〈《", u"[[[[[["},
             {u"｣』】≫〉》", u"]]]]]]"},
             {u"･､｡", u".,."},
             {u"Wing 2!", u"Wing 2!"},
             {u"漢字ヮ♪", u"漢字ヮ♪"}});
}

TEST(RomaniserTest, SmallVowelsAreAnH) { ExpectAll({{u"ﾌｧ", u"FUH"}, {u"ｧｨｩｪｫ", u"HHHHH"}}); }

TEST(RomaniserTest, VoicedRows) {
  ExpectAll({{u"ｶﾞｷﾞｸﾞｹﾞｺﾞ", u"GAGIGUGEGO"},
             {u"ｻﾞｼﾞｽﾞｾﾞｿﾞ", u"ZAJIZUZEZO"},
             {u"ﾀﾞﾁﾞﾂﾞﾃﾞﾄﾞ", u"DADIDUDEDO"},
             {u"ﾊﾞﾋﾞﾌﾞﾍﾞﾎﾞ", u"BABIBUBEBO"},
             {u"ﾊﾟﾋﾟﾌﾟﾍﾟﾎﾟ", u"PAPIPUPEPO"}});
}

// Behind a syllable that begins with a vowel, the letter before H is looked at: T or C turn the syllable to
// DI.
TEST(RomaniserTest, VoicedHLooksAtTheLetterBefore) {
  ExpectAll({{u"ｱﾊﾞ", u"ABA"},
             {u"ﾌﾞ", u"BU"},
             {u"THAﾞ", u"DI"},
             {u"CHIﾞ", u"DI"},
             {u"TFUﾞ", u"DI"},
             {u"XHAﾞ", u"XBA"}});
}

TEST(RomaniserTest, VoicedSLooksAtTheTwoLettersBefore) {
  ExpectAll({{u"TSAﾞ", u"DU"},
             {u"CHSAﾞ", u"DU"},
             {u"XHSAﾞ", u"XHSA"},
             {u"HSAﾞ", u"HSA"},
             {u"ASIﾞ", u"AJI"},
             {u"ASUﾞ", u"AZU"}});
}

TEST(RomaniserTest, MarksBehindOtherLettersDoNothing) {
  ExpectAll({{u"ﾞ", u""},
             {u"ﾟ", u""},
             {u"ｱﾞ", u"A"},
             {u"ﾝﾞ", u"N"},
             {u"ｶﾟ", u"KA"},
             {u"ｳﾞ", u"U"},
             {u"ﾗﾞ", u"RA"}});
}

TEST(RomaniserTest, SmallTsuDoublesWhatComes) {
  ExpectAll({{u"ｶｯﾀ", u"KATTA"},
             {u"ﾏｯﾁ", u"MATCHI"},
             {u"ｯｱ", u"A"},
             {u"ｯｻ", u"SSA"},
             {u"ｯﾅ", u"NNA"},
             {u"ｯﾌ", u"HFU"},
             {u"ｯﾓ", u"MMO"},
             {u"ｯﾔ", u"YYA"},
             {u"ｯﾖ", u"YYO"},
             {u"ｯﾗ", u"RRA"},
             {u"ｯﾛ", u"RRO"},
             {u"ｯﾜ", u"WWA"},
             {u"ｯｦ", u"WWO"},
             {u"ｯﾝ", u"N"},
             {u"ｯｯｶ", u"KKA"},
             {u"ｱｯ", u"A"},
             {u"ｯ!", u"!"}});
}

TEST(RomaniserTest, SmallYJoinsTheSyllable) {
  ExpectAll({{u"ｷｬｷｭｷｮ", u"KYAKYUKYO"},
             {u"ｼｬｼｭｼｮ", u"SHASHUSHO"},
             {u"ﾁｬﾁｭﾁｮ", u"CHACHUCHO"},
             {u"ｼﾞｬｼﾞｭｼﾞｮ", u"JAJUJO"},
             {u"ﾆｬﾋｬﾐｬﾘｬ", u"NYAHYAMYARYA"},
             {u"ｷﾞｬﾋﾞｬﾋﾟｬ", u"GYABYAPYA"},
             {u"ﾃｭ", u"CHU"},
             {u"ﾁﾞｬ", u"DYA"},
             {u"ﾂｬ", u"TSHA"},
             {u"DHIｬ", u"DHA"},
             {u"ﾌｭ", u"FYU"}});
}

TEST(RomaniserTest, SmallYWithoutASyllableIsItsVowel) {
  ExpectAll({{u"ｬ", u"A"}, {u"ｭ", u"U"}, {u"ｮ", u"O"}, {u"ｱｬ", u"AA"}, {u"ﾝｮ", u"NO"}, {u"ｱﾝｮ", u"AYO"}});
}

}  // namespace
}  // namespace qlm
