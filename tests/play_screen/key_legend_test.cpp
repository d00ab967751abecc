// The legend of the keys, and the names of keys.
#include "play_screen/key_legend.h"

#include "play_screen/key_names.h"
#include "state/key_numbers.h"
#include "state/keys.h"
#include "state/message.h"
#include "state/session.h"
#include "state/settings.h"
#include "tests/play_screen/play_screen_ground.h"
#include "tests/support/allocations.h"

namespace qlm {
namespace {

constexpr Colour kKeys = 0x204060;
constexpr Colour kFaintKeys = 0x102030;  // half of it over black

Text Name(int32_t key) { return Text(KeyName(key).Words()); }

TEST(KeyNames, AreThoseThatAUsKeyboardPrints) {
  EXPECT_EQ(Name(kKeyEsc), u"ESC");
  EXPECT_EQ(Name(11), u"0");
  EXPECT_EQ(Name(kKeyEnter), u"ENTER");
  EXPECT_EQ(Name(kKeyS), u"S");
  EXPECT_EQ(Name(kKeyLeftShift), u"SHIFT");
  EXPECT_EQ(Name(43), u"\\");
  EXPECT_EQ(Name(kKeyZ), u"Z");
  EXPECT_EQ(Name(kKeyPeriod), u".");
  EXPECT_EQ(Name(kKeyRightShift), u"R.SHIFT");
  EXPECT_EQ(Name(kKeySpace), u"SPACE");
  EXPECT_EQ(Name(kKeyF10), u"F10");
  EXPECT_EQ(Name(kKeyPad9), u"PAD9");
  EXPECT_EQ(Name(kKeyPad0), u"PAD0");
  EXPECT_EQ(Name(kKeyF12), u"F12");
  EXPECT_EQ(Name(kKeyUp), u"UP");
  EXPECT_EQ(Name(kKeyDelete), u"DEL");
}

TEST(KeyNames, OthersGoByTheirNumber) {
  EXPECT_EQ(Name(84), u"K84");
  EXPECT_EQ(Name(255), u"K255");
}

TEST(KeyNames, ControllersAreCountedFromOneAndSoAreTheirButtons) {
  EXPECT_EQ(Name(256), u"J1L");
  EXPECT_EQ(Name(259), u"J1D");
  EXPECT_EQ(Name(260), u"J1B1");
  EXPECT_EQ(Name(295), u"J1B36");
  EXPECT_EQ(Name(296), u"J2L");
  EXPECT_EQ(Name(399), u"J4B20");
}

// A picture of 40 by 20 with the keys 11 at its left end, 12 and 16 behind it, each lane ten wide. Letters
// are 4 by 6.
class KeyLegend : public PlayScreenTest {
 protected:
  KeyLegend() {
    LayClip(3, 40, 20, kKeys);
    LayClip(4, 10, 5, 0x00FF00);
    KeyPos = {SkinPos{3, 20, 420, 0, 0}, {3, 20, 420, 0, 0}, {3, 500, 420, 0, 0}, {3, 500, 420, 0, 0}};
    LayLane(11, 4, 20);
    LayLane(12, 4, 30);
    LayLane(16, 4, 40);
    LayLane(19, 4, 50);
    LayLane(21, 4, 500);
    SkinFile[1] = std::make_shared<Surface>(256 * 4, 6);
    SkinFile[1]->SetColourKey(0, 0);
    for (int32_t code = 33; code < 127; ++code) {
      SysFont[code - 32] = {4 * code, 0, 4 * code + 4, 6};
      SkinFile[1]->Fill(SysFont[code - 32], Ink(static_cast<char>(code)));
    }
    SysFontW = 4;
    SysFontH = 6;
    BgaX = 200;
    BgaY = 100;
    BgaW = BgaH = 256;
    uses89 = true;
  }
  static Colour Ink(char letter) { return 0x400000 + 2 * static_cast<Colour>(letter); }
  static Colour Faint(char letter) { return 0x200000 + static_cast<Colour>(letter); }
};

// The middle of 256 by 256 from 200,100 on is 328,228: the picture stands at 308,218.
TEST_F(KeyLegend, ThePictureOfTheKeysStandsFaintInTheMiddleOfThePicturesPlace) {
  KeyMap[kKeyZ] = 11;
  Draw();
  EXPECT_EQ(Extent(kFaintKeys), (Rect{308, 218, 348, 238}));
  EXPECT_EQ(Extent(kKeys), (Rect{20, 420, 60, 440}));
}

// Lane 11 is 0 to 10 of the picture: its middle is 313. A name of one letter begins 2 before it, 4 below the
// picture.
TEST_F(KeyLegend, ANameStandsUnderItsWideKey) {
  KeyMap[kKeyZ] = 11;
  Draw();
  EXPECT_EQ(Extent(Faint('Z')), (Rect{311, 242, 315, 248}));
}

TEST_F(KeyLegend, NamesOfANarrowKeyAndOfTheTurntableStandAboveOneAboveTheOther) {
  KeyMap[kKeyS] = 12;
  KeyMap[kKeyX] = 16;
  KeyMap[kKeyC] = 17;  // the turntable's other way
  Draw();
  EXPECT_EQ(Extent(Faint('S')), (Rect{321, 208, 325, 214}));
  EXPECT_EQ(Extent(Faint('X')), (Rect{331, 208, 335, 214}));
  EXPECT_EQ(Extent(Faint('C')), (Rect{331, 202, 335, 208}));
}

TEST_F(KeyLegend, AChartForFiveKeysHasNoNamesForTheOtherTwo) {
  KeyMap[kKeyV] = 19;
  Draw();
  EXPECT_NE(Extent(Faint('V')), Rect{});
  uses89 = false;
  Draw();
  EXPECT_EQ(Extent(Faint('V')), Rect{});
}

TEST_F(KeyLegend, ControllersAreNamedWhenOneIsThere) {
  KeyMap[256] = 11;
  Draw();
  EXPECT_EQ(Extent(Faint('J')), Rect{});
  JoyCount = 1;
  Draw();
  EXPECT_EQ(Extent(Faint('J')), (Rect{307, 242, 311, 248}));  // J1L
}

// 15 and 34 parts of 64 of 256 are 60 and 136: the pictures stand at 150 and 226.
TEST_F(KeyLegend, TwoSidesStandOneBelowTheOther) {
  SideCount = 2;
  KeyMap[kKeyZ] = 11;
  KeyMap[kKeyN] = 21;
  Draw();
  EXPECT_EQ(Extent(kFaintKeys), (Rect{308, 150, 348, 246}));
  EXPECT_EQ(At(308, 200), 0U);
  EXPECT_EQ(Extent(Faint('Z')), (Rect{311, 174, 315, 180}));
  EXPECT_EQ(Extent(Faint('N')), (Rect{311, 250, 315, 256}));
}

TEST_F(KeyLegend, NothingStandsThereWithoutAPictureOfTheKeys) {
  KeyMap[kKeyZ] = 11;
  KeyPos[0].id = 0;
  Draw();
  EXPECT_EQ(Extent(Faint('Z')), Rect{});
}

TEST_F(KeyLegend, APictureOfTheChartTakesItsPlace) {
  KeyMap[kKeyZ] = 11;
  curBaseBGA = 1;
  BmpSurface[1] = std::make_shared<Surface>(256, 256);
  BmpSurface[1]->Fill({0, 0, 256, 256}, 0x0000FF);
  BmpRect[1] = {0, 0, 256, 256};
  DDBga = std::make_shared<Surface>(256, 256);
  BgaTarget = {0, 0, 256, 256};
  BGADirty = true;
  Draw();
  EXPECT_EQ(Extent(0x0000FF), (Rect{200, 100, 456, 356}));
  EXPECT_EQ(Extent(kFaintKeys), Rect{});
  ShowBGA = false;
  Draw();
  EXPECT_EQ(Extent(kFaintKeys), (Rect{308, 218, 348, 238}));
  ShowBGA = NoBGA = true;
  Draw();
  EXPECT_EQ(Extent(kFaintKeys), (Rect{308, 218, 348, 238}));
}

// A skin may name any place.
TEST_F(KeyLegend, APlaceBeyondAllNumbersShowsNothing) {
  KeyMap[kKeyZ] = 11;
  BgaX = BgaY = BgaW = BgaH = INT32_MAX;
  Draw();
  EXPECT_EQ(Extent(kFaintKeys), Rect{});
}

// Nor do the strips of a pause and of a chart's trouble.
TEST_F(KeyLegend, TakesNothingFromTheHeapInAFrame) {
  for (int32_t key = 1; key <= 38; ++key) KeyMap[key] = static_cast<int16_t>(11 + key % 19);
  KeyMap[256] = 11;
  JoyCount = 1;
  MessageRect = {210, 320, 144, 6};
  chartTrouble = {u"NOTHING SOUNDS"};
  Paused = true;
  GameState = kStatePlay;
  ShowMessage(u"HELLO");
  Draw();
  const size_t before = Allocations();
  for (int i = 0; i < 10; ++i) Draw();
  EXPECT_EQ(Allocations(), before);
  EXPECT_NE(Extent(kFaintKeys), Rect{});
  EXPECT_NE(Find(Faint('J')), Corner{});
}

}  // namespace
}  // namespace qlm
