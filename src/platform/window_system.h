// Ends that come from outside: the window system goes away, the terminal hangs up.
#pragma once

namespace platform {

// From here on, when the X server goes away, `save` runs and the process ends at once with status 1: the
// window counts as closed then, and nothing that belongs to the window system may be touched. To be called
// anew behind a library that puts routines of its own there.
void OnDisplayGone(void (*save)());

// From here on a hangup ends the program as SIGTERM does; one that is to be ignored stays ignored.
void EndOnHangup();

}  // namespace platform
