// The status of the list screens: speed and modes, the options' lamps, forced players, records.
#pragma once

namespace qlm {

// The words for speed, exchanged lanes and the machine.
void DrawStatusLines();
// One lamp for each group of options.
void DrawOptions();
// The word for a chart that is forced to other players.
void DrawForcedPlayer();
// On every second call, whether the next play is recorded or a record is shown.
void DrawRecordWords();

}  // namespace qlm
