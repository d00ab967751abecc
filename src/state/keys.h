// Which inputs are held, and which lanes.
#pragma once

#include <array>
#include <cstdint>

#include "base/table.h"
#include "state/chart.h"

namespace qlm {

inline Table<bool, 400> KeyHeld;      // by key number, as last polled
inline Table<bool, 63> JoyStateBits;  // by controller * kJoyInputs + input, as last polled
// From a key number to what it does: 1 to 8 are menu meanings, 11 to 29 lanes by their channel, 0 nothing.
inline Table<int16_t, 400> KeyMap;
inline std::array<bool, kLanes> LaneDown{};     // by channel - 11
inline std::array<uint8_t, kLanes> LaneBeam{};  // 0 released, 1 pressed, 127 settled
inline std::array<float, kLanes> KeyBeam{};     // 0 to 1, how far the beam has risen

inline bool SelectHeld = false;   // an input with the meaning 8 is held
inline uint32_t SelectStart = 0;  // clock at which it went down
inline bool nameEntered = false;  // a name has just been entered: the key that ended it is swallowed
inline uint8_t JoyCount = 0;      // controllers found

// Key numbers that the program itself asks for.
constexpr int32_t kKeyEsc = 1;
constexpr int32_t kKeyTab = 15;
constexpr int32_t kKeyEnter = 28;
constexpr int32_t kKeyLeftShift = 42;
constexpr int32_t kKeyRightShift = 54;
constexpr int32_t kKeyUp = 200;
constexpr int32_t kKeyLeft = 203;
constexpr int32_t kKeyDown = 208;
// Key numbers of controller inputs: kKeyJoy + controller * kJoyInputs + input, inputs 0 to 3 being left,
// right, up and down, and those from 4 on the buttons.
constexpr int32_t kKeyJoy = 256;
constexpr int32_t kJoyInputs = 40;
constexpr int32_t kJoyButtons = 4;  // the first button among a controller's inputs

void ResetKeys();

}  // namespace qlm
