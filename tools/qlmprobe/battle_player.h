// One player of a battle: the game in a process of its own, with a script in the place of hands.
#pragma once

#include <string>

#include "tools/qlmprobe/arguments.h"
#include "tools/qlmprobe/battle_script.h"

namespace probe {

// What a player's process tells, a line each: a letter and what follows it.
constexpr char kSaysPort = 'P';     // the session is open at this port
constexpr char kSaysEntered = 'E';  // it is in the session and in the list
constexpr char kSaysRefused = 'R';  // it cannot get in
constexpr char kSaysLog = 'L';      // a line of its log on the battle
constexpr char kSaysStart = 'S';    // a play has begun: microseconds of the machine's clock
constexpr char kSaysDone = 'D';     // its script is through
constexpr char kSaysTable = 'T';    // how it sees the battle, a JSON object in one line
// What it is told, a letter each.
constexpr char kTellTable = 't';
constexpr char kTellEnd = 'e';

struct PlayerSeat {
  int channel = -1;     // the socket to the command
  std::string folder;   // of its own, for what the game writes
  std::string address;  // of the session; empty for who opens it
};

// Runs in a process of its own and never returns.
[[noreturn]] void RunBattlePlayer(Arguments& arguments, const BattleScript& script,
                                  const BattlePlayer& player, const PlayerSeat& seat);

}  // namespace probe
