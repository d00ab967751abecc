// Judgement of one note at one moment.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qlm {

// Grades note `index`, with everything that follows: gauge, score, combo, marks and graph. `delta` is the
// deviation in position units, 0 meaning that it is worked out from playPos. With `useStored` the deviation
// is the one in `stored`, which otherwise receives what was used. True when the note is finished, so that the
// caller frees its lane; false for a press far too early, for a machine lane, in the fail fade, and for what
// is no note.
bool JudgeNote(int32_t index, float delta, bool useStored, float& stored);

// Misses the pending notes that lie 48 units or more behind, and gives each lane the sound of its next note.
void JudgeScrolledPast();
// The digits of a side's combo, for its drawing.
void SplitCombo(size_t side);

}  // namespace qlm
