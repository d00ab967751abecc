// Play records: what the hands did, for a replay.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/text.h"

namespace qlm {

// Kinds of events beside the channels of lanes, negated when the lane was let go. The speeds stand in
// hundredths in place of the deviation.
constexpr int32_t kRecEnd = 1024;  // the play ends
constexpr int32_t kRecHiSpeed = 1025;
constexpr int32_t kRecRealHiSpeed = 1026;

// Empties the record and takes the memory for a whole one, so that a turn takes none.
void EmptyRecord();
// Appends an event at the play position, while the play is recorded. `colour` has red in its low byte.
void AddRecEvent(int32_t kind, float delta, int32_t colour);
// A replay's events up to the play position.
void ReplayEvents();

// Writes the record of the play that is over; nothing without an event or a path. A file name without a dot
// gets ".bpd".
void SaveUserRec(TextView path);
// Takes the record and the options of a play of the loaded chart. Nothing happens without a file; that of
// another chart is refused, with a message, and leaves an empty record.
void LoadUserRec(TextView path);
// The same from the bytes of a record.
void TakeUserRec(std::string_view bytes);

}  // namespace qlm
