// Questions and answers are single datagrams.
#include "platform/session_search.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <optional>
#include <random>
#include <string>

#include "platform/session_sockets.h"
#include "platform/session_wire.h"

namespace platform {
namespace {

constexpr uint32_t kThisMachine = 0x7F000001;
constexpr size_t kMostFound = 64;
constexpr int kAskedEvery = 200;  // milliseconds: a datagram may be lost

using Clock = std::chrono::steady_clock;

int MillisecondsUntil(Clock::time_point moment) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(moment - Clock::now()).count();
  return static_cast<int>(std::max<int64_t>(left, 0));
}

class SearchSocket {
 public:
  SearchSocket() : number_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
    const int yes = 1;
    if (number_ >= 0) setsockopt(number_, SOL_SOCKET, SO_BROADCAST, &yes, sizeof yes);
  }
  ~SearchSocket() {
    if (number_ >= 0) close(number_);
  }
  SearchSocket(const SearchSocket&) = delete;
  SearchSocket& operator=(const SearchSocket&) = delete;

  void Ask(uint32_t host, uint16_t port, const std::string& question) const {
    sockaddr_in to = {};
    to.sin_family = AF_INET;
    to.sin_addr.s_addr = htonl(host);
    to.sin_port = htons(port);
    // A network that cannot be asked has no session for us.
    sendto(number_, question.data(), question.size(), 0, reinterpret_cast<const sockaddr*>(&to), sizeof to);
  }

  struct Arrived {
    SessionAddress from;
    std::string bytes;
  };
  // The next datagram; nothing when none has come until then.
  std::optional<Arrived> Next(Clock::time_point until) const {
    pollfd waiting = {number_, POLLIN, 0};
    if (poll(&waiting, 1, MillisecondsUntil(until)) <= 0) return std::nullopt;
    std::array<char, 256> bytes = {};
    sockaddr_in from = {};
    socklen_t length = sizeof from;
    const ssize_t count =
        recvfrom(number_, bytes.data(), bytes.size(), 0, reinterpret_cast<sockaddr*>(&from), &length);
    const size_t got = count > 0 ? static_cast<size_t>(count) : 0;
    return Arrived{{ntohl(from.sin_addr.s_addr), ntohs(from.sin_port)}, std::string(bytes.data(), got)};
  }

 private:
  int number_;
};

std::string AddressText(const SessionAddress& address) {
  const in_addr number = {htonl(address.host)};
  std::array<char, INET_ADDRSTRLEN> text = {};
  inet_ntop(AF_INET, &number, text.data(), text.size());
  return std::string(text.data()).append(":").append(std::to_string(address.port));
}

uint64_t NewNonce() {
  std::random_device random;
  return uint64_t{random()} << 32 | random();
}

// Who did not hear the question cannot know its number.
std::optional<SearchAnswer> AnswerTo(uint64_t nonce, const std::string& bytes) {
  std::optional<SearchAnswer> answer = DecodeAnswer(bytes);
  if (answer && (answer->nonce != nonce || answer->players >= kMostPlayers)) answer.reset();
  return answer;
}

}  // namespace

std::vector<uint32_t> SearchAddresses() {
  std::vector<uint32_t> addresses = {kThisMachine};
  ifaddrs* list = nullptr;
  if (getifaddrs(&list) != 0) return addresses;
  for (const ifaddrs* each = list; each != nullptr; each = each->ifa_next) {
    const unsigned wanted = IFF_UP | IFF_BROADCAST;
    if (each->ifa_addr == nullptr || each->ifa_addr->sa_family != AF_INET ||
        (each->ifa_flags & wanted) != wanted || each->ifa_broadaddr == nullptr) {
      continue;
    }
    const uint32_t address =
        ntohl(reinterpret_cast<const sockaddr_in*>(each->ifa_broadaddr)->sin_addr.s_addr);
    if (std::find(addresses.begin(), addresses.end(), address) == addresses.end())
      addresses.push_back(address);
  }
  freeifaddrs(list);
  return addresses;
}

std::vector<FoundSession> SearchSessions(const std::vector<uint32_t>& addresses, uint16_t port,
                                         int milliseconds) {
  struct Found {
    uint64_t session;
    bool fromHere;
    FoundSession told;
  };
  std::vector<Found> found;
  const SearchSocket search;
  const uint64_t nonce = NewNonce();
  const Clock::time_point end = Clock::now() + std::chrono::milliseconds(milliseconds);
  Clock::time_point askAgain = Clock::now();
  while (Clock::now() < end) {
    if (Clock::now() >= askAgain) {
      for (const uint32_t address : addresses) search.Ask(address, port, EncodeQuestion({nonce}));
      askAgain = Clock::now() + std::chrono::milliseconds(kAskedEvery);
    }
    const auto arrived = search.Next(std::min(askAgain, end));
    const std::optional<SearchAnswer> answer = arrived ? AnswerTo(nonce, arrived->bytes) : std::nullopt;
    if (!answer) continue;
    const bool fromHere = arrived->from.host >> 24 == 127;
    const FoundSession told = {AddressText(arrived->from), answer->name, answer->players};
    const auto known = std::find_if(found.begin(), found.end(),
                                    [&](const Found& each) { return each.session == answer->session; });
    if (known == found.end()) {
      if (found.size() < kMostFound) found.push_back({answer->session, fromHere, told});
    } else if (known->fromHere && !fromHere) {
      *known = {answer->session, fromHere, told};  // an address that other machines can use too
    }
  }
  std::vector<FoundSession> sessions;
  sessions.reserve(found.size());
  for (Found& each : found) sessions.push_back(std::move(each.told));
  return sessions;
}

std::optional<SessionPing> PingSession(std::string_view address, uint16_t port, int milliseconds) {
  const std::optional<SessionAddress> asked = ReadSessionAddress(address, port);
  if (!asked) return std::nullopt;
  const SearchSocket search;
  const uint64_t nonce = NewNonce();
  const Clock::time_point begin = Clock::now();
  const Clock::time_point end = begin + std::chrono::milliseconds(milliseconds);
  search.Ask(asked->host, asked->port, EncodeQuestion({nonce}));
  while (const auto arrived = search.Next(end)) {
    const std::optional<SearchAnswer> answer = AnswerTo(nonce, arrived->bytes);
    if (!answer) continue;
    const std::chrono::duration<double, std::milli> passed = Clock::now() - begin;
    return SessionPing{{AddressText(arrived->from), answer->name, answer->players}, passed.count()};
  }
  return std::nullopt;
}

}  // namespace platform
