// One play from the choice of a chart to its end.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

// Loads a chart behind the loading screen. An empty path takes the current list entry. A load that failed or
// was given up leaves LoadAbort set.
void ReadyBMS(TextView path);
// Gives up the load of a running ReadyBMS; nothing happens outside one.
void AbortLoad();

// The play and everything to the return to the lists.
void StartPlay();
// Puts all per-play state back. In an endless run, charts behind the first keep gauge, combo and score.
void ResetPlay();
// The timed loop, from "R E A D Y ?" to the end of the last fade.
void PlayLoop();
// One drawn frame; nothing happens when `cursor` lies past the objects or the display is lost.
void PlayFrame(int32_t cursor);
// Shown figures and effects; runs from the 1 ms timer and once a frame.
void PlayTick();

// The clock runs on in a pause; the position and all chart sounds stand still.
void BMSPause();
// Nothing happens unless there is a pause.
void BMSResume();
// Has a running play paused while the display is away. At program start.
void RegisterPlayHooks();

// Stops and rewinds all chart sounds. Frees nothing.
void UnloadBMS();

// The preview of the list's current chart, and its step every 20 ms.
void StartPreview();
void PreviewTick();

// What a decided fade of the song select leads to.
void FadeEndSubject();

}  // namespace qlm
