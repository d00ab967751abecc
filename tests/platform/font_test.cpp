// Text with an outline font: it is seen, in its colour, within the image.
#include "platform/font.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace platform {
namespace {

// The smallest rectangle that holds everything not black.
Rect Inked(const Surface& surface) {
  Rect inked{surface.Width(), surface.Height(), 0, 0};
  for (int32_t y = 0; y < surface.Height(); ++y) {
    for (int32_t x = 0; x < surface.Width(); ++x) {
      if (surface.Pixel(x, y) != 0) {
        inked = {std::min(inked.left, x), std::min(inked.top, y), std::max(inked.right, x + 1),
                 std::max(inked.bottom, y + 1)};
      }
    }
  }
  return inked;
}

int64_t Ink(const Surface& surface) {
  int64_t ink = 0;
  for (int32_t y = 0; y < surface.Height(); ++y) {
    for (const Colour colour : surface.Row(y)) {
      ink += colour & 255;
    }
  }
  return ink;
}

class FontText : public testing::Test {
 protected:
  void SetUp() override {
    if (FontTextWidth(u"A", 12) == 0) {
      GTEST_SKIP() << "no font is installed";
    }
  }
  void TearDown() override { CloseFonts(); }
};

TEST_F(FontText, StandsWithinItsLineAndItsWidth) {
  for (const int32_t height : {10, 12, 16, 26}) {
    Surface surface(640, 80);
    DrawFontText(surface, 20, 30, u"quillmarch 羽ペン", height, 0xFFFFFF);
    const Rect inked = Inked(surface);
    const int32_t width = FontTextWidth(u"quillmarch 羽ペン", height);
    EXPECT_GE(inked.left, 19);
    EXPECT_LE(inked.right, 20 + width + 1);
    EXPECT_GT(inked.Width(), width * 8 / 10);
    EXPECT_GE(inked.top, 30);
    EXPECT_LE(inked.bottom, 30 + height + 1);
  }
}

TEST_F(FontText, TakesItsColourOverWhatIsThere) {
  Surface surface(100, 20);
  surface.Fill(surface.Bounds(), 0x0000FF);
  DrawFontText(surface, 0, 0, u"■■■", 16, 0xFF0000);
  EXPECT_EQ(surface.Pixel(99, 19), 0x0000FFU);
  EXPECT_EQ(surface.Pixel(8, 9), 0xFF0000U);
}

TEST_F(FontText, IsCutAtEveryEdge) {
  Surface surface(30, 8);
  DrawFontText(surface, -10, -6, u"WWWWWWWWWWWW", 16, 0xFFFFFF);
  EXPECT_GT(Ink(surface), 0);
  const int64_t before = Ink(surface);
  DrawFontText(surface, 30, 0, u"W", 16, 0xFFFFFF);
  DrawFontText(surface, 0, 8, u"W", 16, 0xFFFFFF);
  DrawFontText(surface, INT32_MIN, INT32_MIN, u"W", 16, 0xFFFFFF);
  DrawFontText(surface, INT32_MAX, INT32_MAX, u"W", 16, 0xFFFFFF);
  EXPECT_EQ(Ink(surface), before);
}

TEST_F(FontText, BoldHasMoreInk) {
  Surface plain(100, 20);
  Surface bold(100, 20);
  DrawFontText(plain, 0, 0, u"boot", 16, 0xFFFFFF);
  DrawFontText(bold, 0, 0, u"boot", 16, 0xFFFFFF, true);
  EXPECT_GT(Ink(bold), Ink(plain));
}

TEST_F(FontText, WidthsAddUpAcrossCharacters) {
  EXPECT_EQ(FontTextWidth(u"", 12), 0);
  EXPECT_GT(FontTextWidth(u"羽ペン", 12), FontTextWidth(u"羽", 12));
}

TEST_F(FontText, ControlCharactersAndLoneSurrogatesAreLeftOut) {
  EXPECT_EQ(FontTextWidth(u"a\r\n\tb", 12), FontTextWidth(u"ab", 12));
  const char16_t lone[] = {u'a', 0xD842, u'b', 0xDFB7, 0xD800};
  EXPECT_EQ(FontTextWidth({lone, 5}, 12), FontTextWidth(u"ab", 12));
}

TEST_F(FontText, HostileHeightsAndLengthsAreBrought) {
  Surface surface(64, 16);
  DrawFontText(surface, 0, 0, std::u16string(100000, u'あ'), 12, 0xFFFFFF);
  DrawFontText(surface, 0, 0, u"a", -5, 0xFFFFFF);
  DrawFontText(surface, 0, 0, u"a", INT32_MAX, 0xFFFFFF);
  EXPECT_GT(Ink(surface), 0);
}

TEST_F(FontText, FontsOpenAgainAfterTheyWereGivenBack) {
  const int32_t width = FontTextWidth(u"quill", 12);
  CloseFonts();
  EXPECT_EQ(FontTextWidth(u"quill", 12), width);
}

}  // namespace
}  // namespace platform
