// What a machine tells the others in a battle. The battle is still to come: until then nobody listens.
#include "net/messages.h"

namespace qlm {

void SendStandby() {}
void SendGaugeData() {}
void SendEnd() {}
void SendAttack(int32_t) {}
void StoreOwnGauge(int32_t, uint8_t) {}

}  // namespace qlm
