// The song select screen: its loop, its lists, and its state on entering and coming back.
#pragma once

namespace qlm {

// What listScroll stands at for the title picture of a row that already stands still to be read anew.
constexpr float kWheelStops = 0.001F;

// Opens on the list of jukeboxes and runs until the window is gone.
void ListAnm();
// One turn of it: held keys, the wheel, one frame.
void ListTurn();

// The list of jukeboxes, where it was left.
void JukeReady();

// Settling and fading in of the rows, as on entering a list.
void ResetListState();
// The list screen behind a play: its skin.
void RestoreListScreen();

}  // namespace qlm
