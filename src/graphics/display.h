// The display and its surfaces: opening, losing, giving back.
#pragma once

namespace qlm {

void InitDX();
// Opens the window or the full screen. Without a display the game goes on unseen.
void InitDD();
void CreateSurfaces();
void ReleaseDD();
// True if drawing may go on. Handles a display that was taken away or came back.
bool CheckDisplay();

}  // namespace qlm
