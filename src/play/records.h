// Play records: what the hands did, for a replay.
#pragma once

#include <cstdint>

namespace qlm {

// The kind of event that ends a play.
constexpr int32_t kRecEnd = 1024;

// Appends an event at a position.
void AddRecEvent(int32_t kind, int32_t pos, float delta, int32_t colour);
// A replay's events up to the play position.
void ReplayEvents();

}  // namespace qlm
