// A session that is a script: it stands in for the network in tests of what the game does with its messages.
// A program that links it has no other.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "platform/session.h"

namespace qlm {

struct SentMessage {
  int32_t to;
  int32_t from;
  std::string body;
};

struct ScriptedSession {
  bool open = false;
  bool opens = true;                             // OpenSession and JoinSession succeed
  std::string joined;                            // the address that was asked for
  int32_t ownId = 0;                             // 0x10001 once it is open
  std::vector<platform::SessionPlayer> players;  // newest first
  std::deque<platform::SessionMessage> waiting;
  std::vector<SentMessage> sent;
  std::vector<platform::FoundSession> found;
  std::vector<std::u16string> notes;
};
inline ScriptedSession session;

}  // namespace qlm
