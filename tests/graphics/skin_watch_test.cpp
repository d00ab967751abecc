// A skin that follows its files, with real files and a virtual clock.
#include "graphics/skin_watch.h"

#include <algorithm>
#include <filesystem>

#include "base/hooks.h"
#include "base/paths.h"
#include "graphics/present.h"
#include "graphics/skin.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "state/message.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "tests/graphics/skin_files.h"
#include "tests/support/allocations.h"

namespace qlm {
namespace {

SurfacePtr presented;

class SkinWatchTest : public SkinTest {
 protected:
  SkinWatchTest() {
    WatchSkins = true;
    NOVSync = true;
    WriteData(u"_qlmfiles\\sheet.bmp", SolidBmp(64, 64, 0x102030));
    presented = Solid(640, 480, 0);
    hooks.framePresented = [] { presented->Copy(0, 0, *DDBack, kScreen); };
  }
  ~SkinWatchTest() override {
    ForgetWatchedSkin();
    presented.reset();
  }

  void Load(std::initializer_list<const char*> lines) { loadSkin(WriteSkin(lines), false); }
  // Some turns, 200 ms in all.
  static void Turns() {
    for (int turn = 0; turn < 10; ++turn) {
      PresentFrame();
      platform::UseVirtualClock(platform::Now() + 20);
    }
    PresentFrame();
  }
  int32_t Loads() const { return static_cast<int32_t>(std::ranges::count(log, u"[loadSkin] : ink.brd")); }
  // Whether the strip of what is wrong stands at the top.
  static bool TellsTrouble() { return presented->Pixel(1, 0) == 0x26304C; }
};

TEST_F(SkinWatchTest, WhatIsSavedIsLoaded) {
  Load({"#YPOSITION 400"});
  Turns();
  EXPECT_EQ(Loads(), 1);
  WriteSkin({"#YPOSITION 300"});
  Turns();
  EXPECT_EQ(JudgeY, 300);
  EXPECT_EQ(Loads(), 2);
  EXPECT_EQ(message.text, u"SKIN RELOADED: ink.brd");
  EXPECT_FALSE(TellsTrouble());
}

TEST_F(SkinWatchTest, SwitchedOffNothingIsFollowed) {
  WatchSkins = false;
  Load({"#YPOSITION 400"});
  Turns();
  WriteSkin({"#YPOSITION 300"});
  Turns();
  EXPECT_EQ(JudgeY, 400);
  EXPECT_EQ(Loads(), 1);
}

TEST_F(SkinWatchTest, ItWaitsUntilNothingHasChangedForATenthOfASecond) {
  Load({"#YPOSITION 400"});
  PresentFrame();
  WriteSkin({"#YPOSITION 300"});
  PresentFrame();
  platform::UseVirtualClock(platform::Now() + 99);
  WriteSkin({"#YPOSITION 200"});
  PresentFrame();
  platform::UseVirtualClock(platform::Now() + 99);
  PresentFrame();
  EXPECT_EQ(Loads(), 1);
  platform::UseVirtualClock(platform::Now() + 1);
  PresentFrame();
  EXPECT_EQ(Loads(), 2);
  EXPECT_EQ(JudgeY, 200);
}

TEST_F(SkinWatchTest, APictureThatIsSavedIsLoaded) {
  Load({"#FILE01 sheet.bmp", "#CLIP01 1,0,0,8,8"});
  Turns();
  WriteData(u"_qlmfiles\\sheet.bmp", SolidBmp(64, 64, 0x405060));
  Turns();
  EXPECT_EQ(SkinFile[1]->Pixel(3, 3), 0x405060U);
}

TEST_F(SkinWatchTest, WithSomethingWrongTheLastGoodSkinStays) {
  Load({"#FILE01 sheet.bmp", "#CLIP01 1,0,0,8,8", "#YPOSITION 400", "#SYSFONT 8,0,8,8"});
  Turns();
  const SurfacePtr sheet = SkinFile[1];
  WriteSkin({"#FILE01 none.bmp", "#CLIP01 1,0,0,9,9", "#YPOSITION 300", "#CLIP02 1,x", "#SYSFONT 8,0,9,9"});
  Turns();
  EXPECT_EQ(Loads(), 2);
  EXPECT_EQ(JudgeY, 400);
  EXPECT_EQ(Clip[1].width, 8);
  EXPECT_EQ(ClipList.last, 0);
  EXPECT_EQ(SysFontW, 8);
  EXPECT_EQ(SkinFile[1], sheet);
  EXPECT_TRUE(TellsTrouble());
  Turns();
  EXPECT_EQ(Loads(), 2) << "not read again until it changes";
  EXPECT_TRUE(TellsTrouble()) << "it stands until it is mended";
}

TEST_F(SkinWatchTest, WhatIsMendedIsTaken) {
  Load({"#YPOSITION 400"});
  Turns();
  WriteSkin({"#YPOSITION x"});
  Turns();
  EXPECT_TRUE(TellsTrouble());
  WriteSkin({"#YPOSITION 300"});
  Turns();
  EXPECT_EQ(JudgeY, 300);
  EXPECT_FALSE(TellsTrouble());
}

TEST_F(SkinWatchTest, APictureThatWasMissingIsWaitedFor) {
  Load({"#YPOSITION 400"});
  Turns();
  WriteSkin({"#YPOSITION 300", "#FILE02 late.bmp"});
  Turns();
  EXPECT_TRUE(TellsTrouble());
  WriteData(u"_qlmfiles\\late.bmp", SolidBmp(8, 8, 0x102030));
  Turns();
  EXPECT_EQ(JudgeY, 300);
  EXPECT_FALSE(TellsTrouble());
}

// A skin that has always had its faults can be worked on all the same.
TEST_F(SkinWatchTest, WhatWasWrongBeforeHindersNothing) {
  Load({"#YPOSITION 400", "#WRONGWORD_1 2", "#NOTE11 05,00,00,1,2"});
  Turns();
  EXPECT_FALSE(TellsTrouble());
  WriteSkin({"// one line more", "#YPOSITION 300", "#NOTE11 05,00,00,1,2"});
  Turns();
  EXPECT_EQ(JudgeY, 300);
  WriteSkin({"#YPOSITION 200", "#NOTE11 05,00,00,1,2", "#NOTE12 05,00,00,1,2"});
  Turns();
  EXPECT_EQ(JudgeY, 300) << "once more than before";
}

TEST_F(SkinWatchTest, ASkinThatGoesOrIsEmptyIsNotTaken) {
  Load({"#YPOSITION 400"});
  const Text path = SkinPath;
  Turns();
  std::filesystem::remove(platform::SystemPath(path));
  Turns();
  EXPECT_EQ(JudgeY, 400);
  EXPECT_EQ(SkinPath, path);
  EXPECT_TRUE(TellsTrouble());
  WriteSkin({"no line that counts"});
  Turns();
  EXPECT_EQ(JudgeY, 400);
  EXPECT_TRUE(TellsTrouble());
}

TEST_F(SkinWatchTest, AnotherSkinIsFollowedInTheFirstOnesPlace) {
  Load({"#YPOSITION 400"});
  Turns();
  WriteSkin({"#YPOSITION x"});
  Turns();
  const Text second = WriteData(u"_qlmfiles\\second.brd", "#YPOSITION 100\r\n");
  loadSkin(second, false);
  Turns();
  EXPECT_FALSE(TellsTrouble());
  WriteSkin({"#YPOSITION 300"});
  Turns();
  EXPECT_EQ(JudgeY, 100);
  WriteData(u"_qlmfiles\\second.brd", "#YPOSITION 110\r\n");
  Turns();
  EXPECT_EQ(JudgeY, 110);
}

TEST_F(SkinWatchTest, ManyFaultsAreCutAtTenLines) {
  Load({"#YPOSITION 400"});
  Turns();
  std::string skin;
  for (int line = 0; line < 40; ++line) skin += "#CLIP" + std::to_string(10 + line) + " 1,x\r\n";
  WriteData(u"_qlmfiles\\ink.brd", skin);
  Turns();
  EXPECT_TRUE(TellsTrouble());
  EXPECT_EQ(presented->Pixel(1, 161), 0x26304CU) << "the rule under ten lines of 15 pixels and the air";
}

TEST_F(SkinWatchTest, WithoutAChangeATurnAllocatesNothing) {
  Load({"#YPOSITION 400"});
  Turns();
  const size_t before = Allocations();
  FollowSkin();
  DrawSkinTrouble();
  EXPECT_EQ(Allocations(), before);
}

}  // namespace
}  // namespace qlm
