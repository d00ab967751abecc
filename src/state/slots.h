// How many slots a chart has for sounds, pictures, tempi and stops: 256, and more in the wide reading.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

constexpr int32_t kLastHexSlot = 255;      // FF
constexpr int32_t kLastBase36Slot = 1295;  // ZZ
constexpr int32_t kLastBase62Slot = 3843;  // zz

inline int32_t LastSlot = kLastHexSlot;  // written by SetLastSlot alone
inline int32_t SlotBase = 16;            // of the digits of the chart: 16, 36 or 62

// Gives all tables by slot this last entry, those of course songs apart. What lies past it is let go.
void SetLastSlot(int32_t last);
// Those of all course songs.
void SetCourseLastSlot(int32_t last);

// The two digits by which the chart names the slot.
Text SlotName(int32_t slot);

// The same for messages and the log, which give hexadecimal ones without a leading 0.
Text MessageSlot(int32_t slot);

void ResetSlots();

}  // namespace qlm
