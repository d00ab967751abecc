// The table of the players of a battle.
#pragma once

#include <cstdint>

#include "base/text.h"
#include "state/network.h"

namespace qlm {

// A new row at the end of the table. Without a name it takes that of the session's newest player; a name is
// cut to what the session holds of one. Nothing happens for an id that is in the table, nor when that is
// full.
void joinplayer(int32_t id, TextView name);
// The row goes, and those behind it move up. Nothing happens for an unknown id.
void leaveplayer(int32_t id);
// An empty table.
void ForgetPlayers();
// Whoever of the session is not in the table, oldest first.
void JoinMissingPlayers();

// The row of a player; null for an id that is not in the table.
NetUser* FindNetUser(int32_t id);
// The own row, which there always is.
NetUser& OwnNetUser();

}  // namespace qlm
