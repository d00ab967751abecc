// The order in which the sort leaves equal keys.
#include "base/sort.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace qlm {
namespace {

struct Row {
  int key = 0;
  char name = ' ';
};

// Sorts rows named a, b, c, … by these keys and gives their names in the new order.
std::string Order(const std::vector<int>& keys) {
  std::vector<Row> rows;
  for (const int key : keys) rows.push_back({key, static_cast<char>('a' + rows.size())});
  SortInScheme(std::span(rows), [](const Row& row) { return row.key; });
  std::string names;
  for (const Row& row : rows) names += row.name;
  return names;
}

TEST(SortInScheme, NothingAndOneRowStay) {
  EXPECT_EQ(Order({}), "");
  EXPECT_EQ(Order({7}), "a");
}

TEST(SortInScheme, Ascends) {
  EXPECT_EQ(Order({3, 1, 2}), "bca");
  EXPECT_EQ(Order({1, 2, 3, 4}), "abcd");
  EXPECT_EQ(Order({4, 3, 2, 1}), "dcba");
}

// Two equal rows: i stops at the first, j at the second, and they are swapped.
TEST(SortInScheme, TwoEqualRowsChangePlaces) { EXPECT_EQ(Order({5, 5}), "ba"); }

// a and c are swapped, then i and j meet at b; what is left on either side is one row.
TEST(SortInScheme, ThreeEqualRowsAreReversed) { EXPECT_EQ(Order({5, 5, 5}), "cba"); }

// (0, 3): a with d, b with c, which gives d c b a and the halves (2, 3) and (0, 1); in each the two rows
// change places: c d and a b.
TEST(SortInScheme, FourEqualRowsAreReversedByHalves) { EXPECT_EQ(Order({5, 5, 5, 5}), "cdab"); }

// Keys 2 1 2 1: low 2, middle 1, high 1 make the pivot 1. i stops at a, j at d: swapped, d b c a. Then i
// stops at b, j at b: they meet. Left are (0, 0) and (2, 3), c and a with 2 and 2, which change places.
TEST(SortInScheme, EqualRowsOfTwoKeysFollowTheScheme) { EXPECT_EQ(Order({2, 1, 2, 1}), "dbac"); }

TEST(SortInScheme, ManyRowsAreInOrder) {
  std::vector<Row> rows(10'000);
  uint32_t seed = 1;
  for (Row& row : rows) {
    seed = seed * 1664525 + 1013904223;
    row.key = static_cast<int>(seed >> 20);
  }
  SortInScheme(std::span(rows), [](const Row& row) { return row.key; });
  EXPECT_TRUE(
      std::is_sorted(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.key < b.key; }));
}

}  // namespace
}  // namespace qlm
