// The window layer: where a frame is placed, which number a key has, and life without a display.
#include "platform/window.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <string>

#include "platform/window_keys.h"

namespace platform {
namespace {

// Stands first: a driver that was once opened stays.
TEST(NoDriver, OpeningFailsAndTellsWhy) {
  setenv("SDL_VIDEODRIVER", "no-such-driver", 1);
  EXPECT_FALSE(HasDisplay());
  std::string why;
  EXPECT_FALSE(OpenGameWindow({.title = u"quillmarch"}, why));
  EXPECT_FALSE(why.empty());
  EXPECT_FALSE(WindowOpen());
  ShowFrame(Surface(640, 480), true);
  PumpWindowEvents({});
}

TEST(PlaceFrame, TakesTheGreatestWholeNumberThatFits) {
  EXPECT_EQ(PlaceFrame(640, 480, 640, 480), (Rect{0, 0, 640, 480}));
  EXPECT_EQ(PlaceFrame(1280, 960, 640, 480), (Rect{0, 0, 1280, 960}));
  EXPECT_EQ(PlaceFrame(1920, 1080, 640, 480), (Rect{320, 60, 1600, 1020}));
  EXPECT_EQ(PlaceFrame(3840, 2160, 640, 480), (Rect{640, 120, 3200, 2040}));
}

TEST(PlaceFrame, SurroundsAFrameThatCannotBeDoubled) {
  EXPECT_EQ(PlaceFrame(1024, 768, 640, 480), (Rect{192, 144, 832, 624}));
}

TEST(PlaceFrame, ShrinksEvenlyWhereNotEvenTheFrameFits) {
  EXPECT_EQ(PlaceFrame(320, 480, 640, 480), (Rect{0, 120, 320, 360}));
  EXPECT_EQ(PlaceFrame(640, 240, 640, 480), (Rect{160, 0, 480, 240}));
  EXPECT_EQ(PlaceFrame(1, 480, 640, 480), (Rect{0, 239, 1, 240}));
}

// The usage numbers stand for places on the board; the letters in the comments are those of a US board.
TEST(KeyNumberOf, LettersAndDigits) {
  EXPECT_EQ(KeyNumberOf(4), 30);   // A
  EXPECT_EQ(KeyNumberOf(29), 44);  // Z
  EXPECT_EQ(KeyNumberOf(22), 31);  // S
  EXPECT_EQ(KeyNumberOf(27), 45);  // X
  EXPECT_EQ(KeyNumberOf(7), 32);   // D
  EXPECT_EQ(KeyNumberOf(6), 46);   // C
  EXPECT_EQ(KeyNumberOf(9), 33);   // F
  EXPECT_EQ(KeyNumberOf(25), 47);  // V
  EXPECT_EQ(KeyNumberOf(17), 49);  // N
  EXPECT_EQ(KeyNumberOf(13), 36);  // J
  EXPECT_EQ(KeyNumberOf(16), 50);  // M
  EXPECT_EQ(KeyNumberOf(14), 37);  // K
  EXPECT_EQ(KeyNumberOf(15), 38);  // L
  EXPECT_EQ(KeyNumberOf(30), 2);   // 1
  EXPECT_EQ(KeyNumberOf(38), 10);  // 9
  EXPECT_EQ(KeyNumberOf(39), 11);  // 0
  EXPECT_EQ(KeyNumberOf(54), 51);  // ,
  EXPECT_EQ(KeyNumberOf(55), 52);  // .
}

TEST(KeyNumberOf, ControlsAndExtendedKeys) {
  EXPECT_EQ(KeyNumberOf(41), 1);     // Esc
  EXPECT_EQ(KeyNumberOf(43), 15);    // Tab
  EXPECT_EQ(KeyNumberOf(40), 28);    // Enter
  EXPECT_EQ(KeyNumberOf(44), 57);    // Space
  EXPECT_EQ(KeyNumberOf(58), 59);    // F1
  EXPECT_EQ(KeyNumberOf(67), 68);    // F10
  EXPECT_EQ(KeyNumberOf(68), 87);    // F11
  EXPECT_EQ(KeyNumberOf(69), 88);    // F12
  EXPECT_EQ(KeyNumberOf(82), 200);   // Up
  EXPECT_EQ(KeyNumberOf(80), 203);   // Left
  EXPECT_EQ(KeyNumberOf(79), 205);   // Right
  EXPECT_EQ(KeyNumberOf(81), 208);   // Down
  EXPECT_EQ(KeyNumberOf(88), 156);   // Enter of the pad
  EXPECT_EQ(KeyNumberOf(224), 29);   // left Ctrl
  EXPECT_EQ(KeyNumberOf(225), 42);   // left Shift
  EXPECT_EQ(KeyNumberOf(229), 54);   // right Shift
  EXPECT_EQ(KeyNumberOf(228), 157);  // right Ctrl
  EXPECT_EQ(KeyNumberOf(230), 184);  // right Alt
}

TEST(KeyNumberOf, UnknownPlacesHaveNoNumber) {
  EXPECT_EQ(KeyNumberOf(0), 0);
  EXPECT_EQ(KeyNumberOf(3), 0);
  EXPECT_EQ(KeyNumberOf(255), 0);
  EXPECT_EQ(KeyNumberOf(256), 0);
  EXPECT_EQ(KeyNumberOf(-1), 0);
  EXPECT_EQ(KeyNumberOf(INT32_MAX), 0);
}

TEST(KeyNumberOf, NoTwoKeysShareANumberButTheBackslash) {
  std::multiset<int32_t> numbers;
  for (int32_t usage = 0; usage < 256; ++usage) {
    if (KeyNumberOf(usage) != 0) {
      numbers.insert(KeyNumberOf(usage));
    }
  }
  for (const int32_t number : numbers) {
    EXPECT_EQ(numbers.count(number), number == 43 ? 2U : 1U) << number;
  }
}

class Unseen : public testing::Test {
 protected:
  void SetUp() override { setenv("SDL_VIDEODRIVER", "dummy", 1); }
  void TearDown() override { CloseGameWindow(); }
};

TEST_F(Unseen, TheDummyDriverCountsAsNoDisplay) { EXPECT_FALSE(HasDisplay()); }

TEST_F(Unseen, EverythingIsANoOpWithoutAWindow) {
  EXPECT_FALSE(WindowOpen());
  EXPECT_TRUE(DisplayAvailable());
  ShowFrame(Surface(640, 480), true);
  PumpWindowEvents({});
  SetWindowTitle(u"quillmarch");
  MoveMouse(320, 240);
  CloseGameWindow();
  EXPECT_FALSE(WindowOpen());
}

TEST_F(Unseen, AWindowThatNobodySeesTakesFrames) {
  for (const bool windowed : {true, false}) {
    std::string why;
    ASSERT_TRUE(OpenGameWindow({.title = u"quillmarch", .windowed = windowed}, why)) << why;
    EXPECT_TRUE(WindowOpen());
    EXPECT_TRUE(DisplayAvailable());
    Surface frame(640, 480);
    frame.Fill({0, 0, 100, 100}, 0xFF8000);
    ShowFrame(frame, false);
    ShowFrame(frame, true);
    ShowFrame(Surface(320, 240), false);
    SetWindowTitle(u"羽ペンの行進 - quillmarch");
    MoveMouse(320, 240);
    PumpWindowEvents({});
  }
}

TEST_F(Unseen, PlacementOfAClosedWindowIsKept) {
  std::string why;
  ASSERT_TRUE(OpenGameWindow({.title = u"quillmarch", .windowed = true, .width = 320, .height = 240}, why))
      << why;
  CloseGameWindow();
  const WindowPlacement placement = NormalizeWindow();
  EXPECT_EQ(placement.width, 320);
  EXPECT_EQ(placement.height, 240);
  EXPECT_EQ(placement.state, 0);
}

TEST_F(Unseen, BoxesGoToStandardErrorWithoutCarriageReturns) {
  testing::internal::CaptureStderr();
  MessageBox(BoxIcon::kCritical, u"critical error", u"フォルダ\r\n\r\nI'm sorry");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "critical error: フォルダ\n\nI'm sorry\n");
}

}  // namespace
}  // namespace platform
