// The choice of the lanes that the machine plays.
#pragma once

#include <cstdint>

namespace qlm {

// One frame: speeds, switches, and each lane with whether the machine plays it.
void DrawLaneChoice();
// A key by its number goes down there: a lane's key turns the machine on or off for it, Esc leads back.
void ProcessKey_AutoLanes(int32_t key);

}  // namespace qlm
