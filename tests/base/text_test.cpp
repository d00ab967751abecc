// Cutting, comparing and making of texts.
#include "base/text.h"

#include <gtest/gtest.h>

namespace qlm {
namespace {

TEST(Mid, CountsFromOneAndEndsWithTheText) {
  EXPECT_EQ(Mid(u"abcdef", 3, 2), u"cd");
  EXPECT_EQ(Mid(u"abcdef", 5, 9), u"ef");
  EXPECT_EQ(Mid(u"abcdef", 7), u"");
  EXPECT_EQ(Mid(u"abcdef", 0, 2), u"");
  EXPECT_EQ(Mid(u"abcdef", 2), u"bcdef");
  EXPECT_EQ(Mid(u"abc", 2, 0), u"");
}

TEST(LeftAndRight, TakeWhatThereIs) {
  EXPECT_EQ(Left(u"abc", 2), u"ab");
  EXPECT_EQ(Left(u"abc", 9), u"abc");
  EXPECT_EQ(Right(u"abc", 2), u"bc");
  EXPECT_EQ(Right(u"abc", 9), u"abc");
  EXPECT_EQ(Right(u"abc", 0), u"");
}

TEST(Trim, RemovesBlanksOnly) {
  EXPECT_EQ(Trim(u"  a b  "), u"a b");
  EXPECT_EQ(Trim(u"\ta "), u"\ta");
  EXPECT_EQ(Trim(u"   "), u"");
  EXPECT_EQ(Trim(u"\u3000a"), u"\u3000a");  // a wide blank is a letter
}

TEST(InStr, CountsFromOneAndGivesZeroForNothing) {
  EXPECT_EQ(InStr(u"abcabc", u"c"), 3);
  EXPECT_EQ(InStr(u"abcabc", u"c", 4), 6);
  EXPECT_EQ(InStr(u"abc", u"x"), 0);
  EXPECT_EQ(InStr(u"abc", u"a", 0), 0);
}

TEST(BeginsWith, IgnoresLetterCase) {
  EXPECT_TRUE(BeginsWith(u"wav01", u"WAV"));
  EXPECT_FALSE(BeginsWith(u"wa", u"WAV"));
  EXPECT_TRUE(EqualsAnyCase(u"Ａａ", u"ａＡ"));
  EXPECT_FALSE(EqualsAnyCase(u"ab", u"a"));
}

TEST(Split, KeepsEmptyPieces) {
  EXPECT_EQ(Split(u"a,,b", u","), (std::vector<Text>{u"a", u"", u"b"}));
  EXPECT_EQ(Split(u"", u","), (std::vector<Text>{u""}));
}

TEST(Replace, ChangesEveryPlace) {
  EXPECT_EQ(Replace(u"a\rb\r", u"\r", u"\r\n"), u"a\r\nb\r\n");
  EXPECT_EQ(Replace(u"abc", u"", u"x"), u"abc");
}

TEST(ToText, GivesTheShortestFloatOfItsOwnWidth) {
  EXPECT_EQ(ToText(0.1F), u"0.1");
  EXPECT_EQ(ToText(0.1), u"0.1");
  EXPECT_EQ(ToText(static_cast<double>(0.1F)), u"0.10000000149011612");
  EXPECT_EQ(ToText(120.0F), u"120");
  EXPECT_EQ(ToText(-1.5), u"-1.5");
  EXPECT_EQ(ToText(100000.0F), u"100000");
  EXPECT_EQ(ToText(0.0F), u"0");
}

TEST(ToText, TakesAnExponentOnlyWhereDigitsWouldBeMany) {
  EXPECT_EQ(ToText(1e20), u"1E+20");
  EXPECT_EQ(ToText(1e-7), u"1E-07");
}

TEST(ToText, SpellsBooleansAndNumbers) {
  EXPECT_EQ(ToText(true), u"True");
  EXPECT_EQ(ToText(false), u"False");
  EXPECT_EQ(ToText(-2005401500), u"-2005401500");
  EXPECT_EQ(Join(u"a ", 1, u"/", 2.5F, Text(u"!")), u"a 1/2.5!");
}

TEST(Hex, IsInCapitalsWithoutPadding) {
  EXPECT_EQ(Hex(0), u"0");
  EXPECT_EQ(Hex(171), u"AB");
  EXPECT_EQ(Hex(0xFFFFFFFF), u"FFFFFFFF");
}

TEST(Fixed, RoundsToTheDecimalsAskedFor) {
  EXPECT_EQ(Fixed(59.96, 1), u"60.0");
  EXPECT_EQ(Fixed(0.5, 1), u"0.5");
  EXPECT_EQ(Fixed(0.5, 1, true), u".5");
}

TEST(Padded, FillsWithZeros) {
  EXPECT_EQ(Padded(7, 2), u"07");
  EXPECT_EQ(Padded(123, 2), u"123");
  EXPECT_EQ(Padded(-7, 2), u"-07");
}

}  // namespace
}  // namespace qlm
