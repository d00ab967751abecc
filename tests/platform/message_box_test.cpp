// Message boxes on a display of their own: what is seen of them, and what closes them.
#include "platform/message_box.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/font.h"
#include "platform/surface.h"
#include "platform/window.h"
#include "tests/support/x_display.h"

namespace platform {
namespace {

constexpr Colour kPaper = 0xF3EAD3;
constexpr Colour kTeal = 0x3FB8AF;
constexpr Colour kGold = 0xD9A441;
constexpr Colour kWax = 0xC8385A;
constexpr Colour kEdge = 0x333D5A;

constexpr std::u16string_view kMissingFolder =
    u"_qlmfilesフォルダが存在しません。フルセットをダウンロードして展開してください。\r\n"
    u"エクスプローラでcabファイルを展開した場合は、フォルダが正常に展開されないためこのエラーが発生している場"
    u"合"
    u"があります。\r\n同梱されているmake.batを実行してください。";

// The rectangle around all pixels of a colour; empty without one.
Rect Around(const Surface& screen, Colour colour) {
  Rect around{screen.Width(), screen.Height(), 0, 0};
  for (int32_t y = 0; y < screen.Height(); ++y) {
    for (int32_t x = 0; x < screen.Width(); ++x) {
      if (screen.Pixel(x, y) != colour) continue;
      around = {std::min(around.left, x), std::min(around.top, y), std::max(around.right, x + 1),
                std::max(around.bottom, y + 1)};
    }
  }
  return around.left < around.right ? around : Rect{};
}

// Where every pixel that a line fills whole, as the font draws it, has the colour of the text; empty when
// nowhere.
Rect PlaceOfLine(const Surface& screen, std::u16string_view line) {
  Surface drawn(FontTextWidth(line, 16), 20);
  DrawFontText(drawn, 0, 0, line, 16, 0xFFFFFF);
  std::vector<std::pair<int32_t, int32_t>> filled;
  for (int32_t y = 0; y < drawn.Height(); ++y) {
    for (int32_t x = 0; x < drawn.Width(); ++x) {
      if (drawn.Pixel(x, y) == 0xFFFFFF) filled.emplace_back(x, y);
    }
  }
  EXPECT_GT(filled.size(), 50U);
  for (int32_t top = 0; top + drawn.Height() <= screen.Height(); ++top) {
    for (int32_t left = 0; left + drawn.Width() <= screen.Width(); ++left) {
      const bool here = std::all_of(filled.begin(), filled.end(), [&](const auto& pixel) {
        return screen.Pixel(left + pixel.first, top + pixel.second) == kPaper;
      });
      if (here) return {left, top, left + drawn.Width(), top + drawn.Height()};
    }
  }
  return {};
}

int32_t closeRequests = 0;
int32_t active = -1;
std::vector<int32_t> keys;  // as they went down; negative as they went up

// Lets what the display has to tell come in.
void PumpAll() {
  for (int i = 0; i < 20; ++i) {
    PumpWindowEvents({.closeRequested = [] { ++closeRequests; },
                      .activated = [](bool is) { active = is ? 1 : 0; },
                      .key = [](int32_t key, bool down) { keys.push_back(down ? key : -key); }});
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

class MessageBoxTest : public testing::Test {
 protected:
  // One display for all: the window library stays with the first that it meets.
  static void SetUpTestSuite() {
    display = new qlm::XDisplay("640x480");
    setenv("DISPLAY", display->Name().c_str(), 1);
    for (const char* const variable : {"WAYLAND_DISPLAY", "SDL_VIDEODRIVER"}) unsetenv(variable);
  }
  static void TearDownTestSuite() { delete std::exchange(display, nullptr); }

  MessageBoxTest() {
    closeRequests = 0;
    keys.clear();
  }
  ~MessageBoxTest() override { CloseGameWindow(); }

  // Shows a box, whose title is BoxTest, to a person who looks at it and then does something.
  void Show(
      BoxIcon icon, std::u16string_view text, const std::function<void()>& person = [] {}) {
    open_ = true;
    screen_ = nullptr;
    display->Do({"mousemove", "0", "0"});
    std::thread hands([&] {
      display->WaitForWindow("BoxTest");
      // A window is there before it is drawn; its edge is drawn with all the rest.
      for (int i = 0; i < 100 && (!screen_ || Around(*screen_, kEdge) == Rect{}); ++i) {
        screen_ = display->Screenshot();
      }
      person();
      CloseByKey("a");
    });
    MessageBox(icon, u"BoxTest", text);
    open_ = false;
    hands.join();
    ASSERT_NE(screen_, nullptr);
  }
  bool Closes(int seconds = 30) const {
    for (int i = 0; i < 100 * seconds && open_; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return !open_;
  }
  // False when it stays open. Its first quarter of a second does not count.
  bool CloseByKey(const std::string& key) const {
    for (int i = 0; i < 20 && open_; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(250));
      display->Do({"key", key});
      Closes(1);
    }
    return !open_;
  }
  // Whether a pixel becomes such, or no longer is.
  static bool PixelBecomes(int32_t x, int32_t y, Colour colour, bool is) {
    for (int i = 0; i < 100; ++i) {
      if ((display->Screenshot()->Pixel(x, y) == colour) == is) return true;
    }
    return false;
  }

  static qlm::XDisplay* display;
  SurfacePtr screen_;
  std::atomic<bool> open_ = true;
};
qlm::XDisplay* MessageBoxTest::display = nullptr;

TEST_F(MessageBoxTest, JapaneseIsLegibleWithinTheScreen) {
  Show(BoxIcon::kCritical, kMissingFolder);
  const Rect first = PlaceOfLine(*screen_, u"_qlmfilesフォルダが存在しません。フルセットをダウンロー");
  const Rect last = PlaceOfLine(*screen_, u"同梱されているmake.batを実行してください。");
  EXPECT_GT(first.Width(), 0);
  EXPECT_GT(last.Width(), 0);
  EXPECT_EQ(first.left, last.left);
  EXPECT_GE(last.top - first.top, 60) << "the sentences stand below each other";
  const Rect box = Around(*screen_, kEdge);
  EXPECT_GT(box.Width(), 400);
  EXPECT_LT(box.Width(), 640);
  EXPECT_LT(last.bottom, box.bottom);
}

TEST_F(MessageBoxTest, AnyKeyClosesIt) {
  for (const char* const key : {"Escape", "space", "F5", "Shift_L"}) {
    Show(BoxIcon::kInformation, u"text", [&] { EXPECT_TRUE(CloseByKey(key)) << key; });
  }
}

TEST_F(MessageBoxTest, KeyThatWasHeldBeforeDoesNotCloseIt) {
  std::string why;
  ASSERT_TRUE(OpenGameWindow({.title = u"game", .windowed = true}, why)) << why;
  PumpAll();
  display->Do({"keydown", "x"});
  PumpAll();
  EXPECT_EQ(keys, std::vector<int32_t>{45});
  Show(BoxIcon::kInformation, u"text", [&] {
    // Long enough for the key to be repeated.
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    EXPECT_TRUE(open_);
    display->Do({"keyup", "x"});
  });
}

TEST_F(MessageBoxTest, ShiftThatIsHeldBeforeThereIsAWindowDoesNotCloseItEither) {
  display->Do({"keydown", "Shift_L"});
  Show(BoxIcon::kInformation, u"text", [&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_TRUE(open_);
    display->Do({"keyup", "Shift_L"});
  });
}

TEST_F(MessageBoxTest, ItsButtonClosesItAndNoOtherPlace) {
  Show(BoxIcon::kInformation, u"text", [&] {
    // The button's gold frame reaches furthest to the right and down.
    const Rect gold = Around(*screen_, kGold);
    const std::string x = std::to_string(gold.right - 50);
    display->Do({"mousemove", x, std::to_string(gold.bottom - 45), "click", "1"});
    display->Do({"mousemove", x, std::to_string(gold.bottom - 15), "click", "3"});
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    EXPECT_TRUE(open_);
    display->Do({"click", "1"});
    EXPECT_TRUE(Closes());
  });
}

TEST_F(MessageBoxTest, ItsButtonLightsUpUnderThePointer) {
  Show(BoxIcon::kInformation, u"text", [&] {
    const Rect gold = Around(*screen_, kGold);
    const int32_t x = gold.right - 10;
    const int32_t y = gold.bottom - 10;
    EXPECT_NE(screen_->Pixel(x, y), kGold);
    display->Do({"mousemove", std::to_string(x), std::to_string(y)});
    EXPECT_TRUE(PixelBecomes(x, y, kGold, true));
    display->Do({"mousemove", "0", "0"});
    EXPECT_TRUE(PixelBecomes(x, y, kGold, false));
  });
}

TEST_F(MessageBoxTest, ItsCloseButtonClosesItAndNotTheProgram) {
  Show(BoxIcon::kInformation, u"text", [&] {
    EXPECT_TRUE(display->PressCloseButton());
    EXPECT_TRUE(Closes());
  });
  PumpAll();
  EXPECT_EQ(closeRequests, 0);
}

TEST_F(MessageBoxTest, EndOfTheProgramClosesItAndIsToldWithTheNextPump) {
  Show(BoxIcon::kInformation, u"text", [&] {
    std::raise(SIGTERM);
    EXPECT_TRUE(Closes());
  });
  PumpAll();
  EXPECT_EQ(closeRequests, 1);
}

TEST_F(MessageBoxTest, EachKindHasItsPicture) {
  const auto width = [&](BoxIcon icon, Colour colour) {
    Show(icon, u"text");
    return Around(*screen_, colour).Width();
  };
  EXPECT_GT(width(BoxIcon::kInformation, kTeal), 30);
  EXPECT_EQ(Around(*screen_, kWax), Rect{});
  EXPECT_GT(width(BoxIcon::kCritical, kWax), 30);
  EXPECT_EQ(Around(*screen_, kTeal), Rect{});
  // Gold begins at the left, where its triangle stands, and ends with the button.
  EXPECT_GT(width(BoxIcon::kWarning, kGold), Around(*screen_, kEdge).Width() - 60);
  EXPECT_EQ(Around(*screen_, kWax), Rect{});
}

TEST_F(MessageBoxTest, StandsBeforeTheGameWindowAndKeepsItsKeysFromIt) {
  for (const bool windowed : {true, false}) {
    std::string why;
    ASSERT_TRUE(OpenGameWindow({.title = u"game", .windowed = windowed}, why)) << why;
    Surface frame(640, 480);
    frame.Fill(frame.Bounds(), 0x123456);
    ShowFrame(frame, false);
    PumpAll();
    keys.clear();
    Show(BoxIcon::kWarning, kMissingFolder);
    EXPECT_NE(PlaceOfLine(*screen_, u"同梱されているmake.batを実行してください。"), Rect{});
    EXPECT_EQ(screen_->Pixel(5, 5), 0x123456U) << "the frame is still seen around it";
    PumpAll();
    EXPECT_TRUE(keys.empty());
    EXPECT_EQ(active, 1);
    // The keyboard is the game's again.
    display->Do({"key", "z"});
    PumpAll();
    EXPECT_EQ(keys, (std::vector<int32_t>{44, -44}));
    CloseGameWindow();
  }
}

}  // namespace
}  // namespace platform
