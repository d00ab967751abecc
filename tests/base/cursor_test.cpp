// Little-endian reading that never leaves its bytes.
#include "base/cursor.h"

#include <gtest/gtest.h>

namespace qlm {
namespace {

using std::string_view_literals::operator""sv;

TEST(Cursor, ReadsLittleEndian) {
  Cursor cursor("\x01\x02\x03\x04\x05\x06\xFF"sv);
  EXPECT_EQ(cursor.U16(), 0x0201);
  EXPECT_EQ(cursor.U32(), 0x06050403U);
  EXPECT_EQ(cursor.U8(), 255);
  EXPECT_EQ(cursor.Left(), 0U);
  EXPECT_TRUE(cursor.Good());
}

TEST(Cursor, StaysFailedOnceItFailed) {
  Cursor cursor("\x01\x02\x03"sv);
  EXPECT_EQ(cursor.U32(), 0U);
  EXPECT_FALSE(cursor.Good());
  EXPECT_EQ(cursor.U8(), 0);
  EXPECT_EQ(cursor.Left(), 0U);
}

TEST(Cursor, RefusesASkipPastTheEnd) {
  Cursor cursor("abc"sv);
  cursor.Skip(SIZE_MAX);
  EXPECT_FALSE(cursor.Good());
  EXPECT_EQ(cursor.Bytes(1), "");
}

}  // namespace
}  // namespace qlm
