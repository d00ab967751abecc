// The result screen.
#include "screens/results.h"

#include <cstddef>

#include "state/chart.h"
#include "state/key_numbers.h"
#include "state/keys.h"

namespace qlm {

// The screen itself is still to come: until then a play leaves no trace.
void ShowResults() {}

// Quirk: Esc presses lane 11 here, and lets go lane 16.
void ProcessKey_Results(int32_t key) {
  const int16_t* const code = KeyMap.Find(key);
  const int32_t lane = key == kKeyEsc ? 0 : (code != nullptr ? *code : 0) - 11;
  if (lane >= 0 && lane < kLanes) LaneDown[static_cast<size_t>(lane)] = true;
}

}  // namespace qlm
