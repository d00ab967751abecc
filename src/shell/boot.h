// The start of the program.
#pragma once

#include "shell/arguments.h"

namespace qlm {

// Brings up log, settings and devices, then starts the game. Returns only when the boot stops on its way; the
// value is the program's exit status.
int Main(const Launch& launch);

// Opens screen and sound, runs the command line, and ends the program behind it.
void Start(TextView command);

}  // namespace qlm
