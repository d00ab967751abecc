// The frame in which the machine's lanes are chosen.
#include "screens/lane_choice.h"

#include "screens/list_text.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "tests/screens/list_screen_test.h"

namespace qlm {
namespace {

constexpr platform::FontLook kFont{.height = 10};
constexpr Colour kLabel = 0x8B93AE;
constexpr Colour kValue = 0xF3EAD3;
constexpr Colour kByMachine = 0x4CC9BF;
constexpr Colour kHeading = 0xD9A441;

class LaneChoiceFrame : public ListScreen {
 protected:
  LaneChoiceFrame() { GameState = kStateAutoLanes; }
  // Whether a line stands at (x, y): the pixels of its nine rows that no neighbour reaches.
  static testing::AssertionResult Line(int32_t x, int32_t y, TextView text, Colour colour) {
    return ShowsText({x, y + 1, x + LineWidth(text, kFont), y + 9}, x, y, text, kFont, colour);
  }
};

TEST_F(LaneChoiceFrame, SpeedsAndSwitchesStandAtTheLeft) {
  HiSpeed = 1.5F;
  RealHiSpeed = 1.005F;  // a little below as a float
  ShowBGA = true;
  DEMOMode = false;
  DrawLaneChoice();
  EXPECT_TRUE(Line(80, 20, u"Hi-Speed:", kLabel));
  EXPECT_TRUE(Line(80, 30, u"PlaySpeed:", kLabel));
  EXPECT_TRUE(Line(80, 40, u"BGA:", kLabel));
  EXPECT_TRUE(Line(80, 50, u"DEMO:", kLabel));
  EXPECT_TRUE(Line(180, 20, u"1.50x", kValue));
  EXPECT_TRUE(Line(180, 30, u"1.00x", kValue));
  EXPECT_TRUE(Line(180, 40, u"ON", kValue));
  EXPECT_TRUE(Line(180, 50, u"OFF", kValue));
}

TEST_F(LaneChoiceFrame, EachLaneStandsAtTenTimesItsCode) {
  AutoLane[16 - 11] = AutoLane[29 - 11] = true;
  DrawLaneChoice();
  EXPECT_TRUE(Line(420, 110, u"[11] : False", kLabel));
  EXPECT_TRUE(Line(420, 160, u"[16] : True", kByMachine));
  EXPECT_TRUE(Line(420, 290, u"[29] : True", kByMachine));
  for (const int32_t code : {17, 20, 27, 30}) {
    EXPECT_EQ(Around(kLabel, {400, code * 10 + 2, 640, code * 10 + 8}), Rect{}) << code;
  }
}

TEST_F(LaneChoiceFrame, TheHeadingBlinks) {
  const auto seenAt = [](uint32_t ms) {
    SetTime(kNow / 500 * 500 + ms);
    DrawLaneChoice();
    return Count(0, {400, 80, 460, 92}) < 60 * 12;
  };
  EXPECT_FALSE(seenAt(0));
  EXPECT_FALSE(seenAt(100));
  EXPECT_TRUE(seenAt(101));
  EXPECT_TRUE(Line(400, 80, u"AUTOPLAY:", kHeading));
  EXPECT_TRUE(seenAt(499));
}

}  // namespace
}  // namespace qlm
