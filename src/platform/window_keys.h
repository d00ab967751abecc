// The numbers by which the game knows the keys of a keyboard: scan codes of the first set, and for the keys
// that came later with a prefix byte their scan code plus 128.
#pragma once

#include <cstdint>

namespace platform {

// `usage` is a key's number on the keyboard page of USB, which names the place of the key and not its letter.
// 1 to 255; 0 for a key that has no number.
int32_t KeyNumberOf(int32_t usage);
// The same number for a key as the kernel counts keys, which X11 and Wayland tell with 8 added.
int32_t KeyNumberOfEvdev(int32_t code);

}  // namespace platform
