// The gates of a song.
#include "net/gates.h"

#include <utility>
#include <vector>

#include "net/messages.h"
#include "state/session.h"
#include "tests/net/battle_test.h"

namespace qlm {
namespace {

using Types = std::vector<int32_t>;

class GatesTest : public BattleTest {
 protected:
  static void Decide() {
    GameState = kStateBattleSongs;
    SendCurSongData(true);
  }
  // The list's loop takes the step that is due.
  static BattleStep TakeStep() { return std::exchange(network.step, BattleStep::kNone); }

  // All have decided and loaded, and play.
  static void PlayWith(const std::vector<int32_t>& others) {
    Decide();
    for (const int32_t other : others) Say(other, MessageType::kSongDecided);
    TakeStep();
    SendStandby();
    for (const int32_t other : others) Say(other, MessageType::kStandby);
    TakeStep();
    session.sent.clear();
  }
};

TEST_F(GatesTest, ALoneHostPassesEachGateAtOnce) {
  BecomeHost();
  Decide();
  EXPECT_TRUE(Logged(u"NetChkDecideSong: 1/1"));
  EXPECT_TRUE(Logged(u"Send [SONG READY] Command"));
  EXPECT_EQ(GameState, 2);
  EXPECT_EQ(TakeStep(), BattleStep::kLoad);
  SendStandby();
  EXPECT_TRUE(Logged(u"Send [STANDBY]"));
  EXPECT_TRUE(Logged(u"NetChkStartSong: 1/1"));
  EXPECT_TRUE(Logged(u"Send [SONGSTART] Command"));
  EXPECT_EQ(GameState, 3);
  EXPECT_TRUE(network.NetPlaying);
  EXPECT_EQ(TakeStep(), BattleStep::kStart);
  SendEnd();
  EXPECT_TRUE(Logged(u"NetEndSong: 1/1"));
  EXPECT_TRUE(Logged(u"Send [ALL-END] Command"));
  EXPECT_FALSE(network.NetPlaying);
  EXPECT_FALSE(User(0).detected);
  EXPECT_FALSE(User(0).standby);
  EXPECT_FALSE(User(0).ended);
  EXPECT_EQ(SentTypes(), (Types{3, 4, 5, 6, 9, 7, 8}));
}

TEST_F(GatesTest, TheSongWaitsForEveryDecision) {
  BecomeHost(1);
  Say(kSecond, MessageType::kSongDecided);
  EXPECT_TRUE(Logged(u"NetChkDecideSong: 1/2"));
  EXPECT_EQ(network.step, BattleStep::kNone);
  Decide();
  EXPECT_TRUE(Logged(u"NetChkDecideSong: 2/2"));
  EXPECT_EQ(network.step, BattleStep::kLoad);
  EXPECT_EQ(SentTypes(), (Types{3, 4}));
}

TEST_F(GatesTest, TheStartWaitsForEveryLoad) {
  BecomeHost(1);
  Decide();
  Say(kSecond, MessageType::kSongDecided);
  TakeStep();
  Say(kSecond, MessageType::kStandby);
  EXPECT_TRUE(Logged(u"NetChkStartSong: 1/2"));
  EXPECT_EQ(network.step, BattleStep::kNone);
  SendStandby();
  EXPECT_TRUE(Logged(u"NetChkStartSong: 2/2"));
  EXPECT_EQ(network.step, BattleStep::kStart);
}

TEST_F(GatesTest, TheResultsWaitForEveryEnd) {
  BecomeHost(1);
  PlayWith({kSecond});
  SendEnd();
  EXPECT_TRUE(Logged(u"NetEndSong: 1/2"));
  EXPECT_TRUE(network.NetPlaying);
  Say(kSecond, MessageType::kEnd);
  EXPECT_TRUE(Logged(u"NetEndSong: 2/2"));
  EXPECT_FALSE(network.NetPlaying);
  EXPECT_FALSE(User(1).detected || User(1).standby || User(1).ended);
}

TEST_F(GatesTest, OnlyTheHostKeepsGates) {
  BecomeClient();
  Decide();
  Say(kFirst, MessageType::kSongDecided);
  EXPECT_EQ(network.step, BattleStep::kNone);
  EXPECT_EQ(SentTypes(), Types{3});
}

TEST_F(GatesTest, WhoLeavesDoesNotHoldUpTheDecision) {
  BecomeHost(2);
  Say(kSecond, MessageType::kSongDecided);
  Decide();
  EXPECT_EQ(network.step, BattleStep::kNone);
  Go(kThird);
  EXPECT_TRUE(Logged(u"NetChkDecideSong: 2/2"));
  EXPECT_TRUE(Logged(u"Player is out: 65539"));
  EXPECT_EQ(network.step, BattleStep::kLoad);
}

TEST_F(GatesTest, WhoLeavesBeforeTheHostDecidedOpensNothing) {
  BecomeHost(1);
  GameState = kStateSongSelect;
  Go(kSecond);
  EXPECT_TRUE(Logged(u"NetChkDecideSong: 0/1"));
  EXPECT_EQ(network.step, BattleStep::kNone);
}

TEST_F(GatesTest, WhoLeavesDoesNotHoldUpTheStart) {
  BecomeHost(2);
  Decide();
  Say(kSecond, MessageType::kSongDecided);
  Say(kThird, MessageType::kSongDecided);
  TakeStep();
  SendStandby();
  Say(kSecond, MessageType::kStandby);
  EXPECT_EQ(network.step, BattleStep::kNone);
  Go(kThird);
  EXPECT_TRUE(Logged(u"NetChkStartSong: 2/2"));
  EXPECT_EQ(network.step, BattleStep::kStart);
}

TEST_F(GatesTest, WhoLeavesDoesNotHoldUpTheResults) {
  for (const int32_t state : {3, 4, 5}) {
    ResetNetwork();
    BecomeHost(1);
    PlayWith({kSecond});
    SendEnd();
    GameState = state;
    EXPECT_TRUE(network.NetPlaying);
    Go(kSecond);
    EXPECT_FALSE(network.NetPlaying) << state;
  }
}

TEST_F(GatesTest, ALeaveInTheHostsOwnPlayEndsNothing) {
  BecomeHost(2);
  PlayWith({kSecond, kThird});
  Say(kThird, MessageType::kEnd);
  Go(kSecond);
  EXPECT_TRUE(network.NetPlaying);
  SendEnd();
  EXPECT_FALSE(network.NetPlaying);
}

TEST_F(GatesTest, ANewHostTakesOverTheGateOfDecisions) {
  BecomeClient(1);
  Decide();
  Say(kThird, MessageType::kSongDecided);
  Happen(platform::SessionEvent::kHostMovedHere);
  EXPECT_TRUE(Logged(u"I am host."));
  EXPECT_EQ(network.step, BattleStep::kNone);
  Go(kFirst);
  EXPECT_TRUE(Logged(u"NetChkDecideSong: 2/2"));
  EXPECT_EQ(network.step, BattleStep::kLoad);
  EXPECT_EQ(SentTypes(), (Types{3, 4}));
}

TEST_F(GatesTest, ANewHostTakesOverTheGateOfLoads) {
  BecomeClient(1);
  Decide();
  Say(kFirst, MessageType::kSongDecided);
  Say(kThird, MessageType::kSongDecided);
  Say(kFirst, MessageType::kSongReady);
  EXPECT_EQ(TakeStep(), BattleStep::kLoad);
  Say(kThird, MessageType::kStandby);
  SendStandby();
  Happen(platform::SessionEvent::kHostMovedHere);
  Go(kFirst);
  EXPECT_TRUE(Logged(u"NetChkStartSong: 2/2"));
  EXPECT_EQ(network.step, BattleStep::kStart);
}

TEST_F(GatesTest, ANewHostTakesOverTheGateOfEnds) {
  BecomeClient(1);
  Decide();
  Say(kThird, MessageType::kSongDecided);
  Say(kFirst, MessageType::kSongReady);
  TakeStep();
  SendStandby();
  Say(kThird, MessageType::kStandby);
  Say(kFirst, MessageType::kSongStart);
  EXPECT_EQ(TakeStep(), BattleStep::kStart);
  SendEnd();
  GameState = kStatePlayOver;
  Say(kThird, MessageType::kEnd);
  Happen(platform::SessionEvent::kHostMovedHere);
  Go(kFirst);
  EXPECT_TRUE(Logged(u"NetEndSong: 2/2"));
  EXPECT_FALSE(network.NetPlaying);
}

TEST_F(GatesTest, ANewcomerInASongHoldsUpNobody) {
  BecomeHost(1);
  Decide();
  Say(kSecond, MessageType::kSongDecided);
  TakeStep();
  Come(kThird);
  SendStandby();
  Say(kSecond, MessageType::kStandby);
  EXPECT_TRUE(Logged(u"NetChkStartSong: 2/3"));
  EXPECT_EQ(TakeStep(), BattleStep::kStart);
  SendEnd();
  Say(kSecond, MessageType::kEnd);
  EXPECT_TRUE(Logged(u"NetEndSong: 2/3"));
  EXPECT_FALSE(network.NetPlaying);
}

TEST_F(GatesTest, WhatANewcomerDecidesInASongHoldsForTheNextOne) {
  BecomeHost(1);
  PlayWith({kSecond});
  Come(kThird);
  Say(kThird, MessageType::kSongDecided);
  EXPECT_EQ(network.step, BattleStep::kNone);
  SendEnd();
  Say(kSecond, MessageType::kEnd);
  EXPECT_TRUE(User(2).detected);
  Say(kSecond, MessageType::kSongDecided);
  Decide();
  EXPECT_TRUE(Logged(u"NetChkDecideSong: 3/3"));
  EXPECT_EQ(network.step, BattleStep::kLoad);
}

TEST_F(GatesTest, AStartIsSentOnce) {
  BecomeHost(1);
  PlayWith({kSecond});
  Say(kSecond, MessageType::kStandby);
  EXPECT_EQ(network.step, BattleStep::kNone);
  EXPECT_EQ(SentTypes(), Types{});
}

}  // namespace
}  // namespace qlm
