// The network under a session: reliable links over one UDP port.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/session_members.h"

namespace platform {

// For one thread, but for Wake.
class SessionSockets {
 public:
  // Null when the port is taken or there is no network. `port` 0 takes any.
  static std::unique_ptr<SessionSockets> Open(uint16_t port);
  ~SessionSockets();
  SessionSockets(const SessionSockets&) = delete;
  SessionSockets& operator=(const SessionSockets&) = delete;

  uint16_t Port() const;
  // Milliseconds. Never virtual: the network goes on whatever the game's clock shows.
  static int64_t Now();
  // Rests until something arrives, another thread calls Wake, or so many milliseconds have passed.
  void Wait(int milliseconds);
  void Wake();
  // Tells `members` what arrived and does what it wants done.
  void Serve(SessionMembers& members);
  // Whether a link that is finished has still something to deliver.
  bool Busy() const;

  struct Inside;

 private:
  explicit SessionSockets(std::unique_ptr<Inside> inside);
  std::unique_ptr<Inside> inside_;
};

// HOST or HOST:PORT (`port` where none is given); the host by name or by the four numbers of IPv4. Waits for
// the name's servers. Nothing when there is no such host or the port is no number from 1 to 65535.
std::optional<SessionAddress> ReadSessionAddress(std::string_view text, uint16_t port);

}  // namespace platform
