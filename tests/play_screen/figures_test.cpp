// Numbers: their glyphs and cells, and what the play screen counts.
#include "play_screen/figures.h"

#include <limits>
#include <string>

#include "state/gauge.h"
#include "state/timeline.h"
#include "tests/play_screen/play_screen_ground.h"

namespace qlm {
namespace {

// Strip 7: glyphs of 8 by 12, 2 apart.
class Figures : public PlayScreenTest {
 protected:
  Figures() { LayStrip(7, 8, 12, 2); }
  static char CharacterOf(Colour colour) {
    constexpr std::string_view kShown = " 0123456789-.:";
    return colour >= kGlyph && colour < kGlyph + kGlyphs ? kShown[colour - kGlyph] : ' ';
  }
  // What stands in so many cells of 10 pixels from (x, y) on. The left column of a cell tells.
  static std::string Read(int32_t x, int32_t y, int32_t cells) {
    std::string shown;
    for (int32_t cell = 0; cell < cells; ++cell) shown += CharacterOf(At(x + 10 * cell, y));
    return shown;
  }
  static std::string Drawn(std::string_view text, int32_t digits = 0, int32_t cells = 8) {
    DDBack->Fill(kScreen, 0);
    DrawNumber(7, 100, 50, text, digits);
    return Read(100, 50, cells);
  }
  static std::string Drawn(int64_t value, int32_t digits = 0, int32_t cells = 8) {
    DDBack->Fill(kScreen, 0);
    DrawNumber(7, 100, 50, value, digits);
    return Read(100, 50, cells);
  }
};

TEST_F(Figures, DigitsStandACellApart) {
  EXPECT_EQ(Drawn("4096"), "4096    ");
  EXPECT_EQ(Extent(kGlyph + 5), (Rect{100, 50, 108, 62}));
  EXPECT_EQ(Extent(kGlyph + 1), (Rect{110, 50, 118, 62}));
  EXPECT_EQ(Extent(kGlyph + 7), (Rect{130, 50, 138, 62}));
}

TEST_F(Figures, FourDigitsAndTheValue7LeaveThreeCellsEmpty) { EXPECT_EQ(Drawn(7, 4), "   7    "); }

TEST_F(Figures, ZeroShowsItsLastZero) {
  EXPECT_EQ(Drawn(0, 3), "  0     ");
  EXPECT_EQ(Drawn(0), "0       ");
}

TEST_F(Figures, ZerosBehindADigitShow) {
  EXPECT_EQ(Drawn(100, 5), "  100   ");
  EXPECT_EQ(Drawn("00100"), "  100   ");
}

TEST_F(Figures, ALongNumberShowsWhole) { EXPECT_EQ(Drawn(12345, 3), "12345   "); }

TEST_F(Figures, TheSignOfANegativeNumberStandsFirst) {
  EXPECT_EQ(Drawn(-5, 4), "-  5    ");
  EXPECT_EQ(Drawn(-5), "-5      ");
  EXPECT_EQ(Drawn(-12345, 3), "-12345  ");
  EXPECT_EQ(Drawn(-5, 1), "-5      ");
  EXPECT_EQ(Drawn("-05"), "- 5     ");
}

TEST_F(Figures, AZeroBeforeAnotherSignShows) {
  EXPECT_EQ(Drawn("00.5"), " 0.5    ");
  EXPECT_EQ(Drawn("05.0"), " 5.0    ");
}

TEST_F(Figures, AColonPullsWhatFollowsToTheLeft) {
  Drawn("00:07");
  EXPECT_EQ(Find(kGlyph + 1), (Corner{110, 50}));   // the zero before the colon
  EXPECT_EQ(Find(kGlyph + 13), (Corner{117, 50}));  // cell 2, 3 to the left
  EXPECT_EQ(At(124, 50), kGlyph + 1);               // cell 3, 6 to the left
  EXPECT_EQ(Find(kGlyph + 8), (Corner{134, 50}));
}

TEST_F(Figures, OtherCharactersKeepTheirCellAndDrawNothing) {
  EXPECT_EQ(Drawn("1 2/3x4"), "1 2 3 4 ");
  EXPECT_EQ(Drawn(""), "        ");
}

TEST_F(Figures, DigitsBelow1LeaveTheTextAlone) { EXPECT_EQ(Drawn(7, -4), "7       "); }

TEST_F(Figures, AreCutAtTheScreensEdge) {
  DrawNumber(7, -3, -5, "1", 0);
  DrawNumber(7, 636, 475, "2", 0);
  EXPECT_EQ(Extent(kGlyph + 2), (Rect{0, 0, 5, 7}));
  EXPECT_EQ(Extent(kGlyph + 3), (Rect{636, 475, 640, 480}));
}

TEST_F(Figures, OutOfReachDrawNothing) {
  for (const int32_t number : {-1, 8, 256, INT32_MAX}) DrawNumber(number, 0, 0, "1", 0);
  DrawNumber(7, INT32_MAX, INT32_MIN, "123", 0);
  DrawNumber(7, 0, 0, 5, INT32_MAX);
  Number[7].width = INT32_MAX;
  DrawNumber(7, 0, 50, 5, INT32_MAX);
  EXPECT_TRUE(Only({}, 0));
}

// What the chart's figures say.

class ChartFigures : public Figures {
 protected:
  static std::string Shown(SkinPos& pos, int16_t p3 = 0) {
    pos = {7, 100, 50, p3, 0};
    Draw();
    std::string shown = Read(100, 50, 8);
    pos = {};
    return shown;
  }
};

TEST_F(ChartFigures, TheTempoIsRounded) {
  shownBPM = 132.5F;
  EXPECT_EQ(Shown(BpmPos), "132     ");
  shownBPM = 133.5F;
  EXPECT_EQ(Shown(BpmPos), "134     ");
  shownBPM = 99.7F;
  EXPECT_EQ(Shown(BpmPos, 4), " 100    ");
}

TEST_F(ChartFigures, ATempoThatIsNoNumberDrawsNothing) {
  shownBPM = std::numeric_limits<float>::infinity();
  EXPECT_EQ(Shown(BpmPos), "        ");
}

TEST_F(ChartFigures, TimesAreMinutesAndSeconds) {
  playClock = 65'999;
  Shown(PlayPos1);
  EXPECT_EQ(At(110, 50), kGlyph + 2);  // " 1", then ":05"
  EXPECT_EQ(Find(kGlyph + 13), (Corner{117, 50}));
  EXPECT_EQ(At(124, 50), kGlyph + 1);
  EXPECT_EQ(At(134, 50), kGlyph + 6);
  BMSLengthMs = 754'000;
  Shown(PlayFullPos);  // 12:34
  EXPECT_EQ(At(100, 50), kGlyph + 2);
  EXPECT_EQ(At(110, 50), kGlyph + 3);
  EXPECT_EQ(At(124, 50), kGlyph + 4);
  EXPECT_EQ(At(134, 50), kGlyph + 5);
}

TEST_F(ChartFigures, TimesBeyondAnHourGoOnInMinutes) {
  BMSLengthMs = 6'000'000;
  Shown(PlayFullPos);
  EXPECT_EQ(At(100, 50), kGlyph + 2);  // 100:00
  EXPECT_EQ(At(110, 50), kGlyph + 1);
  EXPECT_EQ(At(120, 50), kGlyph + 1);
  EXPECT_EQ(Find(kGlyph + 13), (Corner{127, 50}));
}

TEST_F(ChartFigures, ATimeBeforeTheStartIs0) {
  playClock = -5000;
  Shown(PlayPos1);
  EXPECT_EQ(At(100, 50), 0U);
  EXPECT_EQ(At(110, 50), kGlyph + 1);
  EXPECT_EQ(At(134, 50), kGlyph + 1);
}

TEST_F(ChartFigures, TheFrameRateHasOneDecimal) {
  Fps = 59.94;
  EXPECT_EQ(Shown(FpsPos), "59.9    ");
  Fps = 4.26;
  EXPECT_EQ(Shown(FpsPos), " 4.3    ");
  Fps = 9.95;  // a little less in binary
  EXPECT_EQ(Shown(FpsPos), " 9.9    ");
  Fps = 9.96;
  EXPECT_EQ(Shown(FpsPos), "10.0    ");
  Fps = 0;
  EXPECT_EQ(Shown(FpsPos), " 0.0    ");
  Fps = 1000;
  EXPECT_EQ(Shown(FpsPos), "1000.0  ");
  Fps = 1e300;
  EXPECT_EQ(Shown(FpsPos), "        ");
}

TEST_F(ChartFigures, TheStageCountsFromOne) {
  EXPECT_EQ(Shown(StagePos), "1       ");
  CourseSong = 2;
  EXPECT_EQ(Shown(StagePos), "3       ");
}

TEST_F(ChartFigures, TheCountRunsTo99) {
  playClock = 30'000;
  EXPECT_EQ(Shown(CountPos, 3), " 49     ");
  playClock = 60'000;
  EXPECT_EQ(Shown(CountPos), "99      ");
  BMSLengthMs = 0;
  EXPECT_EQ(Shown(CountPos), "        ");
}

// What a side's figures say.

class SideFigures : public ChartFigures {};

TEST_F(SideFigures, CountsStandFromRow4Down) {
  JudgeCount[0] = {11, 22, 33, 44, 55};
  for (int16_t row = 0; row < 5; ++row) {
    ScoreCountPos[0][static_cast<size_t>(row)] = {7, 100, static_cast<int16_t>(50 + 20 * row), 4, 0};
  }
  Draw();
  EXPECT_EQ(Read(100, 130, 5), "  11 ");  // PERFECT
  EXPECT_EQ(Read(100, 110, 5), "  22 ");
  EXPECT_EQ(Read(100, 90, 5), "  33 ");
  EXPECT_EQ(Read(100, 70, 5), "  44 ");
  EXPECT_EQ(Read(100, 50, 5), "  55 ");  // POOR
}

TEST_F(SideFigures, ScoreAndAccuracyAreTheEasedValuesRoundedHalfToEven) {
  Score[0] = 1;
  ScoreShown[0] = 123456.9;
  EXPECT_EQ(Shown(ScorePos[0]), "123457  ");
  ScoreShown[0] = 40.5;
  EXPECT_EQ(Shown(ScorePos[0]), "40      ");
  ScoreShown[0] = 41.5;
  EXPECT_EQ(Shown(ScorePos[0]), "42      ");
  JPts[0] = 1;
  JPtsShown[0] = 719.99F;
  EXPECT_EQ(Shown(JPointPos[0]), "720     ");
  JPtsShown[0] = -3.7F;
  EXPECT_EQ(Shown(JPointPos[0]), "-4      ");
  JPtsShown[0] = -2.5F;
  EXPECT_EQ(Shown(JPointPos[0]), "-2      ");
}

TEST_F(SideFigures, ASumThatStaysALittleShortOfItsTotalShowsTheTotal) {
  // A PERFECT for each of 410 notes.
  for (int32_t note = 0; note < 410; ++note) ScoreShown[0] += 2 * (100000.0 / 410);
  EXPECT_LT(ScoreShown[0], 200000);
  EXPECT_EQ(Shown(ScorePos[0]), "200000  ");
}

TEST_F(SideFigures, TheGaugeIsTheWholePartOfTheEasedOne) {
  Gauge[0] = 1;
  GaugeShown[0] = 79.9F;
  EXPECT_EQ(Shown(GaugeNumPos[0]), "79      ");
}

TEST_F(SideFigures, TheBestComboIsCounted) {
  MaxCombo[0] = 42;
  EXPECT_EQ(Shown(MaxPos[0]), "42      ");
}

TEST_F(SideFigures, AreFilledOnlyInTheCounts) {
  MaxCombo[0] = 42;
  EXPECT_EQ(Shown(MaxPos[0], 4), "42      ");
}

TEST_F(SideFigures, EachSideHasItsOwn) {
  MaxCombo = {1, 2};
  EXPECT_EQ(Shown(MaxPos[1]), "        ");
  SideCount = 2;
  HdrPlayer = 2;
  EXPECT_EQ(Shown(MaxPos[1]), "2       ");
}

TEST_F(SideFigures, ADoublePlayHasOnlyTheFirst) {
  SideCount = 2;
  HdrPlayer = 3;
  MaxCombo = {1, 2};
  EXPECT_EQ(Shown(MaxPos[0]), "1       ");
  EXPECT_EQ(Shown(MaxPos[1]), "        ");
}

TEST_F(SideFigures, AScoreThatIsNoNumberDrawsNothing) {
  ScoreShown[0] = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(Shown(ScorePos[0]), "        ");
}

}  // namespace
}  // namespace qlm
