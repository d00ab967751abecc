// Which inputs are held, and which lanes.
#pragma once

#include <array>
#include <cstdint>

#include "base/table.h"
#include "state/chart.h"

namespace qlm {

inline Table<bool, 400> KeyHeld;                // by key number, as last polled
inline std::array<bool, kLanes> LaneDown{};     // by channel - 11
inline std::array<uint8_t, kLanes> LaneBeam{};  // 0 released, 1 pressed, 127 settled

// Key numbers that the program itself asks for.
constexpr int32_t kKeyEsc = 1;
constexpr int32_t kKeyLeftShift = 42;
constexpr int32_t kKeyRightShift = 54;

void ResetKeys();

}  // namespace qlm
