// Fan, class mark and option marks.
#include "play_screen/marks.h"

#include "state/gauge.h"
#include "state/timeline.h"
#include "tests/play_screen/play_screen_ground.h"

namespace qlm {
namespace {

constexpr Colour kMark = 0x0A0000;

// Clips 1 to 17, of 8 by 8, have the colours kMark + 1 and so on.
class Marks : public PlayScreenTest {
 protected:
  Marks() {
    for (int32_t n = 1; n <= 17; ++n) LayClip(n, 8, 8, kMark + static_cast<Colour>(n));
  }
  static SkinPos Row(size_t row, int16_t x, int16_t y) { return {static_cast<uint8_t>(row + 1), x, y, 0, 0}; }
  // The row whose mark shows at a place, -1 for none.
  static int32_t RowAt(int32_t x, int32_t y) {
    Draw();
    const Colour colour = At(x, y);
    return colour == 0 ? -1 : static_cast<int32_t>(colour - kMark) - 1;
  }
};

class Fan : public Marks {
 protected:
  Fan() {
    for (size_t row = 0; row < 4; ++row) FanPos[0][row] = Row(row, 30, 40);
  }
  static int32_t RowOf(float gauge) {
    Gauge[0] = gauge;
    return RowAt(30, 40);
  }
};

TEST_F(Fan, GoesByTheTruncatedFifthOfTheGauge) {
  EXPECT_EQ(RowOf(0), 0);
  EXPECT_EQ(RowOf(19.99F), 0);
  EXPECT_EQ(RowOf(20), 1);
  EXPECT_EQ(RowOf(79.99F), 1);
  EXPECT_EQ(RowOf(80), 2);
  EXPECT_EQ(RowOf(99.99F), 2);
  EXPECT_EQ(RowOf(100), 3);
}

TEST_F(Fan, GoesByTheExactGauge) {
  GaugeShown[0] = 0;
  EXPECT_EQ(RowOf(100), 3);
}

TEST_F(Fan, OfAGaugeOutOfRangeIsNotDrawn) {
  EXPECT_EQ(RowOf(120), -1);
  EXPECT_EQ(RowOf(-20), -1);
}

TEST_F(Fan, StandsOncePerPlayer) {
  FanPos[1][0] = Row(5, 100, 40);
  Gauge = {0, 0};
  EXPECT_EQ(RowAt(100, 40), -1);
  SideCount = 2;
  HdrPlayer = 2;
  EXPECT_EQ(RowAt(100, 40), 5);
  HdrPlayer = 3;
  EXPECT_EQ(RowAt(100, 40), -1);
  EXPECT_EQ(RowAt(30, 40), 0);
}

class ClassMark : public Marks {
 protected:
  ClassMark() {
    for (size_t row = 0; row < 7; ++row) ClassPos[0][row] = Row(row, 60, 40);
  }
  static int32_t RowOf(float points, int32_t most) {
    JPts[0] = points;
    JPtsMax[0] = most;
    return RowAt(60, 40);
  }
};

TEST_F(ClassMark, GoesByTheSharePlayed) {
  EXPECT_EQ(RowOf(1800, 1800), 0);
  EXPECT_EQ(RowOf(95, 100), 0);
  EXPECT_EQ(RowOf(94.9F, 100), 1);
  EXPECT_EQ(RowOf(90, 100), 1);
  EXPECT_EQ(RowOf(89.9F, 100), 2);
  EXPECT_EQ(RowOf(80, 100), 2);
  EXPECT_EQ(RowOf(70, 100), 3);
  EXPECT_EQ(RowOf(50, 100), 4);
  EXPECT_EQ(RowOf(30, 100), 5);
  EXPECT_EQ(RowOf(29.9F, 100), 6);
  EXPECT_EQ(RowOf(-500, 100), 6);
}

TEST_F(ClassMark, IsTheLastWhileNothingIsJudged) { EXPECT_EQ(RowOf(0, 0), 6); }

TEST_F(ClassMark, BobsBy4PixelsInEachBeat) {
  const auto topAt = [](double place) {
    playPos = place;
    Draw();
    return Find(kMark + 7).y;
  };
  EXPECT_EQ(topAt(0), 40);
  EXPECT_EQ(topAt(11.4), 40);
  EXPECT_EQ(topAt(11.6), 39);
  EXPECT_EQ(topAt(24), 38);
  EXPECT_EQ(topAt(47), 37);
  EXPECT_EQ(topAt(48), 40);
  EXPECT_EQ(topAt(192 + 36), 37);
}

TEST_F(ClassMark, IsCutAtTheScreensEdge) {
  ClassPos[0][6] = Row(6, 636, -3);
  Draw();
  EXPECT_TRUE(Only({636, 0, 640, 5}, kMark + 7));
}

class OptionMarks : public Marks {
 protected:
  // Row r stands at x = 20 * r for side 1, and 300 lower for side 2.
  OptionMarks() {
    for (size_t side = 0; side < 2; ++side) {
      for (size_t row = 0; row < 17; ++row) {
        OptionPos[side][row] =
            Row(row, static_cast<int16_t>(20 * row), static_cast<int16_t>(100 + 300 * side));
      }
    }
  }
};

TEST_F(OptionMarks, EachGroupShowsItsRow) {
  OptionMark = {3, 5, 15, 10, 12, 16};
  Draw();
  for (const int32_t row : {3, 5, 10, 12, 15, 16}) EXPECT_EQ(RowAt(20 * row, 100), row);
  for (const int32_t row : {0, 1, 2, 4, 6, 7, 8, 9, 11, 13, 14}) EXPECT_EQ(RowAt(20 * row, 100), -1);
  EXPECT_EQ(RowAt(60, 400), -1);
}

TEST_F(OptionMarks, Row0IsDrawnLikeAnyOther) { EXPECT_EQ(RowAt(0, 100), 0); }

TEST_F(OptionMarks, LaterGroupsLieOnTop) {
  OptionPos[0][1] = Row(1, 200, 200);
  OptionPos[0][5] = Row(5, 200, 200);
  OptionMark = {1, 5, 0, 0, 0, 0};
  EXPECT_EQ(RowAt(200, 200), 5);
}

TEST_F(OptionMarks, EachSideHasItsOwn) {
  SideCount = 2;
  HdrPlayer = 2;
  OptionMark = {2, 2, 2, 2, 2, 2};
  EXPECT_EQ(RowAt(40, 100), 2);
  EXPECT_EQ(RowAt(40, 400), 2);
  HdrPlayer = 3;
  EXPECT_EQ(RowAt(40, 100), 2);
  EXPECT_EQ(RowAt(40, 400), -1);
}

TEST_F(OptionMarks, ARowThatDoesNotExistDrawsNothing) {
  OptionMark.fill(18);
  Draw();
  OptionMark.fill(255);
  Draw();
  EXPECT_TRUE(Only({}, 0));
}

}  // namespace
}  // namespace qlm
