// The battle that the command line asks for.
#pragma once

#include "shell/arguments.h"

namespace qlm {

// With --host opens a session; with --connect joins one and waits until its host lets the game start. False,
// with a word to the person at the terminal, when that fails. True when no battle is asked for.
bool MeetOthers(const Launch& launch);

}  // namespace qlm
