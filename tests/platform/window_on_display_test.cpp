// The game window on a display of its own: its title, and the mouse pointer.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/clock.h"
#include "platform/window.h"
#include "platform/window_keys.h"
#include "tests/support/x_display.h"

namespace platform {
namespace {

class WindowOnDisplay : public testing::Test {
 protected:
  // One display for all: the window library stays with the first that it meets.
  static void SetUpTestSuite() {
    display = new qlm::XDisplay("1400x960");
    setenv("DISPLAY", display->Name().c_str(), 1);
    for (const char* const variable : {"WAYLAND_DISPLAY", "SDL_VIDEODRIVER"}) unsetenv(variable);
  }
  static void TearDownTestSuite() { delete std::exchange(display, nullptr); }

  WindowOnDisplay() {
    UseVirtualClock(1'000'000);
    display->Do({"mousemove", "600", "400"});
  }
  ~WindowOnDisplay() override {
    CloseGameWindow();
    UseRealClock();
  }

  static void Open(bool windowed, int32_t width = 640, int32_t height = 480) {
    std::string why;
    ASSERT_TRUE(
        OpenGameWindow({.title = u"quillmarch", .windowed = windowed, .width = width, .height = height}, why))
        << why;
    // Until the window stands where it stays.
    for (int i = 0; i < 10; ++i) {
      PumpWindowEvents({});
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ShowFrame(Surface(640, 480), false);
  }
  // The pump and the show of one frame of a play.
  static void PlayFrame() {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    PumpWindowEvents({});
    LetMovingPointerShow();
    ShowFrame(Surface(640, 480), false);
  }
  static void MoveHand() {
    display->Do({"mousemove_relative", "7", "5", "sleep", "0.02", "mousemove_relative", "7", "5"});
  }

  static qlm::XDisplay* display;
};
qlm::XDisplay* WindowOnDisplay::display = nullptr;

// The display has 1400 by 960 pixels, and a title bar wants 40.
TEST_F(WindowOnDisplay, FitsWithItsTitleBar) {
  EXPECT_TRUE(DesktopHasRoom(1400, 920));
  EXPECT_FALSE(DesktopHasRoom(1401, 920));
  EXPECT_FALSE(DesktopHasRoom(1400, 921));
}

TEST_F(WindowOnDisplay, PointerAlwaysShowsInAWindow) {
  Open(true);
  EXPECT_TRUE(display->PointerShows());
  PlayFrame();
  EXPECT_TRUE(display->PointerShows());
}

TEST_F(WindowOnDisplay, FullScreenShowsThePointerWhileItMovesAndForASecond) {
  Open(false);
  PlayFrame();
  EXPECT_FALSE(display->PointerShows()) << "nobody has moved it";
  MoveHand();
  PlayFrame();
  EXPECT_TRUE(display->PointerShows());
  UseVirtualClock(1'000'999);
  PlayFrame();
  EXPECT_TRUE(display->PointerShows());
  UseVirtualClock(1'001'000);
  PlayFrame();
  EXPECT_FALSE(display->PointerShows());
  MoveHand();
  PlayFrame();
  EXPECT_TRUE(display->PointerShows());
}

TEST_F(WindowOnDisplay, FramesThatDoNotAskHideThePointer) {
  Open(false);
  MoveHand();
  PlayFrame();
  EXPECT_TRUE(display->PointerShows());
  ShowFrame(Surface(640, 480), false);
  EXPECT_FALSE(display->PointerShows());
}

TEST_F(WindowOnDisplay, PointerThatTheGameMovesDoesNotShow) {
  Open(false);
  MoveMouse(320, 240);
  PlayFrame();
  EXPECT_FALSE(display->PointerShows());
}

TEST_F(WindowOnDisplay, PointerIsPutOnAPixelOfTheFrame) {
  // In full screen the frame is doubled and stands 60 pixels from the left.
  Open(false);
  MoveMouse(320, 240);
  PumpWindowEvents({});
  EXPECT_EQ(display->Pointer(), (qlm::XDisplay::Place{60 + 640, 480}));
  MoveMouse(100, 30);
  PumpWindowEvents({});
  EXPECT_EQ(display->Pointer(), (qlm::XDisplay::Place{60 + 200, 60}));
  // A window stands in the middle.
  Open(true);
  MoveMouse(100, 30);
  PumpWindowEvents({});
  EXPECT_EQ(display->Pointer(), (qlm::XDisplay::Place{380 + 100, 240 + 30}));
  Open(true, 320, 240);
  MoveMouse(100, 30);
  PumpWindowEvents({});
  EXPECT_EQ(display->Pointer(), (qlm::XDisplay::Place{540 + 50, 360 + 15}));
}

// Forms before the game know a key by its code alone, and the game must then know it by the same number.
TEST_F(WindowOnDisplay, KeyHasTheNumberOfItsCode) {
  static std::vector<int32_t> seen;
  seen.clear();
  Open(true);
  const auto pump = [] {
    PumpWindowEvents({.key = [](int32_t key, bool down) {
      if (down) seen.push_back(key);
    }});
  };
  // By the display's codes, 8 above the kernel's; the first one would be taken for a digit.
  std::vector<std::string> press = {"key", "--delay", "1", "Escape"};
  std::vector<int32_t> expected = {1};
  for (int32_t code = 2; code <= 247; ++code) {
    if (code == 84) continue;  // no keyboard has it
    press.push_back(std::to_string(code + 8));
    if (const int32_t key = KeyNumberOfEvdev(code); key != 0) expected.push_back(key);
  }
  display->Do(press);
  for (int i = 0; i < 3000 && seen.size() < expected.size(); ++i) {
    pump();
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  pump();
  EXPECT_EQ(seen, expected);
}

TEST_F(WindowOnDisplay, TitleIsTheOneThatItIsOpenedWithUntilAnotherIsSet) {
  Open(true);
  display->WaitForWindow("quillmarch");
  SetWindowTitle(u"The March of the Quill");
  display->WaitForWindow("The March of the Quill");
}

}  // namespace
}  // namespace platform
