// Tests of controllers on the list screens.
#include "screens/joystick_keys.h"

#include "screens/song_select_keys.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "tests/screens/list_ground.h"

namespace qlm {
namespace {

// Inputs 300 to 308 have the lanes 11 to 19, 310 to 318 those of the second side.
class JoystickKeys : public ListTest {
 protected:
  JoystickKeys() {
    for (int16_t lane = 11; lane <= 19; ++lane) {
      KeyMap[300 + lane - 11] = lane;
      KeyMap[310 + lane - 11] = static_cast<int16_t>(lane + 10);
    }
  }
};

TEST_F(JoystickKeys, StandForKeysOfTheKeyboard) {
  const int32_t plain[] = {28, 42, 28, 203, 28, 200, 208, 15, 28};
  const int32_t held[] = {59, 0, 60, 66, 61, 0, 0, 88, 62};
  for (const int32_t first : {300, 310}) {
    for (int32_t i = 0; i < 9; ++i) {
      SelectHeld = false;
      EXPECT_EQ(ssKeyCvt_Joy(first + i), plain[i]) << first + i;
      SelectHeld = true;
      EXPECT_EQ(ssKeyCvt_Joy(first + i), held[i]) << first + i;
    }
  }
}

TEST_F(JoystickKeys, InputWithoutALaneStaysAsItIs) {
  EXPECT_EQ(ssKeyCvt_Joy(350), 350);
  KeyMap[350] = 20;
  EXPECT_EQ(ssKeyCvt_Joy(350), 350);
  KeyMap[350] = 30;
  EXPECT_EQ(ssKeyCvt_Joy(350), 350);
  EXPECT_EQ(ssKeyCvt_Joy(500), 500);
}

TEST_F(JoystickKeys, HeldButtonLeadsToTheChoiceOfLanes) {
  GameState = kStateLists;
  SelectHeld = true;
  ProcessKey_SongSelect(301);
  EXPECT_EQ(GameState, kStateAutoLanes);
  EXPECT_EQ(LanesState, kStateLists);
}

TEST_F(JoystickKeys, HeldButtonStepsTheSpeedDown) {
  struct Step {
    float from;
    float to;
    bool random;
  };
  SelectHeld = true;
  for (const Step& step :
       {Step{3, 2.5F, false}, Step{2.25F, 1.75F, false}, Step{2, 1.75F, false}, Step{0.75F, 0.5F, false},
        Step{0.5F, 0, true}, Step{0.25F, 0, true}, Step{0, 0, false}, Step{-1, -1, false}}) {
    HiSpeed = step.from;
    ComboHiSpeed = true;
    RandomHiSpeed = false;
    EXPECT_EQ(ssKeyCvt_Joy(305), 0);
    EXPECT_EQ(HiSpeed, step.to);
    EXPECT_EQ(RandomHiSpeed, step.random) << step.from;
    EXPECT_FALSE(ComboHiSpeed);
  }
}

TEST_F(JoystickKeys, HeldButtonStepsTheSpeedUpAndARandomOneStaysRandom) {
  SelectHeld = true;
  for (const auto& [from, to] : {std::pair{0.0F, 0.25F}, {1.75F, 2.0F}, {2.0F, 2.5F}, {7.1F, 7.6F}}) {
    HiSpeed = from;
    ComboHiSpeed = RandomHiSpeed = true;
    EXPECT_EQ(ssKeyCvt_Joy(316), 0);
    EXPECT_EQ(HiSpeed, to);
    EXPECT_TRUE(RandomHiSpeed);
    EXPECT_FALSE(ComboHiSpeed);
  }
}

TEST_F(JoystickKeys, OtherInputsLeaveTheSpeedOfTheComboOn) {
  ComboHiSpeed = true;
  for (const bool held : {false, true}) {
    SelectHeld = held;
    for (const int32_t input : {300, 302, 303, 304, 307, 308}) ssKeyCvt_Joy(input);
  }
  EXPECT_TRUE(ComboHiSpeed);
}

TEST_F(JoystickKeys, HeldButtonAndLane14HandsThePlayToTheMachine) {
  ShowCharts({u"A"});
  SelectHeld = true;
  ProcessKey_SongSelect(303);
  EXPECT_TRUE(DEMOMode);
}

TEST_F(JoystickKeys, HeldDirectionStepsFasterAndFaster) {
  std::vector<Text> titles(40, u"A");
  ShowCharts(titles);
  SetNow(1'000'000);
  ProcessKey_SongSelect(306);
  EXPECT_EQ(listCursor, 1);
  // Held for t ms, the next step is due more than max(150000 \ t, 50) ms behind the last.
  const auto cursorAt = [&](uint32_t ms) {
    SetNow(1'000'000 + ms);
    RepeatJoystick();
    return listCursor;
  };
  EXPECT_EQ(cursorAt(200), 1);
  EXPECT_EQ(cursorAt(387), 1) << "150000 \\ 387 is 387";
  EXPECT_EQ(cursorAt(388), 2) << "150000 \\ 388 is 386";
  EXPECT_EQ(cursorAt(626), 2) << "238 behind the last, 150000 \\ 626 is 239";
  EXPECT_EQ(cursorAt(627), 2) << "239, and 239 is not more";
  EXPECT_EQ(cursorAt(628), 3) << "240, and 238";
  EXPECT_EQ(cursorAt(4000), 4);
  EXPECT_EQ(cursorAt(4050), 4) << "50 is the least";
  EXPECT_EQ(cursorAt(4051), 5);
  EndJoystickRepeat();
  EXPECT_EQ(cursorAt(9000), 5);
}

TEST_F(JoystickKeys, HeldLaneIsSeenAtAnyControllersInput) {
  EXPECT_FALSE(HoldsLaneCode(12));
  KeyHeld[301] = true;
  EXPECT_TRUE(HoldsLaneCode(12));
  KeyHeld[301] = false;
  KeyHeld[311] = true;
  EXPECT_FALSE(HoldsLaneCode(12)) << "the second side's has the code 22";
  // A key of the keyboard with that lane is none.
  KeyMap[31] = 12;
  KeyHeld[31] = true;
  EXPECT_FALSE(HoldsLaneCode(12));
}

}  // namespace
}  // namespace qlm
