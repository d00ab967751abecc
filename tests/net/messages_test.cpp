// The messages of a battle, in both directions.
#include "net/messages.h"

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "base/rnd.h"
#include "net/players.h"
#include "platform/clock.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/session.h"
#include "state/timeline.h"
#include "tests/net/battle_test.h"

namespace qlm {
namespace {

using Types = std::vector<int32_t>;
using Digits5 = std::array<uint8_t, 5>;
using Digits3 = std::array<uint8_t, 3>;

class MessagesTest : public BattleTest {
 protected:
  static void HoldSong() {
    SongEntry row;
    row.genre = u"MARCH";
    row.title = u"羽ペン";
    row.artist = u"Quill";
    row.playLevel = 7;
    row.numWav = 300;
    songList = {row};
    lastSong = 0;
    listCursor = 0;
    TotalNotes = {512, 9};
  }

  static MessageWriter Song(MessageType type) {
    MessageWriter song(type);
    song.String(u"G").String(u"T").String(u"A").Byte(5).Long(-6).Short(70);
    return song;
  }

  static void ExpectSong(const NetUser& user) {
    EXPECT_EQ(user.songA, u"G");
    EXPECT_EQ(user.songB, u"T");
    EXPECT_EQ(user.songC, u"A");
    EXPECT_EQ(user.level, 5);
    EXPECT_EQ(user.songValue, -6);
    EXPECT_EQ(user.notes, 70);
  }

  // The second player, in a song with this machine as host.
  static void InSong() {
    GameState = kStateBattleSongs;
    SendCurSongData(true);
    Say(kSecond, MessageType::kSongDecided);
    network.step = BattleStep::kNone;
    session.sent.clear();
  }
};

// What is sent.

TEST_F(MessagesTest, TheSongShownIsTheRowInHand) {
  BecomeHost(1);
  HoldSong();
  SendCurSongData(false);
  ASSERT_EQ(session.sent.size(), 1U);
  EXPECT_EQ(session.sent[0].to, 0);
  EXPECT_EQ(session.sent[0].from, 0);
  MessageWriter expected(MessageType::kSongShown);
  expected.String(u"MARCH").String(u"羽ペン").String(u"Quill").Byte(7).Long(300).Short(512);
  EXPECT_EQ(session.sent[0].body, expected.Take());
  EXPECT_FALSE(User(0).detected);
  EXPECT_EQ(User(0).songB, u"羽ペン");
}

TEST_F(MessagesTest, ADecisionIsTheSameWithAnotherType) {
  BecomeHost(1);
  HoldSong();
  SendCurSongData(true);
  EXPECT_EQ(SentTypes(), Types{3});
  EXPECT_TRUE(User(0).detected);
}

TEST_F(MessagesTest, AnEmptyListSendsAnEmptySong) {
  BecomeHost(1);
  listCursor = 3;
  SendCurSongData(false);
  MessageWriter expected(MessageType::kSongShown);
  expected.String(u"").String(u"").String(u"").Byte(0).Long(0).Short(0);
  EXPECT_EQ(session.sent.at(0).body, expected.Take());
}

TEST_F(MessagesTest, GaugeDataGoesOutWithItsSlotAndCounts) {
  BecomeHost(1);
  HistoryNext[0] = 31;
  JPts[0] = 123.5F;
  Score[0] = 45678;
  JudgeCount[0] = {1, 2, 3, 4, 5};
  SendGaugeData(88);
  MessageWriter expected(MessageType::kGauge);
  expected.Byte(10).Byte(88).Single(123.5F).Single(45678).Short(0);
  for (const int16_t count : {1, 2, 3, 4, 5}) expected.Short(count);
  ASSERT_EQ(session.sent.size(), 1U);
  EXPECT_EQ(session.sent[0].body, expected.Take());
  EXPECT_TRUE(Logged(u"GAUGEDATA SENT : 10,88"));
  EXPECT_EQ(User(0).netSlot, 10);
}

TEST_F(MessagesTest, ASlotPastAByteIsNotSent) {
  BecomeHost(1);
  HistoryNext[0] = 768;
  SendGaugeData(88);
  EXPECT_EQ(SentTypes(), Types{});
}

TEST_F(MessagesTest, TheEndSendsTheLastGaugeInSlot100) {
  BecomeClient();
  HistoryNext[0] = 250;
  JPts[0] = 12.25F;
  GaugeHistory[0][100] = 66;
  SendEnd();
  EXPECT_EQ(SentTypes(), (Types{9, 7}));
  MessageWriter expected(MessageType::kGauge);
  expected.Byte(100).Byte(66).Single(12.25F).Single(0).Short(0);
  for (int i = 0; i < 5; ++i) expected.Short(0);
  EXPECT_EQ(session.sent[0].body, expected.Take());
  EXPECT_TRUE(Logged(u"GAUGEDATA SENT : 250,66,jpts:12.25"));
  EXPECT_TRUE(Logged(u"Send [End] Command"));
  EXPECT_TRUE(User(1).ended);
}

// What is received.

TEST_F(MessagesTest, ASongThatIsShownIsStored) {
  BecomeHost(1);
  MessageWriter song = Song(MessageType::kSongShown);
  Say(kSecond, song);
  ExpectSong(User(1));
  EXPECT_FALSE(User(1).detected);
}

TEST_F(MessagesTest, ADecisionIsStoredAndLogged) {
  BecomeHost(1);
  MessageWriter song = Song(MessageType::kSongDecided);
  Say(kSecond, song);
  ExpectSong(User(1));
  EXPECT_TRUE(User(1).detected);
  EXPECT_TRUE(Logged(u"Receive [USERDETECTSONG] Command from 1"));
  EXPECT_TRUE(Logged(u"[G] T / A"));
  EXPECT_TRUE(Logged(u"NetChkDecideSong: 1/2"));
}

TEST_F(MessagesTest, WhatIsMissingInAMessageStaysAsItWas) {
  BecomeHost(1);
  MessageWriter song = Song(MessageType::kSongShown);
  Say(kSecond, song);
  MessageWriter cut(MessageType::kSongShown);
  cut.String(u"new");
  Say(kSecond, cut);
  EXPECT_EQ(User(1).songA, u"new");
  EXPECT_EQ(User(1).songB, u"T");
  EXPECT_EQ(User(1).notes, 70);
}

TEST_F(MessagesTest, AStrangerChangesNothing) {
  BecomeHost(1);
  for (const MessageType type : {MessageType::kSongDecided, MessageType::kStandby, MessageType::kEnd,
                                 MessageType::kGauge, MessageType::kAttack}) {
    Say(0x20000, type);
  }
  EXPECT_FALSE(User(1).detected || User(1).standby || User(1).ended);
  EXPECT_EQ(AttackKind, kAttackNone);
}

TEST_F(MessagesTest, UnknownAndEmptyMessagesAreIgnored) {
  BecomeHost(1);
  const size_t lines = log.size();
  for (const int32_t type : {1, 10, 11, 12, 14, -1}) Say(kSecond, static_cast<MessageType>(type));
  session.waiting.push_back({kSecond, platform::SessionEvent::kNone, 0, ""});
  NetPoll();
  EXPECT_EQ(log.size(), lines);
}

TEST_F(MessagesTest, ReadyMakesAClientLoadWhatItDecided) {
  BecomeClient();
  GameState = kStateBattleSongs;
  SendCurSongData(true);
  Say(kFirst, MessageType::kSongReady);
  EXPECT_TRUE(Logged(u"Receive [READY] Command"));
  EXPECT_TRUE(network.NetPlaying);
  EXPECT_EQ(network.step, BattleStep::kLoad);
}

TEST_F(MessagesTest, WhoHasDecidedNothingLoadsNothing) {
  BecomeClient();
  Say(kFirst, MessageType::kSongReady);
  EXPECT_TRUE(Logged(u"Receive [READY] Command"));
  EXPECT_FALSE(network.NetPlaying);
  EXPECT_EQ(network.step, BattleStep::kNone);
}

TEST_F(MessagesTest, StandbyIsNotedAndLeadsToTheWaitForTheStart) {
  BecomeHost(1);
  InSong();
  GameState = kStatePlay;
  LoadRunning = true;
  Say(kSecond, MessageType::kStandby);
  EXPECT_TRUE(Logged(u"Receive [STANDBY] Command from 1"));
  EXPECT_TRUE(User(1).standby);
  EXPECT_EQ(GameState, 2);
  EXPECT_TRUE(Logged(u"NetChkStartSong: 1/2"));
}

TEST_F(MessagesTest, StandbyDisturbsNoOtherScreen) {
  BecomeHost(1);
  for (const int32_t state : {0, 3, 6, 10}) {
    GameState = state;
    Say(kSecond, MessageType::kStandby);
    EXPECT_EQ(GameState, state);
  }
}

TEST_F(MessagesTest, StartMakesAClientPlay) {
  BecomeClient();
  GameState = kStateBattleSongs;
  SendCurSongData(true);
  Say(kFirst, MessageType::kSongReady);
  network.step = BattleStep::kNone;
  SendStandby();
  EXPECT_EQ(GameState, 2);
  Say(kFirst, MessageType::kSongStart);
  EXPECT_TRUE(Logged(u"Receive [STARTSONG] Command"));
  EXPECT_EQ(GameState, 3);
  EXPECT_EQ(network.step, BattleStep::kStart);
}

TEST_F(MessagesTest, WhoTakesNoPartStartsNothing) {
  BecomeClient();
  GameState = kStateLists;
  Say(kFirst, MessageType::kSongStart);
  EXPECT_EQ(GameState, 6);
  EXPECT_EQ(network.step, BattleStep::kNone);
}

TEST_F(MessagesTest, MessagesBehindAStepWaitForIt) {
  BecomeClient(1);
  GameState = kStateBattleSongs;
  SendCurSongData(true);
  session.waiting.push_back({kFirst, {}, 0, MessageWriter(MessageType::kSongReady).Take()});
  session.waiting.push_back({kThird, {}, 0, MessageWriter(MessageType::kStandby).Take()});
  NetPoll();
  EXPECT_EQ(network.step, BattleStep::kLoad);
  EXPECT_FALSE(User(2).standby);
  network.step = BattleStep::kNone;
  NetPoll();
  EXPECT_TRUE(User(2).standby);
}

TEST_F(MessagesTest, EndIsNotedAndLogged) {
  BecomeHost(1);
  InSong();
  Say(kSecond, MessageType::kEnd);
  EXPECT_TRUE(Logged(u"Receive [END] Command from 1"));
  EXPECT_TRUE(User(1).ended);
  EXPECT_TRUE(Logged(u"NetEndSong: 1/2"));
}

TEST_F(MessagesTest, AllEndClearsTheWayForTheNextSong) {
  BecomeClient();
  GameState = kStateBattleSongs;
  SendCurSongData(true);
  Say(kFirst, MessageType::kSongDecided);
  Say(kFirst, MessageType::kSongReady);
  Say(kFirst, MessageType::kStandby);
  Say(kFirst, MessageType::kAllEnd);
  // The load comes first: what is behind READY waits.
  network.step = BattleStep::kNone;
  NetPoll();
  EXPECT_TRUE(Logged(u"Receive [ALL-END] Command"));
  EXPECT_FALSE(network.NetPlaying);
  for (int32_t i = 0; i < 2; ++i) EXPECT_FALSE(User(i).detected || User(i).standby || User(i).ended);
}

TEST_F(MessagesTest, GaugeDataIsStored) {
  BecomeHost(1);
  MessageWriter gauge(MessageType::kGauge);
  gauge.Byte(40).Byte(87).Single(1234.0F).Single(99.5F).Short(77);
  for (const int16_t count : {9, 8, 7, 6, 5}) gauge.Short(count);
  Say(kSecond, gauge);
  const NetUser& user = User(1);
  EXPECT_EQ(user.netSlot, 40);
  EXPECT_EQ(user.gauge, 87);
  EXPECT_EQ(user.jpts, 1234);
  EXPECT_EQ(user.score, 99.5F);
  EXPECT_EQ(user.counts, (std::array<int16_t, 5>{9, 8, 7, 6, 5}));
  EXPECT_EQ(user.history[40], 87);
  EXPECT_EQ(user.gaugeDigits, (Digits3{0, 8, 7}));
  EXPECT_EQ(user.jptsDigits, (Digits5{0, 1, 2, 3, 4}));
  EXPECT_TRUE(Logged(u"NETusr[1] : 087% , jpts:1234"));
}

TEST_F(MessagesTest, AMinusIsDigit10) {
  BecomeHost(1);
  MessageWriter gauge(MessageType::kGauge);
  gauge.Byte(1).Byte(0).Single(-42.0F);
  Say(kSecond, gauge);
  EXPECT_EQ(User(1).jptsDigits, (Digits5{10, 0, 0, 4, 2}));
}

TEST_F(MessagesTest, SlotsPastTheHistoryAreLeftOutOfIt) {
  BecomeHost(1);
  for (const uint8_t slot : {99, 100, 255}) {
    MessageWriter gauge(MessageType::kGauge);
    gauge.Byte(slot).Byte(50);
    Say(kSecond, gauge);
    EXPECT_EQ(User(1).netSlot, slot);
  }
  EXPECT_EQ(User(1).history[99], 50);
  EXPECT_EQ(User(1).history[98], 0);
}

TEST_F(MessagesTest, NumbersThatAreNoneCountAsZero) {
  BecomeHost(1);
  MessageWriter gauge(MessageType::kGauge);
  gauge.Byte(1).Byte(50).Single(std::nanf("")).Single(std::numeric_limits<float>::infinity());
  Say(kSecond, gauge);
  EXPECT_EQ(User(1).jpts, 0);
  EXPECT_EQ(User(1).score, 0);
}

// Attacks.

TEST_F(MessagesTest, Place1AttacksAllOthers) {
  BecomeHost(1);
  SetRndList({0.5F});
  SendAttack(1);
  MessageWriter expected(MessageType::kAttack);
  expected.Byte(3);
  ASSERT_EQ(session.sent.size(), 1U);
  EXPECT_EQ(session.sent[0].to, 0);
  EXPECT_EQ(session.sent[0].body, expected.Take());
  EXPECT_EQ(message.text, u"ATTACK! to 0:Me");
}

TEST_F(MessagesTest, AttacksAreOfFourKinds) {
  BecomeHost(1);
  for (const auto& [rnd, kind] :
       std::vector<std::pair<float, char>>{{0.0F, 1}, {0.25F, 2}, {0.74F, 3}, {0.99F, 4}}) {
    SetRndList({rnd});
    session.sent.clear();
    SendAttack(1);
    EXPECT_EQ(session.sent.at(0).body.back(), kind);
  }
}

TEST_F(MessagesTest, Place0AndPlacesWithoutAPlayerDoNothing) {
  BecomeHost(1);
  SendAttack(0);
  SendAttack(3);
  EXPECT_EQ(SentTypes(), Types{});
  EXPECT_EQ(message.text, u"");
}

TEST_F(MessagesTest, OtherPlacesReachNobody) {
  BecomeHost(1);
  SendAttack(2);
  EXPECT_EQ(SentTypes(), Types{});
  EXPECT_EQ(message.text, u"ATTACK! to 1:Newest");
}

TEST_F(MessagesTest, AnAttackReplacesARunningEffect) {
  BecomeHost(1);
  AttackKind = kAttackShuffle;
  AttackStart = 5;
  MessageWriter attack(MessageType::kAttack);
  attack.Byte(2);
  Say(kSecond, attack);
  EXPECT_TRUE(Logged(u"Receive [Attack] Command"));
  EXPECT_EQ(AttackKind, kAttackSpeedUp);
  EXPECT_EQ(AttackStart, platform::Now());
}

// The players.

TEST_F(MessagesTest, TheHostsStartTellsItsPlayers) {
  HostBattle();
  GameState = 6;
  session.sent.clear();
  NetSendInit(true, 0);
  EXPECT_TRUE(Logged(u"[Net:SendInit] (own-init) to 0"));
  EXPECT_TRUE(Logged(u"joinplayer : 0,65537"));
  MessageWriter expected(MessageType::kInit);
  expected.Byte(1).Long(kFirst).String(u"Me").Long(6);
  ASSERT_EQ(session.sent.size(), 1U);
  EXPECT_EQ(session.sent[0].body, expected.Take());
  EXPECT_EQ(network.NetMyIndex, 0);
}

TEST_F(MessagesTest, InitOfAnotherKindIsLoggedPlain) {
  HostBattle();
  NetSendInit(false, 7);
  EXPECT_TRUE(Logged(u"[Net:SendInit] to 7"));
}

TEST_F(MessagesTest, ANewcomerIsToldThePlayersAndTheirSongs) {
  BecomeHost(1);
  MessageWriter song = Song(MessageType::kSongDecided);
  Say(kSecond, song);
  GameState = 0;
  session.sent.clear();
  Come(kThird);
  EXPECT_EQ(User(2).name, u"Newest");
  ASSERT_EQ(session.sent.size(), 4U);
  MessageWriter init(MessageType::kInit);
  init.Byte(3).Long(kFirst).String(u"Me").Long(kSecond).String(u"Newest").Long(kThird).String(u"Newest").Long(
      0);
  EXPECT_EQ(session.sent[0].body, init.Take());
  for (const SentMessage& sent : session.sent) EXPECT_EQ(sent.to, kThird);
  // The types are the reverse of what they mean.
  EXPECT_EQ(SentTypes(), (Types{0, 3, 2, 3}));
  EXPECT_EQ(session.sent[1].from, kFirst);
  EXPECT_EQ(session.sent[2].from, kSecond);
  EXPECT_EQ(session.sent[2].body, Song(MessageType::kSongShown).Take());
  EXPECT_EQ(session.sent[3].from, kThird);
}

TEST_F(MessagesTest, InitBringsTheTableOfANewcomer) {
  JoinBattle("there");
  EXPECT_TRUE(network.awaitsInit);
  MessageWriter init(MessageType::kInit);
  init.Byte(2).Long(kFirst).String(u"Host").Long(kSecond).String(u"Me").Long(6);
  Say(kFirst, init);
  EXPECT_FALSE(network.awaitsInit);
  EXPECT_TRUE(Logged(u"Receive: [Init] users:2"));
  EXPECT_TRUE(Logged(u"joinplayer : 0,65537"));
  EXPECT_TRUE(Logged(u"joinplayer : 1,65538"));
  EXPECT_EQ(network.NetUserCount, 2);
  EXPECT_EQ(network.NetMyIndex, 1);
  EXPECT_EQ(GameState, 6);
}

TEST_F(MessagesTest, WhoCameOrLeftBeforeTheInitArrivedIsNotForgotten) {
  JoinBattle("there");
  Come(kThird);
  MessageWriter init(MessageType::kInit);
  init.Byte(3).Long(kFirst).String(u"Host").Long(0x10009).String(u"Gone").Long(kSecond).String(u"Me").Long(0);
  Say(kFirst, init);
  EXPECT_EQ(network.NetUserCount, 3);
  EXPECT_EQ(User(1).id, kSecond);
  EXPECT_EQ(User(2).id, kThird);
}

TEST_F(MessagesTest, AnInitOfAnotherThanTheHostChangesNothing) {
  JoinBattle("there");
  Come(kThird);
  MessageWriter init(MessageType::kInit);
  init.Byte(1).Long(kThird).String(u"Host").Long(6);
  Say(kThird, init);
  EXPECT_TRUE(network.awaitsInit);
  EXPECT_FALSE(Logged(u"Receive: [Init] users:1"));
  EXPECT_EQ(GameState, 0);
}

TEST_F(MessagesTest, ASecondInitChangesNothing) {
  BecomeClient();
  MessageWriter init(MessageType::kInit);
  init.Byte(1).Long(kFirst).String(u"Other").Long(3);
  Say(kFirst, init);
  EXPECT_EQ(network.NetUserCount, 2);
  EXPECT_EQ(GameState, 0);
}

TEST_F(MessagesTest, AnInitThatPromisesMorePlayersThanItHoldsIsTakenAsFarAsItGoes) {
  JoinBattle("there");
  MessageWriter init(MessageType::kInit);
  init.Byte(255).Long(kFirst).String(u"Host");
  Say(kFirst, init);
  EXPECT_EQ(network.NetUserCount, 2);
  EXPECT_EQ(User(1).id, kSecond);
}

TEST_F(MessagesTest, ANewcomerHearsItsOwnSongBackWithoutHavingDecided) {
  BecomeClient();
  MessageWriter song = Song(MessageType::kSongDecided);
  Say(kSecond, song);
  EXPECT_FALSE(User(1).detected);
  MessageWriter other = Song(MessageType::kSongDecided);
  Say(kFirst, other);
  EXPECT_TRUE(User(0).detected);
}

}  // namespace
}  // namespace qlm
