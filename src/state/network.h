// The players of a battle. The own row is kept in every play.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "base/table.h"
#include "base/text.h"

namespace qlm {

constexpr int32_t kSamplesASlot = 3;  // of the gauge history, in a slot of what the others see

struct NetUser {
  Text name;
  int32_t id = 0;

  // The song that the player shows or has decided: genre, title, artist, and the numbers of the list's row.
  Text songA;
  Text songB;
  Text songC;
  uint8_t level = 0;
  int32_t songValue = 0;
  int16_t notes = 0;

  // How far the player is on the way through a song.
  bool detected = false;  // has decided
  bool standby = false;   // has loaded
  bool ended = false;     // has played
  bool inSong = false;    // takes part in the song that was agreed on; a newcomer meanwhile does not

  // As the last gauge sample of a play found them.
  int32_t slot = 0;     // of the own play
  uint8_t netSlot = 0;  // hundredths of the song, as the others see them
  float gauge = 0;
  float jpts = 0;
  float score = 0;
  std::array<uint8_t, 3> gaugeDigits{};  // 10 stands for a minus
  std::array<uint8_t, 5> jptsDigits{};
  std::array<int16_t, 5> counts{};  // PERFECT to POOR
  Table<uint8_t, 99> history;       // gauge samples by slot
};

// A player's place in the table, found by id.
struct NetUserKey {
  int32_t id;
  int32_t index;
};

// What the list's loop is to do about the song that was agreed on.
enum class BattleStep { kNone, kLoad, kStart };

struct Network {
  bool NetActive = false;               // a battle session is connected
  bool NetHost = false;                 // this machine keeps the gates
  Table<NetUser, 4> NetUsers;           // in join order
  int32_t NetUserCount = 0;             // rows of it that hold a player
  int32_t NetMyIndex = 0;               // the own place among them
  int32_t NetMyId = 0;                  // 0 without a session
  std::vector<NetUserKey> NetUserKeys;  // in join order
  bool NetPlaying = false;              // not all of them have ended their play
  bool awaitsInit = false;              // joined, and the host has not sent the players yet
  int32_t awaitedHost = 0;              // whose word that is
  BattleStep step = BattleStep::kNone;
};
inline Network network;

void ResetNetwork();

}  // namespace qlm
