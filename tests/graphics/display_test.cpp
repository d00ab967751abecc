// The display: what opening it logs, which surfaces it has, how it is lost and comes back.
#include "graphics/display.h"

#include <cstdlib>

#include "base/hooks.h"
#include "platform/clock.h"
#include "platform/window.h"
#include "state/session.h"
#include "state/settings.h"
#include "tests/graphics/picture_files.h"

namespace qlm {
namespace {

class Display : public GameTest {
 protected:
  ~Display() override { ReleaseDD(); }
};

TEST_F(Display, OpeningTellsOfDepthAndMemory) {
  ScreenColors = 3;
  videoMemoryTotal = static_cast<int64_t>(Surface::BytesHeld()) + 5000000;  // the frame shown takes 1228800
  BgaSource = {1, 2, 3, 4};
  InitDX();
  InitDD(DisplayOutput::kUnseen);
  EXPECT_EQ(
      log, (std::vector<Text>{u"[InitDX]", u"[InitDD]", u"    Display mode changed to 640x480x32 : error = 0",
                              u"    Primary Surface created. VRAM FREE:3771200"}));
  EXPECT_EQ(BgaSource, (Rect{0, 0, 256, 256}));
}

TEST_F(Display, EightBitsAreColourDepthZero) {
  InitDD(DisplayOutput::kUnseen);
  EXPECT_TRUE(Logged(u"    Display mode changed to 640x480x8 : error = 0"));
}

TEST_F(Display, ADisplayThatCannotBeOpenedIsLoggedAndTheGameGoesOn) {
  setenv("SDL_VIDEODRIVER", "no-such-driver", 1);
  InitDD();
  ASSERT_GT(log.size(), 2U);
  EXPECT_EQ(log[1], u"    Error: Can't create DirectDraw object. : -2147467259");
  EXPECT_TRUE(log[2].starts_with(u"    # No display: ")) << Utf8(log[2]);
  EXPECT_TRUE(Logged(u"    Display mode changed to 640x480x8 : error = -2147467259"));
  CreateSurfaces();
  EXPECT_TRUE(DDBack);
}

TEST_F(Display, SurfacesAreMadeOnlyOnceTheDisplayIsOpen) {
  CreateSurfaces();
  EXPECT_FALSE(DDBack);
  EXPECT_TRUE(log.empty());
}

TEST_F(Display, TheFixedSurfacesHaveTheirSizes) {
  InitDD(DisplayOutput::kUnseen);
  log.clear();
  DDBack = Solid(640, 480, 5);
  BgaW = 300;
  BgaH = 200;
  videoMemoryTotal =
      static_cast<int64_t>(Surface::BytesHeld()) + 700000 - 640 * 480 * 4;  // DDBack is given back first
  CreateSurfaces();
  EXPECT_EQ(log, (std::vector<Text>{u"[CreateSurfaces]", u"VRAM 700000bytes free", u"Creating surfaces..."}));
  EXPECT_EQ(DDBack->Bounds(), (Rect{0, 0, 640, 480}));
  EXPECT_EQ(DDBga->Bounds(), (Rect{0, 0, 300, 200}));
  EXPECT_EQ(DDGraph->Bounds(), (Rect{0, 0, 300, 203}));
  EXPECT_EQ(DDSnapshot->Bounds(), (Rect{0, 0, 640, 480}));
  EXPECT_EQ(DDPreview->Bounds(), (Rect{0, 0, 192, 144}));
  EXPECT_TRUE(Shows(DDBack, {}, 0, 0));
}

TEST_F(Display, BackGraphAndSnapshotHaveABlackKey) {
  InitDD(DisplayOutput::kUnseen);
  CreateSurfaces();
  for (const SurfacePtr& surface : {DDBack, DDGraph, DDSnapshot}) {
    const SurfacePtr target = Solid(1, 1, 7);
    target->Copy(0, 0, *surface, {0, 0, 1, 1}, platform::Keyed::kYes);
    EXPECT_EQ(target->Pixel(0, 0), 7U);
  }
}

TEST_F(Display, ABgaOfAnImpossibleSizeIsLoggedAndMissing) {
  InitDD(DisplayOutput::kUnseen);
  BgaW = 0;
  CreateSurfaces();
  EXPECT_FALSE(DDBga);
  EXPECT_EQ(log.back(), u"Error : can't create BGA surface : -2147024809");
}

TEST_F(Display, ReleasingGivesBackBackBgaSheetsAndPictures) {
  InitDD(DisplayOutput::kUnseen);
  CreateSurfaces();
  SkinFile[1] = Solid(1, 1, 1);
  BmpSurface[255] = Solid(1, 1, 1);
  BmpHeldName[255] = Text(u"a");
  ReleaseDD();
  EXPECT_FALSE(DDBack);
  EXPECT_FALSE(DDBga);
  EXPECT_FALSE(SkinFile[1]);
  EXPECT_FALSE(BmpSurface[255]);
  EXPECT_EQ(BmpHeldName[255], u"");
  log.clear();
  CreateSurfaces();
  EXPECT_TRUE(log.empty());
}

// Lost and regained.

int lost = 0;
int regained = 0;
int pumps = 0;

class LostDisplay : public DisplayTest {
 protected:
  LostDisplay() {
    lost = regained = pumps = 0;
    hooks.displayLost = [] { ++lost; };
    hooks.displayRegained = [] { ++regained; };
    hooks.pumped = [] { ++pumps; };
    GameState = kStatePlay;
    PlayAlive = true;
  }
};

TEST_F(LostDisplay, AnAvailableDisplayChangesNothing) {
  const SurfacePtr back = DDBack;
  EXPECT_TRUE(CheckDisplay());
  EXPECT_EQ(DDBack, back);
  EXPECT_EQ(pumps, 0);
}

TEST_F(LostDisplay, TheFirstRefusalPausesARunningPlay) {
  platform::TakeDisplayAway(true);
  EXPECT_FALSE(CheckDisplay());
  EXPECT_TRUE(displayIsLost);
  EXPECT_EQ(lost, 1);
  EXPECT_FALSE(CheckDisplay());
  EXPECT_EQ(lost, 1);
  EXPECT_EQ(pumps, 2);
}

TEST_F(LostDisplay, AFrameThatIsRefusedRestsAtLeastAMillisecondAndATenthOfASecondAtMost) {
  platform::TakeDisplayAway(true);
  CheckDisplay();
  EXPECT_EQ(platform::VirtualRest(), 1);
  Sleep = 7;
  CheckDisplay();
  EXPECT_EQ(platform::VirtualRest(), 8);
  Sleep = 2147483647;
  CheckDisplay();
  EXPECT_EQ(platform::VirtualRest(), 108);
}

TEST_F(LostDisplay, APausedOrEndedPlayIsNotPaused) {
  platform::TakeDisplayAway(true);
  Paused = true;
  CheckDisplay();
  platform::TakeDisplayAway(false);
  CheckDisplay();
  platform::TakeDisplayAway(true);
  Paused = false;
  PlayAlive = false;
  CheckDisplay();
  EXPECT_EQ(lost, 0);
}

TEST_F(LostDisplay, ComingBackMakesTheSurfacesAnewAndTellsSo) {
  const SurfacePtr back = DDBack;
  platform::TakeDisplayAway(true);
  CheckDisplay();
  log.clear();
  platform::TakeDisplayAway(false);
  EXPECT_TRUE(CheckDisplay());
  EXPECT_FALSE(displayIsLost);
  EXPECT_NE(DDBack, back);
  EXPECT_TRUE(BGADirty);
  EXPECT_EQ(regained, 1);
  EXPECT_EQ(log[0], u"[CreateSurfaces]");
  EXPECT_TRUE(CheckDisplay());
  EXPECT_EQ(regained, 1);
}

}  // namespace
}  // namespace qlm
