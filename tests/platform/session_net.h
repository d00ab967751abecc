// A network without sockets for tests of the members of a session: what is under way is in the test's hand.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/session_members.h"

namespace platform {

// One machine with a game that receives when the test says so.
struct NetMachine {
  explicit NetMachine(uint64_t seed);

  SessionMembers members;
  bool dead = false;
  std::deque<GameNews> waiting;  // news that the game has not received
  // What the game received: "+ID", "-ID", "host", "ID:body" with ids by number of machine, or "?" for others.
  std::vector<std::string> log;
  std::vector<SessionPlayer> players;
  std::vector<std::string> notes;
};

class SessionNet {
 public:
  // Machine number n has the address {n + 1, 1}.
  size_t Add();
  size_t Open();
  // Asks machine `host` to let a new machine in. What follows is in Deliver and Receive.
  size_t Join(size_t host);

  NetMachine& operator[](size_t machine) { return *machines_[machine]; }
  size_t Size() const { return machines_.size(); }
  int64_t Now() const { return now_; }

  // All that is under way arrives, and games receive all, until nothing moves.
  void Settle();
  // The next of what is under way between two arrives; false when nothing is.
  bool Deliver(size_t from, size_t to);
  void DeliverAll();
  // The game of a machine receives one message; false when there is none.
  bool Receive(size_t machine);
  // Time passes for all, in steps of 50 ms; signs of life arrive at once, all else stays under way.
  void Pass(int64_t milliseconds);
  // What a machine wants done is done: the test calls it behind each call of `members`.
  void Work();

  // The machine stops. Of what is under way from it to each other, so many frames still arrive.
  void Kill(size_t machine, size_t stillArriving = ~size_t{0});
  // Nothing of what is under way from one to another arrives, but for the next `count` frames.
  void Lose(size_t from, size_t to, size_t count = 0);
  // These two never hear each other again.
  void Cut(size_t a, size_t b);
  size_t UnderWay(size_t from, size_t to);

  // Of one that the host has not let in yet: what the host's game was told.
  int32_t Id(size_t machine);
  std::string Name(int32_t id);
  // The players as the game of a machine sees them, the newest first: "CBA".
  std::string Players(size_t machine);
  void SendToAll(size_t machine, const std::string& body);
  void SendToOne(size_t machine, size_t to, const std::string& body, int32_t from = 0);

 private:
  struct End {
    size_t machine = 0;
    LinkId link = 0;
    friend auto operator<=>(const End&, const End&) = default;
  };
  struct Frame {
    enum class Kind { kCame, kMade, kBytes, kLost };
    Kind kind = Kind::kBytes;
    LinkId link = 0;  // the receiver's
    std::string bytes;
  };
  void Do(size_t machine, const LinkTask& task);
  bool AreCut(size_t a, size_t b) const;

  int64_t now_ = 1000;
  std::vector<std::unique_ptr<NetMachine>> machines_;
  std::map<std::pair<size_t, size_t>, std::deque<Frame>> underWay_;
  std::map<size_t, int32_t> ids_;  // as told to games
  std::map<End, End> other_;       // end of each link
  std::vector<std::pair<size_t, size_t>> cut_;
};

}  // namespace platform
