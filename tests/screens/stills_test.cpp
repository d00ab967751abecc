// What a display that comes back leads to.
#include "screens/stills.h"

#include "base/paths.h"
#include "graphics/bitmaps.h"
#include "state/session.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "tests/graphics/picture_files.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

class Stills : public PlayTest {
 protected:
  Stills() {
    SkinPath = u"\\skins\\ink.brd";
    Paused = true;
    PlayAlive = true;
    log.clear();
  }
};

TEST_F(Stills, APlayReadsItsSkinAnewAndGoesOn) {
  GameState = kStatePlay;
  RestorePictures();
  EXPECT_EQ(log[0], u"[loadSkin] : ink.brd");
  EXPECT_FALSE(Paused);
}

TEST_F(Stills, ResultsGoOnToo) {
  GameState = kStateResults;
  RestorePictures();
  EXPECT_FALSE(Paused);
}

TEST_F(Stills, OtherScreensAndAPlayThatIsOverStayPaused) {
  for (const int32_t state : {kStateSongSelect, kStateLists}) {
    GameState = state;
    RestorePictures();
    EXPECT_TRUE(Paused) << state;
  }
  GameState = kStatePlay;
  PlayAlive = false;
  RestorePictures();
  EXPECT_TRUE(Paused);
}

TEST_F(Stills, AreLoadedFromTheDataFolder) {
  WriteData(u"_qlmfiles\\ssbg.bmp", SolidBmp(640, 480, 0x306090));
  WriteData(u"_qlmfiles\\ssobj.bmp", SolidBmp(8, 4, 0x0000FF));
  WriteData(u"_qlmfiles\\ssnostg.bmp", SolidBmp(4, 8, 0x00FF00));
  WriteData(u"_qlmfiles\\resobj.bmp", SolidBmp(2, 2, 0xFF0000));
  LoadSS();
  EXPECT_TRUE(Shows(SSBack, {0, 0, 640, 480}, 0x306090, 0));
  EXPECT_TRUE(Shows(SSBackDim, {0, 0, 640, 480}, 0x606060, 0));  // (48 + 96 + 144) / 3
  EXPECT_TRUE(Shows(SSObj, {0, 0, 8, 4}, 0x0000FF, 0));
  EXPECT_TRUE(Shows(SSNoStage, {0, 0, 4, 8}, 0x00FF00, 0));
  EXPECT_TRUE(Shows(ResultObj, {0, 0, 2, 2}, 0xFF0000, 0));
}

TEST_F(Stills, TheLogTellsTheMemoryLeftBehindEach) {
  videoMemoryTotal = 64 << 20;
  WriteData(u"_qlmfiles\\ssobj.bmp", SolidBmp(8, 4, 0x0000FF));
  LoadSS();
  const auto free = [] { return ToText(FreeVideoMemory()); };
  ASSERT_EQ(log.size(), 14U);
  EXPECT_EQ(log[0], Join(u"[LoadBitmap] : ", DataPath(u"ssbg.bmp")));
  EXPECT_EQ(log[2], Join(u"[LoadBitmap] : ", DataPath(u"ssbg.bmp")));
  EXPECT_EQ(log[4], Join(u"[LoadSS] SongSelect Surface created. VRAM FREE:", FreeVideoMemory() + 8 * 4 * 4));
  EXPECT_EQ(log[5], Join(u"[LoadBitmap] : ", DataPath(u"ssobj.bmp")));
  EXPECT_EQ(log[7], Join(u"[LoadSS] SSObj Surface created. VRAM FREE:", free()));
  EXPECT_EQ(log[10], Join(u"[LoadSS] SSNOSTG Surface created. VRAM FREE:", free()));
  EXPECT_EQ(log[13], Join(u"[LoadSS] Result Surface created. VRAM FREE:", free()));
}

TEST_F(Stills, BlackIsTransparentInSprites) {
  WriteData(u"_qlmfiles\\ssobj.bmp", SolidBmp(8, 4, 0));
  LoadSS();
  Surface target(8, 4);
  target.Fill(target.Bounds(), 0x123456);
  target.Copy(0, 0, *SSObj, SSObj->Bounds(), platform::Keyed::kYes);
  EXPECT_EQ(target.Pixel(3, 2), 0x123456U);
}

TEST_F(Stills, PicturesThatHaveGoneAreGivenBack) {
  for (SurfacePtr* const surface : {&SSBack, &SSBackDim, &SSObj, &SSNoStage, &ResultObj})
    *surface = Solid(8, 8, 0xFFFFFF);
  LoadSS();
  for (const SurfacePtr* const surface : {&SSBack, &SSBackDim, &SSObj, &SSNoStage, &ResultObj})
    EXPECT_EQ(*surface, nullptr);
}

// The nearest grey: 0x010100 has a mean of two thirds, 0x000001 of one third.
TEST_F(Stills, GreyIsTheRoundedMeanOfTheChannels) {
  for (const auto& [colour, grey] : {std::pair{0x010100, 0x010101}, {0x000001, 0}, {0xFFFFFF, 0xFFFFFF}}) {
    WriteData(u"_qlmfiles\\ssbg.bmp", SolidBmp(2, 2, static_cast<Colour>(colour)));
    LoadSS();
    EXPECT_EQ(SSBackDim->Pixel(1, 1), static_cast<Colour>(grey)) << colour;
  }
}

}  // namespace
}  // namespace qlm
