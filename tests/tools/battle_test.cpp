// The command `battle`: real games in processes of their own, on this machine.
#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "tests/tools/probe.h"

namespace qlm {
namespace {

using Strings = std::vector<std::string>;

class BattleCommandTest : public ProbeTest {
 protected:
  BattleCommandTest() {
    // Two seconds.
    Strings lines = {"#PLAYER 1", "#GENRE STUDY", "#TITLE short", "#ARTIST us", "#BPM 240", "#RANK 3"};
    for (const std::string measure : {"000", "001"}) {
      for (const std::string lane : {"11", "12", "13"})
        lines.push_back(std::string("#").append(measure).append(lane).append(":0101010100000000"));
    }
    Chart("a.bms", lines);
  }

  // Runs a script at four times the speed of the world.
  ProcessResult Battle(const std::string& players) const {
    std::ofstream(At("script")) << "speed 4\nseconds 200\nchart a.bms\n" << players;
    return Probe({"battle", At("script")});
  }

  // What is told of a player.
  static std::string Of(const std::string& name, const ProcessResult& result) {
    const size_t begin = result.output.find("{\"name\": \"" + name + "\", \"entered\"");
    if (begin == std::string::npos) return {};
    return result.output.substr(begin, result.output.find('\n', begin) - begin);
  }
  static bool Has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
  }
  static int Count(const std::string& text, const std::string& part) {
    int count = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    return count;
  }
  static int Plays(const std::string& player) {
    const size_t begin = player.find("\"starts\": [");
    const std::string starts = player.substr(begin, player.find(']', begin) - begin);
    return Has(starts, "[]") || starts.ends_with('[') ? 0 : Count(starts, ",") + 1;
  }
  // The names of the table, in its order.
  static Strings Table(const std::string& player) {
    Strings names;
    const std::string key = "{\"name\": \"";
    for (size_t at = player.find(key, player.find("\"users\"")); at != std::string::npos;
         at = player.find(key, at + 1)) {
      const size_t name = at + key.size();
      names.push_back(player.substr(name, player.find('"', name) - name));
    }
    return names;
  }
  static void ExpectDone(const std::string& player, int plays, const Strings& table) {
    EXPECT_TRUE(Has(player, "\"entered\": true, \"died\": false, \"done\": true")) << player;
    EXPECT_EQ(Plays(player), plays) << player;
    EXPECT_EQ(Table(player), table);
  }
};

TEST_F(BattleCommandTest, FiveGoThroughThreeSongs) {
  std::string script;
  const Strings names = {"Ann", "Ben", "Cat", "Dan", "Eve"};
  for (const std::string& name : names)
    script += "player " + name + "\nawait 5\ndecide 0\ndecide 0\ndecide 0\n";
  const ProcessResult result = Battle(script);
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "\"complete\": true"));
  for (const std::string& name : names) ExpectDone(Of(name, result), 3, names);
  const std::string host = Of("Ann", result);
  EXPECT_TRUE(Has(host, "\"host\": true"));
  for (const char* const line :
       {"\"NetChkDecideSong: 5/5\"", "\"Send [SONG READY] Command\"", "\"NetChkStartSong: 5/5\"",
        "\"Send [SONGSTART] Command\"", "\"NetEndSong: 5/5\"", "\"Send [ALL-END] Command\""}) {
    EXPECT_EQ(Count(host, line), 3) << line;
  }
  const std::string client = Of("Eve", result);
  EXPECT_TRUE(Has(client, "\"host\": false"));
  for (const char* const line : {"\"Receive [READY] Command\"", "\"receive ready\"",
                                 "\"Receive [STARTSONG] Command\"", "\"Receive [ALL-END] Command\""}) {
    EXPECT_EQ(Count(client, line), 3) << line;
  }
  // A hundred slots of four rivals each, and their last one.
  EXPECT_GE(Count(client, "\"NETusr["), 3 * 4 * 95);
  EXPECT_TRUE(Has(client, "\"song\": [\"STUDY\", \"short\", \"us\"]"));
}

TEST_F(BattleCommandTest, TheSixthIsRefused) {
  std::string script;
  for (const std::string name : {"A", "B", "C", "D", "E", "F"}) script += "player " + name + "\nawait 5\n";
  const ProcessResult result = Battle(script);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_TRUE(Has(Of("F", result), "\"entered\": false, \"died\": false"));
  ExpectDone(Of("E", result), 0, {"A", "B", "C", "D", "E"});
}

TEST_F(BattleCommandTest, WhoComesInTheMiddleOfASongPlaysTheNextOne) {
  const ProcessResult result = Battle(
      "player Ann\nawait 2\ndecide 0\nawait 3\ndecide 0\n"
      "player Ben\nawait 2\ndecide 0\nawait 3\ndecide 0\n"
      "player Cat after Ann: Send [SONGSTART]\ndecide 0\n");
  EXPECT_EQ(result.exitStatus, 0) << result.output;
  ExpectDone(Of("Ann", result), 2, {"Ann", "Ben", "Cat"});
  ExpectDone(Of("Ben", result), 2, {"Ann", "Ben", "Cat"});
  ExpectDone(Of("Cat", result), 1, {"Ann", "Ben", "Cat"});
  EXPECT_TRUE(Has(Of("Ann", result), "\"NetChkDecideSong: 3/3\""));
}

// Ann and Ben look for the third behind their first song, in which Cat has come and gone.
TEST_F(BattleCommandTest, WhoLooksLateHasSeenThemAll) {
  const std::string steps = "await 2\ndecide 0\ndecide 0\nawait 3\n";
  const ProcessResult result = Battle("player Ann\n" + steps + "player Ben\n" + steps +
                                      "player Cat after Ann: Send [SONGSTART]\nleave\n");
  EXPECT_EQ(result.exitStatus, 0) << result.output;
  ExpectDone(Of("Ann", result), 2, {"Ann", "Ben"});
  ExpectDone(Of("Ben", result), 2, {"Ann", "Ben"});
}

TEST_F(BattleCommandTest, WhoLeavesIsGoneAtOnce) {
  const ProcessResult result = Battle(
      "player Ann   # the host\nawait 2\ndecide 0\n\n# the other\nplayer Ben\r\nawait 2  # both\r\nleave\n");
  EXPECT_EQ(result.exitStatus, 0) << result.output;
  ExpectDone(Of("Ann", result), 1, {"Ann"});
  EXPECT_TRUE(Has(Of("Ann", result), "\"NetChkDecideSong: 1/1\""));
}

TEST_F(BattleCommandTest, AnAttackReachesAllOthers) {
  const ProcessResult result = Battle(
      "player Ann\nawait 3\ndecide 0\nattack 1\nplayer Ben\nawait 3\ndecide 0\nplayer Cat\nawait 3\ndecide "
      "0\n");
  EXPECT_EQ(result.exitStatus, 0) << result.output;
  EXPECT_FALSE(Has(Of("Ann", result), "Receive [Attack] Command"));
  EXPECT_TRUE(Has(Of("Ben", result), "Receive [Attack] Command"));
  EXPECT_TRUE(Has(Of("Cat", result), "Receive [Attack] Command"));
}

// One of three dies: the others play on, and then another song.

struct Death {
  const char* name;
  bool host;
  const char* line;
};

class BattleDeathTest : public BattleCommandTest, public testing::WithParamInterface<Death> {};

TEST_P(BattleDeathTest, TheOthersGoOn) {
  const Death& death = GetParam();
  const std::string dies = std::string("die ") + death.line + "\n";
  const ProcessResult result = Battle("player Ann\nawait 3\n" + (death.host ? dies : "") +
                                      "decide 0\ndecide 0\nplayer Ben\nawait 3\n" + (death.host ? "" : dies) +
                                      "decide 0\ndecide 0\nplayer Cat\nawait 3\ndecide 0\ndecide 0\n");
  EXPECT_EQ(result.exitStatus, 0) << result.output;
  const std::string dead = death.host ? "Ann" : "Ben";
  const std::string other = death.host ? "Ben" : "Ann";
  EXPECT_TRUE(Has(Of(dead, result), "\"died\": true")) << Of(dead, result);
  ExpectDone(Of(other, result), 2, {other, "Cat"});
  ExpectDone(Of("Cat", result), 2, {other, "Cat"});
  EXPECT_EQ(Has(Of(other, result), "\"I am host.\""), death.host);
  EXPECT_TRUE(Has(Of(other, result), "\"host\": true"));
}

INSTANTIATE_TEST_SUITE_P(Gates, BattleDeathTest,
                         testing::Values(Death{"ClientBeforeItDecides", false, "Receive [USERDETECTSONG]"},
                                         Death{"ClientInItsLoad", false, "Receive [READY]"},
                                         Death{"ClientInItsPlay", false, "GAUGEDATA SENT : 50"},
                                         Death{"HostBeforeTheDecision", true, "NetChkDecideSong: 2/3"},
                                         Death{"HostAsItLetsThePlayBegin", true, "Send [SONGSTART]"},
                                         Death{"HostBeforeTheEnd", true, "NetEndSong: 2/3"}),
                         [](const auto& info) { return info.param.name; });

// Scripts.

TEST_F(BattleCommandTest, AScriptThatIsNotUnderstoodIsRefusedWithItsLine) {
  ProcessResult result = Battle("player Ann\njump 3\n");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.errors, "qlmprobe: " + At("script") + ": line 5 is not understood: jump 3\n");
  result = Battle("player Ann\ndecide 1\n");
  EXPECT_EQ(result.errors, "qlmprobe: " + At("script") + ": there is no chart 1; the first is 0\n");
  result = Battle("player Ann after Ben: Send\n");
  EXPECT_EQ(result.errors, "qlmprobe: " + At("script") + ": there is no player Ben\n");
  result = Battle("# nobody\n");
  EXPECT_EQ(result.errors, "qlmprobe: " + At("script") + ": a script wants a chart and a player\n");
  EXPECT_EQ(Probe({"battle", At("none")}).exitStatus, 1);
}

TEST_F(BattleCommandTest, WhatDoesNotEndIsGivenUp) {
  std::ofstream(At("script")) << "speed 4\nseconds 1\nchart a.bms\nplayer Ann\nawait 2\n";
  const ProcessResult result = Probe({"battle", At("script")});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.errors, "qlmprobe: " + At("script") + ": its time is over\n");
  EXPECT_TRUE(Holds(result.output, "\"complete\": false"));
}

}  // namespace
}  // namespace qlm
