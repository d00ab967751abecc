// The search for sessions: one question to all machines of the local network, or to one, and their answers.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/session.h"

namespace platform {

// Where to ask: the broadcast addresses of this machine's networks, and this machine itself.
std::vector<uint32_t> SearchAddresses();

// Asks at these addresses and listens for so many milliseconds. Each session once, in the order of the
// answers.
std::vector<FoundSession> SearchSessions(const std::vector<uint32_t>& addresses, uint16_t port,
                                         int milliseconds);

struct SessionPing {
  FoundSession session;
  double milliseconds = 0;  // from the question to its answer
};
// Asks the session at HOST or HOST:PORT (`port` where none is given) once. Nothing when no session with room
// answers in time, or there is no such address.
std::optional<SessionPing> PingSession(std::string_view address, uint16_t port, int milliseconds);

}  // namespace platform
