// The system sounds that a play starts, by number.
#pragma once

#include <cstdint>

namespace qlm {

constexpr int32_t kSelectMusic = 1;  // looped on the list screen
constexpr int32_t kReadySound = 3;
constexpr int32_t kFadeSound = 4;
constexpr int32_t kSelectSound = 12;  // the list screen opens
constexpr int32_t kFailSound = 14;    // a play that was not cleared, and the stall of a miss under Pressure
constexpr int32_t kTickSound = 15;    // a setting was changed by its key

}  // namespace qlm
