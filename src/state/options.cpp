// Options as they stand at program start.
#include "state/options.h"

namespace qlm {

void ResetOptions() {
  Hidden = Sudden = Stealth = Reverse = Accel = Quil = HalfField = false;
  Random = ExRandom = Pressure = FourDMode = false;
  PlayerForce = 0;
  HiSpeed = RealHiSpeed = HiSpeedTarget = 0;
  RandomHiSpeed = ComboHiSpeed = false;
  AutoLane = {};
}

}  // namespace qlm
