// One end of a session: the sockets, the thread that serves them, and the two queues between it and the game.
#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/session.h"
#include "platform/session_members.h"

namespace platform {

class SessionSockets;

// All but the constructor and what is marked is for the game's thread.
class SessionService {
 public:
  // Null when the port is taken; `port` 0 takes any.
  static std::unique_ptr<SessionService> Open(uint16_t port, std::u16string_view name);
  // Waits. Null when it fails; `notes` then gets the reason. When `port` is taken, any free one will do.
  static std::unique_ptr<SessionService> Join(const SessionAddress& host, uint16_t port,
                                              std::u16string_view name, std::vector<std::u16string>& notes);
  // Takes leave; waits until the others know, but no more than a quarter of a second.
  ~SessionService();
  SessionService(const SessionService&) = delete;
  SessionService& operator=(const SessionService&) = delete;

  uint16_t Port() const { return port_; }
  int32_t PlayerId() const { return playerId_; }
  const std::vector<SessionPlayer>& Players() const { return players_; }
  int MessageCount() const { return newsCount_.load(std::memory_order_acquire); }
  SessionMessage Receive();
  bool Send(int32_t to, std::string_view body, int32_t from);
  std::vector<std::u16string> TakeNotes();

 private:
  struct Order {
    enum class Kind { kToAll, kToOne, kTaken, kLeave };
    Kind kind = Kind::kLeave;
    int32_t player = 0;
    int32_t from = 0;
    std::string body = {};
  };

  explicit SessionService(std::unique_ptr<SessionSockets> sockets);
  void Start();
  void Give(Order order);

  // The service's thread.
  void Run();
  void TakeOrders();
  void Publish();

  std::unique_ptr<SessionSockets> sockets_;
  SessionMembers members_;  // the thread's, once it runs
  uint16_t port_ = 0;
  int32_t playerId_ = 0;
  std::vector<SessionPlayer> players_ = {};

  std::mutex mutex_;
  std::condition_variable changed_;
  std::atomic<int> newsCount_ = 0;
  std::atomic<bool> hasNotes_ = false;
  // Under the mutex:
  std::vector<Order> orders_ = {};
  std::deque<GameNews> news_;
  std::map<int32_t, size_t> waitingBytes_;  // of each player, in news_
  std::vector<std::u16string> notes_ = {};
  SessionMembers::State state_ = SessionMembers::State::kClosed;

  std::thread thread_;
};

}  // namespace platform
