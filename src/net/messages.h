// What a machine tells the others in a battle.
#pragma once

#include <cstdint>

namespace qlm {

// The row in hand of the list, and that it was decided.
void SendCurSongData(bool decided);
// The chart is loaded; the host then checks whether all stand by.
void SendStandby();
// The own gauge, figures and counts.
void SendGaugeData();
// The last gauge data and the end of the own play; the host then checks whether all have ended.
void SendEnd();
// An attack on the player at place 0 to 4.
void SendAttack(int32_t position);

// The own row of the players' table takes a gauge sample of any slot, and accuracy and score of side 0. Runs
// outside a battle too.
void StoreOwnGauge(int32_t slot, uint8_t sample);

}  // namespace qlm
