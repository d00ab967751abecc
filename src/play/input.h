// Keys of the game, by number.
#pragma once

#include <cstdint>

namespace qlm {

// Esc, held, ends a play, and gives up a load; with Shift it asks the program to end. All other keys are
// still to come.
void ButtonDown(int32_t key);
void ButtonUp(int32_t key);

}  // namespace qlm
