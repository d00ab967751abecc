// The steps round the functions, and the rows of the list.
#include "forms/key_functions.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/game_test.h"

namespace qlm {
namespace {

using Functions = std::vector<int32_t>;

// The function in hand after each press of the key.
Functions StepsOf(int32_t key, int32_t from, int times) {
  KeyWork work{.workTable = {}, .currentFn = from};
  Functions seen;
  for (int i = 0; i < times; ++i) {
    TakeInput(work, key);
    seen.push_back(work.currentFn);
  }
  return seen;
}

TEST(KeyFunctions, BeginWithTheFirstLane) { EXPECT_EQ(KeyWork().currentFn, 11); }

TEST(KeyFunctions, ARoundForwardPassesEachOnce) {
  EXPECT_EQ(StepsOf(3, 1, 26), (Functions{2,  3,  4,  5,  6,  7,  8,  11, 12, 13, 14, 15, 18,
                                          19, 16, 17, 21, 22, 23, 24, 25, 28, 29, 26, 27, 1}));
}

TEST(KeyFunctions, TheWayBackPassesOver26To29) {
  EXPECT_EQ(StepsOf(2, 1, 22),
            (Functions{25, 24, 23, 22, 21, 17, 16, 19, 18, 15, 14, 13, 12, 11, 8, 7, 6, 5, 4, 3, 2, 1}));
  EXPECT_EQ(PreviousFunction(27), 26);
  EXPECT_EQ(PreviousFunction(26), 29);
  EXPECT_EQ(PreviousFunction(29), 28);
  EXPECT_EQ(PreviousFunction(28), 25);
}

TEST(KeyFunctions, SteppingGivesTheKeys1And2Nothing) {
  KeyWork work;
  TakeInput(work, 2);
  TakeInput(work, 3);
  for (const int16_t function : work.workTable) EXPECT_EQ(function, 0);
}

TEST(KeyFunctions, AnyOtherInputTakesTheFunctionInHandWhichStays) {
  KeyWork work;
  for (const int32_t code : {1, 4, 255, 256, 400}) TakeInput(work, code);
  EXPECT_EQ(work.currentFn, 11);
  EXPECT_EQ(FunctionRow(work.workTable, 11), u"11\t[1][4][255][256][400]");
}

TEST(KeyFunctions, AnInputOfTwoFunctionsBelongsToTheLast) {
  KeyWork work;
  TakeInput(work, 44);
  TakeInput(work, 3);
  TakeInput(work, 44);
  EXPECT_EQ(FunctionRow(work.workTable, 11), u"11\t");
  EXPECT_EQ(FunctionRow(work.workTable, 12), u"12\t[44]");
}

TEST(KeyFunctions, InputsOutsideTheTableAreNone) {
  KeyWork work;
  for (const int32_t code : {-1, 401, 100000}) TakeInput(work, code);
  for (const int16_t function : work.workTable) EXPECT_EQ(function, 0);
}

TEST(KeyFunctions, ItemsAreTheLanesAndBehindThemTheMenus) {
  std::string items;
  for (const int16_t function : ListedFunctions()) items += Utf8(FunctionItem(function)) + " ";
  EXPECT_EQ(items,
            "11 12 13 14 15 16 17 18 19 21 22 23 24 25 26 27 28 29 "
            "01ESC 02TAB 03Enter 04↑ 05↓ 06← 07→ 08★ ");
}

}  // namespace
}  // namespace qlm
