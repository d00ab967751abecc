// The session's routines, played by the script.
#include "tests/net/scripted_session.h"

#include <algorithm>
#include <utility>

namespace platform {

using qlm::session;

bool OpenSession(uint16_t, std::u16string_view playerName) {
  if (!session.opens) return false;
  session.open = true;
  session.ownId = 0x10001;
  session.players = {{session.ownId, std::u16string(playerName)}};
  return true;
}

std::vector<FoundSession> FindSessions(uint16_t, int) { return session.found; }

bool JoinSession(std::string_view address, uint16_t, std::u16string_view playerName) {
  session.joined = address;
  if (!session.opens) return false;
  session.open = true;
  session.ownId = 0x10002;
  session.players = {{session.ownId, std::u16string(playerName)}, {0x10001, u"Host"}};
  return true;
}

void LeaveSession() {
  session.open = false;
  session.players.clear();
}

bool SessionIsOpen() { return session.open; }
int32_t SessionPlayerId() { return session.open ? session.ownId : 0; }
uint16_t SessionPort() { return 0; }
const std::vector<SessionPlayer>& SessionPlayers() { return session.players; }
int SessionMessageCount() { return static_cast<int>(session.waiting.size()); }

SessionMessage ReceiveFromSession() {
  if (session.waiting.empty()) return {};
  SessionMessage message = std::move(session.waiting.front());
  session.waiting.pop_front();
  if (message.event == SessionEvent::kPlayerCreated) {
    session.players.insert(session.players.begin(), {message.player, u"Newest"});
  } else if (message.event == SessionEvent::kPlayerDestroyed) {
    std::erase_if(session.players, [&](const SessionPlayer& player) { return player.id == message.player; });
  }
  return message;
}

bool SendToSession(int32_t to, std::string_view body, int32_t from) {
  const bool known = to == 0 || std::ranges::count(session.players, to, &SessionPlayer::id) > 0;
  if (session.open && known) session.sent.push_back({to, from, std::string(body)});
  return session.open && known;
}

std::vector<std::u16string> TakeSessionNotes() { return std::exchange(session.notes, {}); }

}  // namespace platform
