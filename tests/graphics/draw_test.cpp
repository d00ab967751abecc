// The bitmap font, cut copies and the drifting backdrop.
#include "graphics/draw.h"

#include <algorithm>

#include "platform/clock.h"
#include "state/settings.h"
#include "tests/graphics/picture_files.h"

namespace qlm {
namespace {

// A font sheet of one row: the cell of byte b is 2 by 3 pixels, all of colour 0x1000 + b, at x = 2 * (b -
// 33).
class Font : public DisplayTest {
 protected:
  Font() {
    SkinFile[1] = std::make_shared<Surface>(2 * 96, 3);
    SkinFile[1]->SetColourKey(0, 0);
    for (int32_t byte = 33; byte <= 128; ++byte) {
      SysFont[byte - 32] = {2 * (byte - 33), 0, 2 * (byte - 33) + 2, 3};
      SkinFile[1]->Fill(SysFont[byte - 32], static_cast<Colour>(0x1000 + byte));
    }
    SysFontW = 4;
    SysFontH = 3;
  }
  // What the cell shows whose left edge is at x, or 0 where nothing was drawn.
  static Colour CellAt(int32_t x, int32_t y) { return DDBack->Pixel(x, y); }
};

TEST_F(Font, EachByteHasACell) {
  DrawText(10, 20, u"AB", 0);
  EXPECT_EQ(CellAt(10, 20), 0x1041U);
  EXPECT_EQ(CellAt(11, 22), 0x1041U);
  EXPECT_EQ(CellAt(12, 20), 0U);
  EXPECT_EQ(CellAt(14, 20), 0x1042U);
  EXPECT_EQ(CellAt(10, 23), 0U);
  EXPECT_EQ(CellAt(10, 19), 0U);
}

TEST_F(Font, BlanksAndCodesFrom127OnKeepTheirCell) {
  const char16_t text[] = {u'A', u' ', 31, 127, u'~', u'!'};
  DrawText(0, 0, {text, 6}, 0);
  EXPECT_EQ(CellAt(0, 0), 0x1041U);
  EXPECT_EQ(CellAt(4, 0), 0U);
  EXPECT_EQ(CellAt(8, 0), 0U);
  EXPECT_EQ(CellAt(12, 0), 0U);
  EXPECT_EQ(CellAt(16, 0), 0x107EU);
  EXPECT_EQ(CellAt(20, 0), 0x1021U);
}

TEST_F(Font, KanjiTakeTwoCellsAndTheirSecondByteMayShow) {
  DrawText(0, 0, u"ソA", 0);  // 83 5C, then 41
  EXPECT_EQ(CellAt(0, 0), 0U);
  EXPECT_EQ(CellAt(4, 0), 0x105CU);
  EXPECT_EQ(CellAt(8, 0), 0x1041U);
}

TEST_F(Font, SpacingIsAddedBeforeEachCellAndRoundsHalfToEven) {
  DrawText(0, 0, u"ABCD", 0.5F);  // 0.5, 5, 9.5, 14
  EXPECT_EQ(CellAt(0, 0), 0x1041U);
  EXPECT_EQ(CellAt(5, 0), 0x1042U);
  EXPECT_EQ(CellAt(9, 0), 0U);
  EXPECT_EQ(CellAt(10, 0), 0x1043U);
  EXPECT_EQ(CellAt(14, 0), 0x1044U);
}

TEST_F(Font, ALetterThatRunsOffTheScreenIsNotDrawn) {
  DrawText(-1, 0, u"AB", 0);
  EXPECT_EQ(CellAt(0, 0), 0U);
  EXPECT_EQ(CellAt(3, 0), 0x1042U);
  DrawText(639, 0, u"A", 0);
  DrawText(0, 478, u"A", 0);
  DrawText(INT32_MAX, INT32_MAX, u"AAAA", 1e30F);
  EXPECT_EQ(CellAt(639, 0), 0U);
  EXPECT_EQ(CellAt(0, 479), 0U);
}

TEST_F(Font, TheSheetsKeyIsTransparent) {
  DDBack->Fill(kScreen, 7);
  SkinFile[1]->Fill({2 * (65 - 33), 0, 2 * (65 - 33) + 1, 3}, 0);
  DrawText(0, 0, u"A", 0);
  EXPECT_EQ(CellAt(0, 0), 7U);
  EXPECT_EQ(CellAt(1, 0), 0x1041U);
}

TEST_F(Font, NothingIsDrawnWithoutASheet) {
  SkinFile[1].reset();
  DrawText(0, 0, u"A", 0);
  EXPECT_TRUE(Shows(DDBack, {}, 0, 0));
}

class Clipped : public DisplayTest {
 protected:
  // Column x, row y has the colour 0x10 * y + x + 1.
  Clipped() : source(4, 4) {
    for (int32_t y = 0; y < 4; ++y) {
      for (int32_t x = 0; x < 4; ++x) source.Row(y)[static_cast<size_t>(x)] = Expected(x, y);
    }
  }
  static Colour Expected(int32_t x, int32_t y) { return static_cast<Colour>(0x10 * y + x + 1); }
  // Places the source at (x, y) and compares with a copy cut by hand.
  void Check(const Rect& clip, int32_t x, int32_t y) {
    DDBack->Fill(kScreen, 0);
    ClippedBlt(*DDBack, clip, x, y, source, source.Bounds(), platform::Keyed::kNo);
    for (int32_t row = 0; row < 480; ++row) {
      for (int32_t column = 0; column < 640; ++column) {
        const bool within = column >= std::max(x, clip.left) && column < std::min(x + 4, clip.right) &&
                            row >= std::max(y, clip.top) && row < std::min(y + 4, clip.bottom);
        ASSERT_EQ(DDBack->Pixel(column, row), within ? Expected(column - x, row - y) : 0U)
            << column << ',' << row;
      }
    }
  }
  Surface source;
};

TEST_F(Clipped, IsCutAtEachSide) {
  const Rect clip{100, 100, 200, 200};
  for (const int32_t x : {95, 96, 97, 99, 100, 150, 196, 197, 199, 200, 201}) Check(clip, x, 150);
  for (const int32_t y : {95, 96, 97, 99, 100, 150, 196, 197, 199, 200, 201}) Check(clip, 150, y);
  Check(clip, 98, 98);
  Check(clip, 198, 198);
  Check(kScreen, -2, -3);
  Check(kScreen, 637, 478);
}

TEST_F(Clipped, IsCutAtBothSidesOfANarrowClip) { Check({101, 102, 103, 103}, 100, 100); }

TEST_F(Clipped, MovesTheCornerOfTheSourceRectangle) {
  ClippedBlt(*DDBack, {10, 10, 20, 20}, 9, 9, source, {1, 1, 4, 4}, platform::Keyed::kNo);
  EXPECT_EQ(DDBack->Pixel(10, 10), Expected(2, 2));
  EXPECT_EQ(DDBack->Pixel(11, 11), Expected(3, 3));
  EXPECT_EQ(DDBack->Pixel(12, 12), 0U);
}

TEST_F(Clipped, KeepsTheColourKey) {
  source.SetColourKey(1, 1);
  DDBack->Fill(kScreen, 9);
  ClippedBlt(*DDBack, kScreen, 0, 0, source, source.Bounds(), platform::Keyed::kYes);
  EXPECT_EQ(DDBack->Pixel(0, 0), 9U);
  EXPECT_EQ(DDBack->Pixel(1, 0), 2U);
}

TEST_F(Clipped, TakesAnyNumbersWithoutHarm) {
  ClippedBlt(*DDBack, kScreen, INT32_MIN, INT32_MIN, source, source.Bounds(), platform::Keyed::kNo);
  ClippedBlt(*DDBack, kScreen, INT32_MAX, INT32_MAX, source, source.Bounds(), platform::Keyed::kNo);
  ClippedBlt(*DDBack, kScreen, -100, 0, source, {0, 0, 1000, 4}, platform::Keyed::kNo);
  ClippedBlt(*DDBack, kScreen, 0, 0, source, {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX},
             platform::Keyed::kNo);
  ClippedBlt(*DDBack, {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}, INT32_MAX - 2, 0, source, source.Bounds(),
             platform::Keyed::kNo);
  EXPECT_TRUE(Shows(DDBack, {}, 0, 0));
}

class MovingBack : public DisplayTest {
 protected:
  // The tile's top left pixel tells where each copy stands.
  MovingBack() {
    SSBack = Solid(160, 120, 1);
    SSBack->Fill({0, 0, 1, 1}, 2);
  }
  static void DrawAt(uint32_t clock) {
    platform::UseVirtualClock(clock);
    DDBack->Fill(kScreen, 0);
    DrawMovingBack();
  }
};

TEST_F(MovingBack, CoversTheScreenAtStepZero) {
  DrawAt(6400 * 200);
  for (const auto& [x, y] : {std::pair{0, 0}, {160, 0}, {480, 240}, {0, 120}, {160, 360}}) {
    EXPECT_EQ(DDBack->Pixel(x, y), 2U);
  }
  EXPECT_TRUE(std::ranges::none_of(DDBack->Row(479), [](Colour colour) { return colour == 0; }));
}

TEST_F(MovingBack, RowsDriftInOppositeDirectionsAndUpward) {
  DrawAt(6400 * 200 + 2 * 20 + 19);  // k = 2: rise round(-1.5) = -2
  EXPECT_EQ(DDBack->Pixel(2, 238), 2U);
  EXPECT_EQ(DDBack->Pixel(158, 118), 2U);
  EXPECT_EQ(DDBack->Pixel(0, 240), 1U);
  EXPECT_EQ(DDBack->Pixel(0, 120), 1U);
}

TEST_F(MovingBack, RepeatsAfter6400Ms) {
  DrawAt(6400 * 200 + 1000);
  const Colour before = DDBack->Pixel(50, 202);
  DrawAt(6400 * 201 + 1000);
  EXPECT_EQ(DDBack->Pixel(50, 202), before);
  EXPECT_EQ(before, 2U);  // k = 50: rise round(-37.5) = -38, row 240 - 38
}

TEST_F(MovingBack, StaysWithinTheClipRectangle) {
  ScreenRect = {100, 100, 200, 200};
  DrawAt(6400 * 200);
  EXPECT_EQ(DDBack->Pixel(99, 150), 0U);
  EXPECT_NE(DDBack->Pixel(100, 150), 0U);
  EXPECT_EQ(DDBack->Pixel(150, 200), 0U);
}

TEST_F(MovingBack, StandsStillAtDrawLimitThree) {
  DRAWLIMIT = 3;
  DrawAt(6400 * 200);
  EXPECT_TRUE(Shows(DDBack, {}, 0, 0));
  DRAWLIMIT = 2;
  SSBack.reset();
  DrawAt(6400 * 200);
  EXPECT_TRUE(Shows(DDBack, {}, 0, 0));
}

}  // namespace
}  // namespace qlm
