// One play from the choice of a chart to its end.
#pragma once

#include "base/text.h"

namespace qlm {

// Loads a chart behind the loading screen. An empty path takes the current list entry.
void ReadyBMS(TextView path);
// The play and everything to the return to the lists.
void StartPlay();
void ResetPlay();
void PlayLoop();
// One drawn frame; nothing happens when `cursor` lies past the objects or the display is lost.
void PlayFrame(int32_t cursor);
// Shown figures and effects; runs from the 1 ms timer and once a frame.
void PlayTick();
void BMSPause();
void BMSResume();
// Stops and rewinds all chart sounds. Frees nothing.
void UnloadBMS();

// The preview of the list's current chart, and its step every 20 ms.
void StartPreview();
void PreviewTick();

// What a decided fade of the song select leads to.
void FadeEndSubject();

}  // namespace qlm
