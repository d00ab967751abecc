// What of a skin's load stands already: its lines in the log, and which skin is in use.
#include "graphics/skin.h"

#include "base/paths.h"
#include "state/skin.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class Skin : public GameTest {};

TEST_F(Skin, LoadingLogsTheNameAndSetsThePath) {
  const Text path = WriteData(u"_qlmfiles\\ink.brd", "#TITLE ink\r\n");
  loadSkin(path, false);
  EXPECT_EQ(log, std::vector<Text>{u"[loadSkin] : ink.brd"});
  EXPECT_EQ(SkinPath, path);
}

TEST_F(Skin, Smoke) {
  const Text path = WriteData(u"_qlmfiles\\ink.brd",
                              "#CLIP01 1,10,20,30,40,0,2,3,100\n#CLIP02 1,0,0,4,6,2,1,2,-24\n#NOTE11 02,01,00,100,200\n"
                              "#LINE_1P_L3 01,5,6\n#SC_GREAT_2P 01,7,8,4\n#BGA_1P 1,2,3,4\n#op_hidden 01,1,2,3,4\n");
  loadSkin(path, false);
  EXPECT_EQ(Clip[1].rects[2], (Rect{74, 20, 104, 60}));
  EXPECT_EQ(Clip[2].rects[1], (Rect{0, 7, 4, 13}));
  EXPECT_EQ(NoteSkin[1].yOffset, -6);
  EXPECT_EQ(LineList[0].entries[0], 3);
  EXPECT_EQ(ScoreCountPos[1][3], (SkinPos{1, 7, 8, 4, 0}));
  EXPECT_EQ(BgaW, 3);
  EXPECT_EQ(OptionPos[1][1], (SkinPos{1, 3, 4, 0, 0}));
}

TEST_F(Skin, AMissingSkinIsLoggedAndTheOneInUseStays) {
  SkinPath = u"\\old.brd";
  loadSkin(Join(AppPath, u"\\none.brd"), false);
  EXPECT_EQ(log, (std::vector<Text>{u"[loadSkin] : none.brd", u"SKIN NOT EXIST!"}));
  EXPECT_EQ(SkinPath, u"\\old.brd");
}

}  // namespace
}  // namespace qlm
