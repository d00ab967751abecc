// The gauge graph, pixel by pixel.
#include "play_screen/gauge_graph.h"

#include "state/chart.h"
#include "state/network.h"
#include "state/session.h"
#include "tests/graphics/picture_files.h"

namespace qlm {
namespace {

class Graph : public DisplayTest {};

TEST_F(Graph, IsPaintedInTwoBandsUnderAGrid) {
  PaintGraph();
  EXPECT_EQ(DDGraph->Pixel(1, 1), 0x800000U);
  EXPECT_EQ(DDGraph->Pixel(299, 39), 0x800000U);
  EXPECT_EQ(DDGraph->Pixel(1, 41), 0x008000U);
  EXPECT_EQ(DDGraph->Pixel(299, 199), 0x008000U);
  EXPECT_EQ(DDGraph->Pixel(1, 201), 0U);
  for (int32_t x = 0; x < 300; ++x) {
    EXPECT_EQ(DDGraph->Pixel(x, 19) == 0x202020U, x % 30 == 0) << x;
  }
  for (int32_t y = 0; y < 203; ++y) {
    EXPECT_EQ(DDGraph->Pixel(1, y) == 0x202020U, y % 20 == 0) << y;
  }
}

TEST_F(Graph, ASampleIsThreePixelsWide) {
  DrawGaugeSample(10, 50);
  EXPECT_TRUE(Shows(DDGraph, {10, 100, 13, 101}, 0x00FF00, 0));
}

TEST_F(Graph, ASampleOfExactly80IsGreenAndAboveItRed) {
  DrawGaugeSample(10, 80);
  EXPECT_EQ(DDGraph->Pixel(10, 40), 0x00FF00U);
  DrawGaugeSample(20, 81);
  EXPECT_EQ(DDGraph->Pixel(20, 38), 0xFF0000U);
}

TEST_F(Graph, AllSamplesAreRedInACourseOrBattle) {
  CourseMode = true;
  DrawGaugeSample(10, 0);
  EXPECT_EQ(DDGraph->Pixel(10, 200), 0xFF0000U);
  CourseMode = false;
  network.NetActive = true;
  DrawGaugeSample(20, 0);
  EXPECT_EQ(DDGraph->Pixel(20, 200), 0xFF0000U);
}

TEST_F(Graph, TheFirstSlotHasNoLineAndTheLastIsCut) {
  DrawGaugeSample(0, 50);
  EXPECT_TRUE(Shows(DDGraph, {}, 0, 0));
  DrawGaugeSample(299, 50);
  EXPECT_TRUE(Shows(DDGraph, {299, 100, 300, 101}, 0x00FF00, 0));
  DrawGaugeSample(INT32_MAX, 255);
  DrawGaugeSample(INT32_MIN, 0);
  EXPECT_TRUE(Shows(DDGraph, {299, 100, 300, 101}, 0x00FF00, 0));
}

TEST_F(Graph, ASongChangeLeavesItsMark) {
  DrawSongMark(100, 0, 100, 203);
  EXPECT_TRUE(Shows(DDGraph, {100, 0, 101, 203}, 0x0040C0, 0));
}

TEST_F(Graph, NothingHappensWithoutItsSurface) {
  DDGraph.reset();
  PaintGraph();
  DrawGaugeSample(1, 1);
  DrawSongMark(0, 0, 1, 1);
  EXPECT_EQ(DDGraph, nullptr);
  EXPECT_TRUE(Shows(DDBack, {}, 0, 0));
}

}  // namespace
}  // namespace qlm
