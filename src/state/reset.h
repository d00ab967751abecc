// Puts the whole memory of the game back to program start.
#pragma once

namespace qlm {

void ResetState();

}  // namespace qlm
