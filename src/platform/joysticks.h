// Controllers: which are plugged in, and what is held on each.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace platform {

constexpr int32_t kMostJoysticks = 11;
constexpr int32_t kJoystickButtons = 32;  // of one controller; those behind are not seen

struct JoystickState {
  int32_t x = 0;  // of the stick, -10000 (left) to 10000
  int32_t y = 0;  // -10000 (up) to 10000
  // Of the direction pads.
  bool left = false;
  bool right = false;
  bool up = false;
  bool down = false;
  std::array<bool, kJoystickButtons> buttons{};
};

// From here on controllers are found as they are plugged in, whether or not the window has the focus. False
// when the system has none to offer at all, or when one that is plugged in cannot be opened; `why` tells the
// reason, and the others work.
bool OpenJoysticks(std::string& why);
void CloseJoysticks();

// Takes in what has changed since the last call, and gives the number of controllers. One that was unplugged
// leaves its number free; one that is plugged in takes the lowest free number. Costs nothing before
// OpenJoysticks.
int32_t PollJoysticks();
// The state at the last poll of the controller with this number, 0 to kMostJoysticks - 1. Nothing when there
// is none.
std::optional<JoystickState> ReadJoystick(int32_t number);

}  // namespace platform
