// The search for sessions: one question to all machines of the local network, and their answers.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/session.h"

namespace platform {

// Where to ask: the broadcast addresses of this machine's networks, and this machine itself.
std::vector<uint32_t> SearchAddresses();

// Asks at these addresses and listens for so many milliseconds. Each session once, in the order of the
// answers.
std::vector<FoundSession> SearchSessions(const std::vector<uint32_t>& addresses, uint16_t port,
                                         int milliseconds);

}  // namespace platform
