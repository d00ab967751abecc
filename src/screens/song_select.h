// The song select screen: its loop, its lists, and its state on entering and coming back.
#pragma once

#include "base/text.h"

namespace qlm {

// What listScroll stands at for the title picture of a row that already stands still to be read anew.
constexpr float kWheelStops = 0.001F;

// Opens on the list of jukeboxes, or on the charts of the one of that name with the easiest in hand, and runs
// until the window is gone.
void ListAnm(TextView jukebox = u"");
// One turn of it: held keys, the wheel, one frame.
void ListTurn();

// The frame of a list: the wheel moves on, and where it stops the title picture is read.
void ListFrame();
// The charts below a folder that was dropped on the window become the list.
void ShowDroppedFolder(TextView folder);

// The list of jukeboxes, where it was left.
void JukeReady();

// Settling and fading in of the rows, as on entering a list.
void ResetListState();
// The list screen behind a play: its skin.
void RestoreListScreen();

}  // namespace qlm
