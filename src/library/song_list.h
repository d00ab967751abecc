// The active list.
#pragma once

#include "base/text.h"

namespace qlm {

void ClearList();
// Appends a row and reads the chart's header into it. A missing file leaves the row empty.
void AddSong(TextView path);

}  // namespace qlm
