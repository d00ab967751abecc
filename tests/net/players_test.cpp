// The players' table.
#include "net/players.h"

#include "tests/net/battle_test.h"

namespace qlm {
namespace {

class PlayersTest : public BattleTest {};

TEST_F(PlayersTest, PlayersStandInTheOrderInWhichTheyJoined) {
  joinplayer(70001, u"Ann");
  joinplayer(70002, u"Ben");
  EXPECT_EQ(network.NetUserCount, 2);
  EXPECT_EQ(User(0).name, u"Ann");
  EXPECT_EQ(User(1).name, u"Ben");
  EXPECT_EQ(User(1).id, 70002);
  EXPECT_EQ(FindNetUser(70002), &User(1));
  EXPECT_EQ(FindNetUser(70003), nullptr);
  EXPECT_TRUE(Logged(u"joinplayer : 0,70001"));
  EXPECT_TRUE(Logged(u"joinplayer : 1,70002"));
}

TEST_F(PlayersTest, WithoutANameItIsTheNewestOneOfTheSession) {
  session.players = {{70002, u"Newest"}, {70001, u"Oldest"}};
  joinplayer(70002, u"");
  EXPECT_EQ(User(0).name, u"Newest");
}

TEST_F(PlayersTest, LongNamesAreCut) {
  joinplayer(70001, Text(33, u'x'));
  EXPECT_EQ(User(0).name, Text(32, u'x'));
}

TEST_F(PlayersTest, TheTableHoldsFive) {
  for (int32_t id = 70001; id <= 70006; ++id) joinplayer(id, u"x");
  EXPECT_EQ(network.NetUserCount, 5);
  EXPECT_EQ(FindNetUser(70006), nullptr);
}

TEST_F(PlayersTest, WhoIsInTheTableDoesNotJoinAgain) {
  joinplayer(70001, u"Ann");
  joinplayer(70001, u"Ann");
  EXPECT_EQ(network.NetUserCount, 1);
}

TEST_F(PlayersTest, WhenOneLeavesTheLaterOnesMoveDown) {
  for (int32_t id = 70001; id <= 70003; ++id) joinplayer(id, Join(u"P", id));
  User(2).detected = true;
  User(2).history[5] = 44;
  leaveplayer(70002);
  EXPECT_EQ(network.NetUserCount, 2);
  EXPECT_EQ(User(1).name, u"P70003");
  EXPECT_TRUE(User(1).detected);
  EXPECT_EQ(User(1).history[5], 44);
  EXPECT_EQ(FindNetUser(70003), &User(1));
  EXPECT_EQ(FindNetUser(70002), nullptr);
  EXPECT_TRUE(Logged(u"leaveplayer : 1,70002"));
  // The freed place holds nothing.
  EXPECT_EQ(User(2).name, u"");
  EXPECT_FALSE(User(2).detected);
}

TEST_F(PlayersTest, WhoIsUnknownCannotLeave) {
  joinplayer(70001, u"Ann");
  leaveplayer(70009);
  EXPECT_EQ(network.NetUserCount, 1);
}

TEST_F(PlayersTest, TheOwnPlaceFollowsTheOwnId) {
  network.NetMyId = 70002;
  for (int32_t id = 70001; id <= 70003; ++id) joinplayer(id, u"x");
  EXPECT_EQ(network.NetMyIndex, 1);
  leaveplayer(70001);
  EXPECT_EQ(network.NetMyIndex, 0);
  EXPECT_EQ(OwnNetUser().id, 70002);
}

}  // namespace
}  // namespace qlm
