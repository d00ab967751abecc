// Nothing held.
#include "state/keys.h"

namespace qlm {

void ResetKeys() {
  KeyHeld.Clear();
  LaneDown = {};
  LaneBeam = {};
}

}  // namespace qlm
