// Whole sessions over 127.0.0.1: several ends in one program, each with its thread and its port.
#include "platform/session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/session_service.h"

namespace platform {
namespace {

constexpr uint32_t kThisMachine = 0x7F000001;

bool Within(int milliseconds, const std::function<bool()>& happened) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
  while (!happened()) {
    if (Clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

// One machine. Everything it received stands in `log`, as "+name", "-name", "host" and "name:body".
struct Machine {
  std::unique_ptr<SessionService> service;
  std::vector<std::string> log;
  std::vector<int32_t> ids;
};

class Sessions : public testing::Test {
 protected:
  ~Sessions() override {
    if (!HasFailure()) return;
    for (const auto& machine : machines) {
      if (machine->service != nullptr) Collect(machine->service->TakeNotes());
    }
    for (const std::u16string& note : notes) std::cerr << std::string(note.begin(), note.end()) << '\n';
  }

  void Collect(std::vector<std::u16string> more) {
    std::move(more.begin(), more.end(), std::back_inserter(notes));
  }

  // Opens a session with the first machine, and lets the others join while the first one polls.
  void Gather(size_t count) {
    for (size_t i = 0; i < count; ++i) Enter();
  }

  Machine& Enter() {
    const std::u16string name(1, static_cast<char16_t>(u'A' + machines.size()));
    auto machine = std::make_unique<Machine>();
    if (machines.empty()) {
      machine->service = SessionService::Open(0, name);
    } else {
      std::atomic<bool> done = false;
      std::thread joining([&] {
        machine->service = SessionService::Join({kThisMachine, machines[0]->service->Port()}, 0, name, notes);
        done = true;
      });
      while (!done) Poll();
      joining.join();
    }
    machines.push_back(std::move(machine));
    return *machines.back();
  }

  std::string Name(int32_t id) const { return names.contains(id) ? names.at(id) : "?"; }
  std::string Signed(const char* sign, int32_t id) const { return std::string(sign).append(Name(id)); }

  // Every machine receives what it has.
  void Poll() {
    for (const auto& machine : machines) {
      if (machine->service == nullptr) continue;
      for (const SessionPlayer& player : machine->service->Players()) Learn(player);
      while (machine->service->MessageCount() > 0) {
        const SessionMessage message = machine->service->Receive();
        for (const SessionPlayer& player : machine->service->Players()) Learn(player);
        switch (message.event) {
          case SessionEvent::kNone: machine->log.push_back(Name(message.from) + ":" + message.body); break;
          case SessionEvent::kPlayerCreated: machine->log.push_back(Signed("+", message.player)); break;
          case SessionEvent::kPlayerDestroyed: machine->log.push_back(Signed("-", message.player)); break;
          case SessionEvent::kHostMovedHere: machine->log.emplace_back("host"); break;
        }
      }
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }

  bool PollUntil(const std::function<bool()>& happened, int milliseconds = 5000) {
    return Within(milliseconds, [&] {
      Poll();
      return happened();
    });
  }

  void Learn(const SessionPlayer& player) {
    names[player.id] = std::string(player.name.begin(), player.name.end());
  }

  std::string Players(size_t machine) const {
    std::string all;
    for (const SessionPlayer& player : machines[machine]->service->Players()) all += Name(player.id);
    return all;
  }

  std::vector<std::unique_ptr<Machine>> machines;
  std::map<int32_t, std::string> names;
  std::vector<std::u16string> notes;
};

TEST_F(Sessions, ALoneHostIsItsOnlyPlayer) {
  Gather(1);
  ASSERT_NE(machines[0]->service, nullptr);
  EXPECT_GT(machines[0]->service->Port(), 0);
  EXPECT_GT(machines[0]->service->PlayerId(), 0x10000);
  ASSERT_EQ(machines[0]->service->Players().size(), 1U);
  EXPECT_EQ(machines[0]->service->Players()[0].id, machines[0]->service->PlayerId());
  EXPECT_EQ(machines[0]->service->Players()[0].name, u"A");
  EXPECT_TRUE(machines[0]->service->Send(0, "to nobody", 0));
  EXPECT_EQ(machines[0]->service->MessageCount(), 0);
}

TEST_F(Sessions, FiveHearEachOtherAndTheNewestStandsFirst) {
  Gather(5);
  ASSERT_TRUE(PollUntil([&] {
    return Players(0).size() == 5 && Players(1).size() == 5 && Players(2).size() == 5 &&
           Players(3).size() == 5;
  }));
  for (size_t i = 0; i < 5; ++i) EXPECT_EQ(Players(i), "EDCBA");
  for (const auto& machine : machines) machine->service->Send(0, "hello", 0);
  EXPECT_TRUE(PollUntil([&] {
    return std::all_of(machines.begin(), machines.end(), [](const auto& machine) {
      return std::count_if(machine->log.begin(), machine->log.end(),
                           [](const std::string& line) { return line.ends_with(":hello"); }) == 4;
    });
  }));
  EXPECT_EQ(machines[0]->log[0], "+B");
  EXPECT_EQ(machines[3]->log[0], "+E");
}

TEST_F(Sessions, WhoLeavesIsGoneForAll) {
  Gather(3);
  ASSERT_TRUE(PollUntil([&] { return Players(0).size() == 3 && Players(1).size() == 3; }));
  machines[0]->service->Send(0, "bye", 0);
  machines[0]->service.reset();
  EXPECT_TRUE(PollUntil([&] { return Players(1) == "CB" && Players(2) == "CB"; }));
  EXPECT_EQ(machines[1]->log, (std::vector<std::string>{"+C", "A:bye", "host", "-A"}));
  EXPECT_EQ(machines[2]->log, (std::vector<std::string>{"A:bye", "-A"}));
}

}  // namespace
}  // namespace platform
