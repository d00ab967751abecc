// Thousands of sessions by chance: machines join, talk, leave and die in any order and in the middle of
// anything, and what every session promises is checked at the end. QLM_SESSION_RUNS says how many.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/platform/session_net.h"

namespace platform {
namespace {

class Chance {
 public:
  Chance(uint64_t seed, bool cuts) : random_(seed), cuts_(cuts) {
    net_.Open();
    for (int i = 0; i < 4; ++i) {
      net_.Join(0);
      if (Below(2) == 0) Settle();
    }
  }

  void Run() {
    const int steps = 200 + static_cast<int>(Below(1500));
    for (int i = 0; i < steps; ++i) Step();
    // Then nothing else happens, and all that goes on comes to its end.
    for (int i = 0; i < 400; ++i) {
      Settle();
      net_.Pass(100);
    }
    Settle();
  }

  // What every machine that lives saw is right; the reason if not.
  void Check() {
    for (size_t i = 0; i < net_.Size(); ++i) {
      if (Lives(i)) CheckOne(i);
    }
    for (size_t i = 0; i < net_.Size(); ++i) {
      for (size_t j = 0; j < net_.Size(); ++j) {
        if (Lives(i) && Lives(j) && net_.Players(i).find(Name(j)) != std::string::npos) CheckPair(i, j);
      }
    }
  }

  std::string Logs() {
    std::string all;
    for (size_t i = 0; i < net_.Size(); ++i) {
      all.append("\n")
          .append(Name(i))
          .append(net_[i].dead ? " (dead)" : "")
          .append(" with ")
          .append(net_.Players(i))
          .append(":");
      for (const std::string& line : net_[i].log) all.append(" ").append(line);
      for (const std::string& note : net_[i].notes) all.append("\n    ").append(note);
    }
    return all;
  }

  int Deaths() const { return deaths_; }
  size_t Messages() const { return recipients_.size(); }

 private:
  uint64_t Below(uint64_t end) { return random_() % end; }
  std::string Name(size_t machine) const { return std::string(1, static_cast<char>('A' + machine)); }
  bool Lives(size_t i) { return !net_[i].dead && net_[i].members.GetState() == SessionMembers::State::kIn; }

  // As the game does: each newcomer is greeted by the host when its game hears of it.
  void Receive(size_t i) {
    const size_t before = net_[i].log.size();
    if (!net_.Receive(i) || net_[i].log.size() == before) return;
    const std::string line = net_[i].log.back();
    if (line == "host") hosts_.insert(i);
    if (line[0] == '+' && hosts_.contains(i))
      net_.SendToOne(i, line[1] - 'A', std::string("welcome").append(line, 1));
  }

  void Settle() {
    for (bool moved = true; moved;) {
      net_.DeliverAll();
      moved = false;
      for (size_t i = 0; i < net_.Size(); ++i) {
        for (size_t before = ~size_t{0}; before != net_[i].log.size();) {
          before = net_[i].log.size();
          Receive(i);
          if (net_[i].log.size() != before) moved = true;
        }
      }
    }
  }

  void Step() {
    const size_t i = Below(net_.Size());
    const size_t j = Below(net_.Size());
    const uint64_t what = Below(1000);
    if (what < 500) {
      for (uint64_t count = Below(4); count > 0; --count) net_.Deliver(i, j);
    } else if (what < 700) {
      Receive(i);
    } else if (what < 850) {
      if (Lives(i)) Say(i);
    } else if (what < 970) {
      net_.Pass(static_cast<int64_t>(10 + Below(150)));
    } else if (what < 985) {
      if (net_.Size() < 14 && Lives(i)) net_.Join(i);
    } else if (what < 988 && cuts_) {
      if (i != j) net_.Cut(i, j);
    } else if (Lives(i) || net_[i].members.GetState() == SessionMembers::State::kJoining) {
      if (Below(4) == 0 && Lives(i)) {
        net_[i].members.Leave();
        net_.Work();
        net_[i].dead = true;  // what it sent still arrives
      } else {
        ++deaths_;
        net_[i].dead = true;
        for (size_t to = 0; to < net_.Size(); ++to) net_.Lose(i, to, Below(net_.UnderWay(i, to) + 1));
      }
    }
  }

  void Say(size_t i) {
    const std::string body = std::to_string(++said_[i]);
    std::set<std::string>& to = recipients_[Name(i).append(":").append(body)];
    for (const SessionPlayer& player : net_[i].players) to.insert(net_.Name(player.id));
    net_.SendToAll(i, body);
  }

  void CheckOne(size_t i) {
    std::set<char> here;
    std::map<char, int> last;
    const auto& log = net_[i].log;
    std::set<char> everHere;
    for (size_t at = 0; at < log.size(); ++at) {
      const std::string& line = log[at];
      if (line == "host") {
        ASSERT_LT(at + 1, log.size());
        EXPECT_EQ(log[at + 1][0], '-')
            << "behind the news of being host comes the old host's end, at " << Name(i);
      } else if (line[0] == '+') {
        EXPECT_TRUE(everHere.insert(line[1]).second) << line << " twice at " << Name(i);
        here.insert(line[1]);
        EXPECT_LE(here.size(), 4U) << Name(i);
      } else if (line[0] == '-') {
        here.erase(line[1]);
        everHere.insert(line[1]);
        last[line[1]] = 1 << 30;  // nothing may follow
      } else if (line.find(":welcome") != std::string::npos) {
        EXPECT_EQ(line.substr(9), Name(i));
        for (size_t earlier = 0; earlier < at; ++earlier) {
          EXPECT_NE(log[earlier][0], '+') << log[earlier] << " before the host's welcome, at " << Name(i);
        }
      } else {
        const int number = std::stoi(line.substr(2));
        EXPECT_GT(number, last[line[0]]) << line << " at " << Name(i);
        last[line[0]] = number;
      }
    }
    // The players at the end are those who live, and the oldest of them alone is host.
    int hosts = 0;
    for (const char each : net_.Players(i)) {
      const size_t other = static_cast<size_t>(each - 'A');
      EXPECT_TRUE(Lives(other)) << each << " is dead, but a player at " << Name(i);
      if (!Lives(other)) continue;
      EXPECT_EQ(SortedPlayers(other), SortedPlayers(i)) << "at " << each << " and " << Name(i);
      if (net_[other].members.IsHost()) ++hosts;
    }
    EXPECT_EQ(hosts, 1) << "hosts seen by " << Name(i);
  }

  std::string SortedPlayers(size_t i) {
    std::string players = net_.Players(i);
    std::sort(players.begin(), players.end());
    return players;
  }

  // What one received and was meant for the other too, the other received.
  void CheckPair(size_t i, size_t j) {
    const std::set<std::string> has(net_[j].log.begin(), net_[j].log.end());
    for (const std::string& line : net_[i].log) {
      const auto meant = recipients_.find(line);
      if (meant == recipients_.end() || !meant->second.contains(Name(j)) || line[0] == Name(j)[0]) continue;
      EXPECT_TRUE(has.contains(line)) << Name(i) << " received " << line << ", and " << Name(j) << " did not";
    }
  }

  std::mt19937_64 random_;
  bool cuts_;
  SessionNet net_;
  std::set<size_t> hosts_ = {0};  // as their games know
  std::map<size_t, int> said_;
  std::map<std::string, std::set<std::string>> recipients_;
  int deaths_ = 0;
};

uint64_t Runs() {
  const char* const wanted = std::getenv("QLM_SESSION_RUNS");
  return wanted != nullptr ? std::strtoull(wanted, nullptr, 10) : 300;
}

void RunAll(bool cuts) {
  size_t messages = 0;
  int deaths = 0;
  for (uint64_t seed = 1; seed <= Runs(); ++seed) {
    Chance chance(seed, cuts);
    chance.Run();
    chance.Check();
    messages += chance.Messages();
    deaths += chance.Deaths();
    ASSERT_FALSE(testing::Test::HasFailure()) << "with seed " << seed << chance.Logs();
  }
  EXPECT_GT(messages, Runs());
  EXPECT_GT(deaths, static_cast<int>(Runs()) / 2);
}

TEST(SessionsByChance, WhereNobodyDiesAllComeIn) {
  for (uint64_t seed = 1; seed <= Runs(); ++seed) {
    std::mt19937_64 random(seed);
    SessionNet net;
    net.Open();
    for (int i = 0; i < 4; ++i) net.Join(0);
    for (int i = 0; i < 300; ++i) {
      net.Deliver(random() % 5, random() % 5);
      net.Receive(random() % 5);
    }
    net.Settle();
    for (size_t i = 0; i < 5; ++i) {
      ASSERT_EQ(net[i].members.GetState(), SessionMembers::State::kIn)
          << "machine " << i << ", seed " << seed;
      ASSERT_EQ(net.Players(i).size(), 5U) << "machine " << i << ", seed " << seed;
    }
  }
}

TEST(SessionsByChance, AllAgreeOnPlayersAndMessages) { RunAll(false); }

TEST(SessionsByChance, AllAgreeThoughLinksAreCut) { RunAll(true); }

}  // namespace
}  // namespace platform
