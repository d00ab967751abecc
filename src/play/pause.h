// Pause and resume.
#pragma once

namespace qlm {

// The clock runs on in a pause; the position and all chart sounds stand still.
void BMSPause();
// Nothing happens unless there is a pause.
void BMSResume();

}  // namespace qlm
