// The active list.
#pragma once

#include <vector>

#include "base/text.h"
#include "state/lists.h"

namespace qlm {

void ClearList();
// Makes these rows the active list, with nothing known of their scores.
void ShowList(const std::vector<SongEntry>& rows);
// Appends a row and reads the chart's header into it. A missing file leaves the row empty.
void AddSong(TextView path);
// Puts these rows into an empty list.
void TakeRows(std::vector<SongEntry> rows);

}  // namespace qlm
