// The play record in memory.
#pragma once

#include <cstdint>

namespace qlm {

inline int32_t RecCount = 0;   // events recorded
inline int32_t RecCursor = 0;  // next event of a replay

void ResetRecords();

}  // namespace qlm
