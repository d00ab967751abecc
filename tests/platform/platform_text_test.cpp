// Code page 932, UTF-8 and file names' equality.
#include "platform/text.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

using std::string_view_literals::operator""sv;

TEST(Cp932, DecodesDoubleBytesAsOneCharacter) {
  EXPECT_EQ(DecodeCp932("A\x83\x65\x83\x58\x83\x67Z"), u"AテストZ");
  EXPECT_EQ(DecodeCp932("\xB1"), u"ｱ");       // half-width kana
  EXPECT_EQ(DecodeCp932("\x95\x5C"), u"表");  // the trail byte is a backslash
}

TEST(Cp932, DecodesTheNecAndIbmRows) {
  EXPECT_EQ(DecodeCp932("\x87\x40"), u"①");
  EXPECT_EQ(DecodeCp932("\xFA\xB1"), u"﨑");
}

TEST(Cp932, KeepsControlCharactersAndBackslash) {
  EXPECT_EQ(DecodeCp932("\x1A\x1C\x7F\\~"), u"\x1A\x1C\x7F\\~");
  EXPECT_EQ(DecodeCp932("a\0b"sv), std::u16string_view(u"a\0b", 3));
}

TEST(Cp932, AnUnassignedPairIsOneMiddleDot) {
  EXPECT_EQ(DecodeCp932("a\x85\x40z"), u"a・z");
  EXPECT_EQ(DecodeCp932("\xFC\xFC"), u"・");
}

TEST(Cp932, ALeadByteWithoutATrailByteStandsAlone) {
  EXPECT_EQ(DecodeCp932("\x83\r\n"), u"・\r\n");
  EXPECT_EQ(DecodeCp932("a\x83"), u"a・");
  EXPECT_EQ(DecodeCp932("\x83\x7F"), u"・\x7F");
}

TEST(Cp932, TheFiveOddBytesHaveTheirOwnCharacters) {
  EXPECT_EQ(DecodeCp932("\x80\xA0\xFD\xFE\xFF"), u"\x80\xA0\xF8F1\xF8F2\xF8F3");
}

TEST(Cp932, GoesThereAndBack) {
  const std::u16string text = u"羽ペンの行進 ①﨑ｱ \\~";
  EXPECT_EQ(DecodeCp932(EncodeCp932(text)), text);
  EXPECT_EQ(EncodeCp932(u"\x80\xA0\xF8F1\xF8F2\xF8F3"), "\x80\xA0\xFD\xFE\xFF");
}

TEST(Cp932, WhatItDoesNotHoldBecomesAQuestionMark) {
  EXPECT_EQ(EncodeCp932(u"a\u00E9b"), "a?b");
  EXPECT_EQ(EncodeCp932(u"\xD83D\xDE00"), "??");
}

TEST(Utf8, GoesThereAndBack) {
  EXPECT_EQ(EncodeUtf8(u"羽é😀"), "羽é😀");
  EXPECT_EQ(DecodeUtf8("羽é😀"), u"羽é😀");
}

TEST(Utf8, MarksBadSequences) {
  EXPECT_EQ(DecodeUtf8("a\xFF"), u"a\xFFFD");
  EXPECT_EQ(EncodeUtf8(u"\xD800"), "\xEF\xBF\xBD");
  EXPECT_FALSE(IsUtf8("a\xFF"));
  EXPECT_TRUE(IsUtf8("羽"));
  EXPECT_TRUE(IsUtf8(""));
}

TEST(FoldName, EqualsNamesThatDifferInCaseOrNormalForm) {
  EXPECT_EQ(FoldName(u"KICK.Wav"), FoldName(u"kick.wav"));
  EXPECT_EQ(FoldName(u"か\u3099"), FoldName(u"が"));
  EXPECT_NE(FoldName(u"a"), FoldName(u"b"));
}

TEST(UpperCase, IsLetterByLetter) {
  EXPECT_EQ(UpperCase(u'z'), u'Z');
  EXPECT_EQ(UpperCase(u'ａ'), u'Ａ');
  EXPECT_EQ(UpperCase(u'ß'), u'ß');
  EXPECT_EQ(UpperCase(u'['), u'[');
}

}  // namespace
}  // namespace platform
