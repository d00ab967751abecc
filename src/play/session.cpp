// One play from the choice of a chart to its end.
#include "play/session.h"

namespace qlm {

void ReadyBMS(TextView) {}
void StartPlay() {}
void ResetPlay() {}
void PlayLoop() {}
void PlayFrame(int32_t) {}
void PlayTick() {}
void BMSPause() {}
void BMSResume() {}
void UnloadBMS() {}
void StartPreview() {}
void PreviewTick() {}
void FadeEndSubject() {}

}  // namespace qlm
