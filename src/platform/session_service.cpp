// The thread and its queues.
#include "platform/session_service.h"

#include <chrono>
#include <random>
#include <utility>

#include "platform/session_sockets.h"

namespace platform {
namespace {

constexpr int kServedEvery = 10;  // milliseconds without anything that arrives
constexpr int kMostLeaving = 250;
constexpr size_t kMostWaitingBytes = size_t{4} << 20;  // of one player, before it is given up
constexpr size_t kMostNotes = 100;

uint64_t Unguessable() {
  static thread_local std::random_device device;
  return uint64_t{device()} << 32 | device();
}

}  // namespace

SessionService::SessionService(std::unique_ptr<SessionSockets> sockets)
    : sockets_(std::move(sockets)), members_(Unguessable), port_(sockets_->Port()) {
  members_.SetTime(SessionSockets::Now());
}

std::unique_ptr<SessionService> SessionService::Open(uint16_t port, std::u16string_view name) {
  std::unique_ptr<SessionSockets> sockets = SessionSockets::Open(port);
  if (sockets == nullptr) return nullptr;
  std::unique_ptr<SessionService> service(new SessionService(std::move(sockets)));
  service->members_.Open(name);
  service->playerId_ = service->members_.OwnId();
  service->players_ = service->members_.FirstPlayers();
  service->Start();
  return service;
}

std::unique_ptr<SessionService> SessionService::Join(const SessionAddress& host, uint16_t port,
                                                     std::u16string_view name,
                                                     std::vector<std::u16string>& notes) {
  std::unique_ptr<SessionSockets> sockets = SessionSockets::Open(port);
  if (sockets == nullptr) sockets = SessionSockets::Open(0);
  if (sockets == nullptr) {
    notes.emplace_back(u"Could not join: there is no network");
    return nullptr;
  }
  std::unique_ptr<SessionService> service(new SessionService(std::move(sockets)));
  service->members_.Join(host, name);
  service->Start();
  std::unique_lock lock(service->mutex_);
  service->changed_.wait(lock, [&] { return service->state_ != SessionMembers::State::kJoining; });
  if (service->state_ == SessionMembers::State::kIn) return service;
  std::move(service->notes_.begin(), service->notes_.end(), std::back_inserter(notes));
  lock.unlock();
  return nullptr;
}

SessionService::~SessionService() {
  Give({.kind = Order::Kind::kLeave});
  thread_.join();
}

void SessionService::Start() {
  state_ = members_.GetState();
  sockets_->Wake();  // what is to be done already waits for nothing
  thread_ = std::thread([this] { Run(); });
}

void SessionService::Give(Order order) {
  {
    const std::lock_guard lock(mutex_);
    orders_.push_back(std::move(order));
  }
  sockets_->Wake();
}

SessionMessage SessionService::Receive() {
  if (MessageCount() == 0) return {};
  GameNews news;
  {
    const std::lock_guard lock(mutex_);
    news = std::move(news_.front());
    news_.pop_front();
    newsCount_.fetch_sub(1, std::memory_order_release);
    if (news.message.from != 0) waitingBytes_[news.message.from] -= news.message.body.size();
  }
  const int32_t player = news.message.player;
  if (news.message.event == SessionEvent::kPlayerCreated) {
    players_.insert(players_.begin(), {player, std::move(news.name)});
    Give({.kind = Order::Kind::kTaken, .player = player});
  } else if (news.message.event == SessionEvent::kPlayerDestroyed) {
    std::erase_if(players_, [player](const SessionPlayer& each) { return each.id == player; });
  }
  return std::move(news.message);
}

bool SessionService::Send(int32_t to, std::string_view body, int32_t from) {
  if (body.size() > kLargestSessionMessage) return false;
  if (to == 0) {
    Give({Order::Kind::kToAll, 0, from, std::string(body)});
    return true;
  }
  for (const SessionPlayer& player : players_) {
    if (player.id != to || to == playerId_) continue;
    Give({Order::Kind::kToOne, to, from, std::string(body)});
    return true;
  }
  return false;
}

std::vector<std::u16string> SessionService::TakeNotes() {
  if (!hasNotes_.exchange(false)) return {};
  const std::lock_guard lock(mutex_);
  return std::exchange(notes_, {});
}

void SessionService::Run() {
  while (members_.GetState() != SessionMembers::State::kClosed) {
    sockets_->Wait(kServedEvery);
    TakeOrders();
    sockets_->Serve(members_);
    Publish();
  }
  using Clock = std::chrono::steady_clock;
  const Clock::time_point end = Clock::now() + std::chrono::milliseconds(kMostLeaving);
  while (sockets_->Busy() && Clock::now() < end) {
    sockets_->Wait(1);
    sockets_->Serve(members_);
  }
}

void SessionService::TakeOrders() {
  std::vector<Order> orders;
  {
    const std::lock_guard lock(mutex_);
    orders.swap(orders_);
  }
  for (const Order& order : orders) {
    switch (order.kind) {
      case Order::Kind::kToAll: members_.SendToAll(order.body, order.from); break;
      case Order::Kind::kToOne: members_.SendToOne(order.player, order.body, order.from); break;
      case Order::Kind::kTaken: members_.NewcomerTaken(order.player); break;
      case Order::Kind::kLeave: members_.Leave(); break;
    }
  }
}

void SessionService::Publish() {
  std::vector<GameNews> news = members_.TakeNews();
  std::vector<std::u16string> notes = members_.TakeNotes();
  const SessionMembers::State state = members_.GetState();
  std::vector<int32_t> tooMuch;
  {
    const std::lock_guard lock(mutex_);
    for (GameNews& each : news) {
      if (const int32_t from = each.message.from; from != 0) {
        size_t& waiting = waitingBytes_[from];
        waiting += each.message.body.size();
        if (waiting > kMostWaitingBytes) tooMuch.push_back(from);
      }
      news_.push_back(std::move(each));
    }
    newsCount_.store(static_cast<int>(news_.size()), std::memory_order_release);
    for (std::u16string& note : notes) {
      if (notes_.size() < kMostNotes) notes_.push_back(std::move(note));
    }
    if (!notes_.empty()) hasNotes_ = true;
    if (state_ == SessionMembers::State::kJoining && state == SessionMembers::State::kIn) {
      playerId_ = members_.OwnId();
      players_ = members_.FirstPlayers();
    }
    if (state_ != state) changed_.notify_all();
    state_ = state;
  }
  for (const int32_t player : tooMuch) members_.GiveUp(player, u"it sends more than the game can take");
}

}  // namespace platform
