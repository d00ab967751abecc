// The end of a frame: its steps in their order.
#include "graphics/present.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "base/hooks.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "graphics/display.h"
#include "graphics/flip_wait.h"
#include "platform/clock.h"
#include "platform/timers.h"
#include "platform/window.h"
#include "state/message.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "tests/graphics/picture_files.h"
#include "tests/support/virtual_desktop.h"
#include "tests/support/virtual_keyboard.h"

namespace qlm {
namespace {

std::vector<Text> steps;
Text shownRow;  // what stands on the row that a test looks at
int32_t rowLooked = 465;

// The text whose cells begin at the left edge, one pixel a character, of the presented frame.
Text ReadRow(int32_t y) {
  Text text;
  for (const Colour colour : DDBack->Row(y)) text += static_cast<char16_t>(colour & 0xFF);
  return text;
}

// A font sheet whose cell of byte b is one pixel of colour 0x1000 + b.
class Present : public DisplayTest {
 protected:
  Present() {
    SkinFile[1] = std::make_shared<Surface>(96, 1);
    for (int32_t byte = 33; byte <= 126; ++byte) {
      SysFont[byte - 32] = {byte - 33, 0, byte - 32, 1};
      SkinFile[1]->Fill(SysFont[byte - 32], static_cast<Colour>(0x1000 + byte));
    }
    SysFontW = SysFontH = 1;
    steps.clear();
    shownRow.clear();
    rowLooked = 465;
    hooks.framePresented = [] { shownRow = ReadRow(rowLooked); };
  }
  // What stood from x on, without what is black there and behind.
  static Text Shown(int32_t x) { return Text(TextView(shownRow).substr(static_cast<size_t>(x), 60)).c_str(); }
  // The same to the end of the row, with its blanks, which draw nothing.
  static Text Line(int32_t x) {
    Text line = shownRow.substr(static_cast<size_t>(x));
    line.erase(line.find_last_not_of(u'\0') + 1);
    std::replace(line.begin(), line.end(), u'\0', u' ');
    return line;
  }
};

TEST_F(Present, AMessageStandsAtTheBottomOfTheLists) {
  ShowMessage(u"hello");
  PresentFrame();
  EXPECT_EQ(Shown(0), u"hello");
}

// The stock skins' letters are 16 high: one row of them lies below the screen.
TEST_F(Present, AMessageWhoseLettersReachBelowTheScreenIsCut) {
  SkinFile[1] = Solid(8, 16, 0x1000 + 'h');
  SysFont['h' - 32] = {0, 0, 8, 16};
  ShowMessage(u"h");
  PresentFrame();
  EXPECT_EQ(Shown(0), u"hhhhhhhh");
}

TEST_F(Present, AMessageStandsThereInEveryStateButThePlay) {
  for (int32_t state = 0; state <= 12; ++state) {
    GameState = state;
    ShowMessage(u"hello");
    PresentFrame();
    EXPECT_EQ(Shown(0), state == kStatePlay ? u"" : u"hello") << state;
  }
}

TEST_F(Present, AMessageOfThePlayStandsInTheMiddleOrWhereTheSkinWantsIt) {
  GameState = kStatePlay;
  ShowMessage(u"hello");
  rowLooked = 385;
  PresentFrame();
  EXPECT_EQ(Shown(220), u"hello");
  MessageRect = {30, 40, 0, 0};
  rowLooked = 40;
  PresentFrame();
  EXPECT_EQ(Shown(30), u"hello");
  rowLooked = 385;
  PresentFrame();
  EXPECT_EQ(Shown(220), u"");
}

TEST_F(Present, QuietLeavesOutMessageAndFrameRate) {
  ShowMessage(u"hello");
  PresentFrame(false, true);
  EXPECT_EQ(Shown(0), u"");
  rowLooked = 478;
  PresentFrame(false, true);
  EXPECT_EQ(Shown(310), u"");
  platform::UseVirtualClock(1'009'000);
  PresentFrame(false, true);
  EXPECT_EQ(message.text, u"hello");
}

TEST_F(Present, AMessageStandsWholeForASecondAndATenth) {
  ShowMessage(u"0123456789");
  for (const uint32_t ms : {0U, 999U, 1000U, 1199U}) {
    platform::UseVirtualClock(1'000'000 + ms);
    PresentFrame();
    EXPECT_EQ(message.text, u"0123456789") << ms;
  }
}

TEST_F(Present, ThenItLosesItsHeadFasterAndFaster) {
  ShowMessage(u"0123456789");
  platform::UseVirtualClock(1'001'200);  // from character 2 on
  PresentFrame();
  EXPECT_EQ(Shown(0), u"0123456789");  // this frame still showed it whole
  EXPECT_EQ(message.text, u"123456789");
  PresentFrame();
  EXPECT_EQ(message.text, u"23456789");
  platform::UseVirtualClock(1'001'499);  // from character 4 on
  PresentFrame();
  EXPECT_EQ(message.text, u"56789");
  platform::UseVirtualClock(1'002'000);  // from character 10 on
  EXPECT_TRUE(message.up);
  PresentFrame();
  EXPECT_EQ(message.text, u"");
  EXPECT_FALSE(message.up);
}

TEST_F(Present, ThirtyCharactersVanishWellBeforeThreeSecondsAreOver) {
  platform::SetFrameClock([](uint32_t now) { return now + 17; });
  ShowMessage(Text(30, u'x'));
  while (message.up) PresentFrame();
  EXPECT_LT(platform::Elapsed(platform::Now(), message.time), 1600);
}

TEST_F(Present, TheFrameRateStandsOneFontHeightAboveTheLastRow) {
  Fps = 59.94;
  rowLooked = 478;
  PresentFrame();
  EXPECT_EQ(Shown(310), u"FPS:59.9");
}

TEST_F(Present, TheFrameRateIsTakenEvery200Ms) {
  FpsTime = 1'000'000;
  for (int32_t i = 0; i < 3; ++i) PresentFrame();
  EXPECT_EQ(Fps, 0);
  platform::UseVirtualClock(1'000'199);
  PresentFrame();
  EXPECT_EQ(Fps, 0);
  platform::UseVirtualClock(1'000'250);
  PresentFrame();
  EXPECT_EQ(Fps, 20);  // 5 frames in 250 ms
  EXPECT_EQ(FrameCount, 0);
  EXPECT_EQ(FpsTime, 1'000'250U);
}

// Surfaces beside the others, so that 8 MiB of picture memory are held.
std::array<SurfacePtr, 2> FillEightMebibytes() {
  const int64_t pixels = ((int64_t{8} << 20) - static_cast<int64_t>(Surface::BytesHeld())) / 4;
  return {Solid(1000, static_cast<int32_t>(pixels / 1000), 0),
          Solid(static_cast<int32_t>(pixels % 1000), 1, 0)};
}

TEST_F(Present, PictureMemoryIsShownAsFreeAndTotalKib) {
  Debug = true;
  const auto held = FillEightMebibytes();
  ASSERT_EQ(Surface::BytesHeld(), size_t{8} << 20);
  rowLooked = 400;
  videoMemoryTotal = (int64_t{8} << 20) + 1536;
  PresentFrame(false, true);
  EXPECT_EQ(Line(320), u"VRAM: 1.5 / 8193.5");
  videoMemoryTotal = (int64_t{8} << 20) + 410;  // 0.4004 KiB, with no 0 in front
  PresentFrame(false, true);
  EXPECT_EQ(Line(320), u"VRAM: .4 / 8192.4");
  videoMemoryTotal = 1024;  // less than is held
  PresentFrame(false, true);
  EXPECT_EQ(Line(320), u"VRAM: .0 / 1.0");
}

TEST_F(Present, MemoryOfTheMachineIsShownAsFreeAndTotalKib) {
  Debug = true;
  rowLooked = 410;
  PresentFrame(false, true);
  const std::vector<Text> parts = Split(Line(320), u" / ");
  ASSERT_EQ(parts.size(), 2U);
  EXPECT_TRUE(parts[0].starts_with(u" MEM: ")) << Utf8(parts[0]);
  // What is free changes at any moment; the total stands.
  EXPECT_EQ(parts[1], Split(MemoryStatus(), u" / ")[1]);
  for (const TextView number : {TextView(parts[0]).substr(6), TextView(parts[1])}) {
    EXPECT_GT(Val(number), 0) << Utf8(number);
    EXPECT_EQ(number.find(u'.'), number.size() - 2) << Utf8(number);
  }
}

TEST_F(Present, SoundingVoicesAreShown) {
  Debug = true;
  VoiceCount = 12;
  rowLooked = 430;
  PresentFrame(false, true);
  EXPECT_EQ(Line(320), u" POL: 12");
}

TEST_F(Present, MemoryAndVoicesAreShownForDebuggingAlone) {
  VoiceCount = 12;
  for (const int32_t row : {400, 410, 430}) {
    rowLooked = row;
    PresentFrame(false, true);
    EXPECT_EQ(Line(320), u"") << row;
  }
}

TEST_F(Present, StepsComeInTheirOrder) {
  platform::SetFrameClock([](uint32_t now) {
    steps.push_back(u"refresh");
    return now + 10;
  });
  hooks.pumped = [] { steps.push_back(u"pump"); };
  hooks.framePresented = [] { steps.push_back(u"show"); };
  platform::SetTimer(platform::kTimerPlay, 1, [] { steps.push_back(u"timer"); });
  PresentFrame();
  PresentFrame();
  EXPECT_EQ(steps, (std::vector<Text>{u"pump", u"show", u"refresh", u"pump", u"timer", u"show", u"refresh"}));
}

TEST_F(Present, TheNextFrameIsBlackAndTheClipRectangleWhole) {
  DDBack->Fill(kScreen, 0x123456);
  ScreenRect = {10, 10, 20, 20};
  PresentFrame();
  EXPECT_TRUE(Shows(DDBack, {}, 0, 0));
  EXPECT_EQ(ScreenRect, kScreen);
}

TEST_F(Present, EachFrameRestsAsTheSettingAsks) {
  PresentFrame();
  EXPECT_EQ(platform::VirtualRest(), 0);
  Sleep = 15;
  PresentFrame();
  PresentFrame(true, true);
  EXPECT_EQ(platform::VirtualRest(), 30);
}

TEST_F(Present, NoFrameRestsForMoreThanATenthOfASecond) {
  for (const int32_t setting : {100, 101, 2147483647}) {
    platform::UseVirtualClock(1'000'000);
    Sleep = setting;
    PresentFrame();
    EXPECT_EQ(platform::VirtualRest(), 100);
    EXPECT_EQ(Sleep, setting);
  }
}

TEST_F(Present, ARestBelowNothingIsNone) {
  Sleep = -5;
  PresentFrame();
  EXPECT_EQ(platform::VirtualRest(), 0);
}

TEST_F(Present, GoesOnWithoutSurfaces) {
  hooks.framePresented = nullptr;
  hooks.pumped = [] { steps.push_back(u"pump"); };
  DDBack.reset();
  ShowMessage(u"hello");
  PresentFrame();
  EXPECT_EQ(steps, std::vector<Text>{u"pump"});
  EXPECT_EQ(DDBack, nullptr);
  EXPECT_TRUE(message.up);
}

TEST_F(Present, AFrameThatNobodySeesRestsInsteadOfWaitingForTheBlank) {
  platform::UseRealClock();
  const uint32_t begin = platform::Now();
  for (int32_t i = 0; i < 4; ++i) PresentFrame();
  // Three sixtieths of a second at least lie between four of them.
  EXPECT_GE(platform::Elapsed(platform::Now(), begin), 49);
}

int64_t restedAtPump = 0;
int64_t restedAtShow = 0;

TEST_F(Present, TheRestLiesBetweenThePumpAndTheShow) {
  hooks.pumped = [] { restedAtPump = platform::VirtualRest(); };
  hooks.framePresented = [] { restedAtShow = platform::VirtualRest(); };
  Sleep = 15;
  PresentFrame();
  EXPECT_EQ(restedAtPump, 0);
  EXPECT_EQ(restedAtShow, 15);
}

// What a key does to the order of a frame's steps when it comes behind the pump, while the frame waits.
class WaitingFrame : public Present {
 protected:
  WaitingFrame() {
    hooks.pumped = [] {
      steps.push_back(u"pump");
      if (pressed) VirtualKeyboard::Key(kUsageA, true);
      pressed = false;
    };
    hooks.keyDown = [](int32_t key) { steps.push_back(Join(u"key ", key)); };
    hooks.framePresented = [] { steps.push_back(u"show"); };
    platform::SetTimer(platform::kTimerPlay, 0, [] { steps.push_back(u"timer"); });
    pressed = true;
  }
  static constexpr int32_t kUsageA = 4;  // the key with number 30
  static inline bool pressed;
  VirtualKeyboard keyboard;
};

TEST_F(WaitingFrame, LeavesItsKeysToTheNextPump) {
  PresentFrame();
  PresentFrame();
  EXPECT_EQ(steps, (std::vector<Text>{u"pump", u"timer", u"show", u"key 30", u"pump", u"timer", u"show"}));
}

// Everything else comes as often as it did, at its place.
TEST_F(WaitingFrame, ServesItsKeysAtOnceWhereThePlayerWantsIt) {
  KeysAtOnce = true;
  PresentFrame();
  PresentFrame();
  EXPECT_EQ(steps, (std::vector<Text>{u"pump", u"timer", u"key 30", u"show", u"pump", u"timer", u"show"}));
}

TEST_F(WaitingFrame, ThatDoesNotWaitServesTheKeysThatHaveComeByThen) {
  KeysAtOnce = NOVSync = true;
  PresentFrame();
  PresentFrame(true);
  EXPECT_EQ(steps, (std::vector<Text>{u"pump", u"timer", u"key 30", u"show", u"pump", u"timer", u"show"}));
}

// On the real clock: a frame that nobody sees comes sixty times a second, and its wait is ours.
TEST_F(WaitingFrame, WaitsAsLongAsItDidBefore) {
  platform::UseRealClock();
  KeysAtOnce = true;
  PresentFrame();
  const uint32_t begin = platform::Now();
  for (int32_t i = 0; i < 4; ++i) PresentFrame();
  EXPECT_GE(platform::Elapsed(platform::Now(), begin), 49);
}

// Of its sixtieth of a second a frame waits all but 2 ms; the longest wait of ten, for a busy machine.
TEST_F(WaitingFrame, ServesAKeyLongBeforeItsFlip) {
  platform::UseRealClock();
  KeysAtOnce = true;
  static int64_t served;
  static int64_t longest;
  longest = 0;
  hooks.keyDown = [](int32_t) { served = platform::Microseconds(); };
  hooks.framePresented = [] { longest = std::max(longest, platform::Microseconds() - served); };
  for (int32_t i = 0; i < 10; ++i) {
    served = platform::Microseconds();
    pressed = true;
    PresentFrame();
    VirtualKeyboard::Key(kUsageA, false);
  }
  EXPECT_GT(longest, 5000);
}

TEST_F(WaitingFrame, RestsNoLessThanTheSettingAsks) {
  platform::UseRealClock();
  KeysAtOnce = NOVSync = true;
  Sleep = 15;
  const uint32_t begin = platform::Now();
  PresentFrame();
  EXPECT_GE(platform::Elapsed(platform::Now(), begin), 14);
}

// At 60 frames a second the screen takes one every 16,667 microseconds; half as much again is late.
TEST(FlipMarginTest, GrowsWithALateFrameAndWearsOffSlowly) {
  EXPECT_EQ(NextFlipMargin(2000, 25'001, 16'667), 3000);
  EXPECT_EQ(NextFlipMargin(3000, 25'000, 16'667), 2999);
  EXPECT_EQ(NextFlipMargin(0, 16'667, 16'667), 2000) << "never less";
  EXPECT_EQ(NextFlipMargin(2000, 16'667, 16'667), 2000);
  EXPECT_EQ(NextFlipMargin(16'500, 40'000, 16'667), 16'667) << "never more: that is no wait";
  EXPECT_EQ(NextFlipMargin(0, 1000, 1000), 1000) << "a screen faster than the least margin";
}

// With a window that nobody looks at.
class PresentInAWindow : public Present {
 protected:
  void Open(bool windowed, bool direct) {
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    Windowed = windowed;
    DirectBlt = direct;
    InitDD();
    ASSERT_TRUE(platform::WindowOpen());
  }
};

TEST_F(PresentInAWindow, FullScreenIsSeenWithBothWaysOfShowing) {
  Open(false, false);
  PresentFrame();
  EXPECT_EQ(platform::WindowFrames(), 1);
  DirectBlt = true;
  PresentFrame(true);
  EXPECT_EQ(platform::WindowFrames(), 2);
}

TEST_F(PresentInAWindow, AWindowNeedsDirectBlt) {
  Open(true, true);
  PresentFrame();
  EXPECT_EQ(platform::WindowFrames(), 1);
}

TEST_F(PresentInAWindow, AWindowWithoutDirectBltStaysUnseen) {
  Open(true, false);
  PresentFrame();
  EXPECT_EQ(platform::WindowFrames(), 0);
}

TEST_F(PresentInAWindow, CaptionIsTheTitleOfAWindowAndNotOfFullScreen) {
  Open(true, true);
  EXPECT_EQ(WindowTitle(), "quillmarch");
  SetCaption(u"[行進曲] 羽ペンの行進");
  EXPECT_EQ(WindowTitle(), "[行進曲] 羽ペンの行進");
  Open(false, false);
  SetCaption(u"[行進曲] 羽ペンの行進");
  EXPECT_EQ(WindowTitle(), "quillmarch");
}

}  // namespace
}  // namespace qlm
