// The chart's pictures: what is loaded when, and what is composed and shown.
#include "graphics/bga.h"

#include "base/paths.h"
#include "graphics/bitmaps.h"
#include "state/chart.h"
#include "state/judgement.h"
#include "state/message.h"
#include "state/settings.h"
#include "state/timeline.h"
#include "tests/graphics/picture_files.h"

namespace qlm {
namespace {

constexpr Colour kRed = 0xFF0000;
constexpr Colour kGreen = 0x00FF00;
constexpr Colour kBlue = 0x0000FF;
constexpr Colour kSkin = 0x404040;  // what lies on the back surface before

class Bga : public DisplayTest {
 protected:
  Bga() { DDBack->Fill(kScreen, kSkin); }

  // Puts a picture into a slot as a load would.
  static void Give(int32_t slot, SurfacePtr surface) {
    surface->SetColourKey(0, 0x0F0F0F);
    BmpRect[slot] = surface->Bounds();
    BmpSurface[slot] = std::move(surface);
  }
  static void ShowAt(int32_t width, int32_t height) {
    BgaW = width;
    BgaH = height;
    BgaTarget = {0, 0, width, height};
  }
};

// Loading.

TEST_F(Bga, LoadingTellsOfTheSlotItsSizeAndTheTime) {
  BmpFile[0x1A] = WriteData(u"back.bmp", SolidBmp(5, 3, kRed));
  BgaLoad(0x1A);
  ASSERT_TRUE(BmpSurface[0x1A]);
  EXPECT_EQ(BmpRect[0x1A], (Rect{0, 0, 5, 3}));
  EXPECT_EQ(BmpHeldName[0x1A], BmpFile[0x1A]);
  EXPECT_EQ(message.text, u"BGA LOAD: 1A (in 0ms)");
  ASSERT_EQ(log.size(), 3U);
  EXPECT_EQ(log[0], Join(u"[LoadBitmap] : ", BmpFile[0x1A]));
  EXPECT_EQ(log[2], u"BGA1A: 5x3 on ??? (in 0ms)");
  EXPECT_EQ(BmpLoaded[0x1A], 0);
}

TEST_F(Bga, OtherKindsGoToTheOtherLoader) {
  BmpFile[7] = WriteData(u"back.jpg", SolidBmp(5, 3, kRed));
  BgaLoad(7);
  EXPECT_EQ(log, (std::vector<Text>{Join(u"[LoadExBitmap] : ", BmpFile[7]), u"BGA7: 5x3 on ??? (in 0ms)"}));
  EXPECT_EQ(BmpRect[7], (Rect{0, 0, 5, 3}));
}

// In the wide reading.

TEST_F(Bga, TheWideReadingFindsThePictureUnderItsOtherKinds) {
  WideCharts = true;
  const Text folder(GetFolder(WriteData(u"song\\back.GIF", SolidBmp(1, 1, kRed))));
  const auto found = [&](TextView name) {
    Text path = Join(folder, name);
    FindWidePicture(path);
    return Text(GetFileName(path));
  };
  EXPECT_EQ(found(u"BACK.bmp"), u"BACK.gif");
  for (const Text& kind : {Text(u"back.jpeg"), Text(u"back.jpg"), Text(u"back.png"), Text(u"back.bmp")}) {
    WriteData(Join(u"song\\", kind), SolidBmp(2, 2, kRed));
    EXPECT_EQ(found(u"back.tga"), kind);
  }
  EXPECT_EQ(found(u"back.jpg"), u"back.jpg");
  EXPECT_EQ(found(u"other.bmp"), u"other.bmp");
  WideCharts = false;
  EXPECT_EQ(found(u"back.tga"), u"back.tga");
}

TEST_F(Bga, AWideLoadTakesTheFileThatItFindsAndHoldsItOverCharts) {
  WideCharts = true;
  const Text png = WriteData(u"song\\back.png", SolidBmp(5, 3, kRed));
  BmpFile[7] = Join(GetFolder(png), u"back.bmp");
  BgaLoad(7);
  EXPECT_EQ(log, (std::vector<Text>{Join(u"[LoadExBitmap] : ", png), u"BGA7: 5x3 on ??? (in 0ms)"}));
  EXPECT_EQ(BmpHeldName[7], png);
  log.clear();
  BmpFile[7] = Join(GetFolder(png), u"back.bmp");
  BgaLoad(7);
  EXPECT_TRUE(log.empty());
  EXPECT_EQ(BmpLoaded[7], 255);
  LoadCourseBga(0, 7);
  CourseBmpFile[0][7] = Join(GetFolder(png), u"back.jpg");
  LoadCourseBga(0, 7);
  EXPECT_EQ(CourseBmpRect[0][7], (Rect{0, 0, 5, 3}));
  LoadStage(Join(GetFolder(png), u"back.jpg"));
  EXPECT_EQ(StageW, 5);
  LoadStage(GetFolder(png));
  EXPECT_EQ(DDStage, nullptr) << "no picture is named";
}

TEST_F(Bga, TheWideReadingMakesALargePictureSmaller) {
  const auto sizeOf = [&](int32_t width, int32_t height) {
    BmpFile[7] = WriteData(u"song\\back.bmp", SolidBmp(width, height, kRed));
    BmpHeldName[7].clear();
    BgaLoad(7);
    EXPECT_EQ(BmpSurface[7]->Bounds(), BmpRect[7]);
    return std::pair(BmpRect[7].Width(), BmpRect[7].Height());
  };
  EXPECT_EQ(sizeOf(512, 512), (std::pair(512, 512)));
  WideCharts = true;
  EXPECT_EQ(sizeOf(512, 512), (std::pair(256, 256)));
  EXPECT_EQ(sizeOf(640, 480), (std::pair(256, 192)));
  EXPECT_EQ(sizeOf(100, 301), (std::pair(85, 256)));  // 85.05
  EXPECT_EQ(sizeOf(256, 256), (std::pair(256, 256)));
  EXPECT_EQ(sizeOf(1, 1024), (std::pair(1, 256)));
}

TEST_F(Bga, AWidePictureIsShownWithItsTransparentParts) {
  WideCharts = true;
  Give(1, Solid(256, 256, kRed));
  const Text file = WriteData(u"song\\layer.bmp", SolidBmp(640, 480, 0x0F0F0F));
  BmpFile[2] = file;
  BgaLoad(2);
  curBaseBGA = 1;
  curLayerBGA = 2;
  ComposeBga();
  EXPECT_EQ(DDBga->Pixel(128, 96), kRed);
  WriteData(u"song\\layer.bmp", SolidBmp(640, 480, kGreen));
  BmpHeldName[2].clear();
  BgaLoad(2);
  ComposeBga();
  EXPECT_EQ(DDBga->Pixel(255, 191), kGreen);
  EXPECT_EQ(DDBga->Pixel(255, 192), kRed);
}

TEST_F(Bga, ThePlaceOfAVideoStaysDark) {
  WideCharts = true;
  BmpFile[7] = WriteData(u"song\\film.MPG", SolidBmp(5, 3, kRed));
  BgaLoad(7);
  EXPECT_EQ(log, (std::vector<Text>{u"# film.MPG: video is not played", u"BGA7: 0x0 on ??? (in 0ms)"}));
  EXPECT_EQ(BmpSurface[7], nullptr);
  curBaseBGA = 7;
  BGADirty = ShowBGA = true;
  EXPECT_TRUE(DrawBga());
  EXPECT_EQ(DDBack->Pixel(BgaX + 10, BgaY + 10), 0U);
  for (const TextView name : {u"a.mpg", u"a.AVI", u"a.webm", u"a.mp4", u"a.wmv"}) EXPECT_TRUE(IsVideo(name));
  for (const TextView name : {u"a.bmp", u"a.png", u"mpg", u"a.mpg.png"}) EXPECT_FALSE(IsVideo(name));
}

TEST_F(Bga, RunLengthFilesGoTheWayOfBmp) {
  BmpFile[7] = WriteData(u"back.rle", SolidBmp(5, 3, kRed));
  BgaLoad(7);
  EXPECT_EQ(log[0], Join(u"[LoadBitmap] : ", BmpFile[7]));
  EXPECT_TRUE(BmpSurface[7]);
}

TEST_F(Bga, ThePictureAtHandIsReused) {
  BmpFile[1] = WriteData(u"back.bmp", SolidBmp(5, 3, kRed));
  BgaLoad(1);
  const SurfacePtr held = BmpSurface[1];
  log.clear();
  BgaLoad(1);
  EXPECT_EQ(BmpSurface[1], held);
  EXPECT_EQ(BmpLoaded[1], 255);
  EXPECT_TRUE(log.empty());
}

TEST_F(Bga, AnotherFileTakesTheSlotOver) {
  BmpFile[1] = WriteData(u"one.bmp", SolidBmp(5, 3, kRed));
  BgaLoad(1);
  BmpFile[1] = WriteData(u"two.bmp", SolidBmp(2, 2, kBlue));
  BgaLoad(1);
  EXPECT_TRUE(Shows(BmpSurface[1], {0, 0, 2, 2}, kBlue, 0));
  EXPECT_EQ(BmpHeldName[1], BmpFile[1]);
}

TEST_F(Bga, AFileThatCannotBeLoadedLeavesTheSlotInvisible) {
  Give(1, Solid(4, 4, kRed));
  BmpFile[1] = Join(AppPath, u"\\none.bmp");
  BgaLoad(1);
  EXPECT_FALSE(BmpSurface[1]);
  EXPECT_EQ(log.back(), u"BGA1: 0x0 on ??? (in 0ms)");
}

TEST_F(Bga, AnEmptyNameReleasesThePicture) {
  Give(1, Solid(4, 4, kRed));
  BgaLoad(1);
  EXPECT_FALSE(BmpSurface[1]);
  EXPECT_EQ(BmpLoaded[1], 0);
  EXPECT_TRUE(log.empty());
}

TEST_F(Bga, AnEmptyNameLeavesTheHeldNameSoThatTheFileCountsAsLoadedLater) {
  const Text path = WriteData(u"one.bmp", SolidBmp(5, 3, kRed));
  BmpFile[1] = path;
  BgaLoad(1);
  BmpFile[1].clear();
  BgaLoad(1);
  BmpFile[1] = path;
  BgaLoad(1);
  EXPECT_FALSE(BmpSurface[1]);
  EXPECT_EQ(BmpLoaded[1], 255);
}

TEST_F(Bga, InACourseTheNameComesFromTheSong) {
  CourseMode = true;
  CourseSong = 3;
  CourseBmpFile[3][1] = WriteData(u"three.bmp", SolidBmp(5, 3, kRed));
  BgaLoad(1);
  EXPECT_EQ(BmpFile[1], CourseBmpFile[3][1]);
  EXPECT_TRUE(BmpSurface[1]);
  CourseSong = 4;
  BgaLoad(1);
  EXPECT_FALSE(BmpSurface[1]);
}

TEST_F(Bga, OnlyALoadIsShownAndLogged) {
  BgaLoad(1);  // the chart names none
  BmpFile[2] = BmpHeldName[2] = u"\\two.bmp";
  BgaLoad(2);
  EXPECT_FALSE(message.up);
  EXPECT_TRUE(log.empty());
  BmpFile[3] = u"\\nowhere\\three.bmp";
  BgaLoad(3);
  EXPECT_EQ(message.text, u"BGA LOAD: 3 (in 0ms)");
}

TEST_F(Bga, SlotsOutsideTheTableArePassedOver) {
  BgaLoad(-1);
  BgaLoad(256);
  ReleaseUnnamedPicture(-1);
  ReleaseUnnamedPicture(256);
  LoadCourseBga(128, 0);
  LoadCourseBga(0, 256);
  LoadCourseBga(-1, -1);
  EXPECT_TRUE(log.empty());
}

TEST_F(Bga, APictureThatTheChartNoLongerNamesIsGivenBack) {
  BmpFile[1] = WriteData(u"one.bmp", SolidBmp(5, 3, kRed));
  BgaLoad(1);
  ReleaseUnnamedPicture(1);
  EXPECT_TRUE(BmpSurface[1]);
  BmpFile[1] = u"\\other.bmp";
  ReleaseUnnamedPicture(1);
  EXPECT_FALSE(BmpSurface[1]);
  EXPECT_EQ(BmpHeldName[1], u"");
}

TEST_F(Bga, DarkPixelsOfAChartsPictureAreTransparent) {
  BmpFile[1] = WriteData(u"layer.bmp", BmpOf({{0x0F0F0F, 0x100F0F, 0, 0xFFFFFF}}));
  BgaLoad(1);
  Give(2, Solid(256, 256, kBlue));
  curBaseBGA = 2;
  curLayerBGA = 1;
  ComposeBga();
  EXPECT_EQ(DDBga->Pixel(126, 0), kBlue);
  EXPECT_EQ(DDBga->Pixel(127, 0), 0x100F0FU);
  EXPECT_EQ(DDBga->Pixel(128, 0), kBlue);
  EXPECT_EQ(DDBga->Pixel(129, 0), 0xFFFFFFU);
}

TEST_F(Bga, TheTitlePictureTakesItsOwnSize) {
  LoadStage(WriteData(u"stage.bmp", SolidBmp(320, 200, kGreen)));
  EXPECT_TRUE(Shows(DDStage, {0, 0, 320, 200}, kGreen, 0));
  EXPECT_EQ(StageW, 320);
  EXPECT_EQ(StageH, 200);
  EXPECT_EQ(StageRect, (Rect{0, 0, 320, 200}));
  EXPECT_TRUE(log.empty());
}

TEST_F(Bga, AMissingTitlePictureHasTheSizeOfTheScreen) {
  DDStage = Solid(2, 2, kRed);
  LoadStage(Join(AppPath, u"\\none.bmp"));
  EXPECT_FALSE(DDStage);
  EXPECT_EQ(StageW, 640);
  EXPECT_EQ(StageH, 480);
  EXPECT_EQ(StageRect, (Rect{0, 0, 640, 480}));
}

TEST_F(Bga, ACourseSongsPictureIsLoadedForItsOwnTable) {
  CourseBmpFile[2][9] = WriteData(u"nine.bmp", BmpOf({{0x0F0F0F, kRed}}));
  CourseBmpLoaded[2][9] = 0;
  LoadCourseBga(2, 9);
  ASSERT_TRUE(CourseBmpSurface[2][9]);
  EXPECT_EQ(CourseBmpRect[2][9], (Rect{0, 0, 2, 1}));
  EXPECT_EQ(log.back(), Join(u"coursebmsdbga(song,bgaid): ", CourseBmpFile[2][9]));
  EXPECT_FALSE(BmpSurface[9]);
  EXPECT_EQ(CourseBmpLoaded[2][9], 0);
  Surface target(2, 1);
  target.Fill(target.Bounds(), kBlue);
  target.Copy(0, 0, *CourseBmpSurface[2][9], CourseBmpRect[2][9], platform::Keyed::kYes);
  EXPECT_EQ(target.Pixel(0, 0), kBlue);
  EXPECT_EQ(target.Pixel(1, 0), kRed);
  CourseBmpFile[2][9] = Join(AppPath, u"\\none.bmp");
  LoadCourseBga(2, 9);
  EXPECT_FALSE(CourseBmpSurface[2][9]);
}

// Composing.

TEST_F(Bga, ANarrowPictureStandsInTheMiddleAndAtTheTop) {
  Give(1, Solid(128, 100, kRed));
  curBaseBGA = 1;
  ComposeBga();
  EXPECT_TRUE(Shows(DDBga, {64, 0, 192, 100}, kRed, 0));
}

TEST_F(Bga, AnOddWidthRoundsTheOffsetTowardsTheLeft) {
  Give(1, Solid(101, 1, kRed));  // (256 - 101) \ 2 = 77
  curBaseBGA = 1;
  ComposeBga();
  EXPECT_TRUE(Shows(DDBga, {77, 0, 178, 1}, kRed, 0));
}

TEST_F(Bga, APictureLargerThanTheFrameDoesNotShow) {
  Give(1, Solid(640, 480, kRed));
  Give(2, Solid(256, 257, kRed));
  for (const int32_t number : {1, 2}) {
    curBaseBGA = number;
    ComposeBga();
    EXPECT_TRUE(Shows(DDBga, {}, 0, 0));
  }
}

TEST_F(Bga, TheBaseIsCopiedWithItsDarkColours) {
  Give(1, Solid(256, 256, 0x0F0F0F));
  curBaseBGA = 1;
  ComposeBga();
  EXPECT_TRUE(Shows(DDBga, {0, 0, 256, 256}, 0x0F0F0F, 0));
}

TEST_F(Bga, ComposingClearsWhatWasThere) {
  DDBga->Fill(DDBga->Bounds(), kRed);
  ComposeBga();
  EXPECT_TRUE(Shows(DDBga, {}, 0, 0));
}

TEST_F(Bga, NumbersWithoutAPictureDrawNothing) {
  curBaseBGA = 1;
  curLayerBGA = 300;
  ComposeBga();
  EXPECT_TRUE(Shows(DDBga, {}, 0, 0));
}

TEST_F(Bga, NothingIsComposedWithNoBga) {
  NoBGA = true;
  DDBga->Fill(DDBga->Bounds(), kRed);
  ComposeBga();
  EXPECT_TRUE(Shows(DDBga, {0, 0, 256, 256}, kRed, 0));
}

TEST_F(Bga, AWideTitlePictureFillsTheWidth) {
  DDStage = Solid(640, 480, kGreen);
  StageRect = {0, 0, 640, 480};
  StageW = 640;
  StageH = 480;
  ComposeBga();  // 480 * 256 / 640 = 192 rows, 32 above
  EXPECT_TRUE(Shows(DDBga, {0, 32, 256, 224}, kGreen, 0));
}

TEST_F(Bga, AHighTitlePictureFillsTheHeight) {
  DDStage = Solid(100, 301, kGreen);
  StageRect = {0, 0, 100, 301};
  StageW = 100;
  StageH = 301;
  ComposeBga();  // 100 * 256 / 301 = 85.05 columns, (256 - 85) \ 2 = 85 to the left
  EXPECT_TRUE(Shows(DDBga, {85, 0, 170, 256}, kGreen, 0));
}

TEST_F(Bga, APictureReplacesTheTitlePicture) {
  DDStage = Solid(640, 480, kGreen);
  StageRect = {0, 0, 640, 480};
  StageW = 640;
  StageH = 480;
  Give(1, Solid(1, 1, kRed));
  curLayerBGA = 1;
  ComposeBga();
  EXPECT_TRUE(Shows(DDBga, {127, 0, 128, 1}, kRed, 0));
}

TEST_F(Bga, ThePictureIsLoadedWhenFirstShownUnderLoadModeOneAlone) {
  BmpFile[1] = WriteData(u"one.bmp", SolidBmp(256, 256, kRed));
  curBaseBGA = 1;
  for (const int32_t mode : {0, 2, -1}) {
    BMPLoadmode = mode;
    ComposeBga();
    EXPECT_FALSE(BmpSurface[1]) << mode;
  }
  BMPLoadmode = 1;
  ComposeBga();
  EXPECT_TRUE(Shows(DDBga, {0, 0, 256, 256}, kRed, 0));
}

TEST_F(Bga, InACourseAPreloadedPictureIsTakenOver) {
  CourseMode = true;
  CourseSong = 2;
  CourseBmpSurface[2][1] = Solid(256, 256, kGreen);
  CourseBmpRect[2][1] = {0, 0, 256, 256};
  curBaseBGA = 1;
  ComposeBga();
  EXPECT_EQ(BmpSurface[1], CourseBmpSurface[2][1]);
  EXPECT_EQ(BmpLoaded[1], 255);
  EXPECT_EQ(CourseBmpLoaded[2][1], 0);
  EXPECT_TRUE(Shows(DDBga, {0, 0, 256, 256}, kGreen, 0));
}

TEST_F(Bga, InACourseAMissingPictureIsLoadedAndMarked) {
  CourseMode = true;
  CourseSong = 2;
  CourseBmpFile[2][1] = WriteData(u"one.bmp", SolidBmp(256, 256, kRed));
  curLayerBGA = 1;
  ComposeBga();
  EXPECT_EQ(BmpLoaded[1], 255);
  EXPECT_EQ(CourseBmpLoaded[2][1], 255);
  EXPECT_TRUE(Shows(DDBga, {0, 0, 256, 256}, kRed, 0));
}

TEST_F(Bga, InACourseAReadyPictureIsLeftAlone) {
  CourseMode = true;
  BmpLoaded[1] = 255;
  Give(1, Solid(256, 256, kRed));
  CourseBmpSurface[0][1] = Solid(256, 256, kGreen);
  curBaseBGA = 1;
  ComposeBga();
  EXPECT_TRUE(Shows(DDBga, {0, 0, 256, 256}, kRed, 0));
}

TEST_F(Bga, AnotherSizeIsStretchedWhenComposed) {
  DDBga = Solid(512, 384, 0);
  ShowAt(512, 384);
  auto halves = Solid(256, 256, kRed);
  halves->Fill({128, 0, 256, 256}, kBlue);
  Give(1, halves);
  curBaseBGA = 1;
  ComposeBga();
  EXPECT_EQ(DDBga->Pixel(255, 383), kRed);
  EXPECT_EQ(DDBga->Pixel(256, 383), kBlue);
  EXPECT_EQ(DDBga->Pixel(511, 0), kBlue);
}

TEST_F(Bga, RealtimeStretchLeavesTheComposedPictureAsItIs) {
  DDBga = Solid(512, 384, 0);
  ShowAt(512, 384);
  RealtimeStretch = true;
  Give(1, Solid(256, 256, kRed));
  curBaseBGA = 1;
  ComposeBga();
  EXPECT_TRUE(Shows(DDBga, {0, 0, 256, 256}, kRed, 0));
}

// Each frame.

TEST_F(Bga, TheComposedPictureStandsAtItsPlace) {
  Give(1, Solid(256, 256, kRed));
  curBaseBGA = 1;
  BGADirty = true;
  EXPECT_TRUE(DrawBga());
  EXPECT_FALSE(BGADirty);
  EXPECT_TRUE(Shows(DDBack, {192, 128, 448, 384}, kRed, kSkin));
}

TEST_F(Bga, NothingIsComposedAgainUntilSomethingChanges) {
  Give(1, Solid(256, 256, kRed));
  curBaseBGA = 1;
  BGADirty = true;
  DrawBga();
  Give(1, Solid(256, 256, kBlue));
  DrawBga();
  EXPECT_EQ(DDBack->Pixel(192, 128), kRed);
}

TEST_F(Bga, TheTitlePictureIsComposedAndTheAreaKeepsTheSkin) {
  DDStage = Solid(640, 480, kGreen);
  StageRect = {0, 0, 640, 480};
  StageW = 640;
  StageH = 480;
  BGADirty = true;
  EXPECT_FALSE(DrawBga());
  EXPECT_EQ(DDBga->Pixel(128, 128), kGreen);
  EXPECT_TRUE(Shows(DDBack, {}, 0, kSkin));
}

TEST_F(Bga, ThePlaceKeepsTheSkinWithPicturesOff) {
  Give(1, Solid(256, 256, kRed));
  curBaseBGA = 1;
  NoBGA = true;
  EXPECT_FALSE(DrawBga());
  EXPECT_TRUE(Shows(DDBack, {}, 0, kSkin));
}

TEST_F(Bga, NothingIsDrawnWithoutShowBga) {
  ShowBGA = false;
  Give(1, Solid(256, 256, kRed));
  curBaseBGA = 1;
  BGADirty = true;
  DrawBga();
  EXPECT_TRUE(BGADirty);
  EXPECT_TRUE(Shows(DDBack, {}, 0, kSkin));
}

TEST_F(Bga, RealtimeStretchScalesInEachFrame) {
  ShowAt(320, 240);
  RealtimeStretch = true;
  Give(1, Solid(256, 256, kRed));
  curBaseBGA = 1;
  BGADirty = true;
  DrawBga();
  EXPECT_TRUE(Shows(DDBack, {192, 128, 512, 368}, kRed, kSkin));
}

TEST_F(Bga, APlaceThatRunsOffTheScreenShowsNothing) {
  Give(1, Solid(256, 256, kRed));
  curBaseBGA = 1;
  BGADirty = true;
  BgaX = 400;
  DrawBga();
  BgaX = INT32_MAX;
  RealtimeStretch = true;
  ShowAt(300, 300);
  DrawBga();
  EXPECT_TRUE(Shows(DDBack, {}, 0, kSkin));
}

class Poor : public Bga {
 protected:
  Poor() {
    Give(1, Solid(256, 256, kRed));
    Give(2, Solid(100, 50, kBlue));
    curBaseBGA = 1;
    poorBGA = 2;
    BGADirty = true;
    DrawBga();
    PoorShow = true;
    PoorShowPos = 1000;
    DDBack->Fill(kScreen, kSkin);
  }
};

TEST_F(Poor, ThePoorPictureReplacesTheOthers) {
  playPos = 1000;
  DrawBga();
  EXPECT_TRUE(Shows(DDBack, {192, 128, 292, 178}, kBlue, kSkin));
}

TEST_F(Poor, ItLastsAMeasureOf192Units) {
  playPos = 1191.9;
  DrawBga();
  EXPECT_TRUE(PoorShow);
  EXPECT_EQ(DDBack->Pixel(192, 128), kBlue);
  playPos = 1192;
  DrawBga();
  EXPECT_FALSE(PoorShow);
  EXPECT_TRUE(BGADirty);
  EXPECT_EQ(DDBack->Pixel(192, 128), 0U);  // what the miss left
  DrawBga();
  EXPECT_FALSE(BGADirty);
  EXPECT_TRUE(Shows(DDBack, {192, 128, 448, 384}, kRed, kSkin));
}

TEST_F(Poor, WithoutAPictureTheOthersStay) {
  playPos = 1000;
  for (const int32_t number : {3, -1, 256}) {
    poorBGA = number;
    DDBack->Fill(kScreen, kSkin);
    DrawBga();
    EXPECT_TRUE(Shows(DDBack, {192, 128, 448, 384}, kRed, kSkin));
  }
}

TEST_F(Poor, AtAnotherSizeItIsPlacedOnTheFrameAndStretched) {
  ShowAt(512, 256);
  BgaX = BgaY = 0;
  playPos = 1000;
  DrawBga();  // columns 78 to 178 of 256, twice as wide
  EXPECT_EQ(DDBack->Pixel(155, 0), 0U);
  EXPECT_EQ(DDBack->Pixel(156, 0), kBlue);
  EXPECT_EQ(DDBack->Pixel(355, 49), kBlue);
  EXPECT_EQ(DDBack->Pixel(356, 49), 0U);
  EXPECT_EQ(DDBack->Pixel(511, 255), 0U);
  EXPECT_EQ(DDBack->Pixel(512, 0), kSkin);
}

}  // namespace
}  // namespace qlm
