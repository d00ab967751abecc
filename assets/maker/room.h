// A little wooden room that all samples are recorded in.
#pragma once

#include "sound.h"

namespace assetmaker {

// The sound with the room's answer behind it. `amount` is the level of the room against the dry sound (0.1 to
// 0.4 are usual), `seconds` the time in which the room dies away by 60 dB. The result is as much longer as
// the room rings.
Sound InRoom(const Sound& dry, double amount, double seconds = 0.7);

}  // namespace assetmaker
