// Putting back of all that a play changes.
#pragma once

namespace qlm {

// Puts all per-play state back. In an endless run, charts behind the first keep gauge, combo and score.
void ResetPlay();
// Stops and rewinds all chart sounds. Frees nothing.
void UnloadBMS();

}  // namespace qlm
