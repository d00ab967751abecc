// Keys and the window's events.
#include "shell/main_form.h"

#include "base/hooks.h"
#include "platform/clock.h"
#include "state/keys.h"
#include "state/session.h"
#include "state/surfaces.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

bool closed = false;

class MainFormTest : public GameTest {
 protected:
  MainFormTest() {
    closed = false;
    hooks::closeRequested = [] { closed = true; };
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

TEST_F(MainFormTest, EscCountsInThePreRollOfAChartFromTheCommandLine) {
  PlayAlive = true;
  ButtonDown(kKeyEsc);
  EXPECT_TRUE(EscHeld);
}

TEST_F(MainFormTest, EscOutsideAPlayDoesNothing) {
  ButtonDown(kKeyEsc);
  EXPECT_FALSE(EscHeld);
  PlayAlive = PreviewActive = true;
  ButtonDown(kKeyEsc);
  EXPECT_FALSE(EscHeld);
}

TEST_F(MainFormTest, ReleasingEscReleasesItsLane) {
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

TEST_F(MainFormTest, KeyboardReachesTheButtons) {
  InitDI_Keyboard();
  EXPECT_TRUE(Logged(u"[InitDI_Keyboard]"));
  EXPECT_TRUE(Logged(u"DirectInput [Keyboard] Initialized"));
  GameState = kStatePlay;
  hooks::keyDown(kKeyEsc);
  EXPECT_TRUE(EscHeld);
  hooks::keyUp(kKeyEsc);
  EXPECT_FALSE(EscHeld);
}

TEST_F(MainFormTest, PrepareFormSetsTheScreenSize) {
  FullRect = ScreenRect = {1, 2, 3, 4};
  PrepareForm();
  EXPECT_EQ(FullRect, (Rect{0, 0, 640, 480}));
  EXPECT_EQ(ScreenRect, (Rect{0, 0, 640, 480}));
}

}  // namespace
}  // namespace qlm
