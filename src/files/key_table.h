// The key table and its file \_qlmfiles\qlm_keycnf.dat: 401 signed 16-bit values, little-endian, one for each
// key number from 0 on, without a head.
#pragma once

#include <string>
#include <string_view>

#include "state/keys.h"

namespace qlm {

// What the keys of a new installation do.
KeyTable DefaultKeyTable();
void SetDefaultKeyMap();

// KeyMap as a file holds it. Bytes behind the last value are passed over; what a short file lacks is 0.
void TakeKeyTable(std::string_view bytes);
std::string KeyTableBytes();

// Takes over the file, or the default map when there is none or it cannot be read. False when there is one
// that cannot be read.
bool LoadKeyTable();
// False when the file could not be written.
bool SaveKeyTable();

}  // namespace qlm
