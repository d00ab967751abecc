// What the play does for the floors below.
#pragma once

namespace qlm {

// Registers the play's routines: keys, loading screen, and a display that is lost or regained. At program
// start.
void RegisterPlayHooks();

}  // namespace qlm
