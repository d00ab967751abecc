// Start values of the players' table.
#include "state/network.h"

namespace qlm {

void ResetNetwork() { network = {}; }

}  // namespace qlm
