// Stock data of an installed program come to a person once, and never take away what the person made.
#include "files/stock_data.h"

#include <cstdlib>
#include <filesystem>

#include "base/paths.h"
#include "platform/files.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

class StockDataTest : public GameTest {
 protected:
  // The test's folder has the stock in \usr\share and the person's data in \home\data.
  StockDataTest() : root_(AppPath) {
    setenv("XDG_DATA_HOME", (SystemFolder() + "/home/data").c_str(), 1);
    AppPath = Join(root_, u"\\home\\data\\quillmarch");
    fs::create_directories(platform::SystemPath(DataPath(u"")));
  }
  ~StockDataTest() override {
    AppPath = root_;
    unsetenv("XDG_DATA_HOME");
  }

  Text Stock() const { return Join(root_, u"\\usr\\share\\quillmarch"); }
  Text Bin() const { return Join(root_, u"\\usr\\bin"); }
  void Ship(TextView name, std::string_view bytes) const {
    MakeFolders(GetFolder(Join(Stock(), name)));
    platform::WriteFile(Join(Stock(), name), bytes);
  }
  bool Bring(TextView version) {
    begun = 0;
    return BringStock(Stock(), version, [] { ++begun; });
  }
  std::string Own(TextView name) const { return ReadBytes(Join(AppPath, name)); }
  void Write(TextView name, std::string_view bytes) const { platform::WriteFile(Join(AppPath, name), bytes); }
  bool HasOwn(TextView name) const { return FileExists(Join(AppPath, name)); }

  static inline int begun = 0;

 private:
  Text root_;
};

// The published values of this sum.
TEST_F(StockDataTest, KnowsFilesByTheirSum) {
  EXPECT_EQ(ContentSum(""), 0xCBF29CE484222325U);
  EXPECT_EQ(ContentSum("a"), 0xAF63DC4C8601EC8CU);
  EXPECT_EQ(ContentSum("foobar"), 0x85944171F73967E8U);
}

TEST_F(StockDataTest, ComesWholeAtTheFirstStart) {
  Ship(u"\\_qlmfiles\\default.brd", "skin");
  Ship(u"\\songs\\march\\夜.bms", "chart");
  EXPECT_TRUE(Bring(u"1"));
  EXPECT_EQ(begun, 1);
  EXPECT_EQ(Own(u"\\_qlmfiles\\default.brd"), "skin");
  EXPECT_EQ(Own(u"\\songs\\march\\夜.bms"), "chart");
  EXPECT_EQ(Own(u"\\_qlmfiles\\stock.txt"), "1\n" +
                                                std::string("3f1a2d18de6ad138 \\_qlmfiles\\default.brd\n") +
                                                "a73288764c0baf8b \\songs\\march\\夜.bms\n");
}

TEST_F(StockDataTest, IsNotLookedAtAgain) {
  Ship(u"\\songs\\a.bms", "old");
  ASSERT_TRUE(Bring(u"1"));
  Ship(u"\\songs\\a.bms", "new");
  fs::remove(platform::SystemPath(Join(AppPath, u"\\songs\\a.bms")));
  EXPECT_TRUE(Bring(u"1"));
  EXPECT_EQ(begun, 0);
  EXPECT_FALSE(HasOwn(u"\\songs\\a.bms"));
}

TEST_F(StockDataTest, NeverWritesOverAFileOfThePerson) {
  Ship(u"\\_qlmfiles\\default.brd", "stock");
  Write(u"\\_qlmfiles\\default.brd", "mine");
  EXPECT_TRUE(Bring(u"1"));
  EXPECT_EQ(Own(u"\\_qlmfiles\\default.brd"), "mine");
  Ship(u"\\_qlmfiles\\default.brd", "newer stock");
  EXPECT_TRUE(Bring(u"2"));
  EXPECT_EQ(Own(u"\\_qlmfiles\\default.brd"), "mine");
}

TEST_F(StockDataTest, ALaterVersionBringsWhatIsNewAndWhatNobodyChanged) {
  for (const TextView name : {u"\\_qlmfiles\\kept", u"\\_qlmfiles\\changed", u"\\_qlmfiles\\deleted"})
    Ship(name, "1");
  ASSERT_TRUE(Bring(u"1"));
  Write(u"\\_qlmfiles\\changed", "mine");
  fs::remove(platform::SystemPath(DataPath(u"deleted")));
  for (const TextView name :
       {u"\\_qlmfiles\\kept", u"\\_qlmfiles\\changed", u"\\_qlmfiles\\deleted", u"\\_qlmfiles\\added"}) {
    Ship(name, "2");
  }
  EXPECT_TRUE(Bring(u"2"));
  EXPECT_EQ(begun, 1);
  EXPECT_EQ(Own(u"\\_qlmfiles\\kept"), "2");
  EXPECT_EQ(Own(u"\\_qlmfiles\\changed"), "mine");
  EXPECT_FALSE(HasOwn(u"\\_qlmfiles\\deleted"));
  EXPECT_EQ(Own(u"\\_qlmfiles\\added"), "2");
  // The third version finds each as the second left it.
  Ship(u"\\_qlmfiles\\kept", "3");
  EXPECT_TRUE(Bring(u"3"));
  EXPECT_EQ(Own(u"\\_qlmfiles\\kept"), "3");
  EXPECT_EQ(Own(u"\\_qlmfiles\\changed"), "mine");
}

TEST_F(StockDataTest, WhatAPowerCutLeftEmptyIsBroughtAgain) {
  Ship(u"\\_qlmfiles\\default.brd", "stock");
  Write(u"\\_qlmfiles\\default.brd", "");
  EXPECT_TRUE(Bring(u"1"));
  EXPECT_EQ(Own(u"\\_qlmfiles\\default.brd"), "stock");
}

// Where a file stands in a folder's place nothing can be written below it.
TEST_F(StockDataTest, TriesAgainWhenSomethingCouldNotBeWritten) {
  Ship(u"\\songs\\a.bms", "chart");
  Ship(u"\\_qlmfiles\\default.brd", "stock");
  Write(u"\\songs", "");
  EXPECT_FALSE(Bring(u"1"));
  EXPECT_EQ(Own(u"\\_qlmfiles\\default.brd"), "stock");
  fs::remove(platform::SystemPath(Join(AppPath, u"\\songs")));
  EXPECT_TRUE(Bring(u"1"));
  EXPECT_EQ(Own(u"\\songs\\a.bms"), "chart");
}

TEST_F(StockDataTest, DataBesideTheProgramComeFirst) {
  Ship(u"\\_qlmfiles\\default.brd", "stock");
  MakeFolders(Join(Bin(), u"\\_qlmfiles"));
  const DataPlace place = FindDataPlace(Bin());
  EXPECT_EQ(place.folder, Bin());
  EXPECT_EQ(place.stock, u"");
}

TEST_F(StockDataTest, AnInstalledProgramHasAPlaceForEachPerson) {
  Ship(u"\\_qlmfiles\\default.brd", "stock");
  DataPlace place = FindDataPlace(Bin());
  EXPECT_EQ(place.folder, AppPath);
  EXPECT_EQ(place.stock, Stock());
  // As the system's rule has it: a path that is not whole does not count.
  setenv("XDG_DATA_HOME", "data", 1);
  setenv("HOME", "/home/me", 1);
  EXPECT_EQ(FindDataPlace(Bin()).folder, u"\\home\\me\\.local\\share\\quillmarch");
  setenv("XDG_DATA_HOME", "/srv/", 1);
  EXPECT_EQ(FindDataPlace(Bin()).folder, u"\\srv\\quillmarch");
  // Without a home the stock can still be played.
  unsetenv("XDG_DATA_HOME");
  unsetenv("HOME");
  place = FindDataPlace(Bin());
  EXPECT_EQ(place.folder, Stock());
  EXPECT_EQ(place.stock, u"");
}

TEST_F(StockDataTest, AProgramWithoutAnyDataLooksBesideItself) {
  EXPECT_EQ(FindDataPlace(u"\\nowhere\\bin").folder, u"\\nowhere\\bin");
  EXPECT_EQ(FindDataPlace(u"\\nowhere\\bin").stock, u"");
}

}  // namespace
}  // namespace qlm
