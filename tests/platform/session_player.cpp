// A program with a session in it, for tests that kill it. Writes its port, and then all that it receives, a
// line each: "+NAME", "-NAME", "host", "NAME BODY".
//
//   session_player open NAME[:PORT]          opens one
//   session_player join ADDRESS NAME         joins one
//   session_player find PORT                 writes a line "ADDRESS NAME PLAYERS" for each that is found
// With a number behind the name: sends so many messages a second to all, "1", "2", ..., once it has two
// others.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <thread>

#include "platform/session.h"

namespace {

using namespace platform;
using Clock = std::chrono::steady_clock;

std::map<int32_t, std::string> names;

void LearnNames() {
  for (const SessionPlayer& player : SessionPlayers())
    names[player.id] = {player.name.begin(), player.name.end()};
}

void ReceiveAll() {
  while (SessionMessageCount() > 0) {
    LearnNames();
    const SessionMessage message = ReceiveFromSession();
    LearnNames();
    const char* const player = names[message.player].c_str();
    switch (message.event) {
      case SessionEvent::kNone:
        std::printf("%s %s\n", names[message.from].c_str(), message.body.c_str());
        break;
      case SessionEvent::kPlayerCreated: std::printf("+%s\n", player); break;
      case SessionEvent::kPlayerDestroyed: std::printf("-%s\n", player); break;
      case SessionEvent::kHostMovedHere: std::printf("host\n"); break;
    }
    std::fflush(stdout);
  }
  for (const std::u16string& note : TakeSessionNotes()) {
    std::fprintf(stderr, "%s\n", std::string(note.begin(), note.end()).c_str());
  }
}

}  // namespace

int main(int count, char** words) {
  if (count > 2 && std::string_view(words[1]) == "find") {
    for (const FoundSession& found : FindSessions(static_cast<uint16_t>(std::atoi(words[2])), 500)) {
      const std::string name(found.name.begin(), found.name.end());
      std::printf("%s %s %d\n", found.address.c_str(), name.c_str(), found.players);
    }
    return 0;
  }
  const bool opens = count > 2 && std::string_view(words[1]) == "open";
  const int at = opens ? 2 : 3;
  if (count <= at) return 2;
  const std::string word = words[at];
  const std::string name = word.substr(0, word.find(':'));
  const size_t colon = word.find(':');
  const uint16_t port =
      colon == std::string::npos ? 0 : static_cast<uint16_t>(std::stoi(word.substr(colon + 1)));
  const std::u16string wide(name.begin(), name.end());
  if (!(opens ? OpenSession(port, wide) : JoinSession(words[2], 0, wide))) {
    ReceiveAll();
    return 1;
  }
  std::printf("port %d\n", SessionPort());
  std::fflush(stdout);
  const int perSecond = count > at + 1 ? std::atoi(words[at + 1]) : 0;
  int64_t sent = 0;
  Clock::time_point begin = {};
  while (true) {
    ReceiveAll();
    if (perSecond > 0 && SessionPlayers().size() >= 3) {
      if (sent == 0) begin = Clock::now();
      const int64_t wanted = 1 + (Clock::now() - begin) * perSecond / std::chrono::seconds(1);
      for (; sent < wanted; ++sent) SendToSession(0, std::to_string(sent + 1));
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}
