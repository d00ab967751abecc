// Lines of chart text and their parts.
#include "chart/lines.h"

#include <gtest/gtest.h>

#include "tests/support/game_test.h"

namespace qlm {
namespace {

TEST(DecodeChart, EndsInCrLf) {
  const ChartText chart = DecodeChart("a\r\nb");
  EXPECT_EQ(chart.text, u"a\r\nb\r\n");
  EXPECT_FALSE(chart.converted);
}

TEST(DecodeChart, CrAloneBecomesCrLf) {
  const ChartText chart = DecodeChart("a\r#b\r");
  EXPECT_EQ(chart.text, u"a\r\n#b\r\n\r\n");
  EXPECT_TRUE(chart.converted);
}

TEST(DecodeChart, OneCrLfKeepsEveryOtherCr) { EXPECT_EQ(DecodeChart("a\r#b\r\n").text, u"a\r#b\r\n\r\n"); }

TEST(DecodeChart, LfAloneStaysAndCountsAsConverted) {
  const ChartText chart = DecodeChart("a\n#b\n");
  EXPECT_EQ(chart.text, u"a\n#b\n\r\n");
  EXPECT_TRUE(chart.converted);
}

TEST(DecodeChart, EmptyTextCountsAsConverted) {
  const ChartText chart = DecodeChart("");
  EXPECT_EQ(chart.text, u"\r\n");
  EXPECT_TRUE(chart.converted);
}

TEST(DecodeChart, NulEndsTheText) {
  const ChartText chart = DecodeChart(std::string_view("a\0\r\nb", 5));
  EXPECT_EQ(chart.text, u"a\r\n");
  EXPECT_TRUE(chart.converted);
}

// 8A 4A is one character; 81 before CR has no second byte and stands alone.
TEST(DecodeChart, ReadsCodePage932) { EXPECT_EQ(DecodeChart("\x8A\x4A\x81\r\n").text, u"開・\r\n\r\n"); }

// Wherever the character stands among plain letters, which are decoded eight at a time.
TEST(DecodeChart, MixesOneAndTwoBytesAtAnyPlace) {
  for (size_t before = 0; before <= 17; ++before) {
    for (size_t behind = 0; behind <= 9; ++behind) {
      const std::string bytes = std::string(before, 'a') + "\x8A\x4A" + std::string(behind, 'b');
      const Text text = Text(before, u'a') + u"開" + Text(behind, u'b') + u"\r\n";
      EXPECT_EQ(DecodeChart(bytes).text, text) << before << " " << behind;
    }
  }
}

TEST(FindCommand, FindsCrLfHashOnly) {
  const TextView text = u"#1\r\n #2\r\n#3\n#4\r\n#5\r\n";
  EXPECT_EQ(FindCommand(text, 0), text.find(u'3'));
  EXPECT_EQ(FindCommand(text, 9), text.find(u'5'));
  EXPECT_EQ(FindCommand(text, text.find(u'5')), TextView::npos);
  EXPECT_EQ(FindCommand(text, 1000), TextView::npos);
}

TEST(FindLineEnd, IsTheTextsEndWithoutCrLf) {
  EXPECT_EQ(FindLineEnd(u"ab\r\ncd", 0), 2U);
  EXPECT_EQ(FindLineEnd(u"ab\r\ncd", 2), 2U);
  EXPECT_EQ(FindLineEnd(u"ab\r\ncd", 3), 6U);
  EXPECT_EQ(FindLineEnd(u"ab", 9), 2U);
}

TEST(MeasureOf, ReadsThreeCharacters) {
  EXPECT_EQ(MeasureOf(u"01211:", 0), 12);
  EXPECT_EQ(MeasureOf(u"99911:", 5), 1004);
  EXPECT_EQ(MeasureOf(u"7", 0), 7);
  EXPECT_EQ(MeasureOf(u"1 2", 0), 12);
  EXPECT_EQ(MeasureOf(u"1A2", 0), 1);
}

TEST(MeasureOf, RoundsTheSumHalfToEven) {
  EXPECT_EQ(MeasureOf(u"1.5", 0), 2);
  EXPECT_EQ(MeasureOf(u"0.5", 0), 0);
  EXPECT_EQ(MeasureOf(u"0.5", 3), 4);
}

TEST(MeasureOf, FailsOutOfRange) {
  EXPECT_EQ(MeasureOf(u"2E9", 0), 2'000'000'000);
  EXPECT_EQ(MeasureOf(u"9E9", 0), std::nullopt);
  EXPECT_EQ(MeasureOf(u"001", INT32_MAX), std::nullopt);
}

TEST(ChannelOf, IsDecimal) {
  EXPECT_EQ(ChannelOf(u"00111"), 11);
  EXPECT_EQ(ChannelOf(u"0011A"), 1);
  EXPECT_EQ(ChannelOf(u"001A1"), 0);
  EXPECT_EQ(ChannelOf(u"001"), 0);
  EXPECT_EQ(ChannelOf(u"001.5"), 0);
}

TEST(LengthOf, ReadsFromCharacterSeven) {
  EXPECT_EQ(LengthOf(u"00102:0.75"), 0.75F);
  EXPECT_EQ(LengthOf(u"00102:1 . 5x"), 1.5F);
  EXPECT_EQ(LengthOf(u"00102"), 0.0F);
  EXPECT_EQ(LengthOf(u"00102:1E39"), std::nullopt);
  EXPECT_EQ(LengthOf(u"00102:1E999"), std::nullopt);
}

TEST(Cells, StandInPairsFromCharacterSeven) {
  const Cells cells(u"00111:0A00zZ1");
  ASSERT_EQ(cells.Count(), 3);
  EXPECT_FALSE(cells.IsRest(0));
  EXPECT_TRUE(cells.IsRest(1));
  EXPECT_FALSE(cells.IsRest(2));
  EXPECT_EQ(cells.Value(0), 10);
  EXPECT_EQ(cells.Value(2), 0);
  EXPECT_EQ(cells.Tick(1), 64);
}

TEST(Cells, ShortLinesHaveNone) {
  EXPECT_EQ(Cells(u"").Count(), 0);
  EXPECT_EQ(Cells(u"00111:").Count(), 0);
  EXPECT_EQ(Cells(u"00111:1").Count(), 0);
}

TEST(Cells, ValueIsHexadecimalAsFarAsItGoes) {
  EXPECT_EQ(Cells(u"00101:fF").Value(0), 255);
  EXPECT_EQ(Cells(u"00101:1G").Value(0), 1);
  EXPECT_EQ(Cells(u"00101:0Z").Value(0), 0);
  EXPECT_EQ(Cells(u"00101: 7").Value(0), 7);
  EXPECT_EQ(Cells(u"00101:7 ").Value(0), 7);
}

// 192 / 128 = 1.5: 0, 1.5, 3, 4.5, 6 round half to even.
TEST(Cells, TicksRoundHalfToEven) {
  const Text line = u"00111:" + Text(256, u'1');
  const Cells cells(line);
  EXPECT_EQ(cells.Tick(0), 0);
  EXPECT_EQ(cells.Tick(1), 2);
  EXPECT_EQ(cells.Tick(2), 3);
  EXPECT_EQ(cells.Tick(3), 4);
  EXPECT_EQ(cells.Tick(4), 6);
}

// The last of 383 cells is at 191.499, of 384 at 191.5, of 400 at 191.52.
TEST(Cells, TicksReach192WithManyCells) {
  const auto lastTick = [](size_t count) {
    const Text line = u"00111:" + Text(2 * count, u'1');
    return Cells(line).Tick(static_cast<int64_t>(count) - 1);
  };
  EXPECT_EQ(lastTick(383), 191);
  EXPECT_EQ(lastTick(384), 192);
  EXPECT_EQ(lastTick(400), 192);
}

TEST(Word, IsTheSameInAnyCase) {
  EXPECT_EQ(Word(u"wAv01"), Word(u"WAV"));
  EXPECT_NE(Word(u"WA"), Word(u"WAV"));
  EXPECT_NE(Word(u""), Word(u"WAV"));
}

}  // namespace
}  // namespace qlm
