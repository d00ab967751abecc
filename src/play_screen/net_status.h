// The players of a battle, over the play, the lists and the results.
#pragma once

namespace qlm {

// How many there are; of each how far it is and what it chose; and from the play on its gauge so far. Nothing
// without a battle. A line is laid out when it changes, so that a turn without news allocates nothing.
void DrawNetStatus();

}  // namespace qlm
