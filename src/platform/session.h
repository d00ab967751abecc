// The session of a battle: up to five programs on a network that hear each other.
//
// A thread of its own serves the network, so that a program which loads for a while stays in the session. The
// game sees what came only through ReceiveFromSession, one message at a time. All routines are for the game's
// thread and none waits for the network, but for FindSessions and JoinSession.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

constexpr size_t kMostPlayers = 5;
constexpr size_t kLongestPlayerName = 32;        // UTF-16 units; what is longer is cut
constexpr size_t kLargestSessionMessage = 4096;  // bytes

// What the session itself tells of, in SessionMessage::event.
enum class SessionEvent : int32_t {
  kNone = 0,  // a player's message
  kPlayerCreated = 3,
  kPlayerDestroyed = 5,
  kHostMovedHere = 0x101,
};

struct SessionMessage {
  int32_t from = 0;  // the sender's id, 0 for the session itself
  SessionEvent event = SessionEvent::kNone;
  int32_t player = 0;  // who came or left
  std::string body;    // of a player's message; at most kLargestSessionMessage bytes
};

struct SessionPlayer {
  int32_t id = 0;  // above 0x10000, never twice in one session
  std::u16string name;
};

struct FoundSession {
  std::string address;  // as JoinSession takes it
  std::u16string name;
  int32_t players = 0;
};

// Opens a session with this program as its host and only player. False when the port is taken or there is no
// network. Port 0 takes any free one; SessionPort tells which.
bool OpenSession(uint16_t port, std::u16string_view playerName);

// Asks the local network, by broadcast, and this machine, which sessions at `port` have room, and listens for
// `milliseconds`. Apart from this nothing is ever broadcast.
std::vector<FoundSession> FindSessions(uint16_t port, int milliseconds);
// From here on FindSessions asks 127.0.0.1 alone, or the network again. For tests and tools.
void SearchOnlyThisMachine(bool only);

// Joins the session at HOST or HOST:PORT (`port` where none is given). The own port is `port`, or any free
// one when that is taken or 0. Waits until the host's game has received the news, ten seconds at most, and
// then until every player is connected; false when that fails: then nothing of it stays, and a note says why.
bool JoinSession(std::string_view address, uint16_t port, std::u16string_view playerName);

// Takes leave of the others; they learn it at once. Waits until they have heard it, but no more than a
// quarter of a second. Nothing when no session is open.
void LeaveSession();

bool SessionIsOpen();
// The own id; 0 without a session.
int32_t SessionPlayerId();
// The port that is listened on; 0 without a session.
uint16_t SessionPort();

// The players, this program among them, the newest first. Players come into this list, and leave it, when the
// message that says so is received.
const std::vector<SessionPlayer>& SessionPlayers();

// How many messages can be received now.
int SessionMessageCount();
// The oldest message, which is taken from the queue; one with from 0 and event kNone when there is none.
SessionMessage ReceiveFromSession();

// Sends to one player, or with `to` 0 to all others: each message arrives once, and those of one sender in
// their order. What one survivor has received of a player who died, every survivor receives before the
// message that the player is gone. A host may speak for another player with `from`; from others such a
// message is dropped by who receives it. False when there is no such player, no session, or the body is too
// long.
bool SendToSession(int32_t to, std::string_view body, int32_t from = 0);

// Lines for the log on what the network's thread refused or gave up since the last call, oldest first.
std::vector<std::u16string> TakeSessionNotes();

}  // namespace platform
