// The chart's position.
#include "play/timeline.h"

namespace qlm {

void PlayStep() {}
void SetBPM(float) {}
void SeekChart(int32_t, bool) {}

}  // namespace qlm
