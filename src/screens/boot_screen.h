// The boot screen: a list of what the start of the program does.
#pragma once

#include "base/text.h"

namespace qlm {

// The list of at most 39 lines: a new line, or the current one overwritten.
void PrintBoot(TextView text, bool newLine = true);
// Draws the list and presents the frame.
void DrawBootScreen();

}  // namespace qlm
