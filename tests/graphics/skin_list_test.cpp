// The list of skins.
#include "graphics/skin_list.h"

#include "base/paths.h"
#include "graphics/skin.h"
#include "state/settings.h"
#include "state/skin.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class SkinListTest : public GameTest {};

TEST_F(SkinListTest, HoldsTheSkinsOfTheDataFolderByName) {
  WriteData(u"_qlmfiles\\b.brd", "#TITLE Bee");
  WriteData(u"_qlmfiles\\A.BRD", "#TITLE Ay");
  WriteData(u"_qlmfiles\\c.brd", "");
  WriteData(u"_qlmfiles\\deep\\d.brd", "#TITLE Deep");
  WriteData(u"_qlmfiles\\e.brd.txt", "#TITLE Text");
  WriteData(u"_qlmfiles\\f.brd\\x", "a folder");
  UpdateSkinList();
  ASSERT_EQ(skinList.size(), 3U);
  EXPECT_EQ(skinList[0].title, u"AY");
  EXPECT_EQ(skinList[0].path, DataPath(u"A.BRD"));
  EXPECT_EQ(skinList[1].title, u"BEE");
  EXPECT_EQ(skinList[2].title, u"(c.brd)");
  EXPECT_EQ(log, (std::vector<Text>{u"[UpdateSkinList]", u"3 skins(s) has detected."}));
}

TEST_F(SkinListTest, StylesTakeThePlaceOfAnyMode) {
  WriteData(u"_qlmfiles\\a.brd", "#SKINSTYLE 1P,2p // DP\r\n");
  WriteData(u"_qlmfiles\\b.brd", "  #skinstyle DP\n");
  WriteData(u"_qlmfiles\\c.brd", "#SKINSTYLE any\n");
  UpdateSkinList();
  ASSERT_EQ(skinList.size(), 3U);
  const auto styles = [](const SkinEntry& skin) {
    return std::array{skin.forAny, skin.for1P, skin.for2P, skin.forDP};
  };
  EXPECT_EQ(styles(skinList[0]), (std::array{false, true, true, false}));
  EXPECT_EQ(styles(skinList[1]), (std::array{false, false, false, true}));
  EXPECT_EQ(styles(skinList[2]), (std::array{true, false, false, false}));
}

TEST_F(SkinListTest, TitlesStandInCapitalsWithoutTheirComments) {
  WriteData(u"_qlmfiles\\a.brd", "\r\n#title  Fine ink  // by me\r\n");
  WriteData(u"_qlmfiles\\b.brd", "#TITLE // none\r\n");
  UpdateSkinList();
  ASSERT_EQ(skinList.size(), 2U);
  EXPECT_EQ(skinList[0].title, u"FINE INK");
  EXPECT_EQ(skinList[1].title, u"(b.brd)");
}

TEST_F(SkinListTest, PlacesOfTheSkinsInUseAreFound) {
  WriteData(u"_qlmfiles\\a.brd", "");
  WriteData(u"_qlmfiles\\b.brd", "");
  SkinPath = DataPath(u"B.brd");
  SkinMapPath = {DataPath(u"b.brd"), DataPath(u"a.brd"), DataPath(u"gone.brd")};
  UpdateSkinList();
  EXPECT_EQ(SkinIndex, 1);
  EXPECT_EQ(SkinMapIndex, (std::array<int16_t, 3>{1, 0, -1}));
  loadSkin(DataPath(u"a.brd"), false);
  EXPECT_EQ(SkinIndex, 0);
}

TEST_F(SkinListTest, WithoutAFolderTheListIsEmpty) {
  AppPath = Join(AppPath, u"\\nowhere");
  UpdateSkinList();
  EXPECT_TRUE(skinList.empty());
  EXPECT_TRUE(Logged(u"0 skins(s) has detected."));
}

}  // namespace
}  // namespace qlm
