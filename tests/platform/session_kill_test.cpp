// Programs that are killed in the middle of what they send. Half of what the killed one sends to one of the
// two others is lost on the way, so that they have not received the same when it dies. QLM_SESSION_KILLS says
// how often.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "tests/platform/udp_relay.h"
#include "tests/support/process.h"

namespace platform {
namespace {

using Lines = std::vector<std::string>;
using Clock = std::chrono::steady_clock;

bool Within(int milliseconds, const std::function<bool()>& happened) {
  const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
  while (!happened()) {
    if (Clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

// A running session_player.
class Player {
 public:
  explicit Player(std::vector<std::string> words) : process_(Command(std::move(words))) {}

  // What it received so far, whole lines.
  Lines Received() const {
    Lines lines;
    std::istringstream text(process_.Output());
    for (std::string line; std::getline(text, line) && !text.eof();) lines.push_back(line);
    return lines;
  }
  bool Has(const std::string& line) const {
    const Lines lines = Received();
    return std::find(lines.begin(), lines.end(), line) != lines.end();
  }
  uint16_t Port() const {
    Within(30'000, [this] { return !Received().empty(); });
    const Lines lines = Received();
    return lines.empty() ? 0 : static_cast<uint16_t>(std::stoi(lines[0].substr(5)));
  }
  void Signal(int number) { process_.Signal(number); }
  // What its session noted, until now: it is killed.
  std::string Notes() {
    process_.Kill();
    return process_.Wait().errors;
  }

  // The numbers that one sent, in the order in which they came.
  std::vector<int> NumbersOf(char name) const {
    std::vector<int> numbers;
    for (const std::string& line : Received()) {
      if (line.size() > 2 && line[0] == name && line[1] == ' ') numbers.push_back(std::stoi(line.substr(2)));
    }
    return numbers;
  }

 private:
  static std::vector<std::string> Command(std::vector<std::string> words) {
    words.insert(words.begin(), QLM_SESSION_PLAYER);
    return words;
  }
  qlm::Process process_;
};

// Three programs, of which the third sends to all until it is killed.
struct Group {
  explicit Group(uint64_t seed, bool hostSends) : relay({0, 1, 3}, seed) {
    a = std::make_unique<Player>(hostSends ? Lines{"open", "A", "400"} : Lines{"open", "A"});
    const std::string address = "127.0.0.1:" + std::to_string(relay.Expose(a->Port()));
    b = std::make_unique<Player>(Lines{"join", address, "B"});
    b->Port();
    c = std::make_unique<Player>(hostSends ? Lines{"join", address, "C"}
                                           : Lines{"join", address, "C", "400"});
    sender = hostSends ? a.get() : c.get();
    first = hostSends ? b.get() : a.get();
    second = hostSends ? c.get() : b.get();
  }
  // Only from shortly before the kill: who receives half of a stream falls behind, and is given up in the
  // end.
  void LoseHalf() { relay.SetWay(sender->Port(), second->Port(), {0.5, 1, 3}); }
  std::string Notes() const { return "first:\n" + first->Notes() + "second:\n" + second->Notes(); }

  UdpRelay relay;
  std::unique_ptr<Player> a, b, c;
  Player* sender;
  Player* first;
  Player* second;
};

int Kills() {
  const char* const wanted = std::getenv("QLM_SESSION_KILLS");
  return wanted != nullptr ? std::atoi(wanted) : 4;
}

void KillMany(bool hostSends) {
  const char name = hostSends ? 'A' : 'C';
  std::mt19937 random(7);
  int different = 0;
  // A few at a time: each waits three seconds until the dead one is given up.
  for (int done = 0; done < Kills();) {
    std::vector<std::unique_ptr<Group>> groups;
    for (int i = 0; i < 6 && done < Kills(); ++i, ++done) {
      groups.push_back(std::make_unique<Group>(static_cast<uint64_t>(done) + 1, hostSends));
    }
    for (const auto& group : groups) {
      const auto firstHas = [&] { return group->first->NumbersOf(name).size(); };
      const auto secondHas = [&] { return group->second->NumbersOf(name).size(); };
      ASSERT_TRUE(Within(30'000, [&] { return secondHas() > 5; })) << group->Notes();
      group->LoseHalf();
      ASSERT_TRUE(Within(2500, [&] { return firstHas() > secondHas() + 5; })) << group->Notes();
      std::this_thread::sleep_for(std::chrono::microseconds(random() % 20'000));
      group->sender->Signal(SIGKILL);
    }
    for (const auto& group : groups) {
      if (group->first->NumbersOf(name).size() != group->second->NumbersOf(name).size()) ++different;
    }
    const std::string gone = std::string("-").append(1, name);
    for (const auto& group : groups) {
      ASSERT_TRUE(Within(30'000, [&] { return group->first->Has(gone) && group->second->Has(gone); }));
      const std::vector<int> numbers = group->first->NumbersOf(name);
      EXPECT_EQ(numbers, group->second->NumbersOf(name));
      for (size_t i = 0; i < numbers.size(); ++i) ASSERT_EQ(numbers[i], static_cast<int>(i) + 1);
      EXPECT_EQ(group->first->Received().back(), gone);
      EXPECT_EQ(group->second->Received().back(), gone);
      EXPECT_EQ(group->first->Has("host"), hostSends);
      EXPECT_FALSE(group->second->Has("host"));
      if (testing::Test::HasFailure()) {
        FAIL() << group->Notes();
      }
    }
  }
  EXPECT_GT(different, 0) << "no survivor had less than the other, so that nothing was tried";
  testing::Test::RecordProperty("different", different);
  std::printf("%d killed, in %d the survivors had not received the same\n", Kills(), different);
}

TEST(KilledSender, SurvivorsReceiveTheSameBeforeTheyHearOfItsEnd) { KillMany(false); }

TEST(KilledSender, TheHostToo) { KillMany(true); }

// A machine that loads does not read its messages; one that stops does not answer.
TEST(StoppedProgram, IsGivenUpAndFindsItselfAlone) {
  Player a({"open", "A"});
  const std::string address = "127.0.0.1:" + std::to_string(a.Port());
  Player b({"join", address, "B"});
  b.Port();
  Player c({"join", address, "C"});
  ASSERT_TRUE(Within(30'000, [&] { return a.Has("+C") && b.Has("+C") && c.Port() != 0; }));
  a.Signal(SIGSTOP);
  const auto stopped = Clock::now();
  ASSERT_TRUE(Within(30'000, [&] { return b.Has("-A") && c.Has("-A"); }));
  const auto seconds = std::chrono::duration<double>(Clock::now() - stopped).count();
  // Three seconds after its last sign of life, which a busy machine may have sent long before.
  EXPECT_GT(seconds, 1.5);
  EXPECT_TRUE(b.Has("host"));
  a.Signal(SIGCONT);
  EXPECT_TRUE(Within(30'000, [&] { return a.Has("-B") && a.Has("-C"); }));
  EXPECT_FALSE(a.Has("host"));
}

}  // namespace
}  // namespace platform
