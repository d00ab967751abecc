// The display and its surfaces: opening, losing, giving back.
#pragma once

#include <cstdint>

#include "state/surfaces.h"

namespace qlm {

// Where the finished frames go.
enum class DisplayOutput {
  kWindow,  // the window or the full screen; to nobody when it cannot be opened
  kUnseen,  // to nobody: tests and tools read them from the back surface
};

void InitDX();
// Opens the display. Without one the game goes on unseen, and the log says why.
void InitDD(DisplayOutput output = DisplayOutput::kWindow);
// Makes the fixed surfaces anew. Does nothing before InitDD.
void CreateSurfaces();
// Makes DDBga at the size of the BGA, black; null, with a log line, when there is no such size.
void CreateBgaSurface();
void ReleaseDD();
// True if drawing may go on. Handles a display that was taken away or came back.
bool CheckDisplay();

}  // namespace qlm
