// The three gates of a song, which the host keeps: all have decided, all have loaded, all have ended.
//
// Each check counts and logs, on the host alone, and opens its gate when nobody is missing. Who joined
// while a song was on its way takes no part in it and holds up nobody.
#pragma once

namespace qlm {

// All have decided, the host too: everybody loads.
void NetChkDecideSong();
// All who take part have loaded, the host too: everybody plays.
void NetChkStartSong();
// All who take part have ended, the host too: the results may end.
void NetEndSong();

// A player has left: the gate that this machine stands at is checked again.
void CheckGateOnLeave();

// Who has decided takes part from here on.
void BeginSong();
// The song is over for all who took part. A newcomer's decision for the next one stays.
void FinishSong();

}  // namespace qlm
