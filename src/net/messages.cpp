// What a machine tells the others in a battle. The battle is still to come: until then nobody listens.
#include "net/messages.h"

#include "base/numbers.h"
#include "state/gauge.h"
#include "state/network.h"

namespace qlm {

void SendCurSongData(bool) {}
void SendStandby() {}
void SendGaugeData() {}
void SendEnd() {}
void SendAttack(int32_t) {}

void StoreOwnGauge(int32_t slot, uint8_t sample) {
  NetUser* const own = network.NetUsers.Find(network.NetMyIndex);
  if (own == nullptr) return;
  own->slot = slot;
  own->gauge = sample;
  own->jpts = JPts[0];
  Assign(own->score, Narrow(Score[0]));
  own->history.Put(slot, sample);
}

}  // namespace qlm
