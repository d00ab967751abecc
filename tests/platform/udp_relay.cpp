// One thread, one socket for each machine.
#include "tests/platform/udp_relay.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>

namespace platform {
namespace {

int64_t Milliseconds() {
  using std::chrono::steady_clock;
  return std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now().time_since_epoch())
      .count();
}

sockaddr_in OnThisMachine(uint16_t port) {
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(port);
  return address;
}

}  // namespace

UdpRelay::UdpRelay(const RelayWay& way, uint64_t seed)
    : way_(way), random_(seed), thread_([this] { Run(); }) {}

UdpRelay::~UdpRelay() {
  ends_ = true;
  thread_.join();
  for (const auto& [port, number] : fronts_) close(number);
}

int UdpRelay::FrontOf(uint16_t port) {
  const auto known = fronts_.find(port);
  if (known != fronts_.end()) return known->second;
  const int made = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  const sockaddr_in address = OnThisMachine(0);
  if (bind(made, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) std::abort();
  fronts_[port] = made;
  return made;
}

uint16_t UdpRelay::Expose(uint16_t port) {
  const std::lock_guard lock(mutex_);
  sockaddr_in address = {};
  socklen_t length = sizeof address;
  getsockname(FrontOf(port), reinterpret_cast<sockaddr*>(&address), &length);
  return ntohs(address.sin_port);
}

void UdpRelay::SetWay(uint16_t from, uint16_t to, const RelayWay& way) {
  const std::lock_guard lock(mutex_);
  ways_[{from, to}] = way;
}

void UdpRelay::Run() {
  while (!ends_) {
    std::vector<pollfd> sockets;
    std::vector<uint16_t> ports;
    {
      const std::lock_guard lock(mutex_);
      for (const auto& [port, number] : fronts_) {
        sockets.push_back({number, POLLIN, 0});
        ports.push_back(port);
      }
    }
    poll(sockets.data(), sockets.size(), 1);
    const std::lock_guard lock(mutex_);
    for (size_t i = 0; i < sockets.size(); ++i) {
      std::array<char, 65536> bytes;
      sockaddr_in from = {};
      socklen_t length = sizeof from;
      ssize_t count = 0;
      while ((count = recvfrom(sockets[i].fd, bytes.data(), bytes.size(), 0,
                               reinterpret_cast<sockaddr*>(&from), &length)) >= 0) {
        Arrived(ntohs(from.sin_port), ports[i], bytes.data(), static_cast<size_t>(count));
      }
    }
    while (!underWay_.empty() && underWay_.top().due <= Milliseconds()) {
      Pass(underWay_.top());
      underWay_.pop();
    }
  }
}

void UdpRelay::Arrived(uint16_t from, uint16_t to, const char* bytes, size_t length) {
  const auto special = ways_.find({from, to});
  const RelayWay& way = special == ways_.end() ? way_ : special->second;
  if (std::uniform_real_distribution<>(0, 1)(random_) < way.lost) {
    ++lost_;
    return;
  }
  const int more = way.moreAtMost > 0 ? std::uniform_int_distribution<>(0, way.moreAtMost)(random_) : 0;
  underWay_.push({Milliseconds() + way.delay + more, ++count_, from, to, {bytes, bytes + length}});
}

void UdpRelay::Pass(const Datagram& datagram) {
  int64_t& latest = latest_[{datagram.from, datagram.to}];
  if (datagram.number < latest) ++overtaken_;
  latest = std::max(latest, datagram.number);
  const sockaddr_in to = OnThisMachine(datagram.to);
  sendto(FrontOf(datagram.from), datagram.bytes.data(), datagram.bytes.size(), 0,
         reinterpret_cast<const sockaddr*>(&to), sizeof to);
}

}  // namespace platform
