// Keyboard and controllers.
#include "input/input.h"

#include <array>
#include <string>

#include "base/hooks.h"
#include "base/log.h"
#include "platform/joysticks.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "state/keys.h"
#include "state/settings.h"

namespace qlm {
namespace {

constexpr int32_t kCentred = 100;  // a stick that is no further from its middle counts as in it

using JoyInputs = std::array<bool, kJoyInputs>;

// A direction pad is four buttons; a stick only where the player wants it so.
JoyInputs InputsOf(const platform::JoystickState& state) {
  JoyInputs inputs{};
  inputs[0] = state.left || (JoyXYEnable && state.x < -kCentred);
  inputs[1] = state.right || (JoyXYEnable && state.x > kCentred);
  inputs[2] = state.up || (JoyXYEnable && state.y < -kCentred);
  inputs[3] = state.down || (JoyXYEnable && state.y > kCentred);
  for (size_t button = 0; button < state.buttons.size(); ++button) {
    inputs[kJoyButtons + button] = state.buttons[button];
  }
  return inputs;
}

void DispatchChanges(int32_t controller, const JoyInputs& inputs) {
  for (int32_t input = 0; input < kJoyInputs; ++input) {
    const int32_t place = controller * kJoyInputs + input;
    const bool held = inputs[static_cast<size_t>(input)];
    bool* const before = JoyStateBits.Find(place);
    if (before == nullptr || *before == held) continue;
    *before = held;
    DispatchKey(kKeyJoy + place, held);
  }
}

}  // namespace

void InitDI_Keyboard() {
  DebugLog(u"[InitDI_Keyboard]");
  DebugLog(u"DirectInput [Keyboard] Initialized");
}

void InitDI_Joystick() {
  std::string why;
  if (!platform::OpenJoysticks(why)) {
    DebugLog(Join(u"# Controllers: ", platform::DecodeUtf8(why)));
    platform::MessageBox(platform::BoxIcon::kWarning, u"quillmarch", u"ジョイスティック初期化失敗…あらら?");
  }
  JoyCount = static_cast<uint8_t>(platform::PollJoysticks());
  if (JoyCount > 0) DebugLog(Join(u"* Controllers: ", int32_t{JoyCount}));
}

void ReleaseDI() {
  platform::CloseJoysticks();
  JoyCount = 0;
  JoyStateBits.Clear();
}

void DispatchKey(int32_t key, bool down) {
  bool* const held = KeyHeld.Find(key);
  if (held == nullptr || *held == down) return;
  *held = down;
  void (*const hook)(int32_t) = down ? hooks.keyDown : hooks.keyUp;
  if (hook != nullptr) hook(key);
}

void ReleaseKeyboard() {
  for (int32_t key = 0; key < kKeyJoy; ++key) DispatchKey(key, false);
}

void ReleaseInputs() {
  for (int32_t key = 0; key <= KeyHeld.kLast; ++key) DispatchKey(key, false);
}

void ReadJoysticks() {
  const bool hadNone = JoyCount == 0;
  JoyCount = static_cast<uint8_t>(platform::PollJoysticks());
  if (hadNone && JoyCount == 0) return;
  for (int32_t controller = 0; controller < platform::kMostJoysticks; ++controller) {
    // One that was unplugged holds nothing any more.
    const auto state = platform::ReadJoystick(controller);
    DispatchChanges(controller, state ? InputsOf(*state) : JoyInputs{});
  }
}

}  // namespace qlm
