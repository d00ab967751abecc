// Controllers that the system cannot offer: the start says so and goes on.
#include <SDL.h>

#include "input/input.h"
#include "state/keys.h"
#include "tests/support/game_test.h"

// Takes the place of the library's routine in this program.
extern "C" int SDL_InitSubSystem(Uint32) { return SDL_SetError("no controllers here"); }

namespace qlm {
namespace {

using JoystickFailure = GameTest;

TEST_F(JoystickFailure, IsToldInABoxAndPassedOver) {
  testing::internal::CaptureStderr();  // where boxes go without a display
  InitDI_Joystick();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "quillmarch: ジョイスティック初期化失敗…あらら?\n");
  EXPECT_TRUE(Logged(u"# Controllers: no controllers here"));
  EXPECT_EQ(JoyCount, 0);
  DispatchKey(44, true);
  ReadJoysticks();
  EXPECT_TRUE(KeyHeld[44]);
  ReleaseDI();
}

}  // namespace
}  // namespace qlm
