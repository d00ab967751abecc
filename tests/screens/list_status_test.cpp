// Speed, modes, options and records on the list screens.
#include "screens/list_status.h"

#include "screens/list_sprites.h"
#include "state/network.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "tests/screens/list_screen_test.h"

namespace qlm {
namespace {

class ListStatus : public ListScreen {
 protected:
  ListStatus() { Rows({u"a"}); }
  // The place in an option's cycle whose lamp is lit.
  static int32_t LitPlace(int32_t option, int32_t places) {
    for (int32_t place = 0; place < places; ++place) {
      PaintSprite(OptionSprite(option, place));
      Draw();
      const Rect lamp = {40 + 60 * option, 423, 100 + 60 * option, 449};
      if (Around(kSpriteRed) == lamp) return place;
    }
    return -1;
  }
};

TEST_F(ListStatus, TheSpeedStandsBelowTheHelp) {
  HiSpeed = 2.5F;
  Draw();
  EXPECT_EQ(SystemText(460, 426), "2.5x");
  FourDMode = true;
  Draw();
  EXPECT_EQ(SystemText(460 + 5 * 8, 426), "(4D)");
}

TEST_F(ListStatus, ThePlayersOfABattleStandOnEveryList) {
  for (const int32_t state : {0, 1, 2, 6, 7}) {
    GameState = state;
    network = {};
    Draw();
    EXPECT_EQ(SystemText(0, 0), "");
    network.NetActive = true;
    network.NetUserCount = 3;
    Draw();
    EXPECT_EQ(SystemText(0, 0), "NET:3") << state;
  }
}

TEST_F(ListStatus, TheComboSpeedFlickersByChance) {
  ComboHiSpeed = true;
  HiSpeed = 2.5F;
  int32_t seen = 0;
  for (int32_t frame = 0; frame < 200; ++frame) {
    Draw();
    const std::string text = SystemText(460, 426);
    EXPECT_TRUE(text.empty() || text == "[COMBO!]") << text;
    seen += text.empty() ? 0 : 1;
  }
  EXPECT_GT(seen, 70);
  EXPECT_LT(seen, 130);
}

TEST_F(ListStatus, ExchangedLanesBlinkFor300OfEvery400Ms) {
  ExRandom = true;
  const auto seenAt = [](uint32_t ms) {
    SetTime(kNow + ms);
    Draw();
    return SystemText(515, 180);
  };
  EXPECT_EQ(seenAt(0), "[spShuffle");
  EXPECT_EQ(SystemText(515 + 11 * 8, 180), "ON]");
  EXPECT_EQ(seenAt(299), "[spShuffle");
  EXPECT_EQ(seenAt(300), "");
  EXPECT_EQ(seenAt(399), "");
  EXPECT_EQ(seenAt(400), "[spShuffle");
}

TEST_F(ListStatus, TheMachineHasItsWord) {
  Draw();
  EXPECT_EQ(SystemText(515, 195), "");
  DEMOMode = true;
  Draw();
  EXPECT_EQ(SystemText(515, 195), "[DEMO");
  EXPECT_EQ(SystemText(515 + 6 * 8, 195), "ON]");
}

TEST_F(ListStatus, LampsFollowTheCycleOfF1) {
  EXPECT_EQ(LitPlace(0, 5), 0);
  Hidden = true;
  EXPECT_EQ(LitPlace(0, 5), 1);
  Sudden = true;
  EXPECT_EQ(LitPlace(0, 5), 3);
  Hidden = false;
  EXPECT_EQ(LitPlace(0, 5), 2);
  Sudden = false;
  Stealth = true;
  EXPECT_EQ(LitPlace(0, 5), 4);
}

TEST_F(ListStatus, LampsFollowTheOtherOptions) {
  for (const auto& [option, places] : {std::pair{1, 3}, {2, 2}, {3, 3}, {4, 2}}) {
    EXPECT_EQ(LitPlace(option, places), 0) << option;
  }
  Random = Accel = Quil = Pressure = true;
  for (const auto& [option, places] : {std::pair{1, 3}, {2, 2}, {3, 3}, {4, 2}}) {
    EXPECT_EQ(LitPlace(option, places), 1) << option;
  }
  Random = Quil = false;
  ExRandom = HalfField = true;
  EXPECT_EQ(LitPlace(1, 3), 2);
  EXPECT_EQ(LitPlace(3, 3), 2);
}

TEST_F(ListStatus, AForcedPlayerIsNamed) {
  const auto wordFor = [](int32_t force) {
    PlayerForce = force;
    Draw();
    return SystemText(450, 335) + SystemText(450 + 17 * 8, 335);
  };
  EXPECT_EQ(wordFor(0), "");
  EXPECT_EQ(wordFor(1), "PLAYER1P");
  EXPECT_EQ(wordFor(2), "PLAYER2P");
  EXPECT_EQ(wordFor(3), "PLAYERDP");
  EXPECT_EQ(wordFor(4), "");
  EXPECT_EQ(wordFor(-1), "");
}

TEST_F(ListStatus, RecordWordsShowOnEverySecondFrame) {
  UserRec = true;
  for (int32_t pair = 0; pair < 3; ++pair) {
    Draw();
    EXPECT_EQ(SystemText(240 - 16 * 8, 240), "<RECORDING");
    Draw();
    EXPECT_EQ(SystemText(240 - 16 * 8, 240), "");
  }
  UserRec = false;
  ShowRec = true;
  Draw();
  EXPECT_EQ(SystemText(240 - 17 * 8, 240), "<VIEW");
  EXPECT_EQ(SystemText(240 - 11 * 8, 240), "PLAYRECORD>");
}

}  // namespace
}  // namespace qlm
