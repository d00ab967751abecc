// The active list.
#pragma once

#include <vector>

#include "base/text.h"
#include "state/lists.h"

namespace qlm {

// A search within the list ends with it.
void ClearList();
// Appends a row and reads the chart's header into it. A missing file leaves the row empty.
void AddSong(TextView path);
// Puts these rows into an empty list.
void TakeRows(std::vector<SongEntry> rows);

}  // namespace qlm
