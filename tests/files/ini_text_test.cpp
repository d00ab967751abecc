// Settings texts: what is found, and what stays byte for byte.
#include "files/ini_text.h"

#include <gtest/gtest.h>

#include "tests/support/game_test.h"

namespace qlm {
namespace {

std::optional<Text> Find(std::string_view bytes, TextView section, TextView key) {
  return IniText(bytes).Find(section, key);
}

std::string Put(std::string_view bytes, TextView section, TextView key, TextView value) {
  IniText text(bytes);
  text.Put(section, key, value);
  return text.Bytes();
}

TEST(IniText, NamesAreFoundInAnyLetterCase) {
  EXPECT_EQ(Find("[SETTING]\r\nhispeed=2\r\n", u"Setting", u"HiSpeed"), u"2");
}

TEST(IniText, BlanksAroundNamesAndValuesDoNotCount) {
  EXPECT_EQ(Find("  [ Core ] \r\n\t numObjs \t=  12 \t\r\n", u"Core", u"numObjs"), u"12");
}

TEST(IniText, BlanksInsideAValueStay) { EXPECT_EQ(Find("[A]\r\nk=a  b\r\n", u"A", u"k"), u"a  b"); }

TEST(IniText, QuotationMarksAroundAValueVanish) {
  EXPECT_EQ(Find("[A]\r\nk=\" a \"\r\n", u"A", u"k"), u" a ");
  EXPECT_EQ(Find("[A]\r\nk='a'\r\n", u"A", u"k"), u"a");
  EXPECT_EQ(Find("[A]\r\nk=\"a'\r\n", u"A", u"k"), u"\"a'");
  EXPECT_EQ(Find("[A]\r\nk=\"\r\n", u"A", u"k"), u"\"");
}

TEST(IniText, MissingKeyIsNothingAndEmptyValueIsEmpty) {
  EXPECT_EQ(Find("[A]\r\nk=\r\n", u"A", u"other"), std::nullopt);
  EXPECT_EQ(Find("[A]\r\nk=\r\n", u"B", u"k"), std::nullopt);
  EXPECT_EQ(Find("[A]\r\nk=\r\n", u"A", u"k"), u"");
  EXPECT_EQ(Find("", u"A", u"k"), std::nullopt);
}

TEST(IniText, FirstOfEqualKeysAndSectionsCounts) {
  EXPECT_EQ(Find("[A]\r\nk=1\r\nK=2\r\n", u"A", u"k"), u"1");
  EXPECT_EQ(Find("[A]\r\nk=1\r\n[a]\r\nk=2\r\nz=3\r\n", u"A", u"k"), u"1");
  EXPECT_EQ(Find("[A]\r\nk=1\r\n[a]\r\nk=2\r\nz=3\r\n", u"A", u"z"), std::nullopt);
}

TEST(IniText, KeysBelongToTheirSection) {
  constexpr std::string_view kText = "k=0\r\n[A]\r\n[B]\r\nk=2\r\n";
  EXPECT_EQ(Find(kText, u"A", u"k"), std::nullopt);
  EXPECT_EQ(Find(kText, u"B", u"k"), u"2");
}

TEST(IniText, CommentsAndOtherLinesSayNothing) {
  constexpr std::string_view kText = "[A]\r\n;k=1\r\n  ; k=2\r\nk\r\n=4\r\n[B\r\nk=5\r\n";
  EXPECT_EQ(Find(kText, u"A", u"k"), u"5");
  EXPECT_EQ(Find(kText, u"A", u""), std::nullopt);
}

TEST(IniText, OnlyTheFirstEqualsSignParts) { EXPECT_EQ(Find("[A]\r\nk=a=b\r\n", u"A", u"k"), u"a=b"); }

TEST(IniText, EveryKindOfLineEndParts) {
  EXPECT_EQ(Find("[A]\nk=1\nl=2", u"A", u"l"), u"2");
  EXPECT_EQ(Find("[A]\rk=1\rl=2\r", u"A", u"k"), u"1");
}

TEST(IniText, BracketAsSecondByteOfACharacterEndsNoSection) {
  // U+2010 is 81 5D, and 5D alone is "]".
  EXPECT_EQ(Find("[a\x81\x5D]\r\nk=\x81\x5D\r\n", u"a\u2010", u"k"), u"\u2010");
}

TEST(IniText, EqualValueChangesNoByte) {
  constexpr std::string_view kText = "\xFF;x\r\n\r\n [a] \n K = \"1\" \r\nrest";
  EXPECT_EQ(Put(kText, u"A", u"k", u"1"), kText);
}

TEST(IniText, AnyBytesComeBackAsTheyWere) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  bytes += "\r\n[A]\r\r\n\n=\n";
  EXPECT_EQ(IniText(bytes).Bytes(), bytes);
}

TEST(IniText, ChangedValueKeepsAllAroundIt) {
  EXPECT_EQ(Put("; c\r\n[a]\r\n kEy =  1 \r\nx=y\r\n", u"A", u"Key", u"22"),
            "; c\r\n[a]\r\n kEy =  22 \r\nx=y\r\n");
  EXPECT_EQ(Put("[A]\r\nk=\r\n", u"A", u"k", u"v"), "[A]\r\nk=v\r\n");
  EXPECT_EQ(Put("[A]\r\nk=\"old\"\r\n", u"A", u"k", u"new"), "[A]\r\nk=new\r\n");
}

TEST(IniText, NewKeyGoesBehindTheLastLineOfItsSection) {
  EXPECT_EQ(Put("[A]\r\nk=1\r\n\r\n[B]\r\n", u"a", u"n", u"2"), "[A]\r\nk=1\r\nn=2\r\n\r\n[B]\r\n");
  EXPECT_EQ(Put("[A]\r\n[B]\r\n", u"A", u"n", u"2"), "[A]\r\nn=2\r\n[B]\r\n");
  EXPECT_EQ(Put("[A]\r\nk=1", u"A", u"n", u"2"), "[A]\r\nk=1\r\nn=2\r\n");
}

TEST(IniText, NewSectionGoesToTheEnd) {
  EXPECT_EQ(Put("", u"A", u"k", u"1"), "[A]\r\nk=1\r\n");
  EXPECT_EQ(Put("x", u"A", u"k", u"1"), "x\r\n[A]\r\nk=1\r\n");
  EXPECT_EQ(Put("[B]\r\n\r\n", u"A", u"k", u"1"), "[B]\r\n\r\n[A]\r\nk=1\r\n");
}

TEST(IniText, NewLinesEndAsTheFirstLineDoes) {
  EXPECT_EQ(Put("[A]\nk=1\n", u"A", u"n", u"2"), "[A]\nk=1\nn=2\n");
}

TEST(IniText, TextIsCodePage932) {
  EXPECT_EQ(Put("", u"A", u"名", u"ＭＳ"), "[A]\r\n\x96\xBC=\x82\x6C\x82\x72\r\n");
  EXPECT_EQ(Find("[A]\r\nk=\x83\x5C\r\n", u"A", u"k"), u"ソ");
}

TEST(IniText, EntriesStandInTheOrderOfTheText) {
  const std::vector<IniText::Entry> entries = IniText("x=0\r\n[A]\r\nk=1\r\nk=2\r\n[B]\r\nl=\r\n").Entries();
  ASSERT_EQ(entries.size(), 3U);
  EXPECT_EQ(entries[0].value, u"1");
  EXPECT_EQ(entries[1].value, u"2");
  EXPECT_EQ(entries[2].section, u"B");
  EXPECT_EQ(entries[2].key, u"l");
}

}  // namespace
}  // namespace qlm
