// What is under way stands in one queue for each direction between two machines.
#include "tests/platform/session_net.h"

#include <algorithm>
#include <random>

namespace platform {

NetMachine::NetMachine(uint64_t seed)
    : members([random = std::mt19937_64(seed)]() mutable { return random(); }) {}

size_t SessionNet::Add() {
  machines_.push_back(std::make_unique<NetMachine>(machines_.size() + 1));
  machines_.back()->members.SetTime(now_);
  return machines_.size() - 1;
}

size_t SessionNet::Open() {
  const size_t machine = Add();
  NetMachine& made = *machines_[machine];
  made.members.Open(std::u16string(1, static_cast<char16_t>(u'A' + machine)));
  made.players = made.members.FirstPlayers();
  return machine;
}

size_t SessionNet::Join(size_t host) {
  const size_t machine = Add();
  const SessionAddress address = {static_cast<uint32_t>(host + 1), 1};
  machines_[machine]->members.Join(address, std::u16string(1, static_cast<char16_t>(u'A' + machine)));
  Work();
  return machine;
}

void SessionNet::Work() {
  for (bool again = true; again;) {
    again = false;
    for (size_t i = 0; i < machines_.size(); ++i) {
      NetMachine& machine = *machines_[i];
      if (machine.dead) continue;
      for (const LinkTask& task : machine.members.TakeTasks()) {
        again = true;
        Do(i, task);
      }
      for (GameNews& news : machine.members.TakeNews()) machine.waiting.push_back(std::move(news));
      for (const std::u16string& note : machine.members.TakeNotes()) {
        machine.notes.emplace_back(note.begin(), note.end());
      }
      if (machine.players.empty() && machine.members.GetState() == SessionMembers::State::kIn) {
        machine.players = machine.members.FirstPlayers();
      }
    }
  }
}

void SessionNet::Do(size_t machine, const LinkTask& task) {
  const End here = {machine, task.link};
  if (task.kind == LinkTask::Kind::kConnect) {
    const size_t to = task.address.host - 1;
    const LinkId theirs = static_cast<LinkId>(1000000 + other_.size());  // until it has its number there
    other_[here] = {to, theirs};
    underWay_[{machine, to}].push_back({Frame::Kind::kCame, task.link, {}});
    return;
  }
  const auto there = other_.find(here);
  if (there == other_.end()) return;
  const size_t to = there->second.machine;
  std::deque<Frame>& way = underWay_[{machine, to}];
  switch (task.kind) {
    case LinkTask::Kind::kSend: way.push_back({Frame::Kind::kBytes, there->second.link, task.bytes}); break;
    case LinkTask::Kind::kSendLoosely:
      if (!machines_[to]->dead && !AreCut(machine, to)) {
        machines_[to]->members.Received(there->second.link, task.bytes);
      }
      break;
    case LinkTask::Kind::kClose:
      std::erase_if(way, [&](const Frame& frame) { return frame.link == there->second.link; });
      [[fallthrough]];
    case LinkTask::Kind::kFinish:
      way.push_back({Frame::Kind::kLost, there->second.link, {}});
      other_.erase(there);
      break;
    case LinkTask::Kind::kConnect: break;
  }
}

bool SessionNet::AreCut(size_t a, size_t b) const {
  return std::find(cut_.begin(), cut_.end(), std::pair(std::min(a, b), std::max(a, b))) != cut_.end();
}

void SessionNet::Cut(size_t a, size_t b) {
  cut_.emplace_back(std::min(a, b), std::max(a, b));
  Lose(a, b);
  Lose(b, a);
}

bool SessionNet::Deliver(size_t from, size_t to) {
  std::deque<Frame>& way = underWay_[{from, to}];
  if (way.empty()) return false;
  Frame frame = std::move(way.front());
  way.pop_front();
  if (machines_[to]->dead || AreCut(from, to)) return true;
  SessionMembers& members = machines_[to]->members;
  members.SetTime(now_);
  if (frame.kind == Frame::Kind::kCame) {
    const End caller = {from, frame.link};
    if (!other_.contains(caller)) return true;
    const LinkId mine = members.LinkCame({static_cast<uint32_t>(from + 1), 1});
    other_[caller] = {to, mine};
    other_[{to, mine}] = caller;
    underWay_[{to, from}].push_back({Frame::Kind::kMade, frame.link, {}});
  } else if (frame.kind == Frame::Kind::kMade) {
    members.LinkMade(frame.link);
  } else if (frame.kind == Frame::Kind::kBytes) {
    members.Received(frame.link, frame.bytes);
  } else {
    other_.erase({to, frame.link});
    members.LinkLost(frame.link);
  }
  Work();
  return true;
}

void SessionNet::DeliverAll() {
  for (bool moved = true; moved;) {
    moved = false;
    for (size_t from = 0; from < machines_.size(); ++from) {
      for (size_t to = 0; to < machines_.size(); ++to) {
        while (Deliver(from, to)) moved = true;
      }
    }
  }
}

bool SessionNet::Receive(size_t number) {
  NetMachine& machine = *machines_[number];
  if (machine.dead || machine.waiting.empty() || machine.players.empty()) return false;
  const GameNews news = std::move(machine.waiting.front());
  machine.waiting.pop_front();
  if (!news.name.empty()) ids_[news.name[0] - u'A'] = news.message.player;
  const std::string name = Name(news.message.player);
  switch (news.message.event) {
    case SessionEvent::kNone: machine.log.push_back(Name(news.message.from) + ":" + news.message.body); break;
    case SessionEvent::kPlayerCreated:
      machine.log.push_back(std::string("+").append(name));
      machine.players.insert(machine.players.begin(), {news.message.player, news.name});
      machine.members.NewcomerTaken(news.message.player);
      break;
    case SessionEvent::kPlayerDestroyed:
      machine.log.push_back(std::string("-").append(name));
      std::erase_if(machine.players,
                    [&](const SessionPlayer& player) { return player.id == news.message.player; });
      break;
    case SessionEvent::kHostMovedHere: machine.log.emplace_back("host"); break;
  }
  Work();
  return true;
}

void SessionNet::Settle() {
  for (bool moved = true; moved;) {
    DeliverAll();
    moved = false;
    for (size_t i = 0; i < machines_.size(); ++i) {
      while (Receive(i)) moved = true;
    }
  }
}

void SessionNet::Pass(int64_t milliseconds) {
  for (const int64_t end = now_ + milliseconds; now_ < end;) {
    now_ = std::min(now_ + 50, end);
    for (const auto& machine : machines_) {
      if (!machine->dead) machine->members.SetTime(now_);
    }
    for (const auto& machine : machines_) {
      if (!machine->dead) machine->members.Tick();
    }
    Work();
  }
}

void SessionNet::Kill(size_t machine, size_t stillArriving) {
  machines_[machine]->dead = true;
  for (size_t to = 0; to < machines_.size(); ++to) Lose(machine, to, stillArriving);
}

void SessionNet::Lose(size_t from, size_t to, size_t count) {
  std::deque<Frame>& way = underWay_[{from, to}];
  if (way.size() > count) way.resize(count);
}

size_t SessionNet::UnderWay(size_t from, size_t to) { return underWay_[{from, to}].size(); }

int32_t SessionNet::Id(size_t machine) {
  const int32_t own = machines_[machine]->members.OwnId();
  return own != 0 ? own : ids_[machine];
}

std::string SessionNet::Name(int32_t id) {
  for (size_t i = 0; i < machines_.size(); ++i) {
    if (id != 0 && Id(i) == id) return std::string(1, static_cast<char>('A' + i));
  }
  return "?";
}

std::string SessionNet::Players(size_t machine) {
  std::string all;
  for (const SessionPlayer& player : machines_[machine]->players) all += Name(player.id);
  return all;
}

void SessionNet::SendToAll(size_t machine, const std::string& body) {
  machines_[machine]->members.SendToAll(body, 0);
  Work();
}

void SessionNet::SendToOne(size_t machine, size_t to, const std::string& body, int32_t from) {
  machines_[machine]->members.SendToOne(Id(to), body, from);
  Work();
}

}  // namespace platform
