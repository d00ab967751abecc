// Fades: combs of lines, falling tiles, the zooming title picture, and how a fade ends a play.
#include "graphics/fades.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/hooks.h"
#include "base/rnd.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "state/chart.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "tests/graphics/picture_files.h"

namespace qlm {
namespace {

constexpr Colour kFrame = 0x204060;
constexpr Colour kTitle = 0x00FF00;
constexpr uint32_t kNow = 1'000'000;

class Fades : public DisplayTest {
 protected:
  Fades() { DDBack->Fill(kScreen, kFrame); }
  // Runs the fade as it is so many ms after its start.
  static void DrawAfter(int32_t ms) {
    DDBack->Fill(kScreen, kFrame);
    platform::UseVirtualClock(FadeStart + static_cast<uint32_t>(ms));
    DrawFades();
  }
  static void Begin(uint8_t state) {
    FadeState = state;
    FadeStart = kNow;
    FadeLeaving = 1;
  }
  // Black pixels of a row.
  static int64_t Black(int32_t y) { return std::ranges::count(DDBack->Row(y), 0U); }
  // Whether the combs are `width` pixels long on every row.
  static testing::AssertionResult Combs(int32_t width) {
    for (int32_t y = 0; y < 480; ++y) {
      const bool fromLeft = y % 4 < 2;
      for (int32_t x = 0; x < 640; ++x) {
        const bool black = fromLeft ? x < width : x >= 640 - width;
        if (DDBack->Pixel(x, y) != (black ? 0U : kFrame)) {
          return testing::AssertionFailure() << "at " << x << "," << y;
        }
      }
    }
    return testing::AssertionSuccess();
  }
};

TEST_F(Fades, TheCombsCloseFromBothSides) {
  ScreenFade(25);
  EXPECT_TRUE(Combs(160));
}

TEST_F(Fades, AClearScreenStaysUntouched) {
  ScreenFade(0);
  ScreenFade(-50);
  EXPECT_TRUE(Combs(0));
}

TEST_F(Fades, TheScreenIsBlackFromAHundredOn) {
  ScreenFade(100);
  EXPECT_TRUE(Combs(640));
  DDBack->Fill(kScreen, kFrame);
  ScreenFade(1e12);
  EXPECT_TRUE(Combs(0));  // no whole number, so that the statement fails
  ScreenFade(250);
  EXPECT_TRUE(Combs(640));
}

TEST_F(Fades, TheWidthRoundsHalfToEven) {
  ScreenFade(0.078125);  // 0.5 pixels
  EXPECT_TRUE(Combs(0));
  ScreenFade(0.234375);  // 1.5 pixels
  EXPECT_TRUE(Combs(2));
}

TEST_F(Fades, TheChartEndFadeTakes200Ms) {
  Begin(kFadeEnd);
  DrawAfter(101);
  EXPECT_TRUE(Combs(320));
  DrawAfter(200);
  EXPECT_TRUE(Combs(640));
  EXPECT_EQ(FadeState, kFadeEnd);
  EXPECT_FALSE(PlayEnd);
  DrawAfter(201);
  EXPECT_TRUE(Combs(640));
  EXPECT_EQ(FadeState, kFadeNone);
  EXPECT_TRUE(PlayEnd);
}

TEST_F(Fades, OnlyALeavingFadeEndsThePlay) {
  for (const uint8_t state : {kFadeEnd, kFadeIn, kFadeFail}) {
    Begin(state);
    FadeLeaving = 0;
    DrawAfter(2001);
    EXPECT_EQ(FadeState, kFadeNone);
    EXPECT_FALSE(PlayEnd);
  }
}

TEST_F(Fades, TheFadeInOpensIn200Ms) {
  Begin(kFadeIn);
  DrawAfter(0);
  EXPECT_TRUE(Combs(640));
  DrawAfter(150);
  EXPECT_TRUE(Combs(160));
  DrawAfter(200);
  EXPECT_TRUE(Combs(0));
  EXPECT_EQ(FadeState, kFadeIn);
  DrawAfter(201);
  EXPECT_EQ(FadeState, kFadeNone);
  EXPECT_TRUE(PlayEnd);
}

TEST_F(Fades, TheFailFadeTakesTwoSeconds) {
  Begin(kFadeFail);
  DrawAfter(1000);
  EXPECT_TRUE(Combs(320));
  DrawAfter(105);  // 5.25 percent: 33.6 pixels
  EXPECT_TRUE(Combs(34));
  DrawAfter(2000);
  EXPECT_EQ(FadeState, kFadeFail);
  DrawAfter(2001);
  EXPECT_EQ(FadeState, kFadeNone);
  EXPECT_TRUE(PlayEnd);
}

TEST_F(Fades, NoFadeDrawsNothing) {
  Begin(kFadeNone);
  DrawAfter(500);
  EXPECT_TRUE(Combs(0));
  EXPECT_FALSE(PlayEnd);
}

// The fades' sounds.

class SoundingFades : public Fades {
 protected:
  // Slot 1 holds a tone that stands at 10000.
  SoundingFades() {
    platform::OpenSoundDevice(platform::SoundOutput::kOffline);
    const std::vector<int16_t> samples(44100, 10000);
    const platform::SoundFormat format{1, 1, 44100, 88200, 2, 16, 0};
    WavBuffer[1] = platform::CreateSoundBuffer({0, 88200}, format).buffer;
    WavBuffer[1]->Write(0, {reinterpret_cast<const unsigned char*>(samples.data()), 88200});
    WavBuffer[1]->Play(true);
    WavLoaded[1] = 255;
    PlayAlive = true;
  }
  ~SoundingFades() override {
    WavBuffer[1].reset();
    platform::CloseSoundDevice();
  }
  static int16_t Heard() {
    std::array<int16_t, 2> frame{};
    platform::RenderSound(frame);
    return frame[0];
  }
};

TEST_F(SoundingFades, TheEndFadeTurnsLoadedSoundsDownBy50AMillisecond) {
  Begin(kFadeEnd);
  DrawAfter(40);  // -2000: a tenth
  EXPECT_EQ(Heard(), 1000);
}

TEST_F(SoundingFades, TheEndFadeOfAChartThatHasEndedLeavesThemAlone) {
  PlayAlive = false;
  Begin(kFadeEnd);
  DrawAfter(40);
  EXPECT_EQ(Heard(), 10000);
}

TEST_F(SoundingFades, TheFailFadeTurnsThemDownBy5AMillisecondFromTheFirstSecondOn) {
  Begin(kFadeFail);
  DrawAfter(900);
  EXPECT_EQ(Heard(), 10000);
  DrawAfter(1400);
  EXPECT_EQ(Heard(), 1000);
}

TEST_F(SoundingFades, TheFadeInLeavesThemAlone) {
  Begin(kFadeIn);
  DrawAfter(100);
  EXPECT_EQ(Heard(), 10000);
}

// Tiles.

TEST_F(Fades, TileSpeedsLieBetween480And959AndAreTheDrawingsOwnNumbers) {
  SeedRnd(1);
  const float before = Rnd();
  SeedRnd(1);
  MakeFadeTiles();
  EXPECT_EQ(Rnd(), before);
  const auto [least, greatest] = std::ranges::minmax(FadeTileSpeed);
  EXPECT_GE(least, 480);
  EXPECT_LT(least, 490);
  EXPECT_LE(greatest, 959);
  EXPECT_GT(greatest, 950);
}

class Tiles : public Fades {
 protected:
  // A held frame whose every tile has a colour of its own: 0x010000 plus its number.
  Tiles() {
    for (int32_t i = 0; i < 300; ++i) {
      const int32_t x = i % 20 * 32;
      const int32_t y = i / 20 * 32;
      DDSnapshot->Fill({x, y, x + 32, y + 32}, static_cast<Colour>(0x010000 + i));
    }
    FadeTileSpeed.fill(480);
    Begin(kFadeTiles);
  }
};

TEST_F(Tiles, StandWhereTheyWereAtFirst) {
  DrawAfter(9);
  EXPECT_EQ(DDBack->Pixel(0, 0), 0x010000U);
  EXPECT_EQ(DDBack->Pixel(639, 479), 0x010000U + 299);
  EXPECT_EQ(DDBack->Pixel(33, 33), 0x010000U + 21);
}

TEST_F(Tiles, FallByTheFourthPowerOfTime) {
  DrawAfter(250);  // t = 0.5: 480 / 16 = 30 pixels
  EXPECT_EQ(DDBack->Pixel(0, 29), kFrame);
  EXPECT_EQ(DDBack->Pixel(0, 30), 0x010000U);
  EXPECT_EQ(DDBack->Pixel(0, 61), 0x010000U);
  EXPECT_EQ(DDBack->Pixel(0, 62), 0x010000U + 20);
  EXPECT_EQ(DDBack->Pixel(0, 479), 0x010000U + 280);
}

TEST_F(Tiles, EachHasItsOwnSpeed) {
  FadeTileSpeed[1] = 959;
  DrawAfter(250);  // 959 / 16 = 59.9
  EXPECT_EQ(DDBack->Pixel(32, 59), kFrame);
  EXPECT_EQ(DDBack->Pixel(32, 60), 0x010000U + 1);
  EXPECT_EQ(DDBack->Pixel(32, 62), 0x010000U + 21);  // the tile below it, which is drawn later
  EXPECT_EQ(DDBack->Pixel(31, 30), 0x010000U);
}

TEST_F(Tiles, BlackPartsOfTheHeldFrameHideTheFrameBelow) {
  DDSnapshot->Fill(kScreen, 0);
  DrawAfter(0);
  EXPECT_EQ(Black(0), 640);
}

TEST_F(Tiles, AreGoneAfterHalfASecond) {
  DrawAfter(499);
  EXPECT_EQ(FadeState, kFadeTiles);
  DrawAfter(500);
  EXPECT_EQ(FadeState, kFadeNone);
  EXPECT_FALSE(PlayEnd);
  EXPECT_TRUE(Combs(0));
}

TEST_F(Tiles, FallFasterOnTheLoadingScreen) {
  platform::UseVirtualClock(kNow + 150);  // t = 15 / 30
  EXPECT_FALSE(DrawFadeTiles(30));
  EXPECT_EQ(DDBack->Pixel(0, 30), 0x010000U);
  platform::UseVirtualClock(kNow + 299);
  EXPECT_FALSE(DrawFadeTiles(30));
  platform::UseVirtualClock(kNow + 300);
  EXPECT_TRUE(DrawFadeTiles(30));
}

TEST_F(Tiles, HoldingTheScreenTakesTheFrameThatWasShownLast) {
  DDBack->Fill(kScreen, 0x123456);
  PresentFrame(true, true);
  DDBack->Fill(kScreen, 0x654321);
  HoldScreen();
  EXPECT_TRUE(Shows(DDSnapshot, kScreen, 0x123456, 0));
  Windowed = true;  // without DirectBlt, so that nothing is shown
  PresentFrame(true, true);
  HoldScreen();
  EXPECT_TRUE(Shows(DDSnapshot, kScreen, 0x123456, 0));
}

TEST_F(Tiles, HoldingTheFrameTakesTheBackSurface) {
  DDBack->Fill(kScreen, 0x123456);
  HoldFrame();
  EXPECT_TRUE(Shows(DDSnapshot, kScreen, 0x123456, 0));
}

// Title picture.

class TitleFade : public Fades {
 protected:
  TitleFade() {
    DDStage = Solid(320, 240, kTitle);
    StageRect = {0, 0, 320, 240};
    StageW = 320;
    StageH = 240;
    Begin(kFadeTitle);
  }
};

TEST_F(TitleFade, ZoomsIn) {
  DrawAfter(0);
  EXPECT_TRUE(Combs(0));
  DrawAfter(250);
  EXPECT_TRUE(Shows(DDBack, {160, 120, 480, 360}, kTitle, kFrame));
  EXPECT_EQ(FadeState, kFadeTitle);
}

TEST_F(TitleFade, IsHeldWholeAndThenBreaksUp) {
  DrawAfter(499);
  EXPECT_EQ(FadeState, kFadeTitle);
  DrawAfter(500);
  EXPECT_TRUE(Shows(DDBack, kScreen, kTitle, 0));
  EXPECT_TRUE(Shows(DDSnapshot, kScreen, kTitle, 0));
  EXPECT_EQ(FadeState, kFadeTiles);
  EXPECT_EQ(FadeStart, kNow + 500);
  EXPECT_EQ(DDBga->Pixel(128, 128), kTitle);  // composed once
  EXPECT_FALSE(PlayEnd);
}

TEST_F(TitleFade, DoesNotZoomWithDontStretch) {
  DontStretch = true;
  DrawAfter(0);
  EXPECT_TRUE(Shows(DDSnapshot, kScreen, kTitle, 0));
  EXPECT_EQ(FadeState, kFadeTiles);
  EXPECT_EQ(FadeStart, kNow);
}

// The blocking fade.

std::vector<int64_t> blackOnTop;  // black pixels of row 0 in each presented frame

class FadeScreenTest : public Fades {
 protected:
  FadeScreenTest() {
    blackOnTop.clear();
    platform::SetFrameClock([](uint32_t now) { return now + 40; });
    hooks.framePresented = [] { blackOnTop.push_back(std::ranges::count(DDBack->Row(0), 0U)); };
  }
};

TEST_F(FadeScreenTest, KindOneGoesToBlackIn200Ms) {
  FadeScreen(1, 0);
  // 0, 40, 80, 120 and 160 of 200 ms, then the last frame: 0, 20, 40, 60, 80 and 100 percent.
  EXPECT_EQ(blackOnTop, (std::vector<int64_t>{0, 128, 256, 384, 512, 640}));
  EXPECT_TRUE(Shows(DDSnapshot, kScreen, kFrame, 0));
}

TEST_F(FadeScreenTest, OtherKindsComeFromBlack) {
  FadeScreen(2, 100);
  EXPECT_EQ(blackOnTop, (std::vector<int64_t>{640, 384, 128, 0}));
}

bool soundInEachFrame = true;

TEST_F(FadeScreenTest, EveryKindSoundsFromItsFirstFrameOn) {
  platform::OpenSoundDevice(platform::SoundOutput::kOffline);
  const platform::SoundFormat format{.tag = 1, .channels = 1, .samplesPerSec = 44100, .bitsPerSample = 16};
  SoundBufferPtr& sound = SystemSound[static_cast<int32_t>(SE::kFade)];
  sound = platform::CreateSoundBuffer({.flags = 0, .bytes = 88200}, format).buffer;
  soundInEachFrame = true;
  hooks.framePresented = [] {
    soundInEachFrame = soundInEachFrame && SystemSound[static_cast<int32_t>(SE::kFade)]->Playing();
  };
  for (const int32_t kind : {1, 2}) {
    sound->Stop();
    FadeScreen(kind, 0);
    EXPECT_TRUE(soundInEachFrame) << kind;
  }
  sound.reset();
  platform::CloseSoundDevice();
}

TEST_F(FadeScreenTest, ALengthBelow100ShowsTheHeldFrameUntilTheLast) {
  FadeScreen(1, 99);
  EXPECT_EQ(blackOnTop, (std::vector<int64_t>{0, 0, 0, 640}));
}

}  // namespace
}  // namespace qlm
