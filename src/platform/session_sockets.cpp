// Links as ENet's peers.
#include "platform/session_sockets.h"

#include <enet/enet.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <chrono>
#include <map>
#include <utility>

namespace platform {
namespace {

constexpr size_t kMostPeers = 16;  // four members, and strangers
constexpr size_t kChannels = 2;    // what is guaranteed, and signs of life
constexpr uint32_t kFirstAnswer =
    150;  // milliseconds that a call waits before it is made again, then twice as long
constexpr size_t kMostWaiting = size_t{1} << 20;
constexpr uint32_t kMostFinishing = 2000;  // milliseconds for one that is dismissed to say that it knows
constexpr int64_t kMostHalfOpen = 2000;    // milliseconds for a stranger to show that its address is true

SessionAddress FromEnet(const ENetAddress& address) {
  return {ENET_NET_TO_HOST_32(address.host), address.port};
}

ENetAddress ToEnet(const SessionAddress& address) {
  return {ENET_HOST_TO_NET_32(address.host), address.port};
}

LinkId LinkOf(const ENetPeer& peer) { return static_cast<LinkId>(reinterpret_cast<uintptr_t>(peer.data)); }

}  // namespace

struct SessionSockets::Inside {
  ENetHost* host = nullptr;
  int wake = -1;
  std::map<LinkId, ENetPeer*> peers;
  std::array<int64_t, kMostPeers> halfOpenSince = {};
  SessionMembers* members = nullptr;  // while served

  void Happened(ENetEvent& event);
  void Do(const LinkTask& task);
  void Send(LinkId link, const std::string& bytes, bool guaranteed);
  void DropHalfOpen();
  static int Intercept(ENetHost* host, ENetEvent* event);
};

namespace {
thread_local SessionSockets::Inside* serving = nullptr;
}

std::unique_ptr<SessionSockets> SessionSockets::Open(uint16_t port) {
  // The first checksum makes the library's table, which several threads must not do at once.
  static const bool ready = enet_initialize() == 0 && enet_crc32(nullptr, 0) == 0;
  if (!ready) return nullptr;
  auto inside = std::make_unique<Inside>();
  const ENetAddress address = {ENET_HOST_ANY, port};
  inside->host = enet_host_create(&address, kMostPeers, kChannels, 0, 0);
  inside->wake = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  std::unique_ptr<SessionSockets> sockets(new SessionSockets(std::move(inside)));
  ENetHost* const host = sockets->inside_->host;
  if (host == nullptr || sockets->inside_->wake < 0) return nullptr;
  fcntl(host->socket, F_SETFD, FD_CLOEXEC);
  host->checksum = enet_crc32;
  host->maximumPacketSize = kLargestFrame;
  host->maximumWaitingData = kMostWaiting;
  host->intercept = Inside::Intercept;
  sockets->inside_->halfOpenSince.fill(Now());
  return sockets;
}

SessionSockets::SessionSockets(std::unique_ptr<Inside> inside) : inside_(std::move(inside)) {}

SessionSockets::~SessionSockets() {
  if (inside_->host != nullptr) enet_host_destroy(inside_->host);
  if (inside_->wake >= 0) close(inside_->wake);
}

uint16_t SessionSockets::Port() const { return inside_->host->address.port; }

int64_t SessionSockets::Now() {
  using std::chrono::steady_clock;
  return std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now().time_since_epoch())
      .count();
}

void SessionSockets::Wait(int milliseconds) {
  std::array<pollfd, 2> both = {pollfd{inside_->host->socket, POLLIN, 0}, pollfd{inside_->wake, POLLIN, 0}};
  poll(both.data(), both.size(), milliseconds);
  uint64_t count = 0;
  if (both[1].revents != 0 && read(inside_->wake, &count, sizeof count) < 0) return;
}

void SessionSockets::Wake() {
  const uint64_t one = 1;
  if (write(inside_->wake, &one, sizeof one) < 0) return;  // it is awake already
}

void SessionSockets::Serve(SessionMembers& members) {
  serving = inside_.get();
  inside_->members = &members;
  members.SetTime(Now());
  ENetEvent event;
  while (enet_host_service(inside_->host, &event, 0) > 0) inside_->Happened(event);
  members.Tick();
  for (std::vector<LinkTask> tasks; !(tasks = members.TakeTasks()).empty();) {
    for (const LinkTask& task : tasks) inside_->Do(task);
  }
  enet_host_flush(inside_->host);
  inside_->DropHalfOpen();
}

bool SessionSockets::Busy() const { return inside_->host->connectedPeers > 0; }

void SessionSockets::Inside::Happened(ENetEvent& event) {
  LinkId link = LinkOf(*event.peer);
  switch (event.type) {
    case ENET_EVENT_TYPE_CONNECT:
      // Signs of life must not be thinned out when the network gets slower.
      enet_peer_throttle_configure(event.peer, ENET_PEER_PACKET_THROTTLE_INTERVAL,
                                   ENET_PEER_PACKET_THROTTLE_ACCELERATION, 0);
      if (link != 0) {
        members->LinkMade(link);
      } else {
        link = members->LinkCame(FromEnet(event.peer->address));
        event.peer->data = reinterpret_cast<void*>(static_cast<uintptr_t>(link));
        peers[link] = event.peer;
      }
      break;
    case ENET_EVENT_TYPE_DISCONNECT:
      event.peer->data = nullptr;
      peers.erase(link);
      members->LinkLost(link);
      break;
    case ENET_EVENT_TYPE_RECEIVE:
      members->Received(link, {reinterpret_cast<const char*>(event.packet->data), event.packet->dataLength});
      enet_packet_destroy(event.packet);
      break;
    case ENET_EVENT_TYPE_NONE: break;
  }
}

void SessionSockets::Inside::Do(const LinkTask& task) {
  if (task.kind == LinkTask::Kind::kConnect) {
    const ENetAddress address = ToEnet(task.address);
    ENetPeer* const peer = enet_host_connect(host, &address, kChannels, 0);
    if (peer == nullptr) return members->LinkLost(task.link);
    // A call that is lost on the way is soon made again: so over a bad line it arrives before one gives up.
    peer->roundTripTime = kFirstAnswer;
    peer->data = reinterpret_cast<void*>(static_cast<uintptr_t>(task.link));
    peers[task.link] = peer;
    return;
  }
  const auto found = peers.find(task.link);
  if (found == peers.end()) return;
  switch (task.kind) {
    case LinkTask::Kind::kSend: Send(task.link, task.bytes, true); break;
    case LinkTask::Kind::kSendLoosely: Send(task.link, task.bytes, false); break;
    case LinkTask::Kind::kFinish:
      enet_peer_disconnect_later(found->second, 0);
      enet_peer_timeout(found->second, 0, kMostFinishing, kMostFinishing);
      if (found->second->state != ENET_PEER_STATE_DISCONNECTED) break;
      found->second->data = nullptr;  // it was never made
      peers.erase(found);
      break;
    case LinkTask::Kind::kClose:
      enet_peer_disconnect_now(found->second, 0);
      found->second->data = nullptr;
      peers.erase(found);
      break;
    case LinkTask::Kind::kConnect: break;
  }
}

void SessionSockets::Inside::Send(LinkId link, const std::string& bytes, bool guaranteed) {
  ENetPacket* const packet =
      enet_packet_create(bytes.data(), bytes.size(), guaranteed ? ENET_PACKET_FLAG_RELIABLE : 0);
  if (packet == nullptr) return;
  if (enet_peer_send(peers.at(link), guaranteed ? 0 : 1, packet) != 0) enet_packet_destroy(packet);
}

// Who never answers the answer to its call soon gives its place to others.
void SessionSockets::Inside::DropHalfOpen() {
  const int64_t now = SessionSockets::Now();
  for (size_t i = 0; i < host->peerCount; ++i) {
    ENetPeer& peer = host->peers[i];
    if (peer.state != ENET_PEER_STATE_ACKNOWLEDGING_CONNECT) {
      halfOpenSince[i] = now;
    } else if (now - halfOpenSince[i] > kMostHalfOpen) {
      enet_peer_reset(&peer);
    }
  }
}

// Searches come to the session's port, and are no business of the links.
int SessionSockets::Inside::Intercept(ENetHost* host, ENetEvent*) {
  const auto question =
      DecodeQuestion({reinterpret_cast<const char*>(host->receivedData), host->receivedDataLength});
  if (!question) return 0;
  std::optional<SearchAnswer> answer = serving->members->AnswerSearch();
  if (!answer) return 1;
  answer->nonce = question->nonce;
  std::string bytes = EncodeAnswer(*answer);
  ENetBuffer buffer = {};
  buffer.data = bytes.data();
  buffer.dataLength = bytes.size();
  const ENetAddress asker = host->receivedAddress;
  enet_socket_send(host->socket, &asker, &buffer, 1);
  return 1;
}

std::optional<SessionAddress> ReadSessionAddress(std::string_view text, uint16_t port) {
  const size_t colon = text.find(':');
  const std::string host(text.substr(0, colon));
  if (colon != std::string_view::npos) {
    const std::string_view digits = text.substr(colon + 1);
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), port);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  }
  ENetAddress address = {};
  if (host.empty() || port == 0 || enet_address_set_host(&address, host.c_str()) != 0) return std::nullopt;
  return SessionAddress{FromEnet(address).host, port};
}

}  // namespace platform
