// Controllers through SDL. They are polled, and send no events: the window's pump would throw them away.
#include "platform/joysticks.h"

#include <SDL.h>

#include <algorithm>
#include <memory>

namespace platform {
namespace {

constexpr int32_t kFullDeflection = 10000;

struct Release {
  void operator()(SDL_Joystick* stick) const { SDL_JoystickClose(stick); }
};
using Stick = std::unique_ptr<SDL_Joystick, Release>;

bool opened = false;
std::array<Stick, kMostJoysticks> sticks;
int devicesSeen = 0;  // at the last look for new ones

bool IsOpen(SDL_JoystickID id) {
  return std::any_of(sticks.begin(), sticks.end(), [id](const Stick& stick) {
    return stick != nullptr && SDL_JoystickInstanceID(stick.get()) == id;
  });
}

// Opens what is plugged in and not open yet, as long as there are numbers. False when one refused.
bool TakeNewSticks() {
  bool allOpened = true;
  devicesSeen = SDL_NumJoysticks();
  for (int device = 0; device < devicesSeen; ++device) {
    if (IsOpen(SDL_JoystickGetDeviceInstanceID(device))) continue;
    const auto place = std::find(sticks.begin(), sticks.end(), nullptr);
    if (place == sticks.end()) break;
    place->reset(SDL_JoystickOpen(device));
    allOpened = allOpened && *place != nullptr;
  }
  return allOpened;
}

// What a stick does not have is not asked for: the library would write an error text each time.

int32_t Deflection(SDL_Joystick* stick, int axis) {
  if (axis >= SDL_JoystickNumAxes(stick)) return 0;
  return int32_t{SDL_JoystickGetAxis(stick, axis)} * kFullDeflection / SDL_JOYSTICK_AXIS_MAX;
}

int32_t SeenButtons(SDL_Joystick* stick) {
  return std::clamp<int32_t>(SDL_JoystickNumButtons(stick), 0, kJoystickButtons);
}

}  // namespace

bool OpenJoysticks(std::string& why) {
  CloseJoysticks();
  SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
  if (SDL_InitSubSystem(SDL_INIT_JOYSTICK) != 0) {
    why = SDL_GetError();
    return false;
  }
  SDL_JoystickEventState(SDL_IGNORE);
  opened = true;
  const bool allOpened = TakeNewSticks();
  if (!allOpened) why = SDL_GetError();
  return allOpened;
}

void CloseJoysticks() {
  if (!opened) return;
  for (Stick& stick : sticks) stick.reset();
  SDL_QuitSubSystem(SDL_INIT_JOYSTICK);
  opened = false;
}

int32_t PollJoysticks() {
  if (!opened) return 0;
  SDL_JoystickUpdate();
  bool changed = SDL_NumJoysticks() != devicesSeen;
  for (Stick& stick : sticks) {
    if (stick == nullptr || SDL_JoystickGetAttached(stick.get()) == SDL_TRUE) continue;
    stick.reset();
    changed = true;
  }
  if (changed) TakeNewSticks();
  return static_cast<int32_t>(
      std::count_if(sticks.begin(), sticks.end(), [](const Stick& stick) { return stick != nullptr; }));
}

std::optional<JoystickState> ReadJoystick(int32_t number) {
  if (number < 0 || number >= kMostJoysticks) return std::nullopt;
  SDL_Joystick* const stick = sticks[static_cast<size_t>(number)].get();
  if (stick == nullptr) return std::nullopt;

  JoystickState state;
  state.x = Deflection(stick, 0);
  state.y = Deflection(stick, 1);
  unsigned directions = SDL_HAT_CENTERED;
  for (int hat = 0; hat < SDL_JoystickNumHats(stick); ++hat) directions |= SDL_JoystickGetHat(stick, hat);
  state.left = (directions & SDL_HAT_LEFT) != 0;
  state.right = (directions & SDL_HAT_RIGHT) != 0;
  state.up = (directions & SDL_HAT_UP) != 0;
  state.down = (directions & SDL_HAT_DOWN) != 0;
  for (int32_t button = 0; button < SeenButtons(stick); ++button) {
    state.buttons[static_cast<size_t>(button)] = SDL_JoystickGetButton(stick, button) != 0;
  }
  return state;
}

}  // namespace platform
