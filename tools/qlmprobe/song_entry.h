// Rows of lists, as the commands print them.
#pragma once

#include <span>
#include <string_view>

#include "base/json.h"
#include "state/lists.h"

namespace probe {

// The keys of a row, without its path.
void PutSongEntry(qlm::Json& json, const qlm::SongEntry& song);
// A list of rows under a key, each with its path.
void PutRows(qlm::Json& json, std::string_view key, std::span<const qlm::SongEntry> rows);

}  // namespace probe
