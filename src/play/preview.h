// The preview of a chart on the song select screen.
#pragma once

namespace qlm {

// Loads the list's current chart, and lets it sound from its first note on.
void StartPreview();
// Its step every 20 ms; at its end the sounds are stopped.
void PreviewTick();
// Ends it at once, where one runs, and has one that is being loaded give up.
void EndPreview();

}  // namespace qlm
