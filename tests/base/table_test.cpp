// Fixed tables drop what goes past their ends.
#include "base/table.h"

#include <gtest/gtest.h>

namespace qlm {
namespace {

TEST(Table, HoldsEntriesFromZeroToLast) {
  Table<int, 3> table;
  table.Put(0, 10);
  table.Put(3, 13);
  EXPECT_EQ(table[0], 10);
  EXPECT_EQ(table[3], 13);
  EXPECT_EQ(table[1], 0);
}

TEST(Table, DropsWhatLiesOutside) {
  Table<int, 3> table;
  table.Put(-1, 9);
  table.Put(4, 9);
  for (const int entry : table) EXPECT_EQ(entry, 0);
  EXPECT_EQ(table.Find(-1), nullptr);
  EXPECT_EQ(table.Find(4), nullptr);
  EXPECT_NE(table.Find(3), nullptr);
}

TEST(Table, ClearsEveryEntry) {
  Table<int, 3> table;
  table.Fill(7);
  EXPECT_EQ(table[2], 7);
  table.Clear();
  EXPECT_EQ(table[2], 0);
}

// In every build: what follows a stray index could be anything.
TEST(TableDeathTest, AnIndexOutsideEndsTheProgram) {
  Table<int, 3> table;
  EXPECT_DEATH(table[4] = 1, "entry 4 of a table that ends at 3");
  EXPECT_DEATH(table[-1] = 1, "entry -1 of a table that ends at 3");
}

}  // namespace
}  // namespace qlm
