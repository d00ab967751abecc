// Whole frames of a play.
#include "play_screen/play_screen.h"

#include "graphics/present.h"
#include "platform/clock.h"
#include "state/message.h"
#include "state/session.h"
#include "tests/graphics/picture_files.h"
#include "tests/support/allocations.h"

namespace qlm {
namespace {

constexpr Colour kSkin = 0x404040;
constexpr Colour kRed = 0xFF0000;

class PlayFrames : public DisplayTest {};

TEST_F(PlayFrames, ThePlayHasItsBackgroundBelowThePictures) {
  DDSkinBack = Solid(640, 480, kSkin);
  BmpSurface[1] = Solid(256, 256, kRed);
  BmpRect[1] = {0, 0, 256, 256};
  curBaseBGA = 1;
  BGADirty = true;
  DrawPlayFrame();
  EXPECT_TRUE(Shows(DDBack, {192, 128, 448, 384}, kRed, kSkin));
}

TEST_F(PlayFrames, ABackgroundSmallerThanTheScreenIsNotDrawn) {
  DDSkinBack = Solid(639, 480, kSkin);
  DrawPlayFrame();
  EXPECT_TRUE(Shows(DDBack, {}, 0, 0));
}

TEST_F(PlayFrames, FadesLieOverEverythingInThePlay) {
  DDSkinBack = Solid(640, 480, kSkin);
  FadeState = kFadeEnd;
  FadeStart = platform::Now() - 100;
  DrawPlayFrame();
  EXPECT_EQ(DDBack->Pixel(319, 0), 0U);
  EXPECT_EQ(DDBack->Pixel(320, 0), kSkin);
}

TEST_F(PlayFrames, AFrameTakesNothingFromTheHeap) {
  DDSkinBack = Solid(640, 480, kSkin);
  SkinFile[1] = Solid(1024, 16, kRed);
  for (Rect& cell : SysFont) cell = {0, 0, 8, 16};
  SysFontW = 8;
  SysFontH = 16;
  for (const int32_t slot : {1, 2}) {
    BmpSurface[slot] = Solid(256, 256, kRed);
    BmpRect[slot] = {0, 0, 256, 256};
  }
  curBaseBGA = 1;
  curLayerBGA = 2;
  GameState = kStatePlay;
  platform::SetFrameClock([](uint32_t now) { return now + 17; });
  ShowMessage(u"羽ペンの行進 R E A D Y ? with more letters than fit where short texts do");
  FadeStart = platform::Now();
  FadeState = kFadeTiles;
  const size_t before = Allocations();
  for (int32_t frame = 0; frame < 100; ++frame) {
    BGADirty = true;
    DrawPlayFrame();
    PresentFrame();
  }
  EXPECT_EQ(Allocations(), before);
}

TEST_F(PlayFrames, ThePlayAndItsFadesGoOnWithoutSurfaces) {
  DDBack.reset();
  FadeState = kFadeEnd;
  FadeLeaving = 1;
  FadeStart = platform::Now() - 201;
  DrawPlayFrame();
  EXPECT_EQ(FadeState, kFadeNone);
  EXPECT_TRUE(PlayEnd);
}

}  // namespace
}  // namespace qlm
