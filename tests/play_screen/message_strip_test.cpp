// The strip of the messages, and the line of a pause.
#include "play_screen/message_strip.h"

#include "state/message.h"
#include "state/session.h"
#include "state/skin.h"
#include "tests/play_screen/play_screen_ground.h"

namespace qlm {
namespace {

constexpr Colour kGround = 0x060912;
constexpr Colour kRule = 0x26304C;
constexpr Colour kPauseP = 0x200000 + 'P';

// Letters are 4 by 6; the pictures lie from 200,100 to 456,356, and messages begin at 210,320.
class MessageStrip : public PlayScreenTest {
 protected:
  MessageStrip() {
    SkinFile[1] = std::make_shared<Surface>(256 * 4, 6);
    SkinFile[1]->SetColourKey(0, 0);
    for (int32_t code = 33; code < 127; ++code) {
      SysFont[code - 32] = {4 * code, 0, 4 * code + 4, 6};
      SkinFile[1]->Fill(SysFont[code - 32], 0x400000 + 2 * static_cast<Colour>(code));
    }
    SysFontW = 4;
    SysFontH = 6;
    BgaX = 200;
    BgaY = 100;
    BgaW = BgaH = 256;
    GameState = kStatePlay;
    MessageRect = {210, 320, 144, 6};
  }
  static Rect Strip() {
    const Rect rules = Extent(kRule);
    const Rect ground = Extent(kGround);
    EXPECT_EQ(ground, (Rect{rules.left, rules.top + 1, rules.right, rules.bottom - 1}));
    return rules;
  }
};

// 36 letters of 4 and 8 on both sides: 202 to 362. The letters' 6 and 3 above and below: 317 to 329.
TEST_F(MessageStrip, LiesUnderAMessageOnThePicture) {
  ShowMessage(u"HELLO");
  Draw();
  EXPECT_EQ(Strip(), (Rect{202, 317, 362, 329}));
}

// Two lines of 6, 3 above and below them, down to the lower edge of the picture at 356.
TEST_F(MessageStrip, TellsOfTroubleAtTheLowerEdgeOfThePicture) {
  chartTrouble = {u"PAUSE", u"OF TROUBLE"};
  Draw();
  EXPECT_EQ(Strip(), (Rect{200, 338, 456, 356}));
  // Both begin 8 pixels from the left.
  EXPECT_EQ(Extent(0x400000 + 2 * 'A').top, 341);
  EXPECT_EQ(Extent(0x400000 + 2 * 'A').left, 208 + 4);
  EXPECT_EQ(Extent(0x400000 + 2 * 'F').top, 347);
  EXPECT_EQ(Extent(0x400000 + 2 * 'F').left, 208 + 4);
}

TEST_F(MessageStrip, IsThereForMessagesAlone) {
  Draw();
  EXPECT_EQ(Extent(kRule), Rect{});
}

TEST_F(MessageStrip, LeavesOutAPlaceBesideThePicture) {
  ShowMessage(u"HELLO");
  MessageRect = {199, 320, 144, 6};
  Draw();
  EXPECT_EQ(Extent(kRule), Rect{});
  MessageRect = {210, 356, 144, 6};
  Draw();
  EXPECT_EQ(Extent(kRule), Rect{});
}

TEST_F(MessageStrip, EndsWithThePictureBesideASecondField) {
  BgaW = 100;
  SideCount = 2;
  ShowMessage(u"HELLO");
  Draw();
  EXPECT_EQ(Strip(), (Rect{202, 317, 300, 329}));
  Paused = true;  // nothing falls that it could hide
  Draw();
  EXPECT_EQ(Strip(), (Rect{202, 317, 362, 329}));
}

// The 18 letters of PAUSE: F12 GOES ON end with the 36th: they begin at 210 + 18 * 4.
TEST_F(MessageStrip, TellsOfAPauseAsLongAsItLasts) {
  Paused = true;
  Draw();
  EXPECT_EQ(Strip(), (Rect{202, 317, 362, 329}));
  // Over the strip's ground, whose 06, 09 and 12 are halved too.
  EXPECT_EQ(At(282, 320), 0x230000U + ('P' * 2 + 0x12) / 2 + 0x000400U);
  Paused = false;
  Draw();
  EXPECT_EQ(Extent(kRule), Rect{});
}

TEST_F(MessageStrip, TellsOfAPauseBesideThePictureTooAndWithoutAGround) {
  Paused = true;
  MessageRect = {20, 400, 144, 6};
  Draw();
  EXPECT_EQ(Extent(kRule), Rect{});
  EXPECT_EQ(At(92, 400), kPauseP);
}

TEST_F(MessageStrip, ALongMessageHasThePlaceOfThePauseLine) {
  Paused = true;
  MessageRect = {20, 400, 144, 6};
  ShowMessage(Text(17, u'M'));  // and a blank and the line make 36
  Draw();
  EXPECT_EQ(At(92, 400), kPauseP);
  ShowMessage(Text(18, u'M'));
  Draw();
  EXPECT_EQ(At(92, 400), 0U);
}

TEST_F(MessageStrip, APlaceBeyondAllNumbersShowsNothing) {
  Paused = true;
  MessageRect = {INT32_MAX, INT32_MAX, 0, 0};
  BgaX = BgaY = BgaW = BgaH = INT32_MAX;
  Draw();
  EXPECT_EQ(Extent(kRule), Rect{});
}

}  // namespace
}  // namespace qlm
