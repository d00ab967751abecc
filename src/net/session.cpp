// Opening, joining, polling and leaving of a battle's session.
#include "net/session.h"

#include <string>

#include "base/log.h"
#include "base/numbers.h"
#include "net/gates.h"
#include "net/messages.h"
#include "net/players.h"
#include "platform/session.h"
#include "platform/timers.h"
#include "state/network.h"
#include "state/session.h"
#include "state/settings.h"

namespace qlm {
namespace {

using platform::SessionEvent;
using platform::SessionMessage;

constexpr uint32_t kPollMs = 50;
constexpr int kSearchMs = 1000;

uint16_t Port() { return RoundTo<uint16_t>(NetPort).value_or(0); }

void Enter(bool host) {
  ResetNetwork();
  network.NetActive = true;
  network.NetHost = host;
  network.awaitsInit = !host;
  network.NetMyId = platform::SessionPlayerId();
  network.awaitedHost = platform::SessionPlayers().back().id;
  platform::SetTimer(platform::kTimerNetwork, kPollMs, NetPoll);
}

// The first one that answers.
std::string FindAddress() {
  const auto found = platform::FindSessions(Port(), kSearchMs);
  return found.empty() ? std::string() : found.front().address;
}

void PlayerCreated(int32_t id) {
  joinplayer(id, u"");
  if (network.NetHost) NetWelcome(id);
}

// The host has gone before it could welcome this machine, or the player does not wait for it.
void BeginUnwelcomed() {
  JoinMissingPlayers();
  network.awaitsInit = false;
}

void PlayerDestroyed(int32_t id) {
  leaveplayer(id);
  if (network.awaitsInit && id == network.awaitedHost) BeginUnwelcomed();
  if (network.NetHost) CheckGateOnLeave();
  DebugLog(Join(u"Player is out: ", id));
}

void HostMovedHere() {
  network.NetHost = true;
  DebugLog(u"I am host.");
}

void Receive(const SessionMessage& message) {
  switch (message.event) {
    case SessionEvent::kNone: ReceiveMessage(message.from, message.body); break;
    case SessionEvent::kPlayerCreated: PlayerCreated(message.player); break;
    case SessionEvent::kPlayerDestroyed: PlayerDestroyed(message.player); break;
    case SessionEvent::kHostMovedHere: HostMovedHere(); break;
  }
}

// What the network's thread has to tell.
void LogNotes() {
  for (const Text& note : platform::TakeSessionNotes()) DebugLog(note);
}

bool Fail() {
  LogNotes();
  return false;
}

}  // namespace

bool HostBattle() {
  if (!platform::OpenSession(Port(), MyName)) return Fail();
  Enter(true);
  return true;
}

bool JoinBattle(std::string_view address) {
  const std::string session = address.empty() ? FindAddress() : std::string(address);
  if (session.empty() || !platform::JoinSession(session, Port(), MyName)) return Fail();
  Enter(false);
  return true;
}

bool StartBattle() {
  if (network.NetHost) {
    NetSendInit(true, 0);
  } else if (platform::SessionPlayers().size() < 2) {
    network.NetActive = false;
  } else if (network.awaitsInit) {
    BeginUnwelcomed();
  }
  return network.NetActive;
}

void LeaveBattle() {
  platform::KillTimer(platform::kTimerNetwork);
  platform::LeaveSession();
  ResetNetwork();
}

void NetPoll() {
  for (int left = platform::SessionMessageCount(); left > 0 && network.step == BattleStep::kNone; --left) {
    Receive(platform::ReceiveFromSession());
  }
  LogNotes();
}

}  // namespace qlm
