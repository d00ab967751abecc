// The window system itself: whether it is there, and ends that come from outside, when it goes away or the
// terminal hangs up.
#pragma once

namespace platform {

// Whether there is an X server to be reached, also beside a window system of another kind.
bool XServerAnswers();

// From here on, when the X server goes away, `save` runs and the process ends at once with status 1: the
// window counts as closed then, and nothing that belongs to the window system may be touched. To be called
// anew behind a library that puts routines of its own there.
void OnDisplayGone(void (*save)());

// From here on a hangup ends the program as SIGTERM does; one that is to be ignored stays ignored.
void EndOnHangup();

}  // namespace platform
