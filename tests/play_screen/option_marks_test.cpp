// Which option marks show.
#include "play_screen/option_marks.h"

#include "state/options.h"
#include "state/settings.h"
#include "state/skin.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class OptionMarksTest : public GameTest {
 protected:
  static std::array<uint8_t, kOptionGroups> Marks() {
    PickOptionMarks();
    return OptionMark;
  }
};

TEST_F(OptionMarksTest, WithoutOptionsAllShowRowZero) {
  OptionMark.fill(9);
  EXPECT_EQ(Marks(), (std::array<uint8_t, kOptionGroups>{0, 0, 0, 0, 0, 0}));
}

TEST_F(OptionMarksTest, VisibilityCombinesHiddenAndSudden) {
  Hidden = true;
  EXPECT_EQ(Marks()[0], 1);
  Sudden = true;
  EXPECT_EQ(Marks()[0], 3);
  Hidden = false;
  EXPECT_EQ(Marks()[0], 2);
  Sudden = false;
  Stealth = true;
  EXPECT_EQ(Marks()[0], 4);
  Hidden = true;
  EXPECT_EQ(Marks()[0], 0);
}

TEST_F(OptionMarksTest, StrongerOptionsWin) {
  ExRandom = true;
  EXPECT_EQ(Marks()[1], 7);
  Random = true;
  EXPECT_EQ(Marks()[1], 5);
  DEMOMode = true;
  EXPECT_EQ(Marks()[2], 15);
  ShowRec = true;
  EXPECT_EQ(Marks()[2], 16);
  Accel = true;
  EXPECT_EQ(Marks()[3], 9);
  Quil = true;
  EXPECT_EQ(Marks()[3], 10);
  Pressure = true;
  EXPECT_EQ(Marks()[5], 17);
}

TEST_F(OptionMarksTest, KeyModeHasNoMark) {
  Hidden = Random = Accel = Pressure = HalfField = FourDMode = true;
  EXPECT_EQ(Marks()[4], 0);
}

}  // namespace
}  // namespace qlm
