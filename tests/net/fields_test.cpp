// Typed fields of messages.
#include "net/fields.h"

#include <gtest/gtest.h>

#include <limits>

namespace qlm {
namespace {

TEST(FieldsTest, AMessageIsItsTypeAndItsFieldsInOrder) {
  MessageWriter writer(MessageType::kGauge);
  writer.Byte(200).Short(-2).Long(0x01020304).Single(1.0F).String(u"aあ");
  const std::string bytes = writer.Take();
  const std::string expected(
      "\x09\0\0\0"
      "\xC8"
      "\xFE\xFF"
      "\x04\x03\x02\x01"
      "\0\0\x80\x3F"
      "\x02"
      "a\0\x42\x30",
      20);
  EXPECT_EQ(bytes, expected);
}

TEST(FieldsTest, FieldsAreReadBackInTheSameOrder) {
  MessageWriter writer(MessageType::kAttack);
  writer.Byte(7).Short(-300).Long(-70000).Single(-2.5F).String(u"羽ペン");
  const std::string bytes = writer.Take();
  MessageReader reader(bytes);
  int32_t type = 0;
  uint8_t byte = 0;
  int16_t number = 0;
  int32_t whole = 0;
  float single = 0;
  Text text;
  reader.Long(type);
  reader.Byte(byte);
  reader.Short(number);
  reader.Long(whole);
  reader.Single(single);
  reader.String(text);
  EXPECT_EQ(type, 13);
  EXPECT_EQ(byte, 7);
  EXPECT_EQ(number, -300);
  EXPECT_EQ(whole, -70000);
  EXPECT_EQ(single, -2.5F);
  EXPECT_EQ(text, u"羽ペン");
}

TEST(FieldsTest, FieldsBeyondTheEndLeaveTheirTargetsAsTheyWere) {
  MessageReader reader(std::string_view("\x05\x00\x01", 3));
  int16_t first = 1;
  int32_t beyond = 42;
  uint8_t behind = 43;
  Text text = u"kept";
  float single = 1.5F;
  reader.Short(first);
  reader.Long(beyond);
  reader.Byte(behind);
  reader.String(text);
  reader.Single(single);
  EXPECT_EQ(first, 5);
  EXPECT_EQ(beyond, 42);
  EXPECT_EQ(behind, 43);
  EXPECT_EQ(text, u"kept");
  EXPECT_EQ(single, 1.5F);
}

TEST(FieldsTest, ATextOfWhichTheEndIsMissingIsNotTaken) {
  MessageReader reader(
      std::string_view("\x02"
                       "a\0b",
                       4));
  Text text = u"kept";
  reader.String(text);
  EXPECT_EQ(text, u"kept");
}

TEST(FieldsTest, TheSenderCutsLongTexts) {
  MessageWriter writer(MessageType::kInit);
  writer.String(Text(256, u'x')).Byte(9);
  const std::string bytes = writer.Take();
  MessageReader reader(bytes);
  int32_t type = 0;
  Text text;
  uint8_t behind = 0;
  reader.Long(type);
  reader.String(text);
  reader.Byte(behind);
  EXPECT_EQ(text, Text(255, u'x'));
  EXPECT_EQ(behind, 9);
}

TEST(FieldsTest, ControlCharactersAreDropped) {
  MessageWriter writer(MessageType::kInit);
  writer.String(u"a\r\nb\tc\u0085d");
  const std::string bytes = writer.Take();
  MessageReader reader(bytes);
  int32_t type = 0;
  Text text;
  reader.Long(type);
  reader.String(text);
  EXPECT_EQ(text, u"abcd");
}

TEST(FieldsTest, WhatIsNoFiniteNumberIsZero) {
  for (const float value : {std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
                            std::numeric_limits<float>::quiet_NaN()}) {
    MessageWriter writer(MessageType::kGauge);
    writer.Single(value);
    const std::string bytes = writer.Take();
    MessageReader reader(bytes);
    int32_t type = 0;
    float single = 3;
    reader.Long(type);
    reader.Single(single);
    EXPECT_EQ(single, 0.0F);
  }
}

}  // namespace
}  // namespace qlm
