// Random numbers and their replacement by a list.
#include "base/rnd.h"

#include "tests/support/game_test.h"

namespace qlm {
namespace {

class RndTest : public GameTest {};

TEST_F(RndTest, LiesFromZeroToBelowOne) {
  for (int i = 0; i < 10000; ++i) {
    const float number = Rnd();
    ASSERT_GE(number, 0.0F);
    ASSERT_LT(number, 1.0F);
  }
}

TEST_F(RndTest, FillsItsRangeEvenly) {
  int low = 0;
  for (int i = 0; i < 10000; ++i) low += Rnd() < 0.25F ? 1 : 0;
  EXPECT_NEAR(low, 2500, 200);
}

TEST_F(RndTest, SameSeedGivesTheSameNumbers) {
  SeedRnd(5);
  const float first = Rnd();
  SeedRnd(5);
  EXPECT_EQ(Rnd(), first);
  SeedRnd(6);
  EXPECT_NE(Rnd(), first);
}

TEST_F(RndTest, AListIsTakenInOrderAndAgainFromTheStart) {
  SetRndList({0.25F, 0.5F});
  SeedRnd(9);
  EXPECT_EQ(Rnd(), 0.25F);
  EXPECT_EQ(Rnd(), 0.5F);
  EXPECT_EQ(Rnd(), 0.25F);
}

TEST_F(RndTest, DrawingDoesNotDisturbTheGame) {
  SeedRnd(5);
  const float first = Rnd();
  const float second = Rnd();
  SeedRnd(5);
  EXPECT_EQ(Rnd(), first);
  DrawRnd();
  EXPECT_EQ(Rnd(), second);
}

}  // namespace
}  // namespace qlm
