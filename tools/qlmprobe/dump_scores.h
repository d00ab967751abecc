// Score tables and play records, for `dump`.
#pragma once

#include <string_view>

#include "base/json.h"

namespace probe {

using qlm::Json;

// The keys of a score table: plays, cleared, rows, bytes, unread.
void PutScores(Json& json, std::string_view bytes);
// Those of a play record: bmsId, entry, count, events, bytes, unread.
void PutRecord(Json& json, std::string_view bytes);

}  // namespace probe
