// All that a session receives: each frame's bytes, the search, and the members behind them, with any bytes as
// what peers send and any order of events.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "platform/session_members.h"
#include "platform/session_wire.h"

namespace platform {
namespace {

void Check(bool holds) {
  if (!holds) __builtin_trap();
}

// What was read is written as it can be read again.
void CheckFrame(std::string_view bytes) {
  if (const std::optional<Frame> frame = DecodeFrame(bytes)) {
    const std::string written = EncodeFrame(*frame);
    const std::optional<Frame> again = DecodeFrame(written);
    Check(again.has_value() && again->index() == frame->index() && EncodeFrame(*again) == written);
  }
  if (const std::optional<SearchAnswer> answer = DecodeAnswer(bytes)) {
    Check(answer->name.size() <= kLongestPlayerName && EncodeAnswer(*answer).size() <= bytes.size());
  }
  if (const std::optional<SearchQuestion> question = DecodeQuestion(bytes)) {
    Check(EncodeQuestion(*question).size() == bytes.size());
  }
}

class Bytes {
 public:
  explicit Bytes(std::string_view left) : left_(left) {}
  bool Empty() const { return left_.empty(); }
  uint8_t One() {
    if (left_.empty()) return 0;
    const auto byte = static_cast<uint8_t>(left_[0]);
    left_.remove_prefix(1);
    return byte;
  }
  std::string_view Many() {
    const size_t length = One() | size_t{One()} << 8;
    const std::string_view some = left_.substr(0, length);
    left_.remove_prefix(some.size());
    return some;
  }

 private:
  std::string_view left_;
};

// One machine, and a game that holds what it is promised to be.
class Machine {
 public:
  explicit Machine(bool joins) {
    if (joins) {
      members_.Join({0x7F000001, 1}, u"me");
    } else {
      members_.Open(u"me");
    }
    Work();
  }

  void Do(Bytes& bytes) {
    switch (bytes.One() % 8) {
      case 0: links_.push_back(members_.LinkCame({0x7F000001, static_cast<uint16_t>(links_.size())})); break;
      case 1: {
        const LinkId link = AnyLink(bytes);
        const std::string_view frame = bytes.Many();
        CheckFrame(frame);
        members_.Received(link, frame);
        break;
      }
      case 2: members_.LinkLost(AnyLink(bytes)); break;
      case 3:
        members_.SetTime(now_ += bytes.One() * int64_t{20});
        members_.Tick();
        break;
      case 4: Receive(); break;
      case 5: members_.SendToAll("all", 0); break;
      case 6: members_.LinkMade(AnyLink(bytes)); break;
      case 7:
        if (!players_.empty()) members_.SendToOne(players_[bytes.One() % players_.size()], "one", 0);
        break;
    }
    Work();
  }

 private:
  LinkId AnyLink(Bytes& bytes) {
    const uint8_t which = bytes.One();
    return links_.empty() ? which : links_[which % links_.size()];
  }

  void Work() {
    for (const LinkTask& task : members_.TakeTasks()) {
      Check(task.bytes.size() <= kLargestFrame);
      Check(task.bytes.empty() || DecodeFrame(task.bytes).has_value());
      if (task.kind == LinkTask::Kind::kConnect) links_.push_back(task.link);
    }
    for (GameNews& news : members_.TakeNews()) waiting_.push_back(std::move(news));
    for (const std::u16string& note : members_.TakeNotes()) Check(note.size() < 200);
    if (players_.empty() && members_.GetState() == SessionMembers::State::kIn) {
      for (const SessionPlayer& player : members_.FirstPlayers()) players_.push_back(player.id);
    }
  }

  void Receive() {
    if (waiting_.empty() || players_.empty()) return;
    const GameNews news = waiting_.front();
    waiting_.pop_front();
    const SessionMessage& message = news.message;
    Check(news.name.size() <= kLongestPlayerName);
    if (message.event == SessionEvent::kNone) {
      Check(message.from > 0x10000 && message.body.size() <= kLargestSessionMessage);
    } else if (message.event == SessionEvent::kPlayerCreated) {
      Check(std::find(players_.begin(), players_.end(), message.player) == players_.end());
      players_.insert(players_.begin(), message.player);
      Check(players_.size() <= kMostPlayers);
      members_.NewcomerTaken(message.player);
    } else if (message.event == SessionEvent::kPlayerDestroyed) {
      Check(std::erase(players_, message.player) == 1);
    }
  }

  uint64_t count_ = 0;
  int64_t now_ = 0;
  SessionMembers members_{[this] { return ++count_; }};  // so that bytes can guess ids and tokens
  std::vector<LinkId> links_;
  std::deque<GameNews> waiting_;
  std::vector<int32_t> players_;
};

}  // namespace
}  // namespace platform

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace platform;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  CheckFrame(input);
  Bytes bytes(input);
  Machine machine(bytes.One() % 2 == 1);
  while (!bytes.Empty()) machine.Do(bytes);
  return 0;
}
