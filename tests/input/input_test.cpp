// From devices to key numbers that go down and up.
#include "input/input.h"

#include <memory>
#include <vector>

#include "base/hooks.h"
#include "graphics/present.h"
#include "platform/joysticks.h"
#include "state/keys.h"
#include "state/session.h"
#include "state/settings.h"
#include "tests/graphics/picture_files.h"
#include "tests/support/virtual_keyboard.h"
#include "tests/support/virtual_stick.h"

namespace qlm {
namespace {

// What the game was told, as in "+44 -44", with a "?" where KeyHeld did not show it yet.
std::string told;

void Tell(char way, int32_t key) {
  if (!told.empty()) told += ' ';
  told += way + std::to_string(key);
  if (KeyHeld[key] != (way == '+')) told += '?';
}

std::string TakeTold() { return std::exchange(told, {}); }

class InputTest : public DisplayTest {
 protected:
  InputTest() {
    told.clear();
    hooks.keyDown = [](int32_t key) { Tell('+', key); };
    hooks.keyUp = [](int32_t key) { Tell('-', key); };
  }
};

TEST_F(InputTest, AKeyIsHeldBeforeTheGameHears) {
  DispatchKey(44, true);
  EXPECT_EQ(TakeTold(), "+44");
  DispatchKey(44, false);
  EXPECT_EQ(TakeTold(), "-44");
}

TEST_F(InputTest, WhatIsNoChangeIsNotHandedOver) {
  DispatchKey(44, false);
  EXPECT_EQ(TakeTold(), "");
  DispatchKey(44, true);
  DispatchKey(44, true);
  EXPECT_EQ(TakeTold(), "+44");
}

TEST_F(InputTest, NumbersOutsideTheTableAreNoKeys) {
  DispatchKey(-1, true);
  DispatchKey(401, true);
  DispatchKey(400, true);
  EXPECT_EQ(TakeTold(), "+400");
}

TEST_F(InputTest, WithoutAGameTheTableIsKeptAllTheSame) {
  hooks.keyDown = hooks.keyUp = nullptr;
  DispatchKey(44, true);
  EXPECT_TRUE(KeyHeld[44]);
  DispatchKey(44, false);
  EXPECT_FALSE(KeyHeld[44]);
}

TEST_F(InputTest, LosingTheKeyboardLetsItsKeysGoAndNotThoseOfControllers) {
  for (const int32_t key : {255, 1, 256, 44}) DispatchKey(key, true);
  TakeTold();
  ReleaseKeyboard();
  EXPECT_EQ(TakeTold(), "-1 -44 -255");
  EXPECT_TRUE(KeyHeld[256]);
}

TEST_F(InputTest, TheKeyboardHasItsPlaceInTheLog) {
  InitDI_Keyboard();
  EXPECT_EQ(log, (std::vector<Text>{u"[InitDI_Keyboard]", u"DirectInput [Keyboard] Initialized"}));
}

// Places of keys.
constexpr int32_t kPlaceX = 27;
constexpr int32_t kPlaceZ = 29;

class KeyboardTest : public InputTest {
 protected:
  // What one pump hands over.
  static std::string Pump() {
    DoEvents();
    return TakeTold();
  }

  VirtualKeyboard keyboard_;
};

TEST_F(KeyboardTest, RepeatsOfTheSystemAreNoPresses) {
  keyboard_.Key(kPlaceZ, true);
  EXPECT_EQ(Pump(), "+44");
  keyboard_.Repeat(kPlaceZ);
  keyboard_.Repeat(kPlaceX);
  EXPECT_EQ(Pump(), "");
  EXPECT_FALSE(KeyHeld[45]);
  keyboard_.Key(kPlaceZ, false);
  EXPECT_EQ(Pump(), "-44");
}

TEST_F(KeyboardTest, EventsOfOneTurnKeepTheirOrder) {
  keyboard_.Key(kPlaceX, true);
  keyboard_.Key(kPlaceZ, true);
  keyboard_.Key(kPlaceX, false);
  keyboard_.Key(kPlaceX, true);
  EXPECT_EQ(Pump(), "+45 +44 -45 +45");
}

TEST_F(KeyboardTest, AKeyWithoutANumberIsNone) {
  for (const int32_t usage : {0, 3, 255, 256, 511}) keyboard_.Key(usage, true);
  EXPECT_EQ(Pump(), "");
}

TEST_F(KeyboardTest, KeysAreServedBetweenDrawingAndFlip) {
  hooks.framePresented = [] { told += " flip"; };
  keyboard_.Key(kPlaceZ, true);
  PresentFrame();
  EXPECT_EQ(TakeTold(), "+44 flip");
}

TEST_F(KeyboardTest, WithTheFocusTheWindowLosesItsKeys) {
  keyboard_.Key(kPlaceZ, true);
  keyboard_.Key(kPlaceX, true);
  EXPECT_EQ(Pump(), "+44 +45");
  keyboard_.Focus(false);
  EXPECT_EQ(Pump(), "-44 -45");
  EXPECT_FALSE(WindowActive);
  keyboard_.Key(kPlaceZ, false);  // the system tells of it too
  EXPECT_EQ(Pump(), "");
  keyboard_.Focus(true);
  EXPECT_EQ(Pump(), "");
  EXPECT_TRUE(WindowActive);
  keyboard_.Key(kPlaceZ, true);
  EXPECT_EQ(Pump(), "+44");
}

TEST_F(KeyboardTest, KeysOfAnInactiveWindowAreHeldAllTheSame) {
  keyboard_.Focus(false);
  keyboard_.Key(kPlaceZ, true);
  EXPECT_EQ(Pump(), "+44");
  EXPECT_TRUE(KeyHeld[44]);
}

class SticksTest : public InputTest {
 protected:
  SticksTest() { InitDI_Joystick(); }
  void SetUp() override {
    if (JoyCount > 0) GTEST_SKIP() << "there are controllers plugged into this machine";
  }
  ~SticksTest() override { ReleaseDI(); }

  // What one poll hands over.
  static std::string Poll() {
    ReadJoysticks();
    return TakeTold();
  }
};

TEST_F(SticksTest, WithoutAControllerNothingIsSaid) {
  EXPECT_EQ(log, std::vector<Text>{});
  EXPECT_EQ(JoyCount, 0);
  EXPECT_EQ(Poll(), "");
}

TEST_F(SticksTest, ControllersAreCountedAsTheyComeAndGo) {
  auto stick = std::make_unique<VirtualStick>();
  Poll();
  EXPECT_EQ(JoyCount, 1);
  InitDI_Joystick();
  stick.reset();
  Poll();
  EXPECT_EQ(JoyCount, 0);
}

TEST_F(SticksTest, AStickAtOneHundredIsCentredAndAtOneHundredAndOnePressed) {
  JoyXYEnable = true;
  VirtualStick stick;
  // 330 * 10000 / 32767 = 100.7, cut to 100; 331 gives 101.02.
  for (const int32_t away : {330, -330}) {
    stick.Axis(0, away);
    stick.Axis(1, away);
    EXPECT_EQ(Poll(), "") << away;
  }
  stick.Axis(0, 331);
  EXPECT_EQ(Poll(), "+257");
  stick.Axis(0, -331);
  EXPECT_EQ(Poll(), "+256 -257");
  stick.Axis(0, 0);
  EXPECT_EQ(Poll(), "-256");
  stick.Axis(1, -331);
  EXPECT_EQ(Poll(), "+258");
  stick.Axis(1, 331);
  EXPECT_EQ(Poll(), "-258 +259");
}

TEST_F(SticksTest, AxesAreNoButtonsUnlessThePlayerWantsIt) {
  VirtualStick stick;
  stick.Axis(0, 32767);
  EXPECT_EQ(Poll(), "");
  JoyXYEnable = true;
  EXPECT_EQ(Poll(), "+257");
  JoyXYEnable = false;
  EXPECT_EQ(Poll(), "-257");
}

TEST_F(SticksTest, HatsAlwaysAreButtons) {
  VirtualStick stick;
  stick.Hat(true, false, true, false);
  EXPECT_EQ(Poll(), "+256 +258");
  stick.Hat(false, true, false, true);
  EXPECT_EQ(Poll(), "-256 +257 -258 +259");
}

TEST_F(SticksTest, AHatAndAStickThatPressOneInputAreOnePress) {
  JoyXYEnable = true;
  VirtualStick stick;
  stick.Axis(0, -32768);
  EXPECT_EQ(Poll(), "+256");
  stick.Hat(true, false, false, false);
  EXPECT_EQ(Poll(), "");
  stick.Axis(0, 0);
  EXPECT_EQ(Poll(), "");
  stick.Hat(false, false, false, false);
  EXPECT_EQ(Poll(), "-256");
}

TEST_F(SticksTest, ChangesComeInAscendingOrder) {
  VirtualStick first;
  VirtualStick second;
  second.Button(0, true);
  first.Button(31, true);
  first.Button(0, true);
  EXPECT_EQ(Poll(), "+260 +291 +300");
  EXPECT_EQ(Poll(), "");
  first.Button(31, false);
  second.Button(1, true);
  EXPECT_EQ(Poll(), "-291 +301");
}

TEST_F(SticksTest, InputsPastTheSixtyFourFlagsAreLost) {
  VirtualStick first;
  VirtualStick second;
  VirtualStick third;
  third.Button(0, true);
  third.Hat(true, false, false, false);
  EXPECT_EQ(Poll(), "");
  second.Button(20, true);  // flag 64
  EXPECT_EQ(Poll(), "");
  second.Button(19, true);  // flag 63
  EXPECT_EQ(Poll(), "+319");
}

TEST_F(SticksTest, AStickThatGoesAwayLetsItsInputsGo) {
  auto first = std::make_unique<VirtualStick>();
  VirtualStick second;
  first->Button(0, true);
  first->Button(3, true);
  second.Button(0, true);
  EXPECT_EQ(Poll(), "+260 +263 +300");
  first.reset();
  EXPECT_EQ(Poll(), "-260 -263");
  VirtualStick third;
  third.Button(1, true);
  EXPECT_EQ(Poll(), "+261") << "a new one takes the lowest free number";
}

TEST_F(SticksTest, TwelveOfThemAreElevenAndTwoAreHeard) {
  std::vector<std::unique_ptr<VirtualStick>> sticks;
  for (int i = 0; i < 12; ++i) sticks.push_back(std::make_unique<VirtualStick>(2, 200, 1));
  for (const auto& stick : sticks) {
    for (int32_t button = 0; button < 200; ++button) stick->Button(button, true);
  }
  ReadJoysticks();
  EXPECT_EQ(JoyCount, 11);
  std::string expected;
  // 32 buttons of the first, and of the second what the 64 flags leave.
  for (int32_t key = 260; key <= 319; ++key) {
    if (key <= 291 || key >= 300) expected += (expected.empty() ? "+" : " +") + std::to_string(key);
  }
  EXPECT_EQ(TakeTold(), expected);
}

TEST_F(SticksTest, OneWithoutAxesAndButtonsIsSilent) {
  JoyXYEnable = true;
  const VirtualStick stick(0, 0, 0);
  EXPECT_EQ(Poll(), "");
  EXPECT_EQ(JoyCount, 1);
}

TEST_F(SticksTest, ThePresentStepPollsBehindTheFlip) {
  VirtualStick stick;
  stick.Button(0, true);
  hooks.framePresented = [] { told += "flip"; };
  PresentFrame();
  EXPECT_EQ(TakeTold(), "flip +260");
}

TEST_F(SticksTest, AnInputThatAToolHoldsIsNotLetGoByThePoll) {
  DispatchKey(260, true);
  TakeTold();
  EXPECT_EQ(Poll(), "");
  EXPECT_TRUE(KeyHeld[260]);
}

TEST_F(SticksTest, ReleaseForgetsThem) {
  VirtualStick stick;
  stick.Button(0, true);
  Poll();
  ReleaseDI();
  EXPECT_EQ(JoyCount, 0);
  EXPECT_FALSE(JoyStateBits[4]);
  std::string why;
  ASSERT_TRUE(platform::OpenJoysticks(why)) << why;
}

}  // namespace
}  // namespace qlm
