// The session of a battle: opened or joined, polled, and left.
#pragma once

#include <cstdint>
#include <string_view>

namespace qlm {

// Opens a session on the port of the settings, with MyName as the first player and this machine as host.
// False when that fails; nothing has changed then.
bool HostBattle();
// Joins the session at HOST or HOST:PORT, or with an empty address the first one that the local network
// answers with. On success network.awaitsInit holds until the host has told who plays: the game starts then.
// False when there is no session, or it is full; nothing has changed then.
bool JoinBattle(std::string_view address);
// The network's part of the start of the game. A host begins the players' table. False when a machine that
// is no host would be alone: it then goes on without a battle.
bool StartBattle();
// Takes leave of the others.
void LeaveBattle();

// Takes what has come from the others, in its order, up to a message that makes the list's loop load or
// play. The timer's routine: every 50 ms, from inside the pump. The startup menu calls it itself.
void NetPoll();

}  // namespace qlm
