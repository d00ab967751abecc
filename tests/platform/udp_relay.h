// A bad network on 127.0.0.1: datagrams pass through it late, out of order, or not at all.
#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <queue>
#include <random>
#include <thread>
#include <vector>

namespace platform {

// What happens to datagrams.
struct RelayWay {
  double lost = 0;     // the share of them
  int delay = 0;       // milliseconds
  int moreAtMost = 0;  // by chance; more than what lies between two datagrams brings them out of order
};

// Each machine behind the relay has a port of its own in front of it, from which its datagrams come and by
// which the others reach it, as behind a router. A machine gets its port when it first sends something to
// another's.
class UdpRelay {
 public:
  explicit UdpRelay(const RelayWay& way, uint64_t seed = 1);
  ~UdpRelay();
  UdpRelay(const UdpRelay&) = delete;
  UdpRelay& operator=(const UdpRelay&) = delete;

  // The port by which the machine at this one is reached.
  uint16_t Expose(uint16_t port);
  // From now on the way from one machine to another is this. Ports are those of the machines themselves.
  void SetWay(uint16_t from, uint16_t to, const RelayWay& way);

  int64_t Lost() const { return lost_; }
  int64_t Overtaken() const { return overtaken_; }

 private:
  struct Datagram {
    int64_t due = 0;
    int64_t number = 0;
    uint16_t from = 0;  // the machines' own ports
    uint16_t to = 0;
    std::vector<char> bytes = {};
    friend bool operator>(const Datagram& a, const Datagram& b) {
      return a.due != b.due ? a.due > b.due : a.number > b.number;
    }
  };
  int FrontOf(uint16_t port);
  void Run();
  void Arrived(uint16_t from, uint16_t to, const char* bytes, size_t length);
  void Pass(const Datagram& datagram);

  std::mutex mutex_;
  RelayWay way_;
  std::mt19937_64 random_;
  std::map<uint16_t, int> fronts_;  // the socket in front of each machine
  std::map<std::pair<uint16_t, uint16_t>, RelayWay> ways_;
  std::priority_queue<Datagram, std::vector<Datagram>, std::greater<>> underWay_;
  std::map<std::pair<uint16_t, uint16_t>, int64_t> latest_;  // number that was passed last
  int64_t count_ = 0;
  std::atomic<int64_t> lost_ = 0;
  std::atomic<int64_t> overtaken_ = 0;
  std::atomic<bool> ends_ = false;
  std::thread thread_;
};

}  // namespace platform
