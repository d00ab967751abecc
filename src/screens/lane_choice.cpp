// The choice of the lanes that the machine plays.
#include "screens/lane_choice.h"

#include <cstddef>

#include "graphics/present.h"
#include "play/input.h"
#include "sound/play.h"
#include "state/key_numbers.h"
#include "state/options.h"
#include "state/session.h"

namespace qlm {

void DrawLaneChoice() { PresentFrame(); }

void ProcessKey_AutoLanes(int32_t key) {
  if (key == kKeyEsc) GameState = LanesState;
  if (const int32_t channel = LaneChannel(key); channel != 0) {
    bool& byMachine = AutoLane[static_cast<size_t>(channel - 11)];
    byMachine = !byMachine;
    PlaySE(SE::kTick);
  }
}

}  // namespace qlm
