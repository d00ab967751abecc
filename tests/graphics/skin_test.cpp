// The loading of a skin: what is logged, cleared, kept and worked out when the last line is read.
#include "graphics/skin.h"

#include "base/paths.h"
#include "state/chart.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "tests/graphics/skin_files.h"

namespace qlm {
namespace {

class LoadSkinTest : public SkinTest {
 protected:
  void Load(std::initializer_list<const char*> lines, bool keep = false) { loadSkin(WriteSkin(lines), keep); }
};

TEST_F(LoadSkinTest, LogsTheNameAndSetsThePath) {
  const Text path = WriteSkin({"#TITLE ink"});
  loadSkin(path, false);
  EXPECT_EQ(log, std::vector<Text>{u"[loadSkin] : ink.brd"});
  EXPECT_EQ(SkinPath, path);
}

TEST_F(LoadSkinTest, MissingSkinIsLoggedAndLeavesNoFurniture) {
  Load({"#YPOSITION 400", "#CLIP01 1,0,0,8,8", "#SYSFONT 0,0,8,16", "#MSGPOS  1,2"});
  const Text path = SkinPath;
  log.clear();
  loadSkin(Join(AppPath, u"\\none.brd"), false);
  EXPECT_EQ(log, (std::vector<Text>{u"[loadSkin] : none.brd", u"SKIN NOT EXIST!"}));
  EXPECT_EQ(SkinPath, path);
  EXPECT_EQ(Clip[1].width, 0);
  EXPECT_EQ(ClipList.last, -1);
  EXPECT_EQ(JudgeY, 480);
  EXPECT_EQ(SysFont[1], Rect{});
  EXPECT_EQ(MessageRect, Rect{});
}

TEST_F(LoadSkinTest, MissingSkinLeavesKeptTablesAlone) {
  Load({"#YPOSITION 400"});
  loadSkin(Join(AppPath, u"\\none.brd"), true);
  EXPECT_EQ(JudgeY, 400);
}

TEST_F(LoadSkinTest, SecondSkinDropsEveryClipOfTheFirst) {
  Load({"#CLIP01 1,0,0,8,8", "#CLIP02 1,0,0,8,8", "#LINE_1P_L3 01,1,1", "#LAYER01 01,1,1"});
  Load({"#CLIP02 1,0,0,4,4"});
  EXPECT_EQ(Clip[1].width, 0);
  EXPECT_EQ(Clip[2].width, 4);
  EXPECT_EQ(ClipList.last, 0);
  EXPECT_EQ(LayerList.last, -1);
  EXPECT_EQ(LineList[0].last, -1);
}

TEST_F(LoadSkinTest, SecondSkinDropsTheCellOfTheFont) {
  Load({"#SYSFONT  0,0,8,16"});
  EXPECT_EQ(SysFontW, 8);
  EXPECT_EQ(SysFontH, 16);
  Load({"#YPOSITION 300"});
  EXPECT_EQ(SysFontW, 0);
  EXPECT_EQ(SysFontH, 0);
}

TEST_F(LoadSkinTest, KeepingAddsToTheTables) {
  Load({"#CLIP01 1,0,0,8,8", "#YPOSITION 300"});
  Load({"#CLIP02 1,0,0,4,4"}, true);
  EXPECT_EQ(Clip[1].width, 8);
  EXPECT_EQ(ClipList.last, 1);
  EXPECT_EQ(JudgeY, 300);
}

TEST_F(LoadSkinTest, ClearingReleasesTheBackgroundAndWidensTheScreen) {
  DDSkinBack = Solid(8, 8, 0xFFFFFF);
  FullRect = {1, 2, 3, 4};
  Load({"nothing"});
  EXPECT_EQ(DDSkinBack, nullptr);
  EXPECT_EQ(FullRect, (Rect{0, 0, 640, 480}));
}

TEST_F(LoadSkinTest, SheetsStayUntilTheirNumbersAreTaken) {
  SkinFile[7] = Solid(8, 8, 0xFFFFFF);
  Load({"#CLIP01 7,0,0,8,8"});
  EXPECT_NE(SkinFile[7], nullptr);
}

TEST_F(LoadSkinTest, LinesEndInEitherWay) {
  loadSkin(WriteData(u"_qlmfiles\\ink.brd", "#YPOSITION 300\n#COMBO 7\r\n#GAUGESTEP 2.5"), false);
  EXPECT_EQ(JudgeY, 300);
  EXPECT_EQ(ComboNumber, 7);
  EXPECT_EQ(GaugeStep, 2.5F);
}

TEST_F(LoadSkinTest, LinesOfThePlayfieldAreListedInTheirOrderAndLogged) {
  Load({"#LINE_1P_L9 01,1,1", "#LINE_2P_L3 01,1,1", "#LINE_1P_L3 02,1,1", "#LINE_1P_L4 00,1,1"});
  EXPECT_EQ(LineList[0].last, 1);
  EXPECT_EQ(LineList[0].entries[0], 3);
  EXPECT_EQ(LineList[0].entries[1], 9);
  EXPECT_EQ(LineList[1].last, 0);
  EXPECT_EQ(log,
            (std::vector<Text>{u"[loadSkin] : ink.brd", u"linesadd:3,0", u"linesadd:3,1", u"linesadd:9,0"}));
}

TEST_F(LoadSkinTest, LineForTheRightPlacementAloneIsNotListed) {
  Load({"#LINE_1P_R3 01,1,1"});
  EXPECT_EQ(LinePos[0][1][3].id, 1);
  EXPECT_EQ(LineList[0].last, -1);
}

TEST_F(LoadSkinTest, TitleShowsAsManyLettersAsFit) {
  Load({"#SYSFONT 0,0,8,16", "#SONGTITLE 10,20,100,5"});
  EXPECT_EQ(TitleRect, (Rect{10, 20, 100, 5}));
  EXPECT_EQ(TitleChars, 12);  // 12.5, half to even
  Load({"#SYSFONT 0,0,8,16", "#SONGTITLE 10,20,108,5"});
  EXPECT_EQ(TitleChars, 14);  // 13.5
}

TEST_F(LoadSkinTest, WithoutACellTheNumberOfLettersStays) {
  TitleChars = 9;
  Load({"#SONGTITLE 10,20,100,5"});
  EXPECT_EQ(TitleChars, 9);
}

TEST_F(LoadSkinTest, LanesStandByThePlaceOfTheirSidesTurntable) {
  SCRATCH1P = false;
  SCRATCH2P = true;
  Load({"#NOTE10 01,00,00,1,2", "#NOTE19 01,00,00,3,4", "#NOTE20 01,00,00,5,6", "#NOTE29 01,00,00,7,8",
        "#NOTE30 01,00,00,9,10"});
  EXPECT_EQ(NoteSkin[0].x, 1);
  EXPECT_EQ(NoteSkin[9].x, 3);
  EXPECT_EQ(NoteSkin[10].x, 6);
  EXPECT_EQ(NoteSkin[19].x, 8);
  EXPECT_EQ(NoteSkin[20].x, 9);
  SCRATCH1P = true;
  SCRATCH2P = false;
  PlaceNotes();
  EXPECT_EQ(NoteSkin[0].x, 2);
  EXPECT_EQ(NoteSkin[9].x, 4);
  EXPECT_EQ(NoteSkin[10].x, 5);
  EXPECT_EQ(NoteSkin[20].x, 9);
}

TEST_F(LoadSkinTest, BgaStandsWhereTheSkinPutsItForTheNumberOfSides) {
  const auto lines = {"#BGA_1P 10,20,128,64", "#BGA_2P 30,40,200,100"};
  SideCount = 1;
  Load(lines);
  EXPECT_EQ((std::array{BgaX, BgaY, BgaW, BgaH}), (std::array{10, 20, 128, 64}));
  EXPECT_EQ(BgaTarget, (Rect{0, 0, 128, 64}));
  SideCount = 2;
  Load(lines);
  EXPECT_EQ((std::array{BgaX, BgaY, BgaW, BgaH}), (std::array{30, 40, 200, 100}));
}

TEST_F(LoadSkinTest, WithoutABgaForTheSideItStandsAsAtBoot) {
  SideCount = 2;
  Load({"#BGA_2P 30,40,200,100"});
  Load({"#BGA_1P 10,20,128,64"});
  EXPECT_EQ((std::array{BgaX, BgaY, BgaW, BgaH}), (std::array{192, 128, 256, 256}));
}

TEST_F(LoadSkinTest, StandingBgaSurfaceKeepsItsSize) {
  Load({"#BGA_1P 10,20,128,64"});
  EXPECT_EQ(DDBga->Bounds(), (Rect{0, 0, 256, 256}));
  DDBga.reset();
  Load({"#BGA_1P 10,20,128,64"});
  ASSERT_NE(DDBga, nullptr);
  EXPECT_EQ(DDBga->Bounds(), (Rect{0, 0, 128, 64}));
}

TEST_F(LoadSkinTest, BgaOfNoSizeIsLogged) {
  DDBga.reset();
  Load({"#BGA_1P 10,20,0,64"});
  EXPECT_EQ(DDBga, nullptr);
  EXPECT_TRUE(Logged(u"Error : can't create BGA surface : -2147024809"));
}

TEST_F(LoadSkinTest, WithoutADisplayTablesAreReadAndPicturesAreNot) {
  WriteData(u"_qlmfiles\\sheet.bmp", SolidBmp(4, 4, 0xFF0000));
  displayOpen = false;
  DDBga.reset();
  Load({"#FILE02 sheet.bmp", "#BACK00 sheet.bmp", "#CLIP01 2,0,0,4,4"});
  EXPECT_EQ(SkinFile[2], nullptr);
  EXPECT_EQ(DDSkinBack, nullptr);
  EXPECT_EQ(DDBga, nullptr);
  EXPECT_EQ(Clip[1].rect, (Rect{0, 0, 4, 4}));
}

TEST_F(LoadSkinTest, NothingInAFileStopsTheReading) {
  std::string bytes = "#\n#CLI\n#NOT\n#LEN\n#GAU\n#SC_\n#OP_\n#FAN\n#J-P_\n_\n,\n#CLIP \n#LINE__\n";
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  bytes += "\n#YPOSITION 300";
  loadSkin(WriteData(u"_qlmfiles\\ink.brd", bytes), false);
  EXPECT_EQ(JudgeY, 300);
}

}  // namespace
}  // namespace qlm
