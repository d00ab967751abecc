// Controllers: their numbers as they come and go, and their values.
#include "platform/joysticks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

#include "tests/support/virtual_stick.h"

namespace platform {
namespace {

using qlm::VirtualStick;

TEST(ClosedJoysticks, HaveNothingToTell) {
  EXPECT_EQ(PollJoysticks(), 0);
  EXPECT_FALSE(ReadJoystick(0));
  CloseJoysticks();
}

class Joysticks : public testing::Test {
 protected:
  Joysticks() {
    std::string why;
    EXPECT_TRUE(OpenJoysticks(why)) << why;
    // The machine's own would take the first numbers.
    ownSticks_ = PollJoysticks();
  }
  void SetUp() override {
    if (ownSticks_ > 0) GTEST_SKIP() << "there are controllers plugged into this machine";
  }
  ~Joysticks() override { CloseJoysticks(); }

 private:
  int32_t ownSticks_ = 0;
};

TEST_F(Joysticks, AStickIsFoundWhenItIsPluggedIn) {
  EXPECT_EQ(PollJoysticks(), 0);
  const VirtualStick stick;
  EXPECT_EQ(PollJoysticks(), 1);
  EXPECT_TRUE(ReadJoystick(0));
  EXPECT_FALSE(ReadJoystick(1));
}

TEST_F(Joysticks, OneThatLeavesFreesItsNumberForTheNext) {
  auto first = std::make_unique<VirtualStick>();
  VirtualStick second;
  EXPECT_EQ(PollJoysticks(), 2);
  second.Button(0, true);
  first.reset();
  EXPECT_EQ(PollJoysticks(), 1);
  EXPECT_FALSE(ReadJoystick(0));
  ASSERT_TRUE(ReadJoystick(1)) << "the other keeps its number";
  EXPECT_TRUE(ReadJoystick(1)->buttons[0]);
  VirtualStick third;
  third.Button(1, true);
  EXPECT_EQ(PollJoysticks(), 2);
  ASSERT_TRUE(ReadJoystick(0));
  EXPECT_TRUE(ReadJoystick(0)->buttons[1]);
}

TEST_F(Joysticks, OneMayLeaveAndAnotherComeBetweenTwoPolls) {
  auto first = std::make_unique<VirtualStick>();
  EXPECT_EQ(PollJoysticks(), 1);
  first.reset();
  VirtualStick second;
  second.Button(2, true);
  EXPECT_EQ(PollJoysticks(), 1);
  ASSERT_TRUE(ReadJoystick(0));
  EXPECT_TRUE(ReadJoystick(0)->buttons[2]);
}

TEST_F(Joysticks, ThereAreElevenNumbers) {
  std::vector<std::unique_ptr<VirtualStick>> sticks;
  for (int i = 0; i < 12; ++i) sticks.push_back(std::make_unique<VirtualStick>());
  EXPECT_EQ(PollJoysticks(), 11);
  EXPECT_TRUE(ReadJoystick(10));
  EXPECT_FALSE(ReadJoystick(11));
  EXPECT_FALSE(ReadJoystick(-1));
  sticks.front().reset();
  EXPECT_EQ(PollJoysticks(), 11) << "the twelfth takes the number that has become free";
  sticks.clear();
  EXPECT_EQ(PollJoysticks(), 0);
}

TEST_F(Joysticks, AxesAreScaledToTenThousandAndTruncated) {
  VirtualStick stick;
  struct Case {
    int32_t device;
    int32_t value;
  };
  // 327 * 10000 / 32767 = 99.79; 331 * 10000 / 32767 = 101.02
  for (const auto& [device, value] :
       {Case{32767, 10000}, Case{-32767, -10000}, Case{-32768, -10000}, Case{16384, 5000}, Case{327, 99},
        Case{-327, -99}, Case{331, 101}, Case{-331, -101}, Case{3, 0}, Case{-3, 0}}) {
    stick.Axis(0, device);
    stick.Axis(1, device);
    PollJoysticks();
    EXPECT_EQ(ReadJoystick(0)->x, value) << device;
    EXPECT_EQ(ReadJoystick(0)->y, value) << device;
  }
}

TEST_F(Joysticks, AStickWithoutAxesStandsInItsMiddle) {
  const VirtualStick stick(0, 2, 0);
  PollJoysticks();
  const auto state = ReadJoystick(0);
  ASSERT_TRUE(state);
  EXPECT_EQ(state->x, 0);
  EXPECT_EQ(state->y, 0);
  EXPECT_FALSE(state->left || state->right || state->up || state->down);
  for (const bool button : state->buttons) EXPECT_FALSE(button);
}

TEST_F(Joysticks, HatsTellTheirSides) {
  VirtualStick stick;
  stick.Hat(true, false, true, false);
  PollJoysticks();
  EXPECT_TRUE(ReadJoystick(0)->left);
  EXPECT_TRUE(ReadJoystick(0)->up);
  EXPECT_FALSE(ReadJoystick(0)->right);
  EXPECT_FALSE(ReadJoystick(0)->down);
  stick.Hat(false, true, false, true);
  PollJoysticks();
  EXPECT_FALSE(ReadJoystick(0)->left);
  EXPECT_TRUE(ReadJoystick(0)->right);
  EXPECT_TRUE(ReadJoystick(0)->down);
}

TEST_F(Joysticks, ThirtyTwoButtonsAreSeen) {
  VirtualStick stick;
  stick.Button(31, true);
  stick.Button(32, true);
  PollJoysticks();
  const auto state = ReadJoystick(0);
  EXPECT_TRUE(state->buttons[31]);
  EXPECT_FALSE(state->buttons[30]);
  stick.Button(31, false);
  EXPECT_TRUE(ReadJoystick(0)->buttons[31]) << "until the next poll";
  PollJoysticks();
  EXPECT_FALSE(ReadJoystick(0)->buttons[31]);
}

TEST_F(Joysticks, OfTwoHundredButtonsTheFirstThirtyTwoAreSeen) {
  VirtualStick stick(2, 200, 1);
  for (int32_t button = 31; button < 200; ++button) stick.Button(button, true);
  PollJoysticks();
  const auto state = ReadJoystick(0);
  ASSERT_TRUE(state);
  EXPECT_EQ(std::count(state->buttons.begin(), state->buttons.end(), true), 1);
  EXPECT_TRUE(state->buttons[31]);
}

TEST_F(Joysticks, WhatAStickDoesNotHaveIsNotAskedFor) {
  VirtualStick stick(1, 2, 0);
  stick.Axis(0, 32767);
  stick.Button(1, true);
  PollJoysticks();
  VirtualStick::TakeComplaint();
  const auto state = ReadJoystick(0);
  ASSERT_TRUE(state);
  EXPECT_EQ(state->x, 10000);
  EXPECT_EQ(state->y, 0);
  EXPECT_TRUE(state->buttons[1]);
  EXPECT_EQ(VirtualStick::TakeComplaint(), "");
}

TEST_F(Joysticks, OpeningAgainStartsOver) {
  {
    const VirtualStick stick;
    EXPECT_EQ(PollJoysticks(), 1);
  }
  std::string why;
  EXPECT_TRUE(OpenJoysticks(why)) << why;
  EXPECT_EQ(PollJoysticks(), 0);
}

}  // namespace
}  // namespace platform
