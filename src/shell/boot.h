// The start of the program.
#pragma once

#include "shell/arguments.h"

namespace qlm {

// Brings up log, settings and devices, then starts the game. Returns only when the boot stops on its way; the
// value is the program's exit status.
int Main(const Launch& launch);

// Opens screen and sound, reads the lists, runs the command line, and goes on to the lists. Does not return.
void Start(const Launch& launch);

}  // namespace qlm
