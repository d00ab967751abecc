// The play screen.
#pragma once

namespace qlm {

// One frame of the play screen on the back surface, from the skin's tables and the state of the play. Without
// a back surface nothing is composed, and what a frame changes in the play changes all the same: pending
// notes, beams, bombs, the blink of the combo, fades, the list of voices.
void DrawPlayFrame();

}  // namespace qlm
