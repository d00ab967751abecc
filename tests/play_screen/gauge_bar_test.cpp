// The gauge bar.
#include "play_screen/gauge_bar.h"

#include <cmath>

#include "base/rnd.h"
#include "platform/clock.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "tests/play_screen/play_screen_ground.h"

namespace qlm {
namespace {

constexpr Colour kGround = 0x101010;

// A bar of 200 by 10 at (100, 50), two pixels for each of 100. Column x of the clip has the colour 0x2000 +
// x.
class GaugeBar : public PlayScreenTest {
 protected:
  GaugeBar() {
    LayBar(1, 200);
    GaugePos[0] = {1, 100, 50, 1, 0};
    LastJudge[0] = 3;
    LastJudgeTime[0] = kNow;
  }
  static void LayBar(int32_t number, int32_t width) {
    LayClip(number, width, 10, 1);
    for (int32_t x = 0; x < width; ++x) SkinFile[number]->Fill({x, 0, x + 1, 10}, Column(x));
  }
  static Colour Column(int32_t x) { return static_cast<Colour>(0x2000 + x); }
  // Draws the bar so many ms after the judgement, with the first number of a fresh stream of drawing.
  static void DrawAfter(int32_t ms) {
    platform::UseVirtualClock(kNow + static_cast<uint32_t>(ms));
    DDBack->Fill(kScreen, 0);
    SeedDrawRnd(5);
    DrawGaugeBar(0);
  }
  static double FirstRandom() {
    SeedDrawRnd(5);
    return DrawRnd();
  }
  // From the first pixel of the row at 55 that shows something up to, and not with, the first behind that
  // shows nothing.
  static std::pair<int32_t, int32_t> Lit(int32_t from = 0) {
    int32_t begin = from;
    while (begin < 640 && At(begin, 55) == 0) ++begin;
    int32_t end = begin;
    while (end < 640 && At(end, 55) != 0) ++end;
    return {begin, end};
  }
  using Span = std::pair<int32_t, int32_t>;
};

TEST_F(GaugeBar, RunsToTheWholePartOfTheGauge) {
  GaugeShown[0] = 40.9F;
  DrawAfter(0);
  EXPECT_EQ(Lit(), Span(100, 180));
  EXPECT_EQ(At(100, 50), Column(0));
  EXPECT_EQ(At(179, 59), Column(79));
  EXPECT_EQ(At(150, 49), 0U);
  EXPECT_EQ(At(150, 60), 0U);
}

TEST_F(GaugeBar, GoesByTheEasedGauge) {
  Gauge[0] = 100;
  GaugeShown[0] = 10;
  DrawAfter(0);
  EXPECT_EQ(Lit(), Span(100, 120));
}

TEST_F(GaugeBar, ItsHeadFallsShortMoreAndMoreAfterAJudgement) {
  GaugeShown[0] = 50;
  const double random = FirstRandom();
  for (const auto& [ms, most] : {std::pair{29, 0}, {30, 1}, {150, 5}, {299, 9}, {300, 2}, {5000, 2}}) {
    DrawAfter(ms);
    const auto head = 100 + static_cast<int32_t>(std::nearbyint((50 - most * random) * 2));
    // The place that the gauge has reached stands whatever the head does.
    const int32_t end = head >= 198 ? 200 : head;
    EXPECT_EQ(Lit(), Span(100, end)) << ms;
    EXPECT_EQ(At(198, 55), Column(98)) << ms;
    EXPECT_EQ(At(199, 55), Column(99)) << ms;
    EXPECT_EQ(At(200, 55), 0U) << ms;
  }
}

TEST_F(GaugeBar, ItsHeadStirsALittleBeforeTheFirstJudgement) {
  GaugeShown[0] = 50;
  LastJudge[0] = -1;
  const double random = FirstRandom();
  DrawAfter(100);
  const auto head = 100 + static_cast<int32_t>(std::nearbyint((50 - 2 * random) * 2));
  EXPECT_EQ(Lit().second, head >= 198 ? 200 : head);
}

TEST_F(GaugeBar, AnEmptyGaugeShowsNothing) {
  GaugeShown[0] = 0.9F;
  DrawAfter(0);
  EXPECT_TRUE(Only({}, 0));
  GaugeShown[0] = -4;
  DrawAfter(400);
  EXPECT_TRUE(Only({}, 0));
}

TEST_F(GaugeBar, AFullGaugeShowsTheWholeClip) {
  GaugeShown[0] = 100;
  DrawAfter(0);
  EXPECT_EQ(Lit(), Span(100, 300));
  EXPECT_EQ(At(299, 55), Column(199));
}

TEST_F(GaugeBar, OtherDirectionsMirrorIt) {
  GaugePos[0].p3 = 2;
  GaugeShown[0] = 40;
  DrawAfter(0);
  EXPECT_EQ(Lit(), Span(220, 300));
  EXPECT_EQ(At(299, 55), Column(199));
  EXPECT_EQ(At(220, 55), Column(120));
  DrawAfter(299);
  EXPECT_EQ(At(220, 55), Column(120));  // what the gauge has reached
  EXPECT_EQ(At(221, 55), Column(121));
  GaugePos[0].p3 = 0;
  DrawAfter(0);
  EXPECT_EQ(Lit(), Span(220, 300));
}

TEST_F(GaugeBar, TheStepStretchesTheClip) {
  GaugeStep = 3;
  GaugeShown[0] = 40;
  DrawAfter(0);
  EXPECT_EQ(Lit(), Span(100, 220));  // 80 columns over 120 pixels
  EXPECT_EQ(At(219, 55), Column(79));
  EXPECT_EQ(At(160, 55), Column(40));
  GaugeStep = 0.5F;
  DrawAfter(0);
  EXPECT_EQ(Lit(), Span(100, 120));
  EXPECT_EQ(At(110, 55), Column(40));
}

// The slice of the reached value, with a head that stands far behind it.
TEST_F(GaugeBar, ANarrowBarLosesNoSliceAtAnyValue) {
  for (const int32_t width : {1, 7, 29, 50, 57, 58, 99}) {
    LayBar(2, width);
    GaugePos[0] = {2, 100, 50, 1, 0};
    for (const float step : {0.0F, 0.3F, 1.0F, 2.5F}) {
      GaugeStep = step;
      const double pixels = step == 0 ? width / 100.0 : double{step};
      for (int32_t value = 1; value <= 100; ++value) {
        GaugeShown[0] = static_cast<float>(value);
        DrawAfter(299);
        // Either the value's first pixel or, where its rounded ends take in another one, the last.
        const auto first = 100 + static_cast<int32_t>((value - 1) * pixels);
        const auto last = 100 + static_cast<int32_t>(std::nearbyint(value * pixels)) - 1;
        EXPECT_TRUE(At(first, 55) != 0 || At(last, 55) != 0) << width << ' ' << step << ' ' << value;
      }
    }
  }
}

TEST_F(GaugeBar, ASliceWithoutAColumnOfItsOwnTakesTheOneItBeginsIn) {
  LayBar(2, 50);
  GaugePos[0] = {2, 100, 50, 1, 0};
  const auto drawSlice = [](float value) {
    GaugeShown[0] = value;
    DrawAfter(0);  // the head stands at the value too
  };
  GaugeStep = 3;  // the slice from 40 to 41 is columns 20 to 20.5 of the clip, on pixels 120 to 123
  drawSlice(41);
  EXPECT_EQ(Lit(), Span(100, 223));
  EXPECT_EQ(At(222, 55), Column(20));
  GaugeStep = 0;
  drawSlice(41);
  EXPECT_EQ(Lit(), Span(100, 121));
  EXPECT_EQ(At(120, 55), Column(20));
  drawSlice(100);  // its last slice is the clip's last column, and goes not beyond it
  EXPECT_EQ(Lit(), Span(100, 150));
  EXPECT_EQ(At(149, 55), Column(49));
  GaugePos[0].p3 = 2;
  drawSlice(41);
  EXPECT_EQ(Lit(), Span(129, 150));
  EXPECT_EQ(At(129, 55), Column(29));
}

TEST_F(GaugeBar, LiesOnItsGround) {
  LayClip(2, 220, 20, kGround);
  GaugeBackPos[0] = {2, 90, 45, 0, 0};
  GaugeShown[0] = 40;
  DrawAfter(0);
  EXPECT_EQ(At(90, 45), kGround);
  EXPECT_EQ(At(100, 50), Column(0));
  EXPECT_EQ(At(180, 50), kGround);
}

TEST_F(GaugeBar, TheHazardGaugeHasItsOwn) {
  LayClip(2, 220, 20, kGround);
  ExGaugeBackPos[0] = {2, 90, 245, 0, 0};
  ExGaugePos[0] = {1, 100, 250, 1, 0};
  GaugeShown[0] = 40;
  HazardGauge = true;
  DrawAfter(0);
  EXPECT_EQ(At(100, 55), 0U);
  EXPECT_EQ(At(90, 245), kGround);
  EXPECT_EQ(At(179, 255), Column(79));
  EXPECT_EQ(At(180, 255), kGround);
}

TEST_F(GaugeBar, IsCutAtTheScreensEdge) {
  GaugePos[0].x = -10;
  GaugeShown[0] = 40;
  DrawAfter(0);
  EXPECT_EQ(Lit(), Span(0, 70));
  EXPECT_EQ(At(0, 55), Column(10));
}

TEST_F(GaugeBar, WithoutAClipOrWithAnAbsurdStepDrawsNothing) {
  GaugeShown[0] = 40;
  GaugeStep = 1e30F;
  DrawAfter(0);
  EXPECT_TRUE(Only({}, 0));
  GaugeStep = 0;
  GaugePos[0].id = 9;
  DrawAfter(0);
  EXPECT_TRUE(Only({}, 0));
}

}  // namespace
}  // namespace qlm
