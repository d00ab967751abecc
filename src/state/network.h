// The players of a battle. The own row is kept in every play.
#pragma once

#include <cstdint>

#include "base/table.h"

namespace qlm {

struct NetUser {
  // As the last gauge sample of a play found them.
  int32_t slot = 0;
  float gauge = 0;
  float jpts = 0;
  float score = 0;
  Table<uint8_t, 99> history;  // gauge samples by slot
};

struct Network {
  Table<NetUser, 4> NetUsers;  // in join order
  int32_t NetMyIndex = 0;      // the own place among them
  bool NetPlaying = false;     // not all of them have ended their play
};
inline Network network;

void ResetNetwork();

}  // namespace qlm
