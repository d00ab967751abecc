// Lines, key pictures, progress bars, layers, judge lines, bombs and the title.
#include "play_screen/field.h"

#include "platform/clock.h"
#include "state/judgement.h"
#include "state/options.h"
#include "state/settings.h"
#include "state/timeline.h"
#include "tests/play_screen/play_screen_ground.h"

namespace qlm {
namespace {

constexpr Colour kOne = 0x0000AA;
constexpr Colour kTwo = 0x00BB00;
constexpr Colour kThree = 0xCC0000;

class Field : public PlayScreenTest {
 protected:
  Field() {
    LayClip(1, 10, 20, kOne);
    LayClip(2, 10, 20, kTwo);
    LayClip(3, 10, 20, kThree);
  }
  static void ListLine(size_t side, uint8_t line) {
    LineList[side].entries[static_cast<size_t>(++LineList[side].last)] = line;
  }
};

// Lines and key pictures.

TEST_F(Field, ListedLinesStandWhereTheirPlacementPutsThem) {
  LinePos[0][0][3] = {1, 30, 40, 0, 0};
  LinePos[0][1][3] = {1, 130, 40, 0, 0};
  LinePos[0][0][4] = {2, 30, 40, 0, 0};  // not listed
  ListLine(0, 3);
  Draw();
  EXPECT_TRUE(Only({30, 40, 40, 60}, kOne));
  SCRATCH1P = true;
  Draw();
  EXPECT_TRUE(Only({130, 40, 140, 60}, kOne));
}

TEST_F(Field, LinesLieInTheOrderOfTheirListBelowTheKeys) {
  LinePos[0][0][0] = {1, 30, 40, 0, 0};
  LinePos[0][0][15] = {2, 35, 40, 0, 0};
  KeyPos[0] = {3, 40, 40, 0, 0};
  ListLine(0, 15);
  ListLine(0, 0);
  Draw();
  EXPECT_EQ(Extent(kOne), (Rect{30, 40, 40, 60}));
  EXPECT_EQ(Extent(kThree), (Rect{40, 40, 50, 60}));
  EXPECT_EQ(Extent(kTwo), Rect{});  // from 35 to 40 the first, from 40 to 45 the keys
}

TEST_F(Field, EachSideHasItsKeysForEachPlacement) {
  KeyPos = {SkinPos{1, 10, 0, 0, 0}, {1, 20, 0, 0, 0}, {1, 30, 0, 0, 0}, {1, 40, 0, 0, 0}};
  Draw();
  EXPECT_TRUE(Only({10, 0, 20, 20}, kOne));
  SCRATCH1P = true;
  Draw();
  EXPECT_TRUE(Only({20, 0, 30, 20}, kOne));
  SideCount = 2;
  Draw();
  EXPECT_TRUE(Only({20, 0, 40, 20}, kOne));
  SCRATCH2P = true;
  Draw();
  EXPECT_EQ(At(30, 0), 0U);
  EXPECT_EQ(At(40, 0), kOne);
}

TEST_F(Field, LinesOfSideTwoNeedTwoSides) {
  LinePos[1][0][0] = {1, 30, 40, 0, 0};
  ListLine(1, 0);
  Draw();
  EXPECT_TRUE(Only({}, 0));
  SideCount = 2;
  Draw();
  EXPECT_TRUE(Only({30, 40, 40, 60}, kOne));
}

TEST_F(Field, ALineThatRunsOffTheScreenIsNotDrawn) {
  LinePos[0][0][0] = {1, 631, 40, 0, 0};
  ListLine(0, 0);
  Draw();
  EXPECT_TRUE(Only({}, 0));
}

// Layers.

class Layers : public Field {
 protected:
  static void ListLayer(uint8_t n, uint8_t clip, int32_t x, int32_t y, bool wide = false) {
    LayerClip[n] = clip;
    LayerX[n] = x;
    LayerY[n] = y;
    LayerWide[n] = wide;
    LayerList.entries[static_cast<size_t>(++LayerList.last)] = n;
  }
};

TEST_F(Layers, LieInTheOrderOfTheirList) {
  ListLayer(7, 1, 30, 40);
  ListLayer(5, 2, 35, 40);
  Draw();
  EXPECT_EQ(Extent(kOne), (Rect{30, 40, 35, 60}));
  EXPECT_EQ(Extent(kTwo), (Rect{35, 40, 45, 60}));
}

TEST_F(Layers, AreCutAtTheRightAndLowerEdge) {
  ListLayer(1, 1, 635, 470);
  Draw();
  EXPECT_TRUE(Only({635, 470, 640, 480}, kOne));
}

TEST_F(Layers, WithAPlaceBelow0AreNotDrawn) {
  ListLayer(1, 1, -1, 40);
  ListLayer(2, 1, 40, -1);
  Draw();
  EXPECT_TRUE(Only({}, 0));
  LayerX[1] = 0;
  Draw();
  EXPECT_TRUE(Only({0, 40, 10, 60}, kOne));
}

TEST_F(Layers, WideOnesNeedTwoSides) {
  ListLayer(1, 1, 30, 40, true);
  Draw();
  EXPECT_TRUE(Only({}, 0));
  SideCount = 2;
  Draw();
  EXPECT_TRUE(Only({30, 40, 40, 60}, kOne));
}

// Judge lines.

TEST_F(Field, TheJudgeLineStandsByPlacement) {
  JudgeLinePos[0][0] = {1, 30, 401, 0, 0};
  JudgeLinePos[0][1] = {1, 60, 300, 0, 0};
  JudgeLinePos[1][0] = {2, 90, 301, 0, 0};
  Draw();
  EXPECT_TRUE(Only({30, 401, 40, 421}, kOne));
  SCRATCH1P = true;
  Draw();
  EXPECT_TRUE(Only({60, 300, 70, 320}, kOne));
  SideCount = 2;
  Draw();
  EXPECT_EQ(Find(kTwo), (Corner{90, 301}));
}

TEST_F(Field, UnderHalfFieldTheJudgeLineStandsAtHalfItsHeight) {
  HalfField = true;
  JudgeLinePos[0][0] = {1, 30, 401, 0, 0};
  Draw();
  EXPECT_TRUE(Only({30, 200, 40, 220}, kOne));  // 200.5 to even
  JudgeLinePos[0][0].y = 403;
  Draw();
  EXPECT_TRUE(Only({30, 202, 40, 222}, kOne));  // 201.5 to even
}

// Progress bars: a clip of 10 by 200, of which each row has its own colour, 1000 + row. The chart lasts a
// minute.

class Progress : public PlayScreenTest {
 protected:
  Progress() {
    LayClip(5, 10, 200, kOne);
    for (int32_t y = 0; y < 200; ++y) SkinFile[5]->Fill({0, y, 10, y + 1}, RowColour(y));
    LenPos[1] = {5, 600, 100, 0, 0};
    LenUsed[1] = true;
  }
  static Colour RowColour(int32_t row) { return static_cast<Colour>(1000 + row); }
  // Which row of the clip stands at each height from `from` up to `to`: all of them moved by `moved`.
  static testing::AssertionResult Rows(int32_t from, int32_t to, int32_t moved) {
    for (int32_t y = from; y < to; ++y) {
      if (At(605, y) != RowColour(y - 100 - moved)) {
        return testing::AssertionFailure() << "row at " << y << " is " << At(605, y);
      }
    }
    return testing::AssertionSuccess();
  }
  static void DrawAt(int32_t ms, double place) {
    playClock = ms;
    playPos = place;
    Draw();
  }
};

TEST_F(Progress, WhatIsStillToComeStands) {
  DrawAt(15'000, 47);  // a quarter: 50 rows; the head is at 1 - (47 / 48)^2, so round(0.33) = 0 rows high
  EXPECT_EQ(Extent(RowColour(50)).top, 150);
  EXPECT_TRUE(Rows(150, 300, 0));
  EXPECT_EQ(At(605, 149), 0U);
  EXPECT_EQ(At(605, 300), 0U);
  EXPECT_EQ(At(599, 200), 0U);
  EXPECT_EQ(At(610, 200), 0U);
}

TEST_F(Progress, TheBarBlinksOutForTheFirstUnitsOfEachQuarter) {
  DrawAt(15'000, 4);
  // Only the head: k = 1 - (4 / 48)^2 = 0.99306, so 8 rows, at round(15000 * 200 * 0.99306) \ 60000 = 49.
  EXPECT_EQ(Find(RowColour(50)), (Corner{600, 149}));
  EXPECT_TRUE(Rows(149, 157, -1));
  EXPECT_EQ(At(605, 157), 0U);
  DrawAt(15'000, 5);
  EXPECT_TRUE(Rows(160, 300, 0));
}

TEST_F(Progress, TheHeadDropsBackWithinTheQuarter) {
  DrawAt(30'000, 24);  // k = 0.75: 6 rows from row 100 on, at 100 + 75; the bar from 200 on
  EXPECT_TRUE(Rows(175, 181, -25));
  EXPECT_EQ(At(605, 174), 0U);
  EXPECT_EQ(At(605, 181), 0U);
  EXPECT_TRUE(Rows(200, 300, 0));
}

TEST_F(Progress, RealHiSpeedMovesTheHead) {
  RealHiSpeed = 0.5F;
  DrawAt(30'000, 24);
  EXPECT_TRUE(Rows(137, 143, -63));  // 37.5 truncated
}

TEST_F(Progress, APeriodIsAQuarterOfTheMeasureInForce) {
  curMeasure = 3;
  curMeasurePos = 384;
  MeasureLen[3] = 0.5F;
  DrawAt(30'000, 384 + 12);  // half of 24 units
  EXPECT_TRUE(Rows(175, 181, -25));
  DrawAt(30'000, 384 + 24 + 12);
  EXPECT_TRUE(Rows(175, 181, -25));
}

TEST_F(Progress, StopsAtTheEnd) {
  DrawAt(59'999, 47);
  EXPECT_NE(At(605, 299), 0U);
  DrawAt(60'000, 47);
  EXPECT_TRUE(Only({}, 0));
}

TEST_F(Progress, ABarOfTheSecondSideNeedsTwoSides) {
  LenPos[1].p3 = 1;
  DrawAt(0, 47);
  EXPECT_TRUE(Only({}, 0));
  SideCount = 2;
  DrawAt(0, 47);
  EXPECT_TRUE(Rows(100, 300, 0));
}

TEST_F(Progress, ABarThatIsNotInUseIsNotDrawn) {
  LenUsed[1] = false;
  DrawAt(0, 47);
  EXPECT_TRUE(Only({}, 0));
}

TEST_F(Progress, AMeasureWithoutALengthDrawsNothing) {
  MeasureLen[0] = 0;
  DrawAt(30'000, 24);
  EXPECT_TRUE(Only({}, 0));
  curMeasure = 5000;
  DrawAt(30'000, 24);
  EXPECT_TRUE(Only({}, 0));
  curMeasure = 1e300;
  DrawAt(30'000, 24);
  EXPECT_TRUE(Only({}, 0));
}

TEST_F(Progress, TowardsTheEndTheHeadReachesBelowTheClip) {
  LayClip(5, 10, 200, kOne).rect = {0, 0, 10, 190};
  Clip[5].height = 190;
  DrawAt(59'000, 0);  // h = 186: 8 rows from 186 on, four of them behind the clip
  EXPECT_EQ(Extent(kOne), (Rect{600, 286, 610, 294}));
}

// Bombs.

class Bombs : public PlayScreenTest {
 protected:
  // Four frames of 30 by 24, 50 ms each, for PERFECT on channel 12, whose notes are 20 wide at 100.
  Bombs() {
    LayClip(1, 20, 10, kOne);
    LayLane(12, 1, 100);
    LayFrames(2, 30, 24, kTwo, 4).speed = 50;
    BombPos[2].id = 2;
    LayClip(3, 30, 24, kThree).speed = 50;
    BombPos[0].id = 3;
    JudgeLinePos[0][0].y = 400;
    LaneHit[1] = 3;
    LaneHitTime[1] = kNow;
  }
  static void DrawAfter(int32_t ms) {
    platform::UseVirtualClock(kNow + static_cast<uint32_t>(ms));
    Draw();
  }
};

TEST_F(Bombs, StandInTheMiddleOfTheLaneOnTheLine) {
  DrawAfter(0);
  EXPECT_TRUE(Only({95, 388, 125, 412}, kTwo));
}

TEST_F(Bombs, GoThroughTheirFrames) {
  DrawAfter(49);
  EXPECT_NE(Extent(kTwo), Rect{});
  DrawAfter(50);
  EXPECT_TRUE(Only({95, 388, 125, 412}, kTwo + 1));
  DrawAfter(199);
  EXPECT_TRUE(Only({95, 388, 125, 412}, kTwo + 3));
}

TEST_F(Bombs, EndAfterTheirLastFrame) {
  DrawAfter(200);  // the moment of the end still belongs to it, and shows the first frame again
  EXPECT_TRUE(Only({95, 388, 125, 412}, kTwo));
  EXPECT_EQ(LaneHit[1], 3);
  DrawAfter(201);
  EXPECT_TRUE(Only({}, 0));
  EXPECT_EQ(LaneHit[1], 0);
}

TEST_F(Bombs, EachGradeHasItsOwn) {
  LaneHit[1] = 1;
  DrawAfter(0);
  EXPECT_TRUE(Only({95, 388, 125, 412}, kThree));
}

TEST_F(Bombs, StandOnTheLineOfHalfField) {
  HalfField = true;
  JudgeLinePos[0][0].y = 403;
  DrawAfter(0);
  EXPECT_TRUE(Only({95, 190, 125, 214}, kTwo));  // 201.5 to even, less 12
}

TEST_F(Bombs, StandOnTheLineOfTheirSide) {
  SideCount = 2;
  LaneHit[1] = 0;
  LayLane(22, 1, 400);
  JudgeLinePos[1][0].y = 300;
  LaneHit[11] = 3;
  LaneHitTime[11] = kNow;
  DrawAfter(0);
  EXPECT_TRUE(Only({395, 288, 425, 312}, kTwo));
}

TEST_F(Bombs, AreCutAtTheScreensEdge) {
  NoteSkin[2].x = -10;
  DrawAfter(0);
  EXPECT_TRUE(Only({0, 388, 15, 412}, kTwo));
}

TEST_F(Bombs, WithoutASpeedAreOverAtOnce) {
  Clip[2].speed = 0;
  DrawAfter(0);
  EXPECT_TRUE(Only({95, 388, 125, 412}, kTwo));  // the frame in use
  DrawAfter(1);
  EXPECT_TRUE(Only({}, 0));
  EXPECT_EQ(LaneHit[1], 0);
}

TEST_F(Bombs, EndWithoutAScreenToo) {
  DDBack.reset();
  platform::UseVirtualClock(kNow + 201);
  DrawBombs();
  EXPECT_EQ(LaneHit[1], 0);
}

TEST_F(Bombs, AnUnknownKindDrawsNothing) {
  LaneHit[1] = 4;
  DrawAfter(0);
  EXPECT_TRUE(Only({}, 0));
}

// The title. The font's cell of a letter is 4 by 3 pixels of colour 0x1000 + its code.

class Marquee : public PlayScreenTest {
 protected:
  Marquee() {
    SkinFile[1] = std::make_shared<Surface>(4 * 96, 3);
    for (int32_t byte = 33; byte <= 128; ++byte) {
      SysFont[byte - 32] = {4 * (byte - 33), 0, 4 * (byte - 32), 3};
      SkinFile[1]->Fill(SysFont[byte - 32], static_cast<Colour>(0x1000 + byte));
    }
    SysFontW = 4;
    SysFontH = 3;
    TitleRect = {20, 30, 16, 0};
    TitleChars = 4;
    MarqueeText = u"ABCDEF";
  }
  // The letters that stand in the title's cells; a blank where nothing shows.
  static std::string ShownAt(int32_t ms, int32_t cells = 8) {
    playClock = ms;
    Draw();
    std::string shown;
    for (int32_t cell = 0; cell < cells; ++cell) {
      const Colour colour = At(20 + 4 * cell, 30);
      shown += colour == 0 ? ' ' : static_cast<char>(colour - 0x1000);
    }
    return shown;
  }
};

TEST_F(Marquee, BeginsWithItsHeadAndIsCut) {
  EXPECT_EQ(ShownAt(0), "ABCD    ");
  EXPECT_EQ(At(20, 32), 0x1000U + 'A');
  EXPECT_EQ(At(20, 33), 0U);
}

TEST_F(Marquee, RunsALetterIn200Ms) {
  EXPECT_EQ(ShownAt(199), "ABCD    ");
  EXPECT_EQ(ShownAt(200), "BCDE    ");
  EXPECT_EQ(ShownAt(400), "CDEF    ");
}

TEST_F(Marquee, ComesRoundAgain) {
  EXPECT_EQ(ShownAt(600), "DEFA    ");
  EXPECT_EQ(ShownAt(1000), "FABC    ");
  EXPECT_EQ(ShownAt(1200), "ABCD    ");
}

TEST_F(Marquee, AShortTitleShowsWhole) {
  TitleChars = 100;
  EXPECT_EQ(ShownAt(0), "ABCDEF  ");
  EXPECT_EQ(ShownAt(400), "CDEFAB  ");
}

TEST_F(Marquee, LettersOfTwoCellsAreCountedAsOne) {
  MarqueeText = u"あAB";  // 82 A0 in code page 932, neither of which has a cell
  TitleChars = 2;
  EXPECT_EQ(ShownAt(0), "  A     ");
  EXPECT_EQ(ShownAt(200), "AB      ");
  TitleChars = 3;
  EXPECT_EQ(ShownAt(400), "B  A    ");
}

TEST_F(Marquee, NoTitleAndNoLettersDrawNothing) {
  TitleChars = 0;
  EXPECT_EQ(ShownAt(0), "        ");
  TitleChars = -5;
  EXPECT_EQ(ShownAt(0), "        ");
  TitleChars = 4;
  EXPECT_EQ(ShownAt(-200), "        ");
  MarqueeText.clear();
  EXPECT_EQ(ShownAt(0), "        ");
}

}  // namespace
}  // namespace qlm
