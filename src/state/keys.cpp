// Nothing held.
#include "state/keys.h"

namespace qlm {

void ResetKeys() {
  KeyHeld.Clear();
  JoyStateBits.Clear();
  KeyMap.Clear();
  LaneDown = {};
  LaneBeam = {};
  KeyBeam = {};
  SelectHeld = false;
  SelectStart = 0;
  enterEaten = false;
  JoyCount = 0;
}

}  // namespace qlm
