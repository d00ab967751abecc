// The players of a battle over the play.
#include "play_screen/net_status.h"

#include "state/network.h"
#include "state/session.h"
#include "state/timeline.h"
#include "tests/play_screen/play_screen_ground.h"
#include "tests/screens/letters.h"
#include "tests/support/allocations.h"

namespace qlm {
namespace {

constexpr Colour kWhite = 0xFFFFFF;
constexpr Colour kShade = 0x3F3F3F;  // of white
constexpr Colour kPaper = 0xF3EAD3;
constexpr Colour kTeal = 0x3FB8AF;

// This player and another one.
class NetStatusTest : public PlayScreenTest {
 protected:
  NetStatusTest() {
    network.NetActive = true;
    network.NetUserCount = 2;
    network.NetUsers[0].name = u"Ann";
    network.NetUsers[1].name = u"Ben";
    GameState = kStatePlay;
  }
  static void DrawOnWhite() {
    DDBack->Fill(kScreen, kWhite);
    DrawNetStatus();
  }
  // How many pixels of a rectangle are of a colour.
  static int Count(const Rect& rect, Colour colour) {
    int count = 0;
    for (int32_t y = rect.top; y < rect.bottom; ++y) {
      for (int32_t x = rect.left; x < rect.right; ++x) count += At(x, y) == colour ? 1 : 0;
    }
    return count;
  }
};

TEST_F(NetStatusTest, WithoutABattleNothingIsDrawn) {
  network.NetActive = false;
  DrawOnWhite();
  EXPECT_EQ(Count(kScreen, kWhite), 640 * 480);
}

TEST_F(NetStatusTest, EachPlayerHasTwoLines80PixelsBelowTheOneBefore) {
  GameState = kStateSongSelect;
  DrawOnWhite();
  for (const int32_t top : {34, 114}) {
    EXPECT_EQ(At(635, top), kShade);
    EXPECT_EQ(At(635, top + 27), kShade);
    EXPECT_EQ(At(635, top - 1), kWhite);
    EXPECT_EQ(At(635, top + 28), kWhite);
  }
  EXPECT_EQ(Count({0, 194, 640, 480}, kWhite), 640 * 286);
}

TEST_F(NetStatusTest, TheLinesTellApartWhatTheyTell) {
  const Rect line{368, 36, 636, 48};
  const auto ink = [&] {
    DrawOnWhite();
    return line.Width() * line.Height() - Count(line, kShade) - Count(line, kWhite);
  };
  const int first = ink();
  EXPECT_GT(first, 0);
  network.NetUsers[0].standby = true;
  const int loaded = ink();
  EXPECT_NE(loaded, first) << "0 has become -1";
  network.NetUsers[0].netSlot = 77;
  EXPECT_GT(ink(), loaded) << "a figure more";
}

TEST_F(NetStatusTest, ARivalsGaugeIsDrawnUpToItsSlot) {
  NetUser& rival = network.NetUsers[1];
  for (int64_t slot = 1; slot <= 30; ++slot) rival.history[slot] = 50;
  rival.netSlot = 30;
  DrawOnWhite();
  // 100 is 40 pixels high, and slot 1 one pixel from the left edge at 456.
  EXPECT_EQ(At(457, 187 - 20), kTeal);
  EXPECT_EQ(At(486, 187 - 20), kTeal);
  EXPECT_EQ(At(487, 187 - 20), kShade);
  EXPECT_EQ(At(470, 187 - 21), kShade);
  EXPECT_EQ(At(470, 187 - 19), kTeal >> 2 & 0x3F3F3F);
}

TEST_F(NetStatusTest, TheOwnGaugeIsEveryThirdOfItsSamples) {
  for (int64_t sample = 0; sample < 300; ++sample) GaugeHistory[0][sample] = sample < 30 ? 100 : 10;
  network.NetUsers[0].netSlot = 99;
  DrawOnWhite();
  EXPECT_EQ(At(456 + 10, 107 - 40), kPaper) << "slot 10 is the sample of 30";
  EXPECT_EQ(At(456 + 12, 107 - 4), kPaper);
}

TEST_F(NetStatusTest, GaugesShowFromThePlayOn) {
  const Rect figures{452, 64, 636, 110};
  for (const int32_t state : {0, 1, 2, 6, 7}) {
    GameState = state;
    DrawOnWhite();
    EXPECT_EQ(Count(figures, kWhite), 184 * 46) << state;
  }
  for (const int32_t state : {3, 4, 5}) {
    GameState = state;
    DrawOnWhite();
    EXPECT_EQ(Count(figures, kWhite), 0) << state;
  }
  // The second side's field lies there.
  GameState = kStatePlay;
  SideCount = 2;
  DrawOnWhite();
  EXPECT_EQ(Count(figures, kWhite), 184 * 46);
}

TEST_F(NetStatusTest, FiguresStandInTheSystemFont) {
  GiveReadableLetters();
  NetUser& rival = network.NetUsers[1];
  rival.netSlot = 50;
  rival.gaugeDigits = {0, 8, 7};
  rival.jptsDigits = {10, 0, 1, 2, 3};
  DrawOnWhite();
  EXPECT_EQ(TextAt(*DDBack, 0, 0, 5), "NET:2");
  EXPECT_EQ(TextAt(*DDBack, 566, 149), "087%");
  EXPECT_EQ(TextAt(*DDBack, 566, 169), "-0123");
  // Behind the end the gauge is that of the picture.
  rival.netSlot = 100;
  rival.history[99] = 42;
  DrawOnWhite();
  EXPECT_EQ(TextAt(*DDBack, 566, 149), "042%");
}

TEST_F(NetStatusTest, ALongNameStaysOnTheScreen) {
  network.NetUsers[0].name = Text(32, u'長');
  network.NetUsers[0].songB = Text(255, u'題');
  DrawOnWhite();
  EXPECT_EQ(At(367, 40), kWhite);
  EXPECT_EQ(At(368, 34), kShade);
  EXPECT_EQ(At(637, 40), kWhite);
}

TEST_F(NetStatusTest, AFrameWithoutNewsAllocatesNothing) {
  network.NetUsers[1].netSlot = 5;
  DrawNetStatus();
  const size_t before = Allocations();
  for (uint8_t slot = 6; slot <= 100; ++slot) {
    network.NetUsers[1].netSlot = slot;
    network.NetUsers[1].history.Put(slot, slot);
    DrawNetStatus();
  }
  EXPECT_EQ(Allocations() - before, 0U);
}

}  // namespace
}  // namespace qlm
