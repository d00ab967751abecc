// The road of a battle's song, with a script in the place of the network.
#include "net/fields.h"
#include "net/messages.h"
#include "net/players.h"
#include "net/session.h"
#include "platform/session.h"
#include "play/input.h"
#include "screens/list_cursor.h"
#include "screens/song_find.h"
#include "screens/song_select.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/key_numbers.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/network.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_find.h"
#include "state/song_select.h"
#include "tests/net/scripted_session.h"
#include "tests/screens/list_ground.h"

namespace qlm {
namespace {

constexpr int32_t kOther = 0x10009;

class BattleRoad : public ListTest {
 protected:
  BattleRoad() {
    session = {};
    MyName = u"Me";
    DEMOMode = true;
    BMSPreview = 0;
    RunFrames(10, [](int32_t) {
      if (GameState == kStateResults) LaneDown[0] = true;
    });
  }

  // With another one, who is the newest.
  void BecomeHost(bool alone) {
    HostBattle();
    StartBattle();
    if (!alone) Hear({0, platform::SessionEvent::kPlayerCreated, kOther, {}});
  }
  // With the other one as host.
  void BecomeClient() {
    JoinBattle("there");
    session.players.back().id = kOther;
    MessageWriter init(MessageType::kInit);
    init.Byte(2).Long(kOther).String(u"Host").Long(session.ownId).String(u"Me").Long(0);
    Hear({kOther, {}, 0, init.Take()});
    StartBattle();
  }
  static void Hear(platform::SessionMessage message) {
    session.waiting.push_back(std::move(message));
    NetPoll();
  }
  static void Hear(MessageType type) { Hear({kOther, {}, 0, MessageWriter(type).Take()}); }

  // Until the others are waited for.
  void Decide() {
    Press(kKeyEnter);
    RunTimers();
  }

  void ExpectListAgain() {
    EXPECT_EQ(GameState, kStateSongSelect);
    EXPECT_FALSE(ListIsBusy());
    EXPECT_FALSE(HazardGauge);
    EXPECT_EQ(network.step, BattleStep::kNone);
  }
};

TEST_F(BattleRoad, ALoneHostPlaysAndIsBackAtItsList) {
  BecomeHost(true);
  ShowCharts({u"A", u"B"});
  Decide();
  EXPECT_EQ(GameState, kStateBattleStart);
  EXPECT_EQ(LinesBeginning(u"[Ready BMS]"), 0) << "not from inside the pump";
  ListTurn();
  EXPECT_EQ(LinesBeginning(u"[Ready BMS]"), 1);
  EXPECT_EQ(LinesBeginning(u"[PlayLoop]"), 1);
  EXPECT_EQ(LinesBeginning(u"receive ready"), 0);
  ExpectListAgain();
  Decide();
  ListTurn();
  EXPECT_EQ(LinesBeginning(u"[PlayLoop]"), 2);
  ExpectListAgain();
}

TEST_F(BattleRoad, TheListTakesNoKeysWhileTheOthersChoose) {
  BecomeHost(false);
  ShowCharts({u"A", u"B"});
  Decide();
  EXPECT_EQ(GameState, kStateBattleSongs);
  ListTurn();
  Press(kKeyDown);
  EXPECT_EQ(listCursor, 0);
  EXPECT_EQ(LinesBeginning(u"[Ready BMS]"), 0);
}

TEST_F(BattleRoad, AClientLoadsAndPlaysWhenTheHostSaysSo) {
  BecomeClient();
  ShowCharts({u"A"});
  Decide();
  EXPECT_EQ(GameState, kStateBattleSongs);
  Hear(MessageType::kSongReady);
  ListTurn();
  EXPECT_EQ(LinesBeginning(u"[Ready BMS]"), 1);
  EXPECT_EQ(LinesBeginning(u"receive ready"), 1);
  EXPECT_EQ(GameState, kStateBattleStart);
  ListTurn();
  EXPECT_EQ(LinesBeginning(u"[PlayLoop]"), 0);
  // In that state each turn looks for the start.
  session.waiting.push_back({kOther, {}, 0, MessageWriter(MessageType::kSongStart).Take()});
  // The results wait for the others' end, which comes some frames later.
  RunFrames(10, [](int32_t) {
    if (GameState == kStatePlayOver && network.NetPlaying && session.waiting.empty()) {
      session.waiting.push_back({kOther, {}, 0, MessageWriter(MessageType::kAllEnd).Take()});
    }
    if (GameState == kStateResults) LaneDown[0] = true;
  });
  ListTurn();
  EXPECT_EQ(LinesBeginning(u"[PlayLoop]"), 1);
  EXPECT_EQ(LinesBeginning(u"Receive [ALL-END] Command"), 1);
  ExpectListAgain();
}

TEST_F(BattleRoad, AChartThatCannotBeLoadedHoldsUpNobody) {
  BecomeHost(true);
  ShowCharts({u"A"});
  Decide();
  songList[0].path = Join(songList[0].path, u".gone");
  ListTurn();
  EXPECT_EQ(LinesBeginning(u"Send [STANDBY]"), 1);
  EXPECT_EQ(LinesBeginning(u"Send [ALL-END] Command"), 1);
  ExpectListAgain();
}

TEST_F(BattleRoad, TheHazardGaugeIsOn) {
  BecomeHost(true);
  ShowCharts({u"A"});
  bool hazard = false;
  RunFrames(10, [&hazard](int32_t) {
    if (GameState == kStatePlay && PlayAlive) hazard = HazardGauge;
    if (GameState == kStateResults) LaneDown[0] = true;
  });
  Decide();
  ListTurn();
  EXPECT_TRUE(hazard);
}

TEST_F(BattleRoad, ThePadAttacks) {
  BecomeHost(false);
  GameState = kStatePlay;
  session.sent.clear();
  for (const int32_t key : {kKeyPad0, kKeyPad2, kKeyPad3, kKeyPad4}) ProcessKey_Settings(key);
  EXPECT_EQ(session.sent.size(), 0U);
  ProcessKey_Settings(kKeyPad1);
  ASSERT_EQ(session.sent.size(), 1U);
  EXPECT_EQ(session.sent[0].to, 0);
}

TEST_F(BattleRoad, CursorAndOptionsAreShownToTheOthers) {
  BecomeHost(false);
  ShowCharts({u"A", u"B"});
  for (const int32_t key : {kKeyDown, kKeyF1, kKeyF10, kKeyLeft}) {
    session.sent.clear();
    Press(key);
    EXPECT_EQ(session.sent.size(), key == kKeyDown || key == kKeyF1 ? 1U : 0U) << key;
  }
}

// Everybody searches in their own list; the others see where it leads, and nothing while it leads nowhere
// new.
TEST_F(BattleRoad, TheOthersSeeTheRowThatASearchLeadsTo) {
  BecomeHost(false);
  ShowCharts({u"apple", u"banana", u"cherry"});
  Press(kKeySlash);
  session.sent.clear();
  TypeInFindLine(u'a');
  EXPECT_EQ(session.sent.size(), 0U) << "apple is still in hand";
  TypeInFindLine(u'n');
  ASSERT_EQ(session.sent.size(), 1U);
  EXPECT_EQ(OwnNetUser().songB, u"banana");
  TypeInFindLine(13);
  enterEaten = false;
  Decide();
  EXPECT_EQ(GameState, kStateBattleSongs);
  Press(kKeySlash);
  EXPECT_FALSE(songFind.typing) << "while the others are waited for";
}

}  // namespace
}  // namespace qlm
