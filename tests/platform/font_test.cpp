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

TEST_F(FontText, AMaskIsDrawnInAnyColourWithThePixelsOfTheText) {
  const TextMask mask = RenderText(u"quillmarch 羽ペン", {.height = 16, .bold = true});
  for (const Colour colour : {0xFFFFFFU, 0x804000U, 0x010000U}) {
    Surface drawn(200, 30);
    Surface expected(200, 30);
    for (Surface* const surface : {&drawn, &expected}) surface->Fill(surface->Bounds(), 0x203040);
    DrawMask(drawn, drawn.Bounds(), 5, 4, mask, colour);
    DrawFontText(expected, 5, 4, u"quillmarch 羽ペン", 16, colour, true);
    for (int32_t y = 0; y < 30; ++y) {
      for (int32_t x = 0; x < 200; ++x) ASSERT_EQ(drawn.Pixel(x, y), expected.Pixel(x, y)) << x << ',' << y;
    }
  }
  EXPECT_EQ(mask.width, FontTextWidth(u"quillmarch 羽ペン", 16, true));
}

TEST_F(FontText, AMaskIsCutAtItsClipRectangleAndAtTheEdges) {
  const TextMask mask = RenderText(u"■■■■■■■■", {.height = 16});
  Surface surface(64, 16);
  DrawMask(surface, {10, 4, 30, 12}, -4, 0, mask, 0xFFFFFF);
  const Rect inked = Inked(surface);
  EXPECT_GE(inked.left, 10);
  EXPECT_GT(inked.right, 20);
  EXPECT_LE(inked.right, 30);
  EXPECT_EQ(inked.top, 4);
  EXPECT_EQ(inked.bottom, 12);
  const int64_t before = Ink(surface);
  for (const Rect& clip : {Rect{0, 0, 0, 0}, Rect{30, 4, 10, 12}, Rect{64, 0, 100, 16}, Rect{-9, -9, 0, 0}}) {
    DrawMask(surface, clip, 0, 0, mask, 0xFFFFFF);
  }
  for (const int32_t place : {INT32_MIN, INT32_MAX}) {
    DrawMask(surface, {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}, place, place, mask, 0xFFFFFF);
  }
  EXPECT_EQ(Ink(surface), before);
}

// A letter of half width is 13 wide at a height of 26.
TEST_F(FontText, LettersAreNarrowedToAWidthButNeverWidened) {
  const FontLook designed{.height = 26};
  const TextMask wide = RenderText(u"羽ペンの行進", designed);
  const TextMask narrow = RenderText(u"羽ペンの行進", {.height = 26, .width = 9});
  EXPECT_EQ(narrow.width, wide.width * 9 / 13);
  EXPECT_EQ(narrow.height, wide.height);
  EXPECT_EQ(narrow.ink.size(), static_cast<size_t>(narrow.width) * static_cast<size_t>(narrow.height));
  EXPECT_EQ(RenderText(u"羽ペンの行進", {.height = 26, .width = 13}).ink, wide.ink);
  EXPECT_EQ(RenderText(u"羽ペンの行進", {.height = 26, .width = 40}).ink, wide.ink);
  EXPECT_EQ(RenderText(u"羽ペンの行進", {.height = 26, .width = INT32_MAX}).ink, wide.ink);
}

// What a narrowed line covers stays the same share of it: full columns stay full, and the ink in all is 9
// / 13.
TEST_F(FontText, NarrowedColumnsAreMeans) {
  const auto sumOf = [](const TextMask& mask) {
    int64_t sum = 0;
    for (const uint8_t ink : mask.ink) sum += ink;
    return static_cast<double>(sum);
  };
  const TextMask wide = RenderText(u"quill 羽ペン", {.height = 26});
  const TextMask narrow = RenderText(u"quill 羽ペン", {.height = 26, .width = 9});
  const double share = static_cast<double>(narrow.width) / wide.width;
  EXPECT_NEAR(sumOf(narrow) / sumOf(wide), share, 0.01);
  const TextMask block = RenderText(u"■", {.height = 26, .width = 9});
  EXPECT_EQ(*std::ranges::max_element(block.ink), 255);
}

TEST_F(FontText, NoTextIsAnEmptyMask) {
  const TextMask mask = RenderText(u"", {.height = 26, .width = 9});
  EXPECT_EQ(mask.width, 0);
  EXPECT_TRUE(mask.ink.empty());
  Surface surface(10, 10);
  DrawMask(surface, surface.Bounds(), 0, 0, mask, 0xFFFFFF);
  EXPECT_EQ(Ink(surface), 0);
}

TEST_F(FontText, FontsOpenAgainAfterTheyWereGivenBack) {
  const int32_t width = FontTextWidth(u"quill", 12);
  CloseFonts();
  EXPECT_EQ(FontTextWidth(u"quill", 12), width);
}

}  // namespace
}  // namespace platform
