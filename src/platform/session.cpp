// The one session of the program.
#include "platform/session.h"

#include <memory>
#include <optional>
#include <utility>

#include "platform/session_search.h"
#include "platform/session_service.h"
#include "platform/session_sockets.h"

namespace platform {
namespace {

constexpr uint32_t kThisMachine = 0x7F000001;

std::unique_ptr<SessionService> session;
bool onlyThisMachine = false;
std::vector<std::u16string> notes;  // of sessions that are over
const std::vector<SessionPlayer> nobody;

}  // namespace

bool OpenSession(uint16_t port, std::u16string_view playerName) {
  LeaveSession();
  session = SessionService::Open(port, playerName);
  return session != nullptr;
}

void SearchOnlyThisMachine(bool only) { onlyThisMachine = only; }

std::vector<FoundSession> FindSessions(uint16_t port, int milliseconds) {
  return SearchSessions(onlyThisMachine ? std::vector<uint32_t>{kThisMachine} : SearchAddresses(), port,
                        milliseconds);
}

bool JoinSession(std::string_view address, uint16_t port, std::u16string_view playerName) {
  LeaveSession();
  const std::optional<SessionAddress> host = ReadSessionAddress(address, port);
  if (!host) {
    notes.emplace_back(u"Could not join: there is no such address");
    return false;
  }
  session = SessionService::Join(*host, port, playerName, notes);
  return session != nullptr;
}

void LeaveSession() {
  if (session == nullptr) return;
  const std::vector<std::u16string> last = session->TakeNotes();
  notes.insert(notes.end(), last.begin(), last.end());
  session.reset();
}

bool SessionIsOpen() { return session != nullptr; }
int32_t SessionPlayerId() { return session == nullptr ? 0 : session->PlayerId(); }
uint16_t SessionPort() { return session == nullptr ? 0 : session->Port(); }
const std::vector<SessionPlayer>& SessionPlayers() {
  return session == nullptr ? nobody : session->Players();
}
int SessionMessageCount() { return session == nullptr ? 0 : session->MessageCount(); }
SessionMessage ReceiveFromSession() { return session == nullptr ? SessionMessage() : session->Receive(); }

bool SendToSession(int32_t to, std::string_view body, int32_t from) {
  return session != nullptr && session->Send(to, body, from);
}

std::vector<std::u16string> TakeSessionNotes() {
  std::vector<std::u16string> all = std::exchange(notes, {});
  if (session != nullptr) {
    const std::vector<std::u16string> latest = session->TakeNotes();
    all.insert(all.end(), latest.begin(), latest.end());
  }
  return all;
}

}  // namespace platform
