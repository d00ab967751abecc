// Whole sessions over 127.0.0.1: several ends in one program, each with its thread and its port.
#include "platform/session.h"

#include <arpa/inet.h>
#include <enet/enet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "platform/session_search.h"
#include "platform/session_service.h"
#include "tests/platform/udp_relay.h"

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

  // One opens a session and the others join it, all at once, while the first one polls.
  void Gather(size_t count) {
    Begin();
    Enter(count - 1);
  }

  void Begin() {
    machines.push_back(std::make_unique<Machine>());
    machines[0]->service = SessionService::Open(0, u"A");
    ASSERT_NE(machines[0]->service, nullptr);
  }

  void Enter(size_t count = 1) {
    const uint16_t host = machines[0]->service->Port();
    const uint16_t port = relay ? relay->Expose(host) : host;
    std::atomic<size_t> done = 0;
    std::vector<std::thread> joining;
    std::vector<std::unique_ptr<Machine>> entered(count);
    std::vector<std::vector<std::u16string>> told(count);
    for (size_t i = 0; i < count; ++i) {
      joining.emplace_back([&, i] {
        const std::u16string name(1, static_cast<char16_t>(u'A' + machines.size() + i));
        entered[i] = std::make_unique<Machine>();
        // Over a bad line one may have to try again, as a person would.
        for (int tries = relay ? 3 : 1; tries > 0 && entered[i]->service == nullptr; --tries) {
          entered[i]->service = SessionService::Join({kThisMachine, port}, 0, name, told[i]);
        }
        ++done;
      });
    }
    while (done < count) Poll();
    for (std::thread& each : joining) each.join();
    for (size_t i = 0; i < count; ++i) {
      machines.push_back(std::move(entered[i]));
      Collect(told[i]);
    }
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

  bool PollUntil(const std::function<bool()>& happened, int milliseconds = 30'000) {
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

  // How many messages of others one received.
  static size_t Messages(const Machine& machine) {
    return static_cast<size_t>(
        std::count_if(machine.log.begin(), machine.log.end(),
                      [](const std::string& line) { return line.find(':') != std::string::npos; }));
  }

  // Once all are told of all.
  bool AllKnowAll() {
    return PollUntil([this] {
      for (size_t i = 0; i < machines.size(); ++i) {
        if (Players(i).size() != machines.size()) return false;
      }
      return true;
    });
  }

  std::unique_ptr<UdpRelay> relay;  // when there is one, all traffic goes through it
  std::vector<std::unique_ptr<Machine>> machines;
  std::map<int32_t, std::string> names;
  std::vector<std::u16string> notes;
};

TEST_F(Sessions, ALoneHostIsItsOnlyPlayer) {
  Gather(1);
  const SessionService& alone = *machines[0]->service;
  EXPECT_GT(alone.Port(), 0);
  EXPECT_GT(alone.PlayerId(), 0x10000);
  ASSERT_EQ(alone.Players().size(), 1U);
  EXPECT_EQ(alone.Players()[0].id, alone.PlayerId());
  EXPECT_EQ(alone.Players()[0].name, u"A");
  EXPECT_TRUE(machines[0]->service->Send(0, "to nobody", 0));
  EXPECT_EQ(alone.MessageCount(), 0);
}

TEST_F(Sessions, FiveHearEachOtherAndTheNewestStandsFirst) {
  Begin();
  for (int i = 0; i < 4; ++i) Enter();
  ASSERT_TRUE(AllKnowAll());
  for (size_t i = 0; i < 5; ++i) EXPECT_EQ(Players(i), "EDCBA");
  for (const auto& machine : machines) machine->service->Send(0, "hello", 0);
  EXPECT_TRUE(PollUntil([&] {
    return std::all_of(machines.begin(), machines.end(),
                       [](const auto& each) { return Messages(*each) == 4; });
  }));
  EXPECT_EQ(machines[0]->log[0], "+B");
  EXPECT_EQ(machines[3]->log[0], "+E");
}

TEST_F(Sessions, AMessageToOneReachesNobodyElse) {
  Gather(3);
  ASSERT_TRUE(AllKnowAll());
  SessionService& a = *machines[0]->service;
  EXPECT_TRUE(a.Send(machines[2]->service->PlayerId(), "for C", 0));
  EXPECT_FALSE(a.Send(3, "for nobody", 0));
  EXPECT_FALSE(a.Send(a.PlayerId(), "for itself", 0));
  EXPECT_TRUE(a.Send(0, "for all", 0));
  ASSERT_TRUE(PollUntil([&] { return Messages(*machines[1]) == 1 && Messages(*machines[2]) == 2; }));
  EXPECT_EQ(machines[1]->log.back(), "A:for all");
  EXPECT_EQ(machines[2]->log[machines[2]->log.size() - 2], "A:for C");
  EXPECT_EQ(machines[2]->log.back(), "A:for all");
  EXPECT_EQ(Messages(*machines[0]), 0U);
}

TEST_F(Sessions, AMessageHoldsFourKibibytesAndNotMore) {
  Gather(2);
  SessionService& a = *machines[0]->service;
  EXPECT_TRUE(a.Send(0, std::string(4096, 'x'), 0));
  EXPECT_FALSE(a.Send(0, std::string(4097, 'x'), 0));
  ASSERT_TRUE(PollUntil([&] { return Messages(*machines[1]) == 1; }));
  EXPECT_EQ(machines[1]->log[0].size(), 2U + 4096);
}

TEST_F(Sessions, WhoLeavesIsGoneForAll) {
  Gather(2);
  Enter();
  ASSERT_TRUE(AllKnowAll());
  machines[0]->service->Send(0, "bye", 0);
  machines[0]->service.reset();
  EXPECT_TRUE(PollUntil([&] { return Players(1) == "CB" && Players(2) == "CB"; }));
  for (const size_t other : {1, 2}) {
    const std::vector<std::u16string> told = machines[other]->service->TakeNotes();
    ASSERT_EQ(told.size(), 1U);
    EXPECT_TRUE(told[0].ends_with(u"is gone: it left")) << "and was not given up after a silence";
  }
  EXPECT_EQ(machines[1]->log, (std::vector<std::string>{"+C", "A:bye", "host", "-A"}));
  EXPECT_EQ(machines[2]->log, (std::vector<std::string>{"A:bye", "-A"}));
}

TEST_F(Sessions, TheSixthIsRefusedAndBothSay) {
  Gather(5);
  Enter();
  EXPECT_EQ(machines[5]->service, nullptr);
  EXPECT_EQ(notes, (std::vector<std::u16string>{u"Could not join: the session is full"}));
  const std::vector<std::u16string> hosts = machines[0]->service->TakeNotes();
  ASSERT_EQ(hosts.size(), 1U);
  EXPECT_TRUE(hosts[0].ends_with(u": the session is full"));
  EXPECT_EQ(Players(0).size(), 5U);
}

TEST_F(Sessions, APlaceThatSomebodyLeftIsFree) {
  Gather(5);
  ASSERT_TRUE(AllKnowAll());
  machines[2]->service.reset();
  ASSERT_TRUE(PollUntil([&] { return Players(0).size() == 4; }));
  Enter();
  ASSERT_NE(machines[5]->service, nullptr);
  EXPECT_TRUE(PollUntil([&] { return Players(4).size() == 5 && Players(5).size() == 5; }));
  EXPECT_EQ(Players(4)[0], 'F');
  EXPECT_EQ(Players(5).find('C'), std::string::npos);
}

// Five seconds are more than the three after which a silent machine is given up.
TEST_F(Sessions, AGameThatLoadsStaysIn) {
  Gather(2);
  machines[0]->service->Send(0, "before", 0);
  std::this_thread::sleep_for(std::chrono::seconds(4));  // nobody polls
  machines[0]->service->Send(0, "behind", 0);
  ASSERT_TRUE(PollUntil([&] { return Messages(*machines[1]) == 2; }));
  EXPECT_EQ(machines[1]->log, (std::vector<std::string>{"A:before", "A:behind"}));
  EXPECT_EQ(Players(0), "BA");
}

TEST_F(Sessions, AHostThatDoesNotReceiveLetsNobodyIn) {
  Gather(1);
  std::unique_ptr<SessionService> joined;
  std::atomic<bool> done = false;
  std::thread joining([&] {
    joined = SessionService::Join({kThisMachine, machines[0]->service->Port()}, 0, u"B", notes);
    done = true;
  });
  ASSERT_TRUE(Within(30'000, [&] { return machines[0]->service->MessageCount() == 1; }));
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  EXPECT_FALSE(done);
  Poll();
  EXPECT_TRUE(Within(30'000, [&] { return done.load(); }));
  joining.join();
  EXPECT_NE(joined, nullptr);
}

TEST_F(Sessions, WithoutAHostJoiningFailsAfterFourSeconds) {
  const auto begin = std::chrono::steady_clock::now();
  uint16_t port = 0;
  {
    const auto gone = SessionService::Open(0, u"gone");
    port = gone->Port();
  }
  EXPECT_EQ(SessionService::Join({kThisMachine, port}, 0, u"B", notes), nullptr);
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  EXPECT_GT(seconds, 3.9);
  EXPECT_EQ(notes.back(), u"Could not join: it does not answer");
}

TEST_F(Sessions, APortThatIsTakenOpensNothingAndAJoinerTakesAnother) {
  Gather(1);
  const uint16_t port = machines[0]->service->Port();
  EXPECT_EQ(SessionService::Open(port, u"B"), nullptr);
  std::unique_ptr<SessionService> joined;
  std::atomic<bool> done = false;
  std::thread joining([&] {
    joined = SessionService::Join({kThisMachine, port}, port, u"B", notes);
    done = true;
  });
  while (!done) Poll();
  joining.join();
  ASSERT_NE(joined, nullptr);
  EXPECT_NE(joined->Port(), port);
}

// 10% of all datagrams are lost, the others take 100 ms and more, and overtake each other.
TEST_F(Sessions, FiveExchangeThousandsOfMessagesOverABadNetwork) {
  relay = std::make_unique<UdpRelay>(RelayWay{0.1, 100, 40});
  Gather(5);
  for (const auto& machine : machines) ASSERT_NE(machine->service, nullptr);
  ASSERT_TRUE(AllKnowAll());
  for (const auto& machine : machines) machine->log.clear();
  constexpr size_t kEach = 200;
  for (size_t i = 0; i < kEach; ++i) {
    for (const auto& machine : machines) machine->service->Send(0, std::to_string(i), 0);
    Poll();
    std::this_thread::sleep_for(std::chrono::milliseconds(4));
  }
  EXPECT_TRUE(PollUntil(
      [&] {
        return std::all_of(machines.begin(), machines.end(),
                           [](const auto& each) { return Messages(*each) == 4 * kEach; });
      },
      60'000));
  for (const auto& machine : machines) {
    std::map<char, size_t> next;
    EXPECT_EQ(machine->log.size(), 4 * kEach);
    for (const std::string& line : machine->log) {
      ASSERT_EQ(line.substr(1), std::string(":").append(std::to_string(next[line[0]]++)));
    }
  }
  EXPECT_GT(relay->Lost(), 100);
  EXPECT_GT(relay->Overtaken(), 100);
}

// A socket of a stranger's.
class Stranger {
 public:
  Stranger() : number_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {}
  ~Stranger() { close(number_); }
  Stranger(const Stranger&) = delete;
  Stranger& operator=(const Stranger&) = delete;
  void Send(uint16_t port, const std::string& bytes) const {
    sockaddr_in to = {};
    to.sin_family = AF_INET;
    to.sin_addr.s_addr = htonl(kThisMachine);
    to.sin_port = htons(port);
    sendto(number_, bytes.data(), bytes.size(), 0, reinterpret_cast<const sockaddr*>(&to), sizeof to);
  }

 private:
  int number_;
};

TEST_F(Sessions, DatagramsOfAnyBytesDisturbNobody) {
  Gather(2);
  const Stranger stranger;
  std::mt19937 random(5);
  for (int i = 0; i < 5000; ++i) {
    std::string bytes(random() % 200, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    if (i % 2 == 0 && bytes.size() > 2)
      bytes[0] = static_cast<char>(0x8F), bytes[1] = static_cast<char>(0xFF);  // a call
    stranger.Send(machines[static_cast<size_t>(i % 4 / 2)]->service->Port(), bytes);
  }
  machines[0]->service->Send(0, "still here", 0);
  machines[1]->service->Send(0, "still here", 0);
  EXPECT_TRUE(PollUntil([&] { return Messages(*machines[0]) == 1 && Messages(*machines[1]) == 1; }));
  Enter();
  EXPECT_NE(machines[2]->service, nullptr);
}

// Sixteen call and never say a word more: they take all places for a while, and then one that means it comes
// in.
TEST_F(Sessions, WhoCallsAndFallsSilentKeepsNobodyOutForLong) {
  Gather(1);
  std::vector<ENetHost*> callers;
  for (int i = 0; i < 16; ++i) {
    ENetHost* const caller = enet_host_create(nullptr, 1, 2, 0, 0);
    caller->checksum = enet_crc32;
    ENetAddress to = {ENET_HOST_TO_NET_32(kThisMachine), machines[0]->service->Port()};
    enet_host_connect(caller, &to, 2, 0);
    enet_host_flush(caller);  // and never again
    callers.push_back(caller);
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  Enter();
  EXPECT_NE(machines[1]->service, nullptr);
  for (ENetHost* const caller : callers) enet_host_destroy(caller);
}

class OneSession : public testing::Test {
 protected:
  ~OneSession() override {
    LeaveSession();
    TakeSessionNotes();
  }
};

TEST_F(OneSession, WithoutOneNothingHappens) {
  EXPECT_FALSE(SessionIsOpen());
  EXPECT_EQ(SessionPlayerId(), 0);
  EXPECT_EQ(SessionPort(), 0);
  EXPECT_TRUE(SessionPlayers().empty());
  EXPECT_EQ(SessionMessageCount(), 0);
  EXPECT_EQ(ReceiveFromSession().event, SessionEvent::kNone);
  EXPECT_FALSE(SendToSession(0, "x"));
  LeaveSession();
}

TEST_F(OneSession, IsOpenUntilItIsLeft) {
  ASSERT_TRUE(OpenSession(0, u"me"));
  EXPECT_TRUE(SessionIsOpen());
  EXPECT_EQ(SessionPlayers().size(), 1U);
  const int32_t id = SessionPlayerId();
  ASSERT_TRUE(OpenSession(0, u"me again"));
  EXPECT_NE(SessionPlayerId(), id);
  LeaveSession();
  EXPECT_FALSE(SessionIsOpen());
}

TEST_F(OneSession, AnAddressIsAHostAndPerhapsAPort) {
  for (const char* const wrong : {"", ":", ":80", "127.0.0.1:", "127.0.0.1:x", "127.0.0.1:70000",
                                  "127.0.0.1:0", "127.0.0.1:80x", "[::1]:80", "127.0.0.1:80:80"}) {
    EXPECT_FALSE(JoinSession(wrong, 4000, u"me")) << wrong;
    const std::vector<std::u16string> notes = TakeSessionNotes();
    ASSERT_EQ(notes.size(), 1U) << wrong;
    EXPECT_EQ(notes[0], u"Could not join: there is no such address");
  }
}

TEST_F(OneSession, JoinsByAddressWithAndWithoutPort) {
  for (const bool withPort : {true, false}) {
    const auto host = SessionService::Open(0, u"host");
    std::atomic<bool> done = false;
    std::thread polling([&] {
      while (!done) {
        host->Receive();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
      }
    });
    const std::string address = withPort ? "127.0.0.1:" + std::to_string(host->Port()) : "localhost";
    EXPECT_TRUE(JoinSession(address, withPort ? 0 : host->Port(), u"me")) << address;
    done = true;
    polling.join();
    EXPECT_EQ(SessionPlayers().size(), 2U);
    LeaveSession();
  }
}

// A search lasts for as long as it is told to, answers or not, and the session's thread may be late to
// answer.
std::vector<FoundSession> SearchUntilFound(const std::function<std::vector<FoundSession>(int)>& search) {
  std::vector<FoundSession> found = search(100);
  for (int tries = 0; tries < 5 && found.empty(); ++tries) found = search(2000);
  return found;
}

TEST_F(OneSession, ASearchFindsWhatHasRoom) {
  SearchOnlyThisMachine(true);
  const auto host = SessionService::Open(0, u"the host");
  const auto found =
      SearchUntilFound([&](int milliseconds) { return FindSessions(host->Port(), milliseconds); });
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].address, "127.0.0.1:" + std::to_string(host->Port()));
  EXPECT_EQ(found[0].name, u"the host");
  EXPECT_EQ(found[0].players, 1);
}

TEST_F(Sessions, ASearchDoesNotFindAFullSessionNorAMember) {
  SearchOnlyThisMachine(true);
  Gather(4);
  const uint16_t port = machines[0]->service->Port();
  EXPECT_EQ(SearchUntilFound([&](int milliseconds) { return FindSessions(port, milliseconds); }).size(), 1U);
  EXPECT_EQ(FindSessions(machines[1]->service->Port(), 60).size(), 0U);
  Enter();
  EXPECT_EQ(FindSessions(port, 60).size(), 0U);
}

// The broadcast address of this machine alone.
TEST_F(OneSession, ABroadcastReachesTheSession) {
  const auto host = SessionService::Open(0, u"the host");
  const auto found = SearchUntilFound(
      [&](int milliseconds) { return SearchSessions({0x7FFFFFFF}, host->Port(), milliseconds); });
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].name, u"the host");
}

}  // namespace
}  // namespace platform
