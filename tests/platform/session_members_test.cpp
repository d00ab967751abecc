// Who is in a session and what each received, with every frame in the test's hand.
#include "platform/session_members.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/platform/session_net.h"

namespace platform {
namespace {

using Log = std::vector<std::string>;

class Members : public testing::Test {
 protected:
  // Machines A, B, C ... in one session; their logs are empty.
  void Gather(size_t count) {
    net.Open();
    for (size_t i = 1; i < count; ++i) {
      net.Join(0);
      net.Settle();
    }
    for (size_t i = 0; i < count; ++i) {
      ASSERT_EQ(net.Players(i).size(), count);
      net[i].log.clear();
    }
  }

  SessionNet net;
};

constexpr size_t A = 0, B = 1, C = 2, D = 3, E = 4, F = 5;

TEST_F(Members, ANewcomerKnowsAllTheNewestFirst) {
  net.Open();
  for (int i = 0; i < 4; ++i) {
    net.Join(A);
    net.Settle();
  }
  for (size_t i = 0; i < 5; ++i) EXPECT_EQ(net.Players(i), "EDCBA");
  EXPECT_EQ(net[A].log, (Log{"+B", "+C", "+D", "+E"}));
  EXPECT_EQ(net[D].log, (Log{"+E"}));
  EXPECT_EQ(net[E].log, Log{});
  EXPECT_EQ(net[E].players[4].name, u"A");
}

TEST_F(Members, TheSixthIsRefused) {
  Gather(5);
  net.Join(A);
  net.Settle();
  EXPECT_EQ(net[F].members.GetState(), SessionMembers::State::kClosed);
  EXPECT_EQ(net[F].notes, (Log{"Could not join: the session is full"}));
  EXPECT_EQ(net[A].notes, (Log{"Dropped 0.0.0.6:1: the session is full"}));
  for (size_t i = 0; i < 5; ++i) EXPECT_EQ(net[i].log, Log{});
}

TEST_F(Members, WhoIsNotTheHostRefuses) {
  Gather(2);
  net.Join(B);
  net.Settle();
  EXPECT_EQ(net[C].notes, (Log{"Could not join: that player is not the host"}));
}

// The host's game says something to each newcomer when it hears of it.
TEST_F(Members, NobodyHearsOfTheNextBeforeWhatTheHostSaidToItself) {
  net.Open();
  net.Join(A);
  net.Join(A);
  net.DeliverAll();
  // Both wait for the host's game; it takes one after the other.
  ASSERT_EQ(net[A].waiting.size(), 2U);
  net.Receive(A);
  net.SendToOne(A, B, "welcome");
  net.SendToAll(A, "all");
  net.Receive(A);
  net.Settle();
  EXPECT_EQ(net[B].log, (Log{"A:welcome", "A:all", "+C"}));
  EXPECT_EQ(net[C].log, Log{});
  EXPECT_EQ(net.Players(C), "CBA");
}

TEST_F(Members, FourMayJoinAtOnce) {
  net.Open();
  for (int i = 0; i < 4; ++i) net.Join(A);
  net.Settle();
  for (size_t i = 0; i < 5; ++i) {
    EXPECT_EQ(net.Players(i).size(), 5U);
    EXPECT_EQ(net[i].members.GetState(), SessionMembers::State::kIn);
  }
}

TEST_F(Members, ANewcomerGetsWhatAMemberSendsFromTheMomentItHeardOfIt) {
  Gather(2);
  net.Join(A);
  net.DeliverAll();
  net.Receive(A);
  net.DeliverAll();
  net.SendToAll(B, "before");
  net.Receive(B);
  net.SendToAll(B, "behind");
  net.Settle();
  EXPECT_EQ(net[A].log, (Log{"+C", "B:before", "B:behind"}));
  EXPECT_EQ(net[C].log, (Log{"B:behind"}));
}

// Of the applicant's existence the game has heard already.
TEST_F(Members, AnApplicantThatGivesUpComesAndGoes) {
  net.Open();
  const size_t b = net.Join(A);
  net.DeliverAll();
  net[b].members.Leave();
  net.Work();
  net.DeliverAll();
  net.Settle();
  EXPECT_EQ(net[A].log.size(), 2U);
  EXPECT_EQ(net.Players(A), "A");
}

TEST_F(Members, TheHostAloneSpeaksForOthers) {
  Gather(3);
  net.SendToOne(A, C, "for B", net.Id(B));
  net.SendToOne(B, C, "for A", net.Id(A));
  net.SendToOne(B, C, "own", net.Id(B));
  net[B].members.SendToAll("for A, to all", net.Id(A));
  net.Work();
  net.Settle();
  EXPECT_EQ(net[C].log, (Log{"B:for B", "B:own"}));
  EXPECT_EQ(net[C].notes.size(), 2U);
}

TEST_F(Members, ASystemMessageCannotBeForged) {
  Gather(2);
  net.SendToOne(A, B, "as the session", 1);
  net.Settle();
  EXPECT_EQ(net[B].log, Log{});
}

TEST_F(Members, WhoSaysNothingForThreeSecondsIsGivenUp) {
  Gather(3);
  net.Kill(C);
  net.Pass(2900);
  net.Settle();
  EXPECT_EQ(net[A].log, Log{});
  net.Pass(300);
  net.Settle();
  EXPECT_EQ(net[A].log, (Log{"-C"}));
  EXPECT_EQ(net[B].log, (Log{"-C"}));
}

TEST_F(Members, WhoLivesIsNeverGivenUp) {
  Gather(3);
  net.Pass(600'000);
  net.Settle();
  EXPECT_EQ(net.Players(A), "CBA");
  EXPECT_EQ(net[A].notes, Log{});
}

TEST_F(Members, TheLongestStandingIsTheNewHost) {
  Gather(4);
  net.Kill(A);
  net.Pass(3300);
  net.Settle();
  EXPECT_EQ(net[B].log, (Log{"host", "-A"}));
  EXPECT_EQ(net[C].log, (Log{"-A"}));
  EXPECT_TRUE(net[B].members.IsHost());
  net.Kill(B);
  net.Kill(C);
  net.Pass(3300);
  net.Settle();
  EXPECT_EQ(net[D].log, (Log{"-A", "host", "-B", "-C"}));
  EXPECT_EQ(net.Players(D), "D");
  EXPECT_TRUE(net[D].members.IsHost());
}

TEST_F(Members, TheNewHostLetsOthersIn) {
  Gather(3);
  net.Kill(A);
  net.Pass(3300);
  net.Settle();
  const size_t d = net.Join(B);
  net.Settle();
  EXPECT_EQ(net.Players(B), "DCB");
  EXPECT_EQ(net.Players(C), "DCB");
  EXPECT_EQ(net.Players(d), "DCB");
}

// What reached one survivor only reaches the other too, before the end.
TEST_F(Members, ADeadPlayersMessageReachesAllOrNone) {
  Gather(3);
  net.SendToAll(C, "one");
  net.SendToAll(C, "two");
  net.Lose(C, A, 1);
  net.Lose(C, B, 0);
  net.Kill(C, 9);
  net.DeliverAll();
  net.Pass(3300);
  net.Settle();
  EXPECT_EQ(net[A].log, (Log{"C:one", "-C"}));
  EXPECT_EQ(net[B].log, (Log{"C:one", "-C"}));
}

TEST_F(Members, BothHaveSomethingThatTheOtherLacksOfTwoDead) {
  Gather(4);
  net.SendToAll(C, "c");
  net.SendToAll(D, "d");
  net.Lose(C, A);
  net.Lose(D, B);
  net.Kill(C, 9);
  net.Kill(D, 9);
  net.DeliverAll();
  net.Pass(3300);
  net.Settle();
  EXPECT_EQ(net[A].log, (Log{"D:d", "C:c", "-C", "-D"}));
  EXPECT_EQ(net[B].log, (Log{"C:c", "-C", "D:d", "-D"}));
}

// B alone had it, told C of it and died before it told A.
TEST_F(Members, WhatASecondDeadHadToldOneSurvivorReachesTheOther) {
  Gather(5);
  net.SendToAll(D, "last");
  net.Lose(D, A);
  net.Lose(D, C);
  net.Lose(D, E);
  net.Kill(D, 9);
  net.DeliverAll();
  net.Pass(3300);  // all give D up and have told each other; nothing has arrived yet
  ASSERT_GT(net.UnderWay(B, C), 0U);
  net.Lose(B, A);
  net.Lose(B, E);
  while (net.Deliver(B, C)) {
  }
  net.Kill(B, 9);
  net.Pass(3300);
  net.Settle();
  EXPECT_EQ(net[A].log, (Log{"-B", "D:last", "-D"}));
  EXPECT_EQ(net[C].log, (Log{"-B", "D:last", "-D"}));
  EXPECT_EQ(net[E].log, (Log{"-B", "D:last", "-D"}));
}

TEST_F(Members, ANewcomerOfADeadHostIsKnownToAllOrNone) {
  Gather(3);
  const size_t d = net.Join(A);
  net.DeliverAll();
  net.Receive(A);     // lets D in and tells all
  net.Lose(A, C, 1);  // C learns how D will prove itself, and no more
  while (net.Deliver(A, B) || net.Deliver(A, d)) {
  }
  net.Kill(A, 9);
  net.Pass(1000);
  net.DeliverAll();
  net.Pass(3300);
  net.Settle();
  EXPECT_EQ(net[B].log, (Log{"+D", "host", "-A"}));
  EXPECT_EQ(net[C].log, (Log{"+D", "-A"}));
  EXPECT_EQ(net.Players(d), "DCB");
  EXPECT_EQ(net.Players(B), "DCB");
  net.SendToAll(d, "here");
  net.Settle();
  EXPECT_EQ(net[C].log.back(), "D:here");
}

// The others are through with the death and have let another in, when B has not heard yet what D knows of it.
TEST_F(Members, TheNextNewcomerIsHeardOfBehindTheEndOfWhoMadeRoom) {
  Gather(5);
  net.Kill(E);
  net.Pass(3300);
  const auto deliverButToB = [&] {
    for (int i = 0; i < 20; ++i) {
      for (const size_t from : {A, B, C, D, F}) {
        for (const size_t to : {A, B, C, D, F}) {
          if (from < net.Size() && to < net.Size() && (from != D || to != B)) net.Deliver(from, to);
        }
        net.Receive(A);
      }
    }
  };
  deliverButToB();
  ASSERT_EQ(net[A].log, (Log{"-E"}));
  net.Join(A);
  deliverButToB();
  EXPECT_EQ(net[A].log, (Log{"-E", "+F"}));
  net.Receive(B);
  EXPECT_EQ(net[B].log, Log{});
  net.Settle();
  EXPECT_EQ(net[B].log, (Log{"-E", "+F"}));
  EXPECT_EQ(net[F].members.GetState(), SessionMembers::State::kIn);
}

// The older of the two stays, and all agree.
TEST_F(Members, OfTwoThatDoNotHearEachOtherTheYoungerGoes) {
  Gather(4);
  net.Cut(B, C);
  net.Pass(3300);
  net.Settle();
  net.Pass(3300);
  net.Settle();
  EXPECT_EQ(net.Players(A), "DBA");
  EXPECT_EQ(net.Players(B), "DBA");
  EXPECT_EQ(net.Players(D), "DBA");
  EXPECT_EQ(net.Players(C), "C");
  EXPECT_TRUE(net[C].members.IsHost());
}

TEST_F(Members, WhoLosesEverybodyGoesOnAloneAsHost) {
  Gather(3);
  net.Cut(A, C);
  net.Cut(B, C);
  net.Pass(3300);
  net.Settle();
  EXPECT_EQ(net[C].log, (Log{"host", "-A", "-B"}));
  EXPECT_EQ(net.Players(A), "BA");
}

}  // namespace
}  // namespace platform
