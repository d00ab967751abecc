// What the machines of a battle tell each other, and what it makes this one do.
#pragma once

#include <cstdint>
#include <string_view>

namespace qlm {

// The row in hand of the list, and whether it was decided; the host then checks whether all have.
void SendCurSongData(bool decided);
// The chart is loaded; the host then checks whether all stand by.
void SendStandby();
// A gauge sample of the own play, with its figures and counts.
void SendGaugeData(uint8_t sample);
// The last gauge data and the end of the own play; the host then checks whether all have ended.
void SendEnd();
// An attack on the player at place 0 to 4.
// Quirk: the place is counted from 1 and leads to a row of the table where an id is wanted: 1 attacks all
// others, 0 does nothing, the rest reach nobody.
void SendAttack(int32_t position);

// The players of the session, oldest first, into the table and to a player, or with `id` 0 to all.
void NetSendInit(bool ownInit, int32_t id);
// What a newcomer needs to know of the others.
// Quirk: it is told that who has not decided has, and the other way round.
void NetWelcome(int32_t id);

// Takes a message from a player. One that is not in the table changes nothing, and neither do unknown
// messages. What makes the list's loop load or play is noted in network.step.
void ReceiveMessage(int32_t from, std::string_view body);

// The own row of the players' table takes a gauge sample of any slot, and accuracy and score of side 0. Runs
// outside a battle too.
void StoreOwnGauge(int32_t slot, uint8_t sample);

}  // namespace qlm
