// What the buttons of a controller stand for on the list screens.
#pragma once

#include <cstdint>

namespace qlm {

// The key that a controller's input, from 256 on, stands for. 0 when the input has acted by itself; an input
// that means no lane stays as it is.
int32_t ssKeyCvt_Joy(int32_t key);

// Whether a controller's input with this lane code is held.
bool HoldsLaneCode(int16_t code);

// Steps of a direction that is held: they come faster the longer it is, up to one in 50 ms.
void RepeatJoystick();
// The direction was let go.
void EndJoystickRepeat();

}  // namespace qlm
