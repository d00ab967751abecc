// Line breaks, with letters of 10 pixels and all others of 20.
#include "platform/line_breaks.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

using Lines = std::vector<std::u16string>;

int32_t WidthOf(std::u16string_view line) {
  int32_t width = 0;
  for (const char16_t unit : line) width += unit < 0x80 ? 10 : 20;
  return width;
}

Lines Broken(std::u16string_view text, int32_t width) { return BreakLines(text, width, WidthOf); }

TEST(BreakLines, WhatFitsStaysOneLine) {
  EXPECT_EQ(Broken(u"羽ペン pen", 100), (Lines{u"羽ペン pen"}));
  EXPECT_EQ(Broken(u"", 100), (Lines{u""}));
}

TEST(BreakLines, LineFeedsEndLines) { EXPECT_EQ(Broken(u"a\n\nb\n", 100), (Lines{u"a", u"", u"b", u""})); }

TEST(BreakLines, WordsStayWhole) {
  EXPECT_EQ(Broken(u"one two three", 80), (Lines{u"one two", u"three"}));
  EXPECT_EQ(Broken(u"one two three", 69), (Lines{u"one", u"two", u"three"}));
  EXPECT_EQ(Broken(u"羽file.bmsペン", 80), (Lines{u"羽", u"file.bms", u"ペン"}));
}

TEST(BreakLines, BlanksAtTheEndTakeNoRoom) {
  EXPECT_EQ(Broken(u"one  ", 30), (Lines{u"one"}));
  EXPECT_EQ(Broken(u"one   two", 30), (Lines{u"one", u"two"}));
}

TEST(BreakLines, JapaneseIsBrokenAnywhere) {
  EXPECT_EQ(Broken(u"存在しません", 60), (Lines{u"存在し", u"ません"}));
  EXPECT_EQ(Broken(u"cabファイル", 70), (Lines{u"cabファ", u"イル"}));
}

TEST(BreakLines, NoLineBeginsWithASignThatCloses) {
  EXPECT_EQ(Broken(u"ません。つぎ", 60), (Lines{u"ませ", u"ん。つ", u"ぎ"}));
  EXPECT_EQ(Broken(u"展開しっか", 60), (Lines{u"展開", u"しっか"}));
  EXPECT_EQ(Broken(u"あらら?え", 60), (Lines{u"あら", u"ら?え"}));
}

TEST(BreakLines, NoLineEndsWithASignThatOpens) {
  EXPECT_EQ(Broken(u"羽ペ「行進」", 60), (Lines{u"羽ペ", u"「行", u"進」"}));
}

TEST(BreakLines, AnythingIsCutThatCannotBeBroken) {
  EXPECT_EQ(Broken(u"abcdefg", 30), (Lines{u"abc", u"def", u"g"}));
  EXPECT_EQ(Broken(u"羽ペン", 5), (Lines{u"羽", u"ペ", u"ン"}));
  EXPECT_EQ(Broken(u"。。。。", 40), (Lines{u"。。", u"。。"}));
}

TEST(BreakLines, PairsOfUnitsStayTogether) {
  // Each of the two halves counts 20.
  EXPECT_EQ(Broken(u"𠮷野𠮷", 60), (Lines{u"𠮷野", u"𠮷"}));
  EXPECT_EQ(Broken(u"𠮷𠮷", 20), (Lines{u"𠮷", u"𠮷"}));
}

}  // namespace
}  // namespace platform
