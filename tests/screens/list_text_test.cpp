// Lines that are laid out once: the same pixels as drawing anew, within their box, and no more of them than
// fit.
#include "screens/list_text.h"

#include "tests/graphics/picture_files.h"

namespace qlm {
namespace {

class ListText : public DisplayTest {
 protected:
  ListText() { ForgetLines(); }
  ~ListText() override { ForgetLines(); }
  void SetUp() override {
    if (platform::FontTextWidth(u"A", 12) == 0) GTEST_SKIP() << "no font is installed";
  }
};

TEST_F(ListText, AKeptLineHasThePixelsOfOneDrawnAnew) {
  for (const Colour colour : {0xFFFF00U, 0x7F4000U, 0x010000U, 0xFFFFFFU}) {
    for (const auto& look : {kRowFont, kHeldRowFont, kSmallFont}) {
      DDBack->Fill(kScreen, 0x203040);
      Surface expected(640, 480);
      expected.Fill(kScreen, 0x203040);
      DrawLine({40, 30, 600, 46}, u"★12 羽ペンの行進 [7KEYS]", look, colour);
      platform::DrawFontText(expected, 40, 30 + (16 - look.height) / 2, u"★12 羽ペンの行進 [7KEYS]",
                             look.height, colour, look.bold);
      for (int32_t y = 30; y < 46; ++y) {
        for (int32_t x = 0; x < 640; ++x)
          ASSERT_EQ(DDBack->Pixel(x, y), expected.Pixel(x, y)) << x << ',' << y;
      }
    }
  }
  EXPECT_EQ(LinesLaidOut(), 3);
}

TEST_F(ListText, EachTextAndEachLookIsLaidOutOnce) {
  const Rect box = {0, 0, 640, 16};
  for (int32_t frame = 0; frame < 10; ++frame) {
    DrawLine(box, u"a", kRowFont, 0xFFFFFF);
    DrawLine(box, u"b", kRowFont, 0xFFFFFF);
    DrawLine(box, u"a", kSmallFont, 0xFFFFFF);
  }
  EXPECT_EQ(LinesLaidOut(), 3);
}

TEST_F(ListText, TheLineThatWasNotDrawnForLongestGoes) {
  const Rect box = {0, 0, 640, 16};
  const auto draw = [&](size_t line) {
    DrawLine(box, ToText(static_cast<int64_t>(line)), kRowFont, 0xFFFFFF);
  };
  for (size_t line = 0; line < kKeptLines; ++line) draw(line);
  draw(0);
  draw(kKeptLines);  // in place of line 1
  const int64_t before = LinesLaidOut();
  draw(0);
  draw(2);
  EXPECT_EQ(LinesLaidOut(), before);
  draw(1);
  EXPECT_EQ(LinesLaidOut(), before + 1);
}

TEST_F(ListText, LinesAreCutAtTheirBox) {
  const Rect box = {100, 50, 140, 60};
  for (const Align align : {Align::kLeft, Align::kCentre, Align::kRight}) {
    DDBack->Fill(kScreen, 0);
    DrawLine(box, u"■■■■■■■■■■■", kLargeFont, 0xFFFFFF, align);
    for (int32_t y = 0; y < 480; ++y) {
      for (int32_t x = 0; x < 640; ++x) {
        const bool within = x >= box.left && x < box.right && y >= box.top && y < box.bottom;
        if (!within) {
          ASSERT_EQ(DDBack->Pixel(x, y), 0U) << x << ',' << y;
        }
      }
    }
    EXPECT_EQ(DDBack->Pixel(106, 55), 0xFFFFFFU);
  }
}

TEST_F(ListText, LinesStandWhereTheyAreAligned) {
  const int32_t width = LineWidth(u"quill", kRowFont);
  const auto leftOf = [&](Align align) {
    DDBack->Fill(kScreen, 0);
    DrawLine({100, 50, 300, 66}, u"quill", kRowFont, 0xFFFFFF, align);
    for (int32_t x = 0; x < 640; ++x) {
      for (int32_t y = 50; y < 66; ++y) {
        if (DDBack->Pixel(x, y) != 0) return x;
      }
    }
    return 0;
  };
  const int32_t left = leftOf(Align::kLeft);
  EXPECT_GE(left, 100);
  EXPECT_EQ(leftOf(Align::kCentre), left + (200 - width) / 2);
  EXPECT_EQ(leftOf(Align::kRight), left + 200 - width);
}

TEST_F(ListText, NoTextIsNoLine) {
  DrawLine({0, 0, 640, 16}, u"", kRowFont, 0xFFFFFF);
  EXPECT_EQ(LineWidth(u"", kRowFont), 0);
  EXPECT_EQ(LinesLaidOut(), 0);
}

}  // namespace
}  // namespace qlm
