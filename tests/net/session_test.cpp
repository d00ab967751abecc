// Opening, joining, polling and leaving.
#include "net/session.h"

#include "platform/clock.h"
#include "platform/timers.h"
#include "state/session.h"
#include "tests/net/battle_test.h"

namespace qlm {
namespace {

class SessionTest : public BattleTest {};

TEST_F(SessionTest, WhoOpensASessionIsItsHost) {
  EXPECT_TRUE(HostBattle());
  EXPECT_TRUE(network.NetActive);
  EXPECT_TRUE(network.NetHost);
  EXPECT_FALSE(network.awaitsInit);
  EXPECT_EQ(network.NetMyId, kFirst);
  EXPECT_TRUE(platform::TimerArmed(platform::kTimerNetwork));
  EXPECT_TRUE(StartBattle());
  EXPECT_EQ(network.NetUserCount, 1);
  EXPECT_EQ(User(0).name, u"Me");
}

TEST_F(SessionTest, WithoutANetworkNothingChanges) {
  session.opens = false;
  EXPECT_FALSE(HostBattle());
  EXPECT_FALSE(JoinBattle("there"));
  EXPECT_FALSE(network.NetActive);
  EXPECT_FALSE(platform::TimerArmed(platform::kTimerNetwork));
}

TEST_F(SessionTest, WhoJoinsWaitsForTheHostsWord) {
  EXPECT_TRUE(JoinBattle("there:99"));
  EXPECT_EQ(session.joined, "there:99");
  EXPECT_TRUE(network.NetActive);
  EXPECT_FALSE(network.NetHost);
  EXPECT_TRUE(network.awaitsInit);
  EXPECT_EQ(network.NetMyId, kSecond);
  EXPECT_TRUE(StartBattle());
}

TEST_F(SessionTest, WhoStartsBeforeTheHostsWordKnowsThePlayersAllTheSame) {
  JoinBattle("there");
  StartBattle();
  EXPECT_EQ(network.NetUserCount, 2);
  EXPECT_EQ(User(0).name, u"Host");
  GameState = kStateLists;
  MessageWriter init(MessageType::kInit);
  init.Byte(2).Long(kFirst).String(u"Host").Long(kSecond).String(u"Me").Long(3);
  Say(kFirst, init);
  EXPECT_EQ(GameState, kStateLists) << "the game has begun";
}

TEST_F(SessionTest, WithoutAnAddressTheFirstSessionFoundIsJoined) {
  EXPECT_FALSE(JoinBattle(""));
  session.found = {{"one:1", u"", 1}, {"two:2", u"", 1}};
  EXPECT_TRUE(JoinBattle(""));
  EXPECT_EQ(session.joined, "one:1");
}

TEST_F(SessionTest, WhoWouldBeAloneGoesOnWithoutABattle) {
  JoinBattle("there");
  session.players.pop_back();
  EXPECT_FALSE(StartBattle());
  EXPECT_FALSE(network.NetActive);
  EXPECT_FALSE(network.NetHost);
}

TEST_F(SessionTest, WhoWasNotWelcomedBeforeTheHostDiedBeginsByItself) {
  JoinBattle("there");
  Come(kThird);
  Go(kThird);
  EXPECT_TRUE(network.awaitsInit);
  Happen(platform::SessionEvent::kHostMovedHere);
  Go(kFirst);
  EXPECT_FALSE(network.awaitsInit);
  EXPECT_EQ(network.NetUserCount, 1);
  EXPECT_EQ(User(0).id, kSecond);
  EXPECT_EQ(network.NetMyIndex, 0);
  EXPECT_TRUE(StartBattle());
}

TEST_F(SessionTest, TheTimerPollsEvery50Milliseconds) {
  BecomeHost(1);
  session.waiting.push_back({kSecond, {}, 0, MessageWriter(MessageType::kSongDecided).Take()});
  const uint32_t now = platform::Now();
  platform::UseVirtualClock(now + 49);
  platform::RunDueTimers();
  EXPECT_FALSE(User(1).detected);
  platform::UseVirtualClock(now + 50);
  platform::RunDueTimers();
  EXPECT_TRUE(User(1).detected);
}

TEST_F(SessionTest, WhatTheNetworkRefusedIsLoggedOnceASecond) {
  BecomeHost();
  session.notes = {u"a peer was dropped"};
  for (int poll = 0; poll < 20; ++poll) NetPoll();
  EXPECT_TRUE(Logged(u"a peer was dropped"));
}

TEST_F(SessionTest, LeavingPutsEverythingBack) {
  BecomeHost(1);
  LeaveBattle();
  EXPECT_FALSE(session.open);
  EXPECT_FALSE(network.NetActive);
  EXPECT_EQ(network.NetUserCount, 0);
  EXPECT_FALSE(platform::TimerArmed(platform::kTimerNetwork));
}

}  // namespace
}  // namespace qlm
