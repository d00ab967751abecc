// The window layer: where a frame is placed, which number a key has, and life without a display.
#include "platform/window.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <string>

#include "platform/clock.h"
#include "platform/message_box.h"
#include "platform/window_keys.h"
#include "tests/support/virtual_keyboard.h"

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

// Before anything opened the window library.
TEST(WaitForEvents, WaitsWhereThereAreNone) {
  UseRealClock();
  const int64_t begin = Microseconds();
  EXPECT_FALSE(WaitForWindowEvents(begin + 20'000, false));
  EXPECT_GE(Microseconds() - begin, 19'000) << "to the millisecond";
  EXPECT_FALSE(WaitForWindowEvents(begin, false)) << "a moment that is over";
}

TEST(WaitForEvents, EndsWithAnEventAndBeforeItsMomentOnlyThen) {
  UseRealClock();
  const qlm::VirtualKeyboard keyboard;
  const int64_t begin = Microseconds();
  EXPECT_FALSE(WaitForWindowEvents(begin + 20'000, false));
  EXPECT_GE(Microseconds() - begin, 19'000);
  qlm::VirtualKeyboard::Key(4, true);
  EXPECT_TRUE(WaitForWindowEvents(Microseconds() + 60'000'000, false)) << "or it takes a minute";
  PumpWindowEvents({});
  EXPECT_TRUE(WaitForWindowEvents(Microseconds() + 60'000'000, true)) << "about a millisecond later";
}

TEST(WaitForEvents, TakesNoTimeOnTheVirtualClock) {
  UseVirtualClock(1'000'000);
  EXPECT_FALSE(WaitForWindowEvents(Microseconds() + 60'000'000, true));
  const qlm::VirtualKeyboard keyboard;
  EXPECT_FALSE(WaitForWindowEvents(Microseconds() + 60'000'000, true));
  qlm::VirtualKeyboard::Key(4, true);
  EXPECT_TRUE(WaitForWindowEvents(0, false));
  PumpWindowEvents({});
  EXPECT_FALSE(WaitForWindowEvents(0, false));
  UseRealClock();
}

TEST(RefreshRateTest, IsTheUsualOneWithoutAWindow) { EXPECT_EQ(RefreshRate(), 60); }

// 960 is 89% of 1080, 1920 is 89% of 2160.
TEST(PlaceFrame, TakesAWholeNumberWhereThatFillsMostOfOneSide) {
  EXPECT_EQ(PlaceFrame(640, 480, 640, 480), (Rect{0, 0, 640, 480}));
  EXPECT_EQ(PlaceFrame(1280, 960, 640, 480), (Rect{0, 0, 1280, 960}));
  EXPECT_EQ(PlaceFrame(1920, 1080, 640, 480), (Rect{320, 60, 1600, 1020}));
  EXPECT_EQ(PlaceFrame(3840, 2160, 640, 480), (Rect{640, 120, 3200, 2040}));
}

// 480 is 63% of 768 and 53% of 900; 640 by 480 would be 85% of 753 by 565.
TEST(PlaceFrame, GoesToTheEdgesWhereAWholeNumberLeavesMuchEmpty) {
  EXPECT_EQ(PlaceFrame(1024, 768, 640, 480), (Rect{0, 0, 1024, 768}));
  EXPECT_EQ(PlaceFrame(1366, 768, 640, 480), (Rect{171, 0, 1195, 768}));
  EXPECT_EQ(PlaceFrame(1440, 900, 640, 480), (Rect{120, 0, 1320, 900}));
  EXPECT_EQ(PlaceFrame(900, 564, 640, 480), (Rect{130, 42, 770, 522}));
  EXPECT_EQ(PlaceFrame(900, 565, 640, 480), (Rect{73, 0, 826, 565}));
  EXPECT_EQ(PlaceFrame(1000, 2000, 640, 480), (Rect{0, 625, 1000, 1375}));
}

TEST(PlaceFrame, DoesAsItIsTold) {
  EXPECT_EQ(PlaceFrame(1440, 900, 640, 480, Scaling::kWhole), (Rect{400, 210, 1040, 690}));
  EXPECT_EQ(PlaceFrame(1920, 1080, 640, 480, Scaling::kSmooth), (Rect{240, 0, 1680, 1080}));
  EXPECT_EQ(PlaceFrame(320, 240, 640, 480, Scaling::kWhole), (Rect{0, 0, 320, 240}));
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

TEST(KeyNumberOf, ControlsAndSigns) {
  EXPECT_EQ(KeyNumberOf(40), 28);    // Enter
  EXPECT_EQ(KeyNumberOf(41), 1);     // Esc
  EXPECT_EQ(KeyNumberOf(42), 14);    // Backspace
  EXPECT_EQ(KeyNumberOf(43), 15);    // Tab
  EXPECT_EQ(KeyNumberOf(44), 57);    // Space
  EXPECT_EQ(KeyNumberOf(45), 12);    // -
  EXPECT_EQ(KeyNumberOf(46), 13);    // =
  EXPECT_EQ(KeyNumberOf(47), 26);    // [
  EXPECT_EQ(KeyNumberOf(48), 27);    // ]
  EXPECT_EQ(KeyNumberOf(49), 43);    // backslash
  EXPECT_EQ(KeyNumberOf(50), 43);    // its place on other boards
  EXPECT_EQ(KeyNumberOf(51), 39);    // ;
  EXPECT_EQ(KeyNumberOf(52), 40);    // '
  EXPECT_EQ(KeyNumberOf(53), 41);    // `
  EXPECT_EQ(KeyNumberOf(54), 51);    // ,
  EXPECT_EQ(KeyNumberOf(55), 52);    // .
  EXPECT_EQ(KeyNumberOf(56), 53);    // /
  EXPECT_EQ(KeyNumberOf(57), 58);    // Caps Lock
  EXPECT_EQ(KeyNumberOf(70), 183);   // Print Screen
  EXPECT_EQ(KeyNumberOf(71), 70);    // Scroll Lock
  EXPECT_EQ(KeyNumberOf(72), 197);   // Pause
  EXPECT_EQ(KeyNumberOf(100), 86);   // the key beside left Shift
  EXPECT_EQ(KeyNumberOf(101), 221);  // Menu
  EXPECT_EQ(KeyNumberOf(102), 222);  // Power
  EXPECT_EQ(KeyNumberOf(224), 29);   // left Ctrl
  EXPECT_EQ(KeyNumberOf(225), 42);   // left Shift
  EXPECT_EQ(KeyNumberOf(226), 56);   // left Alt
  EXPECT_EQ(KeyNumberOf(227), 219);  // left Windows
  EXPECT_EQ(KeyNumberOf(228), 157);  // right Ctrl
  EXPECT_EQ(KeyNumberOf(229), 54);   // right Shift
  EXPECT_EQ(KeyNumberOf(230), 184);  // right Alt
  EXPECT_EQ(KeyNumberOf(231), 220);  // right Windows
}

TEST(KeyNumberOf, FunctionKeys) {
  for (int32_t f = 1; f <= 10; ++f) EXPECT_EQ(KeyNumberOf(57 + f), 58 + f) << f;
  EXPECT_EQ(KeyNumberOf(68), 87);    // F11
  EXPECT_EQ(KeyNumberOf(69), 88);    // F12
  EXPECT_EQ(KeyNumberOf(104), 100);  // F13
  EXPECT_EQ(KeyNumberOf(105), 101);  // F14
  EXPECT_EQ(KeyNumberOf(106), 102);  // F15
}

// The codes are those of the kernel's input events.
TEST(KeyNumberOfEvdev, OlderKeysKeepTheirScanCode) {
  for (int32_t code = 1; code <= 83; ++code) EXPECT_EQ(KeyNumberOfEvdev(code), code);
  EXPECT_EQ(KeyNumberOfEvdev(86), 86);  // the key beside left Shift
  EXPECT_EQ(KeyNumberOfEvdev(87), 87);  // F11
  EXPECT_EQ(KeyNumberOfEvdev(88), 88);  // F12
}

TEST(KeyNumberOfEvdev, KeysThatCameLaterHaveTheNumberOfTheirPlace) {
  // By the usage of the same key.
  const std::pair<int32_t, int32_t> keys[] = {
      {89, 135},  {92, 138},  {93, 136},  {94, 139},  {96, 88},   {97, 228}, {98, 84},   {99, 70},
      {100, 230}, {102, 74},  {103, 82},  {104, 75},  {105, 80},  {106, 79}, {107, 77},  {108, 81},
      {109, 78},  {110, 73},  {111, 76},  {116, 102}, {117, 103}, {119, 72}, {124, 137}, {125, 227},
      {126, 231}, {127, 101}, {183, 104}, {184, 105}, {185, 106},
  };
  for (const auto& [code, usage] : keys) {
    EXPECT_NE(KeyNumberOf(usage), 0) << code;
    EXPECT_EQ(KeyNumberOfEvdev(code), KeyNumberOf(usage)) << code;
  }
}

TEST(KeyNumberOfEvdev, OthersHaveNone) {
  for (const int32_t code : {-1, 0, 85, 101, 112, 113, 118, 120, 255, 256, 100000}) {
    EXPECT_EQ(KeyNumberOfEvdev(code), 0) << code;
  }
}

TEST(KeyNumberOf, ArrowsAndTheBlockAboveThem) {
  EXPECT_EQ(KeyNumberOf(73), 210);  // Insert
  EXPECT_EQ(KeyNumberOf(74), 199);  // Home
  EXPECT_EQ(KeyNumberOf(75), 201);  // Page Up
  EXPECT_EQ(KeyNumberOf(76), 211);  // Delete
  EXPECT_EQ(KeyNumberOf(77), 207);  // End
  EXPECT_EQ(KeyNumberOf(78), 209);  // Page Down
  EXPECT_EQ(KeyNumberOf(79), 205);  // Right
  EXPECT_EQ(KeyNumberOf(80), 203);  // Left
  EXPECT_EQ(KeyNumberOf(81), 208);  // Down
  EXPECT_EQ(KeyNumberOf(82), 200);  // Up
}

TEST(KeyNumberOf, Pad) {
  EXPECT_EQ(KeyNumberOf(83), 69);    // Num Lock
  EXPECT_EQ(KeyNumberOf(84), 181);   // /
  EXPECT_EQ(KeyNumberOf(85), 55);    // *
  EXPECT_EQ(KeyNumberOf(86), 74);    // -
  EXPECT_EQ(KeyNumberOf(87), 78);    // +
  EXPECT_EQ(KeyNumberOf(88), 156);   // Enter
  EXPECT_EQ(KeyNumberOf(89), 79);    // 1
  EXPECT_EQ(KeyNumberOf(90), 80);    // 2
  EXPECT_EQ(KeyNumberOf(91), 81);    // 3
  EXPECT_EQ(KeyNumberOf(92), 75);    // 4
  EXPECT_EQ(KeyNumberOf(93), 76);    // 5
  EXPECT_EQ(KeyNumberOf(94), 77);    // 6
  EXPECT_EQ(KeyNumberOf(95), 71);    // 7
  EXPECT_EQ(KeyNumberOf(96), 72);    // 8
  EXPECT_EQ(KeyNumberOf(97), 73);    // 9
  EXPECT_EQ(KeyNumberOf(98), 82);    // 0
  EXPECT_EQ(KeyNumberOf(99), 83);    // .
  EXPECT_EQ(KeyNumberOf(103), 141);  // =
  EXPECT_EQ(KeyNumberOf(133), 179);  // ,
}

TEST(KeyNumberOf, KeysOfJapaneseBoards) {
  EXPECT_EQ(KeyNumberOf(135), 115);  // Ro
  EXPECT_EQ(KeyNumberOf(136), 112);  // Kana
  EXPECT_EQ(KeyNumberOf(137), 125);  // Yen
  EXPECT_EQ(KeyNumberOf(138), 121);  // Henkan
  EXPECT_EQ(KeyNumberOf(139), 123);  // Muhenkan
}

TEST(KeyNumberOf, UnknownPlacesHaveNoNumber) {
  EXPECT_EQ(KeyNumberOf(0), 0);
  EXPECT_EQ(KeyNumberOf(3), 0);
  EXPECT_EQ(KeyNumberOf(134), 0);  // the equals sign of the pads of some terminals
  EXPECT_EQ(KeyNumberOf(140), 0);
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
