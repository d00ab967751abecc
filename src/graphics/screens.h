// Whole frames beside the play: the loading screen and the boot screen.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

// One frame of the loading screen, drawn and presented.
void Loading();

// The boot screen's list of at most 39 lines: a new line, or the current one overwritten.
void PrintBoot(TextView text, bool newLine = true);
// Draws the list and presents the frame.
void DrawBootScreen();

// The screen stills of the song select and the results are still to come.
void LoadSS();

}  // namespace qlm
