// What the terminal says when the program ends.
#pragma once

#include "base/text.h"
#include "state/last_play.h"

namespace qlm {

// One line without its end: what was played, what it came to, and what to try next.
Text LastWords(const LastPlay& play);

// On standard output, with the place of the log in a line before; nothing when nothing was played.
void SayLastWords();

}  // namespace qlm
