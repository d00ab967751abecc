// Play records: what the hands did, for a replay.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

// Kinds of events beside the channels of lanes, negated when the lane was let go. The speeds stand in
// hundredths in place of the deviation.
constexpr int32_t kRecEnd = 1024;  // the play ends
constexpr int32_t kRecHiSpeed = 1025;
constexpr int32_t kRecRealHiSpeed = 1026;

// Appends an event at a position.
void AddRecEvent(int32_t kind, int32_t pos, float delta, int32_t colour);
// Writes the record of the play behind it, and reads one ahead of a replay.
void SaveUserRec(TextView path);
void LoadUserRec(TextView path);
// A replay's events up to the play position.
void ReplayEvents();

}  // namespace qlm
