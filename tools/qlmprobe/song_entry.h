// Rows of lists, as the commands print them.
#pragma once

#include <span>

#include "base/json.h"
#include "state/lists.h"

namespace probe {

// The keys of a row, without its path.
void PutSongEntry(qlm::Json& json, const qlm::SongEntry& song);
// A list of rows, each with its path.
void PutRows(qlm::Json& json, std::span<const qlm::SongEntry> rows);

}  // namespace probe
