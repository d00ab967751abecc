// Picture files to surfaces: who loads what, what the log says, what is transparent.
#include "graphics/bitmaps.h"

#include "base/paths.h"
#include "tests/graphics/picture_files.h"

namespace qlm {
namespace {

class Bitmaps : public GameTest {
 protected:
  // Lets the display report this much free memory at this moment.
  static void LeaveFree(int64_t bytes) {
    videoMemoryTotal = static_cast<int64_t>(Surface::BytesHeld()) + bytes;
  }

  SurfacePtr surface;
  Rect rect;
};

TEST_F(Bitmaps, FreeMemoryIsWhatSurfacesLeave) {
  const int64_t before = FreeVideoMemory();
  EXPECT_EQ(before, 67108864 - static_cast<int64_t>(Surface::BytesHeld()));
  surface = Solid(256, 256, 0);
  EXPECT_EQ(FreeVideoMemory(), before - 262144);
  videoMemoryTotal = 1000;
  EXPECT_EQ(FreeVideoMemory(), 0);
}

TEST_F(Bitmaps, APictureGoesToSystemMemoryBelow614400FreeBytes) {
  const Text path = WriteData(u"a.bmp", SolidBmp(1, 1, 5));
  LeaveFree(614399);
  LoadBitmap(path, surface, rect);
  EXPECT_EQ(log, (std::vector<Text>{Join(u"[LoadBitmap] : ", path), u"> on SYSRAM (VRAM:614399)"}));
  log.clear();
  surface.reset();
  LeaveFree(614400);
  LoadBitmap(path, surface, rect);
  EXPECT_EQ(log, (std::vector<Text>{Join(u"[LoadBitmap] : ", path), u"> on VRAM (VRAM:614400)"}));
}

TEST_F(Bitmaps, LoadBitmapGivesPixelsSizeAndABlackKey) {
  LoadBitmap(WriteData(u"a.bmp", BmpOf({{0, 0x102030, 0x000001}})), surface, rect);
  ASSERT_TRUE(surface);
  EXPECT_EQ(rect, (Rect{0, 0, 3, 1}));
  Surface target(3, 1);
  target.Fill(target.Bounds(), 9);
  target.Copy(0, 0, *surface, rect, platform::Keyed::kYes);
  EXPECT_EQ(target.Pixel(0, 0), 9U);
  EXPECT_EQ(target.Pixel(1, 0), 0x102030U);
  EXPECT_EQ(target.Pixel(2, 0), 1U);
}

TEST_F(Bitmaps, LoadExBitmapGoesByContentAndHasABlackKey) {
  const Text path = WriteData(u"a.jpg", BmpOf({{0, 0x102030}}));
  LoadExBitmap(path, surface, rect);
  EXPECT_EQ(log, std::vector<Text>{Join(u"[LoadExBitmap] : ", path)});
  ASSERT_TRUE(surface);
  EXPECT_EQ(rect, (Rect{0, 0, 2, 1}));
  Surface target(2, 1);
  target.Fill(target.Bounds(), 9);
  target.Copy(0, 0, *surface, rect, platform::Keyed::kYes);
  EXPECT_EQ(target.Pixel(0, 0), 9U);
  EXPECT_EQ(target.Pixel(1, 0), 0x102030U);
}

TEST_F(Bitmaps, TheExtensionDecidesTheLoader) {
  for (const TextView name : {u"a.bmp", u"b.BMP", u"c.rle", u"d.Rle"}) {
    log.clear();
    LoadAnyBitmap(WriteData(name, SolidBmp(1, 1, 5)), surface, rect);
    EXPECT_TRUE(log.front().starts_with(u"[LoadBitmap] : ")) << Utf8(log.front());
    EXPECT_TRUE(surface);
  }
  for (const TextView name : {u"a.jpg", u"b.png", u"c.gif", u"bmp.x"}) {
    log.clear();
    LoadAnyBitmap(WriteData(name, SolidBmp(1, 1, 5)), surface, rect);
    EXPECT_TRUE(log.front().starts_with(u"[LoadExBitmap] : ")) << Utf8(log.front());
    EXPECT_TRUE(surface);
  }
}

TEST_F(Bitmaps, AFailedLoadLeavesNothing) {
  for (const TextView name : {u"none.bmp", u"none.jpg"}) {
    surface = Solid(4, 4, 1);
    rect = {0, 0, 4, 4};
    LoadAnyBitmap(Join(AppPath, u"\\", name), surface, rect);
    EXPECT_FALSE(surface);
    EXPECT_EQ(rect, Rect{});
  }
  surface = Solid(4, 4, 1);
  LoadAnyBitmap(WriteData(u"text.bmp", "this is no picture"), surface, rect);
  EXPECT_FALSE(surface);
}

TEST_F(Bitmaps, ReadPictureLogsNothing) {
  EXPECT_TRUE(ReadPicture(WriteData(u"a.png", SolidBmp(2, 2, 3))));
  EXPECT_FALSE(ReadPicture(Join(AppPath, u"\\none.png")));
  EXPECT_TRUE(log.empty());
}

}  // namespace
}  // namespace qlm
