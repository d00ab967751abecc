// The header-only read of a chart, for lists.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/text.h"

namespace qlm {

// Fills songList[index] from the chart's header words, and works out an estimate of its length. Never loads a
// sound or a picture. A file that cannot be read is told in the log and leaves the defaults; a row that does
// not exist stays so.
void ReadBMSHeader(TextView path, int32_t index);
// The same for bytes at hand.
void ReadBMSHeaderBytes(TextView path, int32_t index, std::string_view bytes);

}  // namespace qlm
