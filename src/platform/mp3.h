// Decoding of MPEG audio.
#pragma once

#include <cstddef>
#include <string_view>

#include "platform/decoded_sound.h"

namespace platform {

class DecodingOrders;

// Decodes frames of layers I to III from the first whole one on, at their own rate, and trims nothing. What
// lies between frames is passed over. Frames of another rate or number of channels end the sound. Any bytes
// will do; may be called by any thread. `most` is the longest sound, in bytes. Gives up, as broken, soon
// after `orders`, if there are any, say so.
DecodedSound DecodeMp3(std::string_view data, size_t most, DecodingOrders* orders = nullptr);

}  // namespace platform
