// Software images: what is copied, what is left out, and what is refused.
#include "platform/surface.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <vector>

namespace platform {
namespace {

// Rows of pixels, top to bottom.
using Rows = std::vector<std::vector<Colour>>;

void Paint(Surface& surface, const Rows& rows) {
  for (size_t y = 0; y < rows.size(); ++y) {
    std::copy(rows[y].begin(), rows[y].end(), surface.Row(static_cast<int32_t>(y)).begin());
  }
}

Rows Seen(const Surface& surface) {
  Rows rows;
  for (int32_t y = 0; y < surface.Height(); ++y) {
    rows.emplace_back(surface.Row(y).begin(), surface.Row(y).end());
  }
  return rows;
}

TEST(Surface, IsBlackWhenMade) {
  const Surface surface(3, 2);
  EXPECT_EQ(Seen(surface), (Rows{{0, 0, 0}, {0, 0, 0}}));
}

TEST(Surface, SizesAreBroughtIntoRange) {
  const Surface least(0, -5);
  EXPECT_EQ(least.Bounds(), (Rect{0, 0, 1, 1}));
  const Surface widest(100000, 1);
  EXPECT_EQ(widest.Bounds(), (Rect{0, 0, 16384, 1}));
}

TEST(Surface, PixelsOutsideAreBlackAndRowsOutsideEmpty) {
  Surface surface(2, 2);
  surface.Fill(surface.Bounds(), 0x123456);
  EXPECT_EQ(surface.Pixel(1, 1), 0x123456U);
  EXPECT_EQ(surface.Pixel(2, 1), 0U);
  EXPECT_EQ(surface.Pixel(0, -1), 0U);
  EXPECT_TRUE(surface.Row(2).empty());
  EXPECT_TRUE(surface.Row(-1).empty());
}

TEST(Surface, CountsTheBytesOfLivingSurfaces) {
  const size_t before = Surface::BytesHeld();
  auto surface = std::make_unique<Surface>(10, 5);
  EXPECT_EQ(Surface::BytesHeld(), before + 200);
  surface.reset();
  EXPECT_EQ(Surface::BytesHeld(), before);
}

TEST(SurfaceFill, CoversItsRectangleOnly) {
  Surface surface(3, 3);
  EXPECT_TRUE(surface.Fill({1, 1, 3, 2}, 0xFF00FF7F));
  EXPECT_EQ(Seen(surface), (Rows{{0, 0, 0}, {0, 0x00FF7F, 0x00FF7F}, {0, 0, 0}}));
}

TEST(SurfaceFill, IsRefusedOutsideTheImageAndForEmptyRectangles) {
  Surface surface(3, 3);
  for (const Rect& rect :
       {Rect{-1, 0, 2, 2}, Rect{0, -1, 2, 2}, Rect{0, 0, 4, 2}, Rect{0, 0, 2, 4}, Rect{1, 1, 1, 2},
        Rect{1, 1, 2, 1}, Rect{2, 2, 1, 1}, Rect{INT32_MIN, 0, INT32_MAX, 1}}) {
    EXPECT_FALSE(surface.Fill(rect, 0xFFFFFF));
  }
  EXPECT_EQ(Seen(surface), Seen(Surface(3, 3)));
}

TEST(SurfaceCopy, PlainTakesTransparentColoursToo) {
  Surface source(2, 2);
  Paint(source, {{0, 1}, {2, 3}});
  source.SetColourKey(0, 0);
  Surface target(3, 2);
  target.Fill(target.Bounds(), 9);
  EXPECT_TRUE(target.Copy(1, 0, source, source.Bounds()));
  EXPECT_EQ(Seen(target), (Rows{{9, 0, 1}, {9, 2, 3}}));
}

TEST(SurfaceCopy, KeyedLeavesOutTheExactKey) {
  Surface source(3, 1);
  Paint(source, {{0, 1, 0}});
  source.SetColourKey(0, 0);
  Surface target(3, 1);
  target.Fill(target.Bounds(), 9);
  EXPECT_TRUE(target.Copy(0, 0, source, source.Bounds(), Keyed::kYes));
  EXPECT_EQ(Seen(target), (Rows{{9, 1, 9}}));
}

TEST(SurfaceCopy, KeyedWithoutAKeyCopiesAll) {
  Surface source(2, 1);
  Surface target(2, 1);
  target.Fill(target.Bounds(), 9);
  EXPECT_TRUE(target.Copy(0, 0, source, source.Bounds(), Keyed::kYes));
  EXPECT_EQ(Seen(target), (Rows{{0, 0}}));
}

TEST(SurfaceCopy, DarkRangeIsComparedByChannel) {
  Surface source(6, 1);
  Paint(source, {{0x000000, 0x0F0F0F, 0x100F0F, 0x0F100F, 0x0F0F10, 0x0A0300}});
  source.SetColourKey(0, 0x0F0F0F);
  Surface target(6, 1);
  target.Fill(target.Bounds(), 9);
  EXPECT_TRUE(target.Copy(0, 0, source, source.Bounds(), Keyed::kYes));
  EXPECT_EQ(Seen(target), (Rows{{9, 9, 0x100F0F, 0x0F100F, 0x0F0F10, 9}}));
}

TEST(SurfaceCopy, AnyRangeIsComparedByChannel) {
  Surface source(7, 1);
  Paint(source, {{0x102030, 0x112233, 0x203040, 0x0F2030, 0x101F30, 0x10202F, 0x203041}});
  source.SetColourKey(0x102030, 0x203040);
  Surface target(7, 1);
  target.Fill(target.Bounds(), 9);
  EXPECT_TRUE(target.Copy(0, 0, source, source.Bounds(), Keyed::kYes));
  EXPECT_EQ(Seen(target), (Rows{{9, 9, 9, 0x0F2030, 0x101F30, 0x10202F, 0x203041}}));
}

TEST(SurfaceCopy, TakesAPartOfTheSource) {
  Surface source(3, 3);
  Paint(source, {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
  Surface target(2, 2);
  EXPECT_TRUE(target.Copy(0, 0, source, {1, 1, 3, 3}));
  EXPECT_EQ(Seen(target), (Rows{{5, 6}, {8, 9}}));
}

TEST(SurfaceCopy, IsRefusedWhenItWouldRunOffEitherImage) {
  Surface source(2, 2);
  source.Fill(source.Bounds(), 5);
  Surface target(3, 3);
  EXPECT_FALSE(target.Copy(2, 0, source, source.Bounds()));
  EXPECT_FALSE(target.Copy(0, 2, source, source.Bounds()));
  EXPECT_FALSE(target.Copy(-1, 0, source, source.Bounds()));
  EXPECT_FALSE(target.Copy(0, -1, source, source.Bounds()));
  EXPECT_FALSE(target.Copy(INT32_MAX, INT32_MAX, source, source.Bounds()));
  EXPECT_FALSE(target.Copy(0, 0, source, {0, 0, 3, 2}));
  EXPECT_FALSE(target.Copy(0, 0, source, {-1, 0, 2, 2}));
  EXPECT_FALSE(target.Copy(0, 0, source, {1, 0, 1, 2}));
  EXPECT_FALSE(target.Copy(0, 0, source, {1, 0, 0, 2}));
  EXPECT_EQ(Seen(target), Seen(Surface(3, 3)));
}

TEST(SurfaceCopy, OverlappingAreasCopyAsFromASnapshot) {
  Surface surface(4, 2);
  Paint(surface, {{1, 2, 3, 4}, {5, 6, 7, 8}});
  EXPECT_TRUE(surface.Copy(1, 0, surface, {0, 0, 3, 2}));
  EXPECT_EQ(Seen(surface), (Rows{{1, 1, 2, 3}, {5, 5, 6, 7}}));
  EXPECT_TRUE(surface.Copy(0, 1, surface, {0, 0, 4, 1}));
  EXPECT_EQ(Seen(surface), (Rows{{1, 1, 2, 3}, {1, 1, 2, 3}}));
}

TEST(SurfaceCopy, OverlappingKeyedCopyKeepsItsHoles) {
  Surface surface(4, 1);
  Paint(surface, {{1, 0, 3, 4}});
  surface.SetColourKey(0, 0);
  EXPECT_TRUE(surface.Copy(1, 0, surface, {0, 0, 3, 1}, Keyed::kYes));
  EXPECT_EQ(Seen(surface), (Rows{{1, 1, 3, 3}}));
}

TEST(SurfaceCopyFaint, IsTheMeanOfBothChannelByChannelRoundedDown) {
  Surface below(2, 1);
  below.Fill({0, 0, 2, 1}, 0x0100FF);
  Surface above(2, 1);
  above.Fill({0, 0, 2, 1}, 0x04FF00);
  EXPECT_TRUE(below.CopyFaint(0, 0, above, {0, 0, 2, 1}));
  EXPECT_EQ(below.Pixel(0, 0), 0x027F7FU);
  EXPECT_EQ(below.Pixel(1, 0), 0x027F7FU);
}

TEST(SurfaceCopyFaint, LeavesOutTransparentColours) {
  Surface below(2, 1);
  below.Fill({0, 0, 2, 1}, 0x808080);
  Surface above(2, 1);
  above.Fill({1, 0, 2, 1}, 0x404040);
  above.SetColourKey(0, 0);
  EXPECT_TRUE(below.CopyFaint(0, 0, above, {0, 0, 2, 1}));
  EXPECT_EQ(below.Pixel(0, 0), 0x808080U);
  EXPECT_EQ(below.Pixel(1, 0), 0x606060U);
}

TEST(SurfaceCopyFaint, IsRefusedWhenItWouldRunOffEitherImageAndOntoItself) {
  Surface below(2, 2);
  Surface above(2, 2);
  above.Fill({0, 0, 2, 2}, 0xFFFFFF);
  EXPECT_FALSE(below.CopyFaint(1, 0, above, {0, 0, 2, 2}));
  EXPECT_FALSE(below.CopyFaint(0, -1, above, {0, 0, 2, 2}));
  EXPECT_FALSE(below.CopyFaint(0, 0, above, {0, 0, 3, 2}));
  EXPECT_FALSE(above.CopyFaint(0, 0, above, {0, 0, 2, 2}));
  EXPECT_EQ(below.Pixel(1, 1), 0U);
}

TEST(SurfaceStretch, EnlargesByTheNearestNeighbour) {
  Surface source(2, 2);
  Paint(source, {{1, 2}, {3, 4}});
  Surface target(5, 3);
  // Columns 0 1 2 3 4 times 2 \ 5 are 0 0 0 1 1; rows 0 1 2 times 2 \ 3 are 0 0 1.
  EXPECT_TRUE(target.Stretch(target.Bounds(), source, source.Bounds()));
  EXPECT_EQ(Seen(target), (Rows{{1, 1, 1, 2, 2}, {1, 1, 1, 2, 2}, {3, 3, 3, 4, 4}}));
}

TEST(SurfaceStretch, ShrinksByTheNearestNeighbour) {
  Surface source(5, 3);
  Paint(source, {{1, 2, 3, 4, 5}, {6, 7, 8, 9, 10}, {11, 12, 13, 14, 15}});
  Surface target(3, 2);
  // Columns 0 1 2 times 5 \ 3 are 0 1 3; rows 0 1 times 3 \ 2 are 0 1.
  EXPECT_TRUE(target.Stretch(target.Bounds(), source, source.Bounds()));
  EXPECT_EQ(Seen(target), (Rows{{1, 2, 4}, {6, 7, 9}}));
}

TEST(SurfaceStretch, KeyedLeavesHolesOnEveryRow) {
  Surface source(2, 1);
  Paint(source, {{0, 7}});
  source.SetColourKey(0, 0);
  Surface target(2, 2);
  Paint(target, {{1, 2}, {3, 4}});
  EXPECT_TRUE(target.Stretch(target.Bounds(), source, source.Bounds(), Keyed::kYes));
  EXPECT_EQ(Seen(target), (Rows{{1, 7}, {3, 7}}));
}

TEST(SurfaceStretch, OntoItselfReadsASnapshot) {
  Surface surface(4, 2);
  Paint(surface, {{1, 2, 0, 0}, {3, 4, 0, 0}});
  EXPECT_TRUE(surface.Stretch({0, 0, 4, 2}, surface, {0, 0, 2, 2}));
  EXPECT_EQ(Seen(surface), (Rows{{1, 1, 2, 2}, {3, 3, 4, 4}}));
}

TEST(SurfaceStretch, OfEqualSizeIsACopy) {
  Surface source(2, 1);
  Paint(source, {{5, 6}});
  Surface target(3, 1);
  EXPECT_TRUE(target.Stretch({1, 0, 3, 1}, source, source.Bounds()));
  EXPECT_EQ(Seen(target), (Rows{{0, 5, 6}}));
}

TEST(SurfaceStretch, IsRefusedWhenItWouldRunOffEitherImage) {
  Surface source(2, 2);
  source.Fill(source.Bounds(), 5);
  Surface target(3, 3);
  EXPECT_FALSE(target.Stretch({0, 0, 4, 3}, source, source.Bounds()));
  EXPECT_FALSE(target.Stretch({-1, 0, 3, 3}, source, source.Bounds()));
  EXPECT_FALSE(target.Stretch({0, 0, 3, 3}, source, {0, 0, 3, 2}));
  EXPECT_FALSE(target.Stretch({2, 0, 2, 3}, source, source.Bounds()));
  EXPECT_EQ(Seen(target), Seen(Surface(3, 3)));
}

TEST(SurfaceStretch, ReachesTheGreatestSide) {
  Surface source(3, 1);
  Paint(source, {{1, 2, 3}});
  Surface target(16384, 1);
  EXPECT_TRUE(target.Stretch(target.Bounds(), source, source.Bounds()));
  EXPECT_EQ(target.Pixel(5461, 0), 1U);  // 5461 * 3 \ 16384 = 0
  EXPECT_EQ(target.Pixel(5462, 0), 2U);
  EXPECT_EQ(target.Pixel(16383, 0), 3U);
}

// Each pixel of a cut stretch is that of the whole one, wherever the cut runs.
TEST(SurfaceStretchWithin, ShowsAPartOfTheWhole) {
  Surface source(5, 3);
  Paint(source, {{1, 2, 3, 4, 5}, {6, 0, 8, 0, 10}, {11, 12, 13, 14, 15}});
  source.SetColourKey(0, 0);
  Surface whole(30, 30);
  ASSERT_TRUE(whole.Stretch({10, 10, 17, 21}, source, source.Bounds(), Keyed::kYes));
  const Rect clip{2, 3, 10, 9};
  for (int32_t y = -13; y < 12; ++y) {
    for (int32_t x = -9; x < 12; ++x) {
      Surface target(10, 10);
      const bool drawn =
          target.StretchWithin(clip, {x, y, x + 7, y + 11}, source, source.Bounds(), Keyed::kYes);
      EXPECT_EQ(drawn, x < 10 && x + 7 > 2 && y < 9 && y + 11 > 3);
      for (int32_t row = 0; row < 10; ++row) {
        for (int32_t column = 0; column < 10; ++column) {
          const bool within = column >= 2 && row >= 3 && row < 9;
          ASSERT_EQ(target.Pixel(column, row), within ? whole.Pixel(10 + column - x, 10 + row - y) : 0U)
              << x << ',' << y << " at " << column << ',' << row;
        }
      }
    }
  }
}

TEST(SurfaceStretchShaded, HalvesOrReddensWhatIsNotTransparent) {
  Surface source(2, 1);
  source.Row(0)[0] = 0x8161FF;
  source.SetColourKey(0, 0);
  Surface target(4, 2);
  target.Fill(target.Bounds(), 7);
  EXPECT_TRUE(target.StretchShaded({0, 0, 4, 1}, {0, 0, 4, 2}, source, source.Bounds(), Shade::kHalf));
  EXPECT_EQ(Seen(target), (Rows{{0x40307F, 0x40307F, 7, 7}, {7, 7, 7, 7}}));
  EXPECT_TRUE(target.StretchShaded(target.Bounds(), {-2, 1, 2, 2}, source, source.Bounds(), Shade::kRed));
  EXPECT_EQ(Seen(target), (Rows{{0x40307F, 0x40307F, 7, 7}, {7, 7, 7, 7}}));
  EXPECT_TRUE(target.StretchShaded(target.Bounds(), {-1, 1, 3, 2}, source, source.Bounds(), Shade::kRed));
  EXPECT_EQ(Seen(target), (Rows{{0x40307F, 0x40307F, 7, 7}, {0xFF0000, 7, 7, 7}}));
  EXPECT_FALSE(target.StretchShaded(target.Bounds(), target.Bounds(), target, target.Bounds(), Shade::kRed));
}

TEST(SurfaceStretchWithin, OfEqualSizeIsACutCopy) {
  Surface source(3, 2);
  Paint(source, {{1, 2, 3}, {4, 5, 6}});
  Surface target(2, 2);
  EXPECT_TRUE(target.StretchWithin(target.Bounds(), {-1, 1, 2, 3}, source, source.Bounds()));
  EXPECT_EQ(Seen(target), (Rows{{0, 0}, {2, 3}}));
}

TEST(SurfaceStretchWithin, IsRefusedForRectanglesThatAreNone) {
  Surface source(2, 2);
  source.Fill(source.Bounds(), 5);
  Surface target(3, 3);
  const Rect all = target.Bounds();
  EXPECT_FALSE(target.StretchWithin(all, {2, 0, 1, 3}, source, source.Bounds()));
  EXPECT_FALSE(target.StretchWithin(all, {0, 0, 0, 3}, source, source.Bounds()));
  EXPECT_FALSE(target.StretchWithin(all, {0, 0, Surface::kMaxSide + 1, 3}, source, source.Bounds()));
  EXPECT_FALSE(target.StretchWithin(all, {INT32_MIN, 0, INT32_MAX, 3}, source, source.Bounds()));
  EXPECT_FALSE(target.StretchWithin({2, 2, 1, 1}, {0, 0, 3, 3}, source, source.Bounds()));
  EXPECT_FALSE(target.StretchWithin(all, {0, 0, 3, 3}, source, {0, 0, 3, 2}));
  EXPECT_EQ(Seen(target), Seen(Surface(3, 3)));
}

TEST(SurfaceStretchWithin, OntoItselfReadsASnapshot) {
  Surface surface(4, 1);
  Paint(surface, {{1, 2, 3, 4}});
  EXPECT_TRUE(surface.StretchWithin(surface.Bounds(), {-2, 0, 6, 1}, surface, {0, 0, 4, 1}));
  EXPECT_EQ(Seen(surface), (Rows{{2, 2, 3, 3}}));
}

TEST(SurfaceLine, LeavesOutItsLastPixel) {
  Surface surface(4, 1);
  surface.Line(0, 0, 3, 0, 1);
  EXPECT_EQ(Seen(surface), (Rows{{1, 1, 1, 0}}));
  surface.Line(3, 0, 0, 0, 2);
  EXPECT_EQ(Seen(surface), (Rows{{1, 2, 2, 2}}));
  surface.Line(0, 0, 0, 0, 3);
  EXPECT_EQ(Seen(surface), (Rows{{1, 2, 2, 2}}));
}

TEST(SurfaceLine, SlopesTakeTheNearestPixelAndHalvesTheUpperOne) {
  Surface surface(4, 3);
  surface.Line(0, 0, 4, 2, 1);  // heights 0, 0.5, 1, 1.5
  EXPECT_EQ(Seen(surface), (Rows{{1, 1, 0, 0}, {0, 0, 1, 1}, {0, 0, 0, 0}}));
  Surface steep(3, 4);
  steep.Line(2, 3, 0, -1, 1);  // columns 2, 1.5, 1, 0.5 upwards from row 3
  EXPECT_EQ(Seen(steep), (Rows{{1, 0, 0}, {0, 1, 0}, {0, 1, 0}, {0, 0, 1}}));
}

TEST(SurfaceLine, IsCutAtTheEdgesHoweverFarItReaches) {
  Surface surface(3, 3);
  surface.Line(-1, -1, 4, 4, 1);
  EXPECT_EQ(Seen(surface), (Rows{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
  Surface far(3, 1);
  far.Line(INT32_MIN, 0, INT32_MAX, 0, 1);
  EXPECT_EQ(Seen(far), (Rows{{1, 1, 1}}));
  far.Line(5, 5, 9, 9, 2);
  far.Line(0, INT32_MIN, 1, INT32_MIN, 2);
  EXPECT_EQ(Seen(far), (Rows{{1, 1, 1}}));
}

}  // namespace
}  // namespace platform
