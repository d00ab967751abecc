// The 256 sound slots of the chart.
#include "sound/slots.h"

namespace qlm {

void loadwav(int32_t) {}
void LoadCourseSound(int32_t, int32_t) {}
void ReleaseUnnamedSound(int32_t) {}
void ReleaseAllSounds() {}
void ApplySoundSpeed() {}
void StopPlayingSounds() {}
void ResumeStoppedSounds() {}
void RewindSounds() {}
void StopAndRewindSounds() {}

}  // namespace qlm
