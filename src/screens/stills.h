// The pictures of the screens outside a play.
#pragma once

namespace qlm {

void LoadSS();

// The display has come back with empty surfaces: reads the skin anew, then lets a running play go on, or
// loads the pictures of the screen that shows.
void RestorePictures();

}  // namespace qlm
