// Which inputs are held, and which lanes.
#pragma once

#include <array>
#include <cstdint>

#include "base/table.h"
#include "state/chart.h"
#include "state/key_numbers.h"

namespace qlm {

inline Table<bool, 400> KeyHeld;      // by key number, as last polled
inline Table<bool, 63> JoyStateBits;  // by controller * kJoyInputs + input, as last polled
// From a key number to what it does: 1 to 8 are menu meanings, 11 to 29 lanes by their channel, 0 nothing.
using KeyTable = Table<int16_t, 400>;
inline KeyTable KeyMap;
inline std::array<bool, kLanes> LaneDown{};     // by channel - 11
inline std::array<uint8_t, kLanes> LaneBeam{};  // 0 released, 1 pressed, 127 settled
inline std::array<float, kLanes> KeyBeam{};     // 0 to 1, how far the beam has risen

inline bool SelectHeld = false;   // an input with the meaning 8 is held
inline uint32_t SelectStart = 0;  // clock at which it went down
inline bool enterEaten = false;   // a name was just typed: the Enter or Esc that ended it does no more
inline uint8_t JoyCount = 0;      // controllers found

void ResetKeys();

}  // namespace qlm
