// The master volume: the program's own gain over everything that it sounds.
#pragma once

#include <cstdint>

namespace qlm {

// 0 (silence) to MixerMax, linear. True on success; without a sound device both fail, and `value` stays.
bool GetVolume(int32_t& value);
bool SetVolume(int32_t value);

}  // namespace qlm
