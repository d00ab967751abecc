// The boot screen: a list of what the start of the program does.
#pragma once

#include "base/text.h"

namespace qlm {

// The list of at most 39 lines: a new line, or the current one overwritten.
void PrintBoot(TextView text, bool newLine = true);
// How far the search for charts has come: a line of the list, drawn now and then.
void ShowScan(TextView text);
// Reads the picture of the desk at night, which has the size of the screen.
void LoadDesk();
// The desk, over the whole screen; where its picture is missing, its colours. Needs the back surface.
void DrawDesk();
// Draws the list and presents the frame.
void DrawBootScreen();

}  // namespace qlm
