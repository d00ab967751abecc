// The ends of the program.
#pragma once

#include "base/text.h"

namespace qlm {

// Saves keys and settings, gives everything back and ends the program with this status, which is 1 in place
// of 0 when keys or settings could not be saved.
[[noreturn]] void ExitApp(int status = 0);

// The end after a failure that nothing can go on from: a box, then ExitApp with status 1.
void EndOnFatalError(TextView title, TextView message);

// Saves keys and settings as ExitApp does, for an end at which the display is gone and nothing can be given
// back.
void SaveWithoutDisplay();

// Gives a setting this value for this run: the one before is what is saved at the end.
void UseThisRun(bool& setting, bool value);

}  // namespace qlm
