// Numbers from texts, roundings, divisions.
#include "base/numbers.h"

#include <gtest/gtest.h>

#include <cmath>

namespace qlm {
namespace {

TEST(Val, ReadsTheNumberAtTheStart) {
  EXPECT_EQ(Val(u"12abc"), 12);
  EXPECT_EQ(Val(u"-3.5x"), -3.5);
  EXPECT_EQ(Val(u"+7"), 7);
  EXPECT_EQ(Val(u".5"), 0.5);
  EXPECT_EQ(Val(u"5."), 5);
  EXPECT_EQ(Val(u"1,000"), 1);
}

TEST(Val, GivesZeroWithoutANumber) {
  EXPECT_EQ(Val(u""), 0);
  EXPECT_EQ(Val(u"abc"), 0);
  EXPECT_EQ(Val(u"-"), 0);
  EXPECT_EQ(Val(u"."), 0);
  EXPECT_EQ(Val(u"e5"), 0);
}

TEST(Val, PassesOverBlanksAlsoBetweenDigits) {
  EXPECT_EQ(Val(u"  1 2  3"), 123);
  EXPECT_EQ(Val(u" - 4 . 5"), -4.5);
  EXPECT_EQ(Val(u"1 E 2"), 100);
}

TEST(Val, EndsAtATab) {
  EXPECT_EQ(Val(u"1\t2"), 1);
  EXPECT_EQ(Val(u"\t2"), 0);
}

TEST(Val, TakesAnExponentWithEOrD) {
  EXPECT_EQ(Val(u"1e3"), 1000);
  EXPECT_EQ(Val(u"1D-2"), 0.01);
  EXPECT_EQ(Val(u"1E+1"), 10);
}

TEST(Val, EndsBeforeAnExponentWithoutDigits) {
  EXPECT_EQ(Val(u"2E"), 2);
  EXPECT_EQ(Val(u"2E-x"), 2);
}

TEST(Val, ReadsHexadecimalBehindAmpersandH) {
  EXPECT_EQ(Val(u"&HFF"), 255);
  EXPECT_EQ(Val(u"&hff"), 255);
  EXPECT_EQ(Val(u"&H F F"), 255);
  EXPECT_EQ(Val(u"&H1G"), 1);
  EXPECT_EQ(Val(u"&HZZ"), 0);
  EXPECT_EQ(Val(u"&HFFFF"), 65535);  // unsigned
  EXPECT_EQ(Val(u"&O17"), 0);
}

TEST(Val, GoesToInfinityAndToZeroWithoutFailing) {
  EXPECT_TRUE(std::isinf(Val(u"1E999")));
  EXPECT_LT(Val(u"-1E999"), 0);
  EXPECT_EQ(Val(u"1E-999"), 0);
  const Text zeros(400, u'0');
  EXPECT_EQ(Val(u"0." + zeros + u"1"), 0);
  // 1E395 and 1E-396: the digits decide as well as the exponent.
  EXPECT_TRUE(std::isinf(Val(u"1" + zeros + u"E-5")));
  EXPECT_EQ(Val(u"0." + zeros + u"1E5"), 0);
  EXPECT_EQ(Val(u"1E-99999999999999999999"), 0);
  EXPECT_TRUE(std::isinf(Val(u"1E99999999999999999999")));
}

TEST(Val, WeighsDigitsAndExponentTogether) {
  const Text zeros(400, u'0');
  EXPECT_TRUE(std::isinf(Val(u"1" + zeros + u"E-5")));
  EXPECT_EQ(Val(u"0." + zeros + u"1E5"), 0);
  EXPECT_EQ(Val(u"1" + zeros + u"E-400"), 1);
  EXPECT_EQ(Val(u"-0." + zeros + u"25E401"), -2.5);
  EXPECT_TRUE(std::isinf(Val(u"0." + zeros + u"1E99999999999999999999")));
  EXPECT_EQ(Val(u"1" + zeros + u"E-99999999999999999999"), 0);
}

TEST(ValHex, ReadsDigitsAsFarAsTheyGo) {
  EXPECT_EQ(ValHex(u"1G"), 1U);
  EXPECT_EQ(ValHex(u"0Z"), 0U);
  EXPECT_EQ(ValHex(u"zz"), 0U);
  EXPECT_EQ(ValHex(u"aF"), 175U);
  EXPECT_EQ(ValHex(u" 1 2"), 18U);
}

TEST(StrictConversions, AcceptWhatANumericConversionAccepts) {
  EXPECT_EQ(ToWhole(u" 12 "), 12);
  EXPECT_EQ(ToWhole(u"+3"), 3);
  EXPECT_EQ(ToWhole(u"1E2"), 100);
  EXPECT_EQ(ToWhole(u"1d2"), 100);
  EXPECT_EQ(ToWhole(u"-0.5"), 0);
  EXPECT_EQ(ToSingle(u".25"), 0.25F);
}

TEST(StrictConversions, RoundHalvesToEven) {
  EXPECT_EQ(ToWhole(u"0.5"), 0);
  EXPECT_EQ(ToWhole(u"1.5"), 2);
  EXPECT_EQ(ToWhole(u"2.5"), 2);
  EXPECT_EQ(ToWhole(u"-1.5"), -2);
}

TEST(StrictConversions, FailOnEverythingElse) {
  for (const TextView text :
       {u"", u" ", u"abc", u"1x", u"1 2", u"\t1", u"1\t", u"&H10", u"1,000", u"(1)", u"--1", u"1E", u"."}) {
    EXPECT_FALSE(ToWhole(text)) << Len(text);
    EXPECT_FALSE(ToSingle(text)) << Len(text);
  }
}

TEST(StrictConversions, FailOutOfRange) {
  EXPECT_EQ(ToWhole(u"2147483647"), 2147483647);
  EXPECT_EQ(ToWhole(u"2147483647.4"), 2147483647);
  EXPECT_FALSE(ToWhole(u"2147483647.5"));
  EXPECT_EQ(ToWhole(u"-2147483648"), INT32_MIN);
  EXPECT_FALSE(ToWhole(u"-2147483649"));
  EXPECT_FALSE(ToSingle(u"1E39"));
  EXPECT_FALSE(ToDouble(u"1E999"));
  EXPECT_EQ(ToByte(u"255"), 255);
  EXPECT_FALSE(ToByte(u"256"));
  EXPECT_FALSE(ToByte(u"-1"));
}

TEST(ToBoolean, TakesTheWordsAndNumbers) {
  EXPECT_EQ(ToBoolean(u"True"), true);
  EXPECT_EQ(ToBoolean(u"fALSE"), false);
  EXPECT_EQ(ToBoolean(u"-1"), true);
  EXPECT_EQ(ToBoolean(u"0"), false);
  EXPECT_EQ(ToBoolean(u"0.4"), true);
  EXPECT_FALSE(ToBoolean(u""));
  EXPECT_FALSE(ToBoolean(u"yes"));
}

TEST(Round, GoesHalfToEven) {
  EXPECT_EQ(Round(0.5), 0);
  EXPECT_EQ(Round(1.5), 2);
  EXPECT_EQ(Round(2.5), 2);
  EXPECT_EQ(Round(-0.5), 0);
  EXPECT_EQ(Round(-2.5), -2);
  EXPECT_EQ(Round(-3.5), -4);
}

TEST(Round, FailsOnWhatDoesNotFit) {
  EXPECT_FALSE(Round(2147483648.0));
  EXPECT_FALSE(Round(NAN));
  EXPECT_FALSE(Round(INFINITY));
  EXPECT_FALSE(RoundTo<int16_t>(32768));
  EXPECT_EQ(RoundTo<int64_t>(-0x1p63), INT64_MIN);
  EXPECT_EQ(RoundTo<int64_t>(0x1p62), int64_t{1} << 62);
  EXPECT_FALSE(RoundTo<int64_t>(0x1p63));
}

TEST(Narrow, KeepsInfinityAndFailsOnOverflow) {
  EXPECT_EQ(Narrow(0.1), 0.1F);
  EXPECT_FALSE(Narrow(1e39));
  ASSERT_TRUE(Narrow(INFINITY));
  EXPECT_TRUE(std::isinf(*Narrow(INFINITY)));
}

TEST(WholeDivision, TruncatesAndFailsOnZero) {
  EXPECT_EQ(Divide(7, 2), 3);
  EXPECT_EQ(Divide(-7, 2), -3);
  EXPECT_FALSE(Divide(1, 0));
  EXPECT_FALSE(Divide(INT32_MIN, -1));
  EXPECT_EQ(Modulo(-7, 2), -1);
  EXPECT_FALSE(Modulo(1, 0));
  EXPECT_EQ(Modulo(INT64_MIN, -1), 0);
}

TEST(SmallHelpers, GiveTheSmallerAndTheGreater) {
  EXPECT_EQ(MinI16(-2, 3), -2);
  EXPECT_EQ(MaxI16(-2, 3), 3);
  EXPECT_EQ(MinI32(5, 4), 4);
  EXPECT_EQ(MaxI32(5, 4), 5);
  EXPECT_EQ(ZeroFloor(-0.5F), 0.0F);
  EXPECT_EQ(ZeroFloor(0.5F), 0.5F);
}

TEST(OrdinalSuffix, LooksAtTheLastDigitAlone) {
  EXPECT_EQ(OrdinalSuffix(1), u"st");
  EXPECT_EQ(OrdinalSuffix(2), u"nd");
  EXPECT_EQ(OrdinalSuffix(3), u"rd");
  EXPECT_EQ(OrdinalSuffix(4), u"th");
  EXPECT_EQ(OrdinalSuffix(10), u"th");
  EXPECT_EQ(OrdinalSuffix(11), u"st");
  EXPECT_EQ(OrdinalSuffix(12), u"nd");
}

TEST(Assign, KeepsTheTargetWithoutAValue) {
  int32_t target = 4;
  Assign(target, ToWhole(u"x"));
  EXPECT_EQ(target, 4);
  Assign(target, ToWhole(u"9"));
  EXPECT_EQ(target, 9);
}

}  // namespace
}  // namespace qlm
