// Judgement of one note at one moment.
#pragma once

#include <cstdint>

namespace qlm {

// Grades note `index`. `delta` is the deviation in position units, 0 meaning that it is worked out from
// playPos. With `useStored` the deviation is the one in `stored`, which otherwise receives what was used.
// True when the note is finished, so that the caller frees its lane.
bool JudgeNote(int32_t index, float delta, bool useStored, float& stored);

// Misses the pending notes that lie 48 units or more behind, and gives each lane the sound of its next note.
void JudgeScrolledPast();

}  // namespace qlm
