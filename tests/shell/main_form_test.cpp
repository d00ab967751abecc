// Keys and the window's events.
#include "shell/main_form.h"

#include <algorithm>
#include <filesystem>
#include <memory>

#include "base/hooks.h"
#include "files/key_table.h"
#include "input/input.h"
#include "library/song_list.h"
#include "platform/clock.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/options.h"
#include "state/records.h"
#include "state/reset.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "state/surfaces.h"
#include "tests/support/game_test.h"
#include "tests/support/virtual_stick.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

bool closed = false;

class MainFormTest : public GameTest {
 protected:
  MainFormTest() {
    closed = false;
    hooks.closeRequested = [] { closed = true; };
  }
};

TEST_F(MainFormTest, EscInAPlayIsHeldFromThisMoment) {
  GameState = kStatePlay;
  ButtonDown(kKeyEsc);
  EXPECT_TRUE(EscHeld);
  EXPECT_EQ(EscStart, platform::Now());
  ButtonUp(kKeyEsc);
  EXPECT_FALSE(EscHeld);
  EXPECT_FALSE(closed);
}

TEST_F(MainFormTest, EscOutsideAPlayDoesNothing) {
  ButtonDown(kKeyEsc);
  EXPECT_FALSE(EscHeld);
}

TEST_F(MainFormTest, ReleasingEscReleasesLane16) {
  LaneDown[5] = LaneDown[0] = true;
  ButtonUp(kKeyEsc);
  EXPECT_FALSE(LaneDown[5]);
  EXPECT_TRUE(LaneDown[0]);
}

TEST_F(MainFormTest, OtherKeysLeaveEscHeld) {
  GameState = kStatePlay;
  ButtonDown(kKeyEsc);
  ButtonUp(44);
  EXPECT_TRUE(EscHeld);
}

TEST_F(MainFormTest, ShiftWithEscClosesFromAnyState) {
  for (const int32_t shift : {kKeyLeftShift, kKeyRightShift}) {
    for (const int32_t state : {kStateSongSelect, kStatePlay, kStateResults, kStateLists}) {
      closed = false;
      KeyHeld.Clear();
      KeyHeld.Put(shift, true);
      GameState = state;
      ButtonDown(kKeyEsc);
      EXPECT_TRUE(closed) << shift << " in state " << state;
      EXPECT_FALSE(EscHeld);
    }
  }
}

TEST_F(MainFormTest, InactiveWindowTakesNoKeys) {
  GameState = kStatePlay;
  WindowActive = false;
  KeyHeld.Put(kKeyLeftShift, true);
  ButtonDown(kKeyEsc);
  EXPECT_FALSE(EscHeld);
  EXPECT_FALSE(closed);
}

TEST_F(MainFormTest, AnInactiveWindowStillLetsKeysGo) {
  GameState = kStatePlay;
  KeyMap[44] = 11;
  ButtonDown(44);
  WindowActive = false;
  ButtonUp(44);
  EXPECT_FALSE(LaneDown[0]);
}

TEST_F(MainFormTest, HooksLeadToTheButtons) {
  ConnectHooks();
  GameState = kStatePlay;
  hooks.keyDown(kKeyEsc);
  EXPECT_TRUE(EscHeld);
  hooks.keyUp(kKeyEsc);
  EXPECT_FALSE(EscHeld);
}

TEST_F(MainFormTest, LanesArePressedAndLetGoInAPlay) {
  GameState = kStatePlay;
  SetDefaultKeyMap();
  ButtonDown(47);  // V
  EXPECT_TRUE(LaneDown[8]);
  EXPECT_EQ(LaneBeam[8], 1);
  ButtonUp(47);
  EXPECT_FALSE(LaneDown[8]);
  EXPECT_EQ(LaneBeam[8], 0);
}

TEST_F(MainFormTest, WhatIsLetGoBehindThePlayIsNotRecorded) {
  UserRec = true;
  KeyMap[44] = 11;
  KeyHeld[kKey4] = true;
  for (const int32_t state : {kStateSongSelect, kStatePlayOver, kStateResults}) {
    GameState = state;
    ButtonUp(44);
    ButtonDown(kKey2);
  }
  EXPECT_EQ(RecCount, 0);
  GameState = kStatePlay;
  ButtonUp(44);
  ButtonDown(kKey2);
  EXPECT_EQ(RecCount, 2);
}

TEST_F(MainFormTest, EitherWayOfATurntableLetsItsLaneGo) {
  GameState = kStatePlay;
  KeyMap[300] = 17;
  KeyMap[301] = 27;
  for (const int32_t key : {300, 301}) ButtonDown(key);
  EXPECT_TRUE(LaneDown[5]);
  EXPECT_TRUE(LaneDown[15]);
  for (const int32_t key : {300, 301}) ButtonUp(key);
  EXPECT_FALSE(LaneDown[5]);
  EXPECT_FALSE(LaneDown[15]);
}

TEST_F(MainFormTest, UnmappedAndImpossibleKeysDoNothing) {
  GameState = kStatePlay;
  for (const int32_t key : {44, 340, 400, 401, 30000, -1}) {
    ButtonDown(key);
    ButtonUp(key);
  }
  for (const bool down : LaneDown) EXPECT_FALSE(down);
  EXPECT_FALSE(message.up);
}

TEST_F(MainFormTest, MenuMeaningsStandForKeys) {
  // Each of the keys plays a lane here, which tells them apart.
  struct Case {
    int16_t code;
    int32_t key;
  };
  for (const auto& [code, key] :
       {Case{1, 1}, Case{2, 15}, Case{3, 28}, Case{4, 200}, Case{5, 208}, Case{6, 203}, Case{7, 208}}) {
    ResetState();
    GameState = kStatePlay;
    KeyMap[key] = 13;
    KeyMap[300] = code;
    ButtonDown(300);
    EXPECT_TRUE(LaneDown[2]) << code;
    EXPECT_EQ(EscHeld, code == 1);
  }
}

TEST_F(MainFormTest, TheMeaningRightGivesDownAndNeverRight) {
  GameState = kStatePlay;
  KeyMap[300] = 7;
  KeyMap[205] = 11;  // the key Right
  KeyMap[208] = 12;  // the key Down
  ButtonDown(300);
  EXPECT_FALSE(LaneDown[0]);
  EXPECT_TRUE(LaneDown[1]);
}

TEST_F(MainFormTest, AMeaningOfEscIsHeldAndLetGoLikeTheKey) {
  GameState = kStatePlay;
  KeyMap[260] = 1;
  ButtonDown(260);
  EXPECT_TRUE(EscHeld);
  LaneDown[5] = true;
  ButtonUp(260);
  EXPECT_FALSE(EscHeld);
  EXPECT_FALSE(LaneDown[5]);
}

TEST_F(MainFormTest, TheStarIsHeldWithTheClock) {
  KeyMap[262] = 8;
  platform::UseVirtualClock(1'000'123);
  ButtonDown(262);
  EXPECT_TRUE(SelectHeld);
  EXPECT_EQ(SelectStart, 1'000'123U);
  ButtonUp(262);
  EXPECT_FALSE(SelectHeld);
}

TEST_F(MainFormTest, ShiftWithAMeaningOfEscDoesNotClose) {
  GameState = kStatePlay;
  KeyMap[260] = 1;
  KeyHeld[kKeyLeftShift] = true;
  ButtonDown(260);
  EXPECT_FALSE(closed);
}

TEST_F(MainFormTest, ClosingByShiftAndEscInAPlayDoesNothingElse) {
  GameState = kStatePlay;
  PlayAlive = true;
  KeyHeld[kKeyRightShift] = true;
  ButtonDown(kKeyEsc);
  EXPECT_TRUE(closed);
  EXPECT_FALSE(EscHeld);
  EXPECT_FALSE(PlayEnd) << "no end of the play, and so no score, comes of it";
}

// The files of the data folder, by name.
std::string FilesOf(const std::string& folder) {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  std::string all;
  for (const std::string& name : names) all += name + " ";
  return all;
}

TEST_F(MainFormTest, ShiftAndEscInAPlayEndTheProgramAndSaveNoScore) {
  EXPECT_EXIT(
      {
        ConnectHooks();
        GameState = kStatePlay;
        PlayAlive = true;
        DispatchKey(kKeyLeftShift, true);
        DispatchKey(kKeyEsc, true);
      },
      testing::ExitedWithCode(0), "");
  EXPECT_EQ(FilesOf(SystemFolder() + "/_qlmfiles"), "debug.txt qlm_conf.ini qlm_keycnf.dat ");
}

TEST_F(MainFormTest, LosingTheKeyboardLetsItsLanesGo) {
  ConnectHooks();
  GameState = kStatePlay;
  KeyMap[44] = 11;
  KeyMap[45] = 13;
  for (const int32_t key : {44, 45, kKeyEsc}) DispatchKey(key, true);
  EXPECT_TRUE(LaneDown[0] && LaneDown[2] && EscHeld);
  WindowActive = false;
  ReleaseKeyboard();
  EXPECT_FALSE(LaneDown[0] || LaneDown[2] || EscHeld);
  EXPECT_EQ(LaneBeam[0], 0);
  DispatchKey(44, true);
  EXPECT_FALSE(LaneDown[0]) << "the window is not active";
  DispatchKey(44, false);
  WindowActive = true;
  DispatchKey(44, true);
  EXPECT_TRUE(LaneDown[0]);
}

TEST_F(MainFormTest, MenuMeaningInAPlayPressesTheLaneOfItsKeyAndDoesNotLetItGo) {
  ConnectHooks();
  GameState = kStatePlay;
  KeyMap[260] = 3;  // Enter
  KeyMap[28] = 29;
  DispatchKey(260, true);
  EXPECT_TRUE(LaneDown[18]);
  DispatchKey(260, false);
  EXPECT_TRUE(LaneDown[18]);
}

TEST_F(MainFormTest, AControllerThatIsUnpluggedLetsItsLanesGo) {
  ConnectHooks();
  GameState = kStatePlay;
  InitDI_Joystick();
  if (JoyCount > 0) GTEST_SKIP() << "there are controllers plugged into this machine";
  KeyMap[260] = 12;
  auto stick = std::make_unique<VirtualStick>();
  stick->Button(0, true);
  ReadJoysticks();
  EXPECT_TRUE(LaneDown[1]);
  EXPECT_EQ(LaneBeam[1], 1);
  stick.reset();
  ReadJoysticks();
  EXPECT_FALSE(LaneDown[1]);
  EXPECT_EQ(LaneBeam[1], 0);
  EXPECT_FALSE(KeyHeld[260]);
  ReleaseDI();
}

TEST_F(MainFormTest, AControllerAloneWorksTheLists) {
  ConnectHooks();
  hooks.closeRequested = [] { closed = true; };
  InitDI_Joystick();
  if (JoyCount > 0) GTEST_SKIP() << "there are controllers plugged into this machine";
  for (const TextView title : {u"a", u"b", u"c", u"d"}) {
    AddSong(WriteText(Join(title, u".bms"), u"\r\n#TITLE x\r\n"));
  }
  GameState = kStateSongSelect;
  // Buttons of the first: the menu meanings. Of the second: its lanes.
  for (int16_t code = 1; code <= 8; ++code) KeyMap[260 + code] = code;
  for (int16_t code = 21; code <= 29; ++code) KeyMap[300 + code - 21] = code;
  VirtualStick first;
  VirtualStick second;
  const auto press = [](VirtualStick& stick, int32_t button) {
    for (const bool down : {true, false}) {
      stick.Button(button, down);
      ReadJoysticks();
    }
  };

  press(first, 4);
  EXPECT_EQ(listCursor, 3) << "up, round to the last row";
  press(first, 5);
  press(first, 7);
  EXPECT_EQ(listCursor, 1) << "down, and what is called right";
  press(second, 5);
  EXPECT_EQ(listCursor, 0) << "the turntable, up";
  press(second, 6);
  EXPECT_EQ(listCursor, 1) << "and down";
  EXPECT_EQ(songSelect.repeatKey, 0);

  const auto holdStar = [&](bool down) {
    first.Button(8, down);
    ReadJoysticks();
  };
  holdStar(true);
  press(second, 0);
  EXPECT_TRUE(Hidden) << "F1";
  press(second, 4);
  EXPECT_TRUE(Accel) << "F3";
  HiSpeed = 1;
  press(second, 6);
  EXPECT_EQ(HiSpeed, 1.25F);
  EXPECT_EQ(listCursor, 1);
  press(second, 1);
  EXPECT_EQ(GameState, kStateAutoLanes);
  holdStar(false);
  press(second, 0);
  EXPECT_TRUE(AutoLane[10]);
  press(first, 1);
  EXPECT_EQ(GameState, kStateSongSelect) << "Esc leads back";
  EXPECT_FALSE(closed);

  press(first, 2);
  EXPECT_EQ(GameState, kStateCourses) << "Tab";
  press(second, 7);
  EXPECT_EQ(GameState, kStateLists) << "Tab once more";
  press(first, 1);
  EXPECT_TRUE(closed);
  ReleaseDI();
}

TEST_F(MainFormTest, Holding4AndPressing1Then2LinksTheSpeedToTheCombo) {
  ConnectHooks();
  GameState = kStatePlay;
  HiSpeed = 1;
  DispatchKey(5, true);
  EXPECT_EQ(message.text, u"[4] HiSpeed: 1 (1:Down/2:Up)");
  DispatchKey(2, true);
  EXPECT_FALSE(ComboHiSpeed);
  DispatchKey(3, true);
  EXPECT_TRUE(ComboHiSpeed);
  EXPECT_EQ(message.text, u"COMBO-LINKED HISPEED MODE!");
  DispatchKey(2, false);
  DispatchKey(2, true);
  EXPECT_TRUE(ComboHiSpeed) << "the key 2 is held still";
  DispatchKey(2, false);
  DispatchKey(3, false);
  DispatchKey(3, true);
  EXPECT_FALSE(ComboHiSpeed);
  EXPECT_EQ(HiSpeed, 1) << "0.75 and a quarter";
}

TEST_F(MainFormTest, TheKeyBehindANameIsSwallowedOnce) {
  GameState = kStatePlay;
  KeyMap[kKeyEnter] = 11;
  for (const int32_t key : {kKeyEsc, kKeyEnter}) {
    enterEaten = true;
    ButtonDown(key);
    EXPECT_FALSE(enterEaten);
    EXPECT_FALSE(EscHeld);
    EXPECT_FALSE(LaneDown[0]);
  }
  ButtonDown(kKeyEnter);
  EXPECT_TRUE(LaneDown[0]);
}

TEST_F(MainFormTest, AKeyThatEndedANameByItsCharacterIsDoneWhenItIsLetGo) {
  GameState = kStatePlay;
  KeyMap[kKeyEnter] = 11;
  enterEaten = true;
  ButtonUp(kKeyEnter);
  ButtonDown(kKeyEnter);
  EXPECT_TRUE(LaneDown[0]);
}

TEST_F(MainFormTest, AnyOtherKeyBehindANameClearsTheFlagAndCounts) {
  GameState = kStatePlay;
  KeyMap[44] = 11;
  enterEaten = true;
  ButtonDown(44);
  EXPECT_FALSE(enterEaten);
  EXPECT_TRUE(LaneDown[0]);
}

TEST_F(MainFormTest, LanesEndTheResultsAndEscCountsAsLane11) {
  GameState = kStateResults;
  KeyMap[44] = 13;
  ButtonDown(44);
  EXPECT_TRUE(LaneDown[2]);
  EXPECT_EQ(LaneBeam[2], 0) << "nothing but the lane";
  ButtonDown(kKeyEsc);
  EXPECT_TRUE(LaneDown[0]);
  ButtonUp(kKeyEsc);
  EXPECT_TRUE(LaneDown[0]) << "the release is that of lane 16";
  EXPECT_FALSE(EscHeld);
}

TEST_F(MainFormTest, KeysWithoutALanePressNoneOnTheResults) {
  GameState = kStateResults;
  KeyMap[45] = 3;
  KeyMap[46] = 30;
  for (const int32_t key : {44, 45, 46, 400, 401}) ButtonDown(key);
  for (const bool down : LaneDown) EXPECT_FALSE(down);
}

TEST_F(MainFormTest, LanesOfTheMachineAreChosenByTheirKeys) {
  GameState = kStateAutoLanes;
  LanesState = kStateLists;
  KeyMap[44] = 11;
  KeyMap[300] = 17;
  KeyMap[301] = 27;
  for (const int32_t key : {44, 300, 301}) ButtonDown(key);
  EXPECT_TRUE(AutoLane[0]);
  EXPECT_TRUE(AutoLane[5]);
  EXPECT_FALSE(AutoLane[6]);
  EXPECT_TRUE(AutoLane[15]);
  ButtonDown(44);
  EXPECT_FALSE(AutoLane[0]);
  EXPECT_EQ(GameState, kStateAutoLanes);
  ButtonDown(kKeyEsc);
  EXPECT_EQ(GameState, kStateLists);
}

TEST_F(MainFormTest, SettingsHaveTheirKeysOnEveryScreenButEditorAndNameEntry) {
  for (int32_t state = 0; state <= 12; ++state) {
    Sleep = 3;
    GameState = state;
    ButtonDown(3);  // the key 2
    EXPECT_EQ(Sleep, state == kStateEditCourse || state == kStateEnterName ? 3 : 4) << state;
  }
}

TEST_F(MainFormTest, HiSpeedChangesOnTheListsToo) {
  HiSpeed = 1;
  KeyHeld[5] = true;
  ButtonDown(3);
  EXPECT_EQ(HiSpeed, 1.25F);
}

TEST_F(MainFormTest, ALaneOnASettingsKeyDoesBoth) {
  GameState = kStatePlay;
  KeyMap[3] = 11;
  ButtonDown(3);
  EXPECT_TRUE(LaneDown[0]);
  EXPECT_EQ(Sleep, 1);
}

TEST_F(MainFormTest, PrepareFormSetsTheScreenSize) {
  FullRect = ScreenRect = {1, 2, 3, 4};
  PrepareForm();
  EXPECT_EQ(FullRect, (Rect{0, 0, 640, 480}));
  EXPECT_EQ(ScreenRect, (Rect{0, 0, 640, 480}));
}

}  // namespace
}  // namespace qlm
