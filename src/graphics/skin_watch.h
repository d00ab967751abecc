// The skin in use follows its files, for authors of skins: what they save is on the screen at once, and what
// is wrong with it stands there, while the last good skin stays. On with the setting WatchSkins alone; a
// reload takes its time between two turns, and memory.
#pragma once

#include "graphics/skin_report.h"

namespace qlm {

// Where a load of a skin notes down what the watch asks for. Empty, and its own until the next load.
SkinReport* NewWatchedReport();

// Reads the skin in use anew where one of its files has changed and none has for a moment. Findings that the
// skin did not have before keep it from being taken. To be called between two turns.
void FollowSkin();
// Those findings, on the back surface.
void DrawSkinTrouble();

// Forgets all that the watch knows.
void ForgetWatchedSkin();

}  // namespace qlm
