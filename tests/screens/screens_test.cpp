// Whole frames outside a play: loading and boot.
#include "screens/boot_screen.h"

#include <algorithm>

#include "base/hooks.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "platform/font.h"
#include "screens/boot_screen.h"
#include "screens/loading_screen.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/message.h"
#include "state/session.h"
#include "state/surfaces.h"
#include "tests/graphics/picture_files.h"
#include "tests/support/allocations.h"
#include "tools/media_files/bmp.h"

namespace qlm {
namespace {

constexpr Colour kRed = 0xFF0000;
constexpr Colour kBlue = 0x0000FF;

// The frame as it was last presented.
SurfacePtr presented;

class Screens : public DisplayTest {
 protected:
  Screens() {
    presented = std::make_shared<Surface>(640, 480);
    hooks.framePresented = [] { presented->Copy(0, 0, *DDBack, kScreen); };
    if (platform::FontTextWidth(u"A", 12) == 0) hasFont = false;
  }
  ~Screens() override { presented.reset(); }
  bool hasFont = true;
};

// The title picture of a song, as large as the screen.
void GiveTitlePicture(Colour colour) {
  DDStage = std::make_shared<Surface>(640, 480);
  DDStage->Fill(kScreen, colour);
  StageRect = kScreen;
  StageW = 640;
  StageH = 480;
}

TEST_F(Screens, LoadingShowsTheTilesThatFallFromTheTitlePicture) {
  DDSnapshot->Fill(kScreen, kRed);
  GiveTitlePicture(kBlue);
  FadeTileSpeed.fill(480);
  FadeStart = platform::Now() - 150;  // half of 300 ms: 30 pixels
  Loading();
  EXPECT_TRUE(Shows(presented, {0, 30, 640, 480}, kRed, kBlue));
}

TEST_F(Screens, LoadingShowsTheTitlePictureOnceTheTilesHaveFallen) {
  DDSnapshot->Fill(kScreen, kRed);
  GiveTitlePicture(kBlue);
  FadeStart = platform::Now() - 2000;
  Loading();
  EXPECT_TRUE(Shows(presented, {}, kBlue, kBlue));
}

TEST_F(Screens, WithoutATitlePictureLoadingShowsTheDimDesk) {
  DDSnapshot->Fill(kScreen, kRed);
  FadeStart = platform::Now() - 2000;
  Loading();
  for (const int32_t y : {0, 240, 479}) {
    const Colour ground = presented->Row(y)[0];
    EXPECT_NE(ground, 0U) << y;
    EXPECT_LT(ground & 0xFF, 0x40U) << y;
    EXPECT_EQ(std::ranges::count(presented->Row(y), ground), 640) << y;
  }
}

TEST_F(Screens, ACourseTellsThatItLoadsAndWhich) {
  if (!hasFont) GTEST_SKIP() << "no font is installed";
  CourseMode = true;
  CourseSongs.resize(2);
  CourseSongs[1].title = u"羽ペンの行進";
  FadeStart = platform::Now() - 2000;
  const auto inkOfRows = [](int32_t from, int32_t to) {
    int64_t ink = 0;
    for (int32_t y = from; y < to; ++y) {
      ink += 640 - std::ranges::count(presented->Row(y), presented->Row(y)[639]);
    }
    return ink;
  };
  CourseSong = 1;
  platform::UseVirtualClock(1'000'000);  // a multiple of 800: no dot yet
  Loading();
  const int64_t words = inkOfRows(410, 436);
  const int64_t line = inkOfRows(438, 456);
  EXPECT_GT(words, 0);
  EXPECT_GT(line, 0);
  int64_t before = words;
  for (const uint32_t dots : {1U, 2U, 3U}) {
    platform::UseVirtualClock(1'000'000 + 200 * dots);
    FadeStart = platform::Now() - 2000;
    Loading();
    EXPECT_GT(inkOfRows(410, 436), before);
    before = inkOfRows(410, 436);
  }
  platform::UseVirtualClock(1'000'800);
  Loading();
  EXPECT_EQ(inkOfRows(410, 436), words);
  CourseSong = 0;
  Loading();
  EXPECT_LT(inkOfRows(438, 456), line);
  CourseSong = 2;
  Loading();
  EXPECT_EQ(inkOfRows(438, 456), 0);
}

// The bar fills the last three rows of the strip from the left.
TEST_F(Screens, ALoadThatTellsHowFarItIsIsShownSo) {
  FadeStart = platform::Now() - 2000;
  Loading();
  const Colour desk = presented->Pixel(0, 460);
  EXPECT_EQ(presented->Pixel(639, 460), desk) << "the classic load tells nothing";
  loadProgress.all = 1300;
  loadProgress.done = 325;
  Loading();
  const Colour bar = presented->Pixel(0, 460);
  EXPECT_NE(bar, desk);
  EXPECT_EQ(presented->Pixel(159, 459), bar);
  EXPECT_EQ(presented->Pixel(159, 461), bar);
  EXPECT_NE(presented->Pixel(160, 460), bar);
  EXPECT_NE(presented->Pixel(100, 458), bar);
  if (hasFont) {
    EXPECT_LT(std::ranges::count(presented->Row(446), presented->Pixel(639, 446)), 640);
  }
  loadProgress.done = 1400;  // sounds behind the first data
  Loading();
  EXPECT_EQ(presented->Pixel(639, 460), bar);
}

int frames = 0;

TEST_F(Screens, ALoadThatTellsHowFarItIsShowsAFrameEveryTenthOfASecond) {
  frames = 0;
  hooks.framePresented = [] { ++frames; };
  int64_t pumps = 0;
  const auto pumpUntil = [&](uint32_t ms) {
    platform::UseVirtualClock(1'000'000 + ms);
    PumpLoad();
    ++pumps;
  };
  LoadRunning = true;
  pumpUntil(0);
  EXPECT_EQ(frames, 0) << "the classic load tells nothing";
  loadProgress.all = 10;
  loadProgress.shown = 1'000'000;
  pumpUntil(99);
  EXPECT_EQ(frames, 0);
  pumpUntil(100);
  pumpUntil(150);
  EXPECT_EQ(frames, 1);
  pumpUntil(200);
  EXPECT_EQ(frames, 2);
  LoadRunning = false;  // a preview's
  pumpUntil(400);
  EXPECT_EQ(frames, 2);
}

TEST_F(Screens, TheBootListOpensLinesAndOverwritesTheLast) {
  PrintBoot(u"one", false);
  PrintBoot(u"two");
  platform::UseVirtualClock(1'000'050);
  PrintBoot(u"three", false);
  ASSERT_EQ(bootLines.size(), 2U);
  EXPECT_EQ(bootLines[0].text, u"one");
  EXPECT_EQ(bootLines[0].time, 1'000'000U);
  EXPECT_EQ(bootLines[1].text, u"three");
  EXPECT_EQ(bootLines[1].time, 1'000'050U);
}

TEST_F(Screens, TheBootListMovesUpWhenItIsFull) {
  for (int32_t i = 0; i < 41; ++i) PrintBoot(ToText(i));
  ASSERT_EQ(bootLines.size(), 39U);
  EXPECT_EQ(bootLines.front().text, u"2");
  EXPECT_EQ(bootLines.back().text, u"40");
  PrintBoot(u"last", false);
  EXPECT_EQ(bootLines.front().text, u"2");
  EXPECT_EQ(bootLines.back().text, u"last");
}

// Rows of the presented frame that hold a pixel of the boot list's own colour.
bool HasCyan(int32_t from, int32_t to) {
  for (int32_t y = from; y < to; ++y) {
    if (std::ranges::count(presented->Row(y), 0x00FFFFU) > 0) return true;
  }
  return false;
}

TEST_F(Screens, SettledBootLinesAreCyanAndTwelvePixelsApart) {
  if (!hasFont) GTEST_SKIP() << "no font is installed";
  PrintBoot(u"quillmarch");
  PrintBoot(u"");
  PrintBoot(u"■■■■");
  platform::UseVirtualClock(1'000'500);
  DrawBootScreen();
  EXPECT_TRUE(HasCyan(6, 18));
  EXPECT_FALSE(HasCyan(19, 30));
  EXPECT_TRUE(HasCyan(30, 42));
  EXPECT_FALSE(HasCyan(43, 480));
}

TEST_F(Screens, BootLinesAreSeenAtEveryAgeAndMoveInTheirTwoTimes) {
  if (!hasFont) GTEST_SKIP() << "no font is installed";
  PrintBoot(u"■");
  const auto frameAt = [](uint32_t age) {
    platform::UseVirtualClock(1'000'000 + age);
    DrawBootScreen();
    return presented->Pixel(14, 12);
  };
  const Colour settled = frameAt(200);
  EXPECT_EQ(settled, 0x00FFFFU);
  EXPECT_EQ(frameAt(1199), settled);
  EXPECT_EQ(frameAt(2000), settled);
  EXPECT_NE(frameAt(100), settled);
  EXPECT_NE(frameAt(1600), settled);
  PrintBoot(u"■■■■■■", false);
  DrawBootScreen();  // at age 0 it is white
  EXPECT_EQ(presented->Pixel(46, 12), 0xFFFFFFU);
}

TEST_F(Screens, TheBootScreenLiesOnThePictureOfTheDesk) {
  std::vector<std::vector<uint32_t>> rows(480, std::vector<uint32_t>(640, 0x102030));
  rows[479][639] = 0x405060;
  WriteData(u"_qlmfiles\\screens\\desk.bmp", media::BmpOf(rows));
  LoadDesk();
  DrawBootScreen();
  EXPECT_EQ(presented->Pixel(0, 0), 0x102030U);
  EXPECT_EQ(presented->Pixel(639, 479), 0x405060U);
  // One of another size is none.
  rows.pop_back();
  WriteData(u"_qlmfiles\\screens\\desk.bmp", media::BmpOf(rows));
  LoadDesk();
  DrawBootScreen();
  EXPECT_EQ(presented->Pixel(0, 479), 0x131A2EU);
}

TEST_F(Screens, TheBootScreenLiesOnADarkGround) {
  DrawBootScreen();
  EXPECT_EQ(presented->Pixel(639, 0), 0x0B1020U);
  EXPECT_EQ(presented->Pixel(0, 479), 0x131A2EU);
}

}  // namespace
}  // namespace qlm
