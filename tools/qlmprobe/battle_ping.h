// Whether a battle can be reached over the network, and how fast.
#pragma once

#include <string>

namespace probe {

// Asks the session at HOST or HOST:PORT ten times, and prints how many answers came, in which time, and whose
// session it is. Gives the exit status: kRefused when none came.
int PingBattle(const std::string& address);

}  // namespace probe
