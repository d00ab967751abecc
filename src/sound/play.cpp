// Starting of sounds.
#include "sound/play.h"

namespace qlm {

void InitDS() {}
void ReleaseDS() {}
void PlayWav(int32_t, int32_t, int32_t) {}
void PlaySE(int32_t, bool) {}
void StopSE(int32_t) {}
void SetSEVolume(int32_t, int32_t) {}
void EchoPush(int32_t, int16_t, int32_t) {}
void EchoPop(int32_t) {}
int32_t ServeEchoes() { return 0; }
void VoiceAdd(int32_t) {}
void VoiceRemove(int32_t) {}
void VoicePurge() {}
void FadeEndVolumes(int32_t) {}
void FadeFailVolumes(int32_t) {}

}  // namespace qlm
