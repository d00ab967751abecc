// Tests of judgement: which grade a moment earns, and what follows from it.
#include "play/judgement.h"

#include <algorithm>
#include <ios>

#include "chart/preparation.h"
#include "graphics/display.h"
#include "platform/clock.h"
#include "platform/font.h"
#include "play/gauge.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/message.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

using platform::Rgb;

// Rank 2: PERFECT below 3, GREAT below 6, GOOD below 18, BAD below 24. A hundred notes, gain 1, a hundred
// points.
class JudgementTest : public PlayTest {
 protected:
  JudgementTest() {
    SetRank(2);
    LaneNote.fill(-1);
    TotalNotes = {100, 100};
    Gauge = GaugeShown = {50, 50};
    GaugeGain = {1, 1};
    ScorePerNote = {100, 100};
    ChordDelta = {100, 100};  // far from every note, so that nothing is forgiven
  }

  static void SetRank(int32_t rank) {
    HdrRank = rank;
    SetJudgeWindow();
  }
  // Lays a note at `pos` of a channel and judges it at `at`.
  bool Judge(int32_t channel, int32_t pos, double at) {
    Lay(channel, pos);
    return JudgeLast(at);
  }
  bool JudgeLast(double at) {
    playPos = at;
    return JudgeNote(objCount - 1, 0, false, used);
  }
  int32_t GradeAt(double delta) {
    ChordDelta = {100, 100};
    Judge(11, 1000, 1000 + delta);
    return LastJudge[0];
  }

  float used = 0;
};

TEST_F(JudgementTest, WindowsAreOneTwoSixAndEightTimesTheRankPlusOne) {
  EXPECT_EQ(JudgeWindowTable,
            (std::array<int32_t, 16>{1, 2, 6, 8, 2, 4, 12, 16, 3, 6, 18, 24, 4, 8, 24, 32}));
  EXPECT_EQ(JudgeWindow, (std::array<int32_t, 4>{3, 6, 18, 24}));
  SetRank(4);
  EXPECT_EQ(JudgeWindow, (std::array<int32_t, 4>{3, 6, 18, 24}));
  SetRank(-1);
  EXPECT_EQ(JudgeWindow, (std::array<int32_t, 4>{3, 6, 18, 24}));
}

TEST_F(JudgementTest, DeviationOnAWindowFallsIntoTheNextGrade) {
  EXPECT_EQ(GradeAt(2.875), kPerfect);
  EXPECT_EQ(GradeAt(3), kGreat);
  EXPECT_EQ(GradeAt(5.875), kGreat);
  EXPECT_EQ(GradeAt(6), kGood);
  EXPECT_EQ(GradeAt(17.875), kGood);
  EXPECT_EQ(GradeAt(18), kBad);
  EXPECT_EQ(GradeAt(23.875), kBad);
  EXPECT_EQ(GradeAt(24), kPoor);
  EXPECT_EQ(GradeAt(-3), kGreat);
  EXPECT_EQ(GradeAt(-23.875), kBad);
  EXPECT_EQ(GradeAt(-24), kPoor);
}

TEST_F(JudgementTest, EachGradeHasItsFlashColourAndCount) {
  struct Case {
    double delta;
    int32_t grade;
    uint8_t flash;
    platform::Colour colour;
  };
  for (const Case& each :
       {Case{0, 4, 3, Rgb(255, 255, 0)}, Case{4, 3, 2, Rgb(0, 255, 0)}, Case{10, 2, 1, Rgb(0, 0, 255)},
        Case{20, 1, 0, Rgb(255, 0, 255)}, Case{30, 0, 0, Rgb(255, 0, 0)}}) {
    LaneHit = {};
    JudgeCount = {};
    EXPECT_EQ(GradeAt(each.delta), each.grade);
    EXPECT_EQ(LaneHit[0], each.flash) << each.grade;
    EXPECT_EQ(HitColour, each.colour) << each.grade;
    EXPECT_EQ(JudgeCount[0][static_cast<size_t>(4 - each.grade)], 1) << each.grade;
    EXPECT_EQ(LastJudgeTime[0], platform::Now());
    EXPECT_TRUE(objs[static_cast<size_t>(objCount) - 1].hit) << each.grade;
  }
}

TEST_F(JudgementTest, DeviationIsMeasuredFromThePositionOfTheTurn) {
  Lay(11, 100);
  playPos = 110;
  EXPECT_TRUE(JudgeNote(0, 0, false, used));
  EXPECT_FLOAT_EQ(used, 10);
  JudgeNote(0, -7, false, used);
  EXPECT_FLOAT_EQ(used, 7);
}

TEST_F(JudgementTest, DeviationOfZeroIsWorkedOutAndGivesZeroAgain) {
  Judge(11, 100, 100);
  EXPECT_FLOAT_EQ(used, 0);
  EXPECT_EQ(LastJudge[0], kPerfect);
}

TEST_F(JudgementTest, RecordedDeviationIsTakenAsItStands) {
  Lay(11, 100);
  playPos = 104;
  used = 12;
  EXPECT_TRUE(JudgeNote(0, 0, true, used));
  EXPECT_EQ(LastJudge[0], kGood);
  EXPECT_FLOAT_EQ(used, 12);
  EXPECT_FLOAT_EQ(ChordDelta[0], 100);
  used = 0;
  JudgeNote(0, 0, true, used);
  EXPECT_EQ(LastJudge[0], kPerfect);
}

TEST_F(JudgementTest, RecordedDeviationLosesItsSign) {
  Lay(11, 100);
  playPos = 100;
  used = -12;
  EXPECT_TRUE(JudgeNote(0, 0, true, used));
  EXPECT_EQ(LastJudge[0], kGood);
  EXPECT_FLOAT_EQ(used, 12);
  EXPECT_FLOAT_EQ(JPts[0], 6);
}

TEST_F(JudgementTest, SecondNoteOfAChordIsForgiven) {
  ChordDelta = {};
  Judge(11, 100, 105);
  EXPECT_EQ(LastJudge[0], kGreat);
  EXPECT_FLOAT_EQ(used, 5);
  Judge(12, 100, 105);
  EXPECT_EQ(LastJudge[0], kPerfect);
  EXPECT_FLOAT_EQ(used, 0);
  EXPECT_FLOAT_EQ(ChordDelta[0], 5);
}

TEST_F(JudgementTest, ChordOutsideTheGreatWindowIsNotForgiven) {
  Judge(11, 100, 110);
  EXPECT_EQ(LastJudge[0], kGood);
  Judge(12, 100, 110);
  EXPECT_EQ(LastJudge[0], kGood);
  EXPECT_FLOAT_EQ(ChordDelta[0], 0);
}

TEST_F(JudgementTest, ForgivenessGoesByTheSignedDeviationBefore) {
  ChordDelta[0] = 4;
  Judge(11, 100, 96);  // 4 early, 8 units from 4 late
  EXPECT_EQ(LastJudge[0], kGreat);
  Judge(11, 200, 195);  // one unit from 4 early: not below one
  EXPECT_EQ(LastJudge[0], kGreat);
  Judge(11, 300, 295.125);
  EXPECT_EQ(LastJudge[0], kPerfect);
  EXPECT_FLOAT_EQ(ChordDelta[0], -4.875);
}

TEST_F(JudgementTest, FirstNoteOfAPlayIsForgivenLessThanOneUnit) {
  ChordDelta = {};
  Judge(11, 100, 100.5);
  EXPECT_FLOAT_EQ(used, 0);
  EXPECT_FLOAT_EQ(ChordDelta[0], 0.5);
}

TEST_F(JudgementTest, EvenTimingIsKeptByObjectSideInDoublePlay) {
  ScoreSide = {0, 0};
  ChordDelta = {};
  Judge(11, 100, 105);
  Judge(21, 100, 105);
  EXPECT_EQ(LastJudge[0], kGreat);
  EXPECT_FLOAT_EQ(used, 5);
  EXPECT_EQ(Combo[0], 2);
  EXPECT_EQ(Combo[1], 0);
  EXPECT_FLOAT_EQ(Gauge[0], 52);
  EXPECT_FLOAT_EQ(ChordDelta[1], 5);
}

TEST_F(JudgementTest, SecondSideHasItsOwnFigures) {
  Judge(21, 100, 100);
  EXPECT_EQ(Combo[0], 0);
  EXPECT_EQ(Combo[1], 1);
  EXPECT_EQ(LaneHit[10], 3);
  EXPECT_EQ(JudgeCount[1][0], 1);
  EXPECT_EQ(LastJudge[0], -1);
}

// Quirk: it costs, but the combo lives and the note can still be hit.
TEST_F(JudgementTest, PressFarTooEarlyKeepsComboAndNote) {
  Combo[0] = 20;
  Pressure = true;
  EXPECT_FALSE(Judge(11, 100, 70));
  EXPECT_EQ(LastJudge[0], kPoor);
  EXPECT_EQ(Combo[0], 20);
  EXPECT_FALSE(objs[0].hit);
  EXPECT_FALSE(BreakActive);
  EXPECT_FALSE(ComboLost);
  EXPECT_TRUE(PoorShow);
  EXPECT_EQ(JudgeCount[0][4], 1);
  EXPECT_EQ(JPtsMax[0], 18);
  EXPECT_FLOAT_EQ(Gauge[0], 47);
  EXPECT_TRUE(JudgeLast(100));
  EXPECT_EQ(LastJudge[0], kPerfect);
  EXPECT_EQ(Combo[0], 21);
  EXPECT_TRUE(objs[0].hit);
}

TEST_F(JudgementTest, PressIsTooEarlyFromTheBadWindowOn) {
  EXPECT_TRUE(Judge(11, 100, 76.125));
  EXPECT_FALSE(Judge(11, 100, 76));
}

TEST_F(JudgementTest, LatePressOutsideTheWindowsConsumesTheNote) {
  SetRank(3);
  EXPECT_TRUE(Judge(11, 100, 133));
  EXPECT_EQ(LastJudge[0], kPoor);
  EXPECT_TRUE(objs[0].hit);
  EXPECT_FLOAT_EQ(Gauge[0], 47);
}

TEST_F(JudgementTest, FailFadeJudgesNothing) {
  FadeState = kFadeFail;
  LaneNote[0] = 0;
  used = 7;
  EXPECT_FALSE(Judge(11, 100, 100));
  EXPECT_EQ(LastJudge[0], -1);
  EXPECT_EQ(JPtsMax[0], 0);
  EXPECT_FLOAT_EQ(used, 7);
  EXPECT_FLOAT_EQ(ChordDelta[0], 100);
  EXPECT_EQ(LaneNote[0], 0);
  EXPECT_TRUE(played.judgements.empty());
}

TEST_F(JudgementTest, MachineLaneOnlyFlashes) {
  AutoLane[0] = true;
  PoorShow = true;
  ChordDelta[0] = 0;
  EXPECT_FALSE(Judge(11, 100, 102));
  EXPECT_EQ(LaneHit[0], 3);
  EXPECT_EQ(LaneHitTime[0], platform::Now());
  EXPECT_EQ(LastJudge[0], -1);
  EXPECT_EQ(JPtsMax[0], 0);
  EXPECT_FALSE(objs[0].hit);
  EXPECT_FALSE(PoorShow);
  EXPECT_TRUE(BGADirty);
  EXPECT_FLOAT_EQ(used, 2);
  EXPECT_FLOAT_EQ(ChordDelta[0], 2);
  EXPECT_TRUE(played.judgements.empty());
}

TEST_F(JudgementTest, WhatIsNoNoteIsNotJudged) {
  EXPECT_FALSE(Judge(1, 100, 100));
  EXPECT_FALSE(Judge(ObjSeparator, 100, 100));
  EXPECT_FALSE(JudgeNote(-1, 0, false, used));
  EXPECT_FALSE(JudgeNote(100'000, 0, false, used));
  EXPECT_EQ(JPtsMax[0], 0);
}

TEST_F(JudgementTest, MistakeShowsThePoorPictureAndTheNextNoteEndsIt) {
  Judge(11, 100, 120.5);
  EXPECT_TRUE(PoorShow);
  EXPECT_EQ(PoorShowPos, 120);  // half to even
  BGADirty = false;
  Judge(11, 200, 200);
  EXPECT_FALSE(PoorShow);
  EXPECT_TRUE(BGADirty);
}

TEST_F(JudgementTest, MistakeJoltsTheDrawnGauge) {
  Judge(11, 100, 120);  // BAD
  EXPECT_FLOAT_EQ(Gauge[0], 49);
  EXPECT_FLOAT_EQ(GaugeShown[0], 29);
  Gauge[0] = 20;
  Judge(11, 100, 120);
  EXPECT_FLOAT_EQ(GaugeShown[0], 0);
}

TEST_F(JudgementTest, LostComboOfElevenLeavesAFigure) {
  Combo[0] = 10;
  Judge(11, 100, 120);
  EXPECT_FALSE(ComboLost);
  EXPECT_EQ(Combo[0], 0);
  Combo[0] = 11;
  Judge(11, 100, 120);
  EXPECT_TRUE(ComboLost);
  EXPECT_EQ(ComboLostValue, 11);
  EXPECT_EQ(ComboLostTime, kStart);
}

TEST_F(JudgementTest, EachHundredthOfAComboRaisesAFigure) {
  Combo[0] = MaxCombo[0] = 98;
  Judge(11, 100, 100);
  EXPECT_FALSE(ComboRound);
  Judge(11, 100, 100);
  EXPECT_TRUE(ComboRound);
  EXPECT_EQ(ComboRoundValue, 100);
  EXPECT_EQ(ComboRoundTime, kStart);
  EXPECT_EQ(MaxCombo[0], 100);
}

TEST_F(JudgementTest, ComboIsSplitIntoDigits) {
  Combo[0] = 1206;
  Judge(11, 100, 100);
  EXPECT_EQ(ComboDigitCount[0], 4);
  EXPECT_EQ(ComboDigit[0][0], 1);
  EXPECT_EQ(ComboDigit[0][1], 2);
  EXPECT_EQ(ComboDigit[0][2], 0);
  EXPECT_EQ(ComboDigit[0][3], 7);
  Judge(11, 100, 120);
  EXPECT_EQ(ComboDigitCount[0], -1);
  Combo[0] = 123'456;
  SplitCombo(0);
  EXPECT_EQ(ComboDigitCount[0], 5);
  EXPECT_EQ(ComboDigit[0][0], 1);
  EXPECT_EQ(ComboDigit[0][4], 5);
}

TEST_F(JudgementTest, ScrollFactorFollowsTheCombo) {
  Combo[0] = 49;
  Judge(11, 100, 100);
  EXPECT_FLOAT_EQ(HiSpeedTarget, 0);
  ComboHiSpeed = true;
  Judge(11, 100, 100);
  EXPECT_FLOAT_EQ(HiSpeedTarget, 1.51F);
}

TEST_F(JudgementTest, MistakeUnderPressureStallsThePlay) {
  curBPM = 150;
  Judge(11, 100, 120);
  EXPECT_FALSE(BreakActive);
  Pressure = true;
  Judge(11, 100, 100);
  EXPECT_FALSE(BreakActive);
  Judge(11, 100, 120);
  EXPECT_TRUE(BreakActive);
  EXPECT_FLOAT_EQ(savedBPM, 150);
  EXPECT_FLOAT_EQ(curBPM, 0);
}

TEST_F(JudgementTest, JudgedNoteIsAPixelOfTheGraph) {
  // The first of 100 notes stands in column 3, a combo of 1 two rows above the bottom.
  Judge(11, 100, 100);
  EXPECT_EQ(DDGraph->Pixel(3, 198), Rgb(255, 255, 0));
  Judge(11, 100, 110);
  EXPECT_EQ(DDGraph->Pixel(6, 196), Rgb(0, 0, 255));
  Judge(11, 100, 104);
  EXPECT_EQ(DDGraph->Pixel(9, 194), Rgb(255, 255, 0));
  Judge(11, 100, 120);
  EXPECT_EQ(DDGraph->Pixel(12, 200), Rgb(255, 0, 255));
  Judge(11, 100, 130);
  EXPECT_EQ(DDGraph->Pixel(15, 200), Rgb(255, 0, 255));
}

// The figures of lost combos.
class LostFigures : public JudgementTest {
 protected:
  void SetUp() override {
    InitDD(DisplayOutput::kUnseen);
    CreateSurfaces();
    if (graphDigits.width == 0) GTEST_SKIP() << "no font is installed";
  }
  // Whether the graph shows these digits at (left, top), one behind the other, as the font itself writes them
  // on green ground.
  static testing::AssertionResult Stands(int32_t left, int32_t top, TextView digits,
                                         platform::Colour colour) {
    for (size_t digit = 0; digit < digits.size(); ++digit, left += graphDigits.width) {
      Surface written(graphDigits.width, graphDigits.height);
      written.Fill(written.Bounds(), Rgb(0, 128, 0));
      platform::DrawFontText(written, 0, 0, digits.substr(digit, 1), 11, colour);
      for (int32_t y = 0; y < written.Height(); ++y) {
        for (int32_t x = 0; x < std::min(written.Width(), 300 - left); ++x) {
          const platform::Colour shown = DDGraph->Pixel(left + x, top + y);
          if (shown == written.Pixel(x, y)) continue;
          return testing::AssertionFailure()
                 << std::hex << shown << " at " << std::dec << left + x << ',' << top + y;
        }
      }
    }
    return testing::AssertionSuccess();
  }
};

TEST_F(LostFigures, StandOnTheGraphOnGroundThatCoversIt) {
  DDGraph->Fill(DDGraph->Bounds(), Rgb(32, 32, 32));
  Combo[0] = 17;
  JPtsMax[0] = 18 * 49;
  Judge(11, 100, 120);
  // The 50th judgement of 100: column 142, row 190 - 32, and half of the green.
  EXPECT_TRUE(Stands(142, 158, u"17", Rgb(255, 127, 0)));
  EXPECT_EQ(DDGraph->Pixel(141, 158), Rgb(32, 32, 32));
  EXPECT_EQ(DDGraph->Pixel(142, 157), Rgb(32, 32, 32));
  EXPECT_EQ(DDGraph->Pixel(142 + 2 * graphDigits.width, 158), Rgb(32, 32, 32));
  EXPECT_EQ(DDGraph->Pixel(142, 158 + graphDigits.height), Rgb(32, 32, 32));
}

TEST_F(LostFigures, AreWrittenWithEachDigit) {
  TotalNotes[0] = 10'000'000;
  JPtsMax[0] = 0;
  Combo[0] = 1'234'567;  // 23 rows above 190
  Judge(11, 100, 120);
  EXPECT_TRUE(Stands(0, 167, u"1234567", Rgb(255, 0, 0)));
  JPtsMax[0] = 0;
  Combo[0] = 890;
  Judge(11, 100, 120);
  EXPECT_TRUE(Stands(0, 190, u"890", Rgb(255, 0, 0)));
}

TEST_F(LostFigures, OfTheSecondSideGoByItsOwnCount) {
  Combo = {0, 17};
  JPtsMax = {18 * 9, 18 * 49};
  Judge(21, 100, 120);
  EXPECT_TRUE(Stands(142, 158, u"17", Rgb(255, 127, 0)));
  EXPECT_EQ(Combo[1], 0);
  EXPECT_EQ(ComboLostValue, 17);
}

TEST_F(LostFigures, NeedAFont) {
  graphDigits = {};
  Combo[0] = 17;
  Judge(11, 100, 120);
  EXPECT_EQ(DDGraph->Pixel(3, 158), 0U);
}

TEST_F(JudgementTest, LostComboBelowTenLeavesNoFigure) {
  Combo[0] = 9;
  JPtsMax[0] = 18 * 49;
  Judge(11, 100, 120);
  for (int32_t y = 0; y < 199; ++y) {
    for (int32_t x = 0; x < 300; ++x) ASSERT_EQ(DDGraph->Pixel(x, y), 0U) << x << ' ' << y;
  }
}

TEST_F(LostFigures, BehindMoreJudgementsThanNotesAreCutAtTheEdge) {
  Combo[0] = 12;
  JPtsMax[0] = 18 * 104;  // 105 \ 100 of the way: column 298 of 284, and more green than there is
  Judge(11, 100, 120);
  EXPECT_TRUE(Stands(298, 168, u"1", Rgb(255, 255, 0)));
}

TEST_F(JudgementTest, ChartWithoutNotesOfTheFirstSideLeavesTheGraphEmpty) {
  TotalNotes = {0, 100};
  Judge(21, 100, 100);
  EXPECT_EQ(Combo[1], 1);
  for (int32_t y = 0; y < 203; ++y) {
    for (int32_t x = 0; x < 300; ++x) ASSERT_EQ(DDGraph->Pixel(x, y), 0U) << x << ' ' << y;
  }
}

TEST_F(JudgementTest, TranscriptTellsWhatWasJudged) {
  played.turns = 8;
  playClock = 77;
  Judge(21, 100, 110);
  ASSERT_EQ(played.judgements.size(), 1U);
  const Transcript::Judgement& judgement = played.judgements[0];
  EXPECT_EQ(judgement.turn, 7);
  EXPECT_EQ(judgement.clock, 77);
  EXPECT_DOUBLE_EQ(judgement.playPos, 110);
  EXPECT_EQ(judgement.obj, 0);
  EXPECT_EQ(judgement.channel, 21);
  EXPECT_EQ(judgement.pos, 100);
  EXPECT_FLOAT_EQ(judgement.deltaUsed, 10);
  EXPECT_EQ(judgement.grade, kGood);
  EXPECT_FALSE(judgement.tooEarly);
  EXPECT_EQ(judgement.side, 1);
  Judge(11, 100, 70);
  EXPECT_TRUE(played.judgements[1].tooEarly);
  EXPECT_EQ(played.judgements[1].grade, kPoor);
}

// Notes that scroll past.
using ScrolledPastTest = JudgementTest;

TEST_F(ScrolledPastTest, PendingNoteIsMissedAt48UnitsOnEveryRank) {
  for (int32_t rank = 0; rank < 4; ++rank) {
    SetRank(rank);
    Lay(11, 100);
    LaneNote[0] = objCount - 1;
    playPos = 147.875;
    JudgeScrolledPast();
    EXPECT_EQ(LaneNote[0], objCount - 1);
    playPos = 148;
    JudgeScrolledPast();
    EXPECT_EQ(LaneNote[0], -1);
    EXPECT_EQ(JudgeCount[0][4], rank + 1);
    EXPECT_TRUE(objs[static_cast<size_t>(objCount) - 1].hit);
  }
  EXPECT_FLOAT_EQ(Gauge[0], 50 - 4 * 6);
  EXPECT_FLOAT_EQ(JPts[0], -240);
}

TEST_F(ScrolledPastTest, MissCountsAs48HoweverLateItIs) {
  Lay(11, 100);
  LaneNote[0] = 0;
  playPos = 900;
  JudgeScrolledPast();
  EXPECT_FLOAT_EQ(JPts[0], -60);
  EXPECT_FLOAT_EQ(played.judgements[0].deltaUsed, 48);
  EXPECT_FALSE(played.judgements[0].tooEarly);
}

TEST_F(ScrolledPastTest, PendingNoteGivesTheLaneItsSound) {
  Lay(11, 100, 7);
  Lay(16, 100, 9);
  LaneNote[0] = 0;
  LaneNote[5] = 1;
  LaneSound.fill(-1);
  JudgeScrolledPast();
  EXPECT_EQ(LaneSound[0], 7);
  EXPECT_EQ(LaneSound[5], 9);
  EXPECT_EQ(LaneSound[6], -1);
  LaneNote[0] = -1;
  JudgeScrolledPast();
  EXPECT_EQ(LaneSound[0], 7);  // behind the last note its sound stays
}

TEST_F(ScrolledPastTest, MissedNoteLeavesTheLanesSound) {
  Lay(11, 100, 7);
  LaneNote[0] = 0;
  LaneSound[0] = 3;
  playPos = 148;
  JudgeScrolledPast();
  EXPECT_EQ(LaneSound[0], 3);
}

TEST_F(ScrolledPastTest, SecondSideIsLookedAtWithTwoSidesOnly) {
  Lay(29, 100);
  LaneNote[18] = 0;
  playPos = 200;
  SideCount = 1;
  JudgeScrolledPast();
  EXPECT_EQ(LaneNote[18], 0);
  SideCount = 2;
  JudgeScrolledPast();
  EXPECT_EQ(LaneNote[18], -1);
}

// Quirk: in double play the second zero falls on a side that nothing scores on.
TEST_F(ScrolledPastTest, ComboOfTheObjectSideIsPutToZero) {
  ScoreSide = {0, 0};
  SideCount = 2;
  Combo = {5, 5};
  Lay(21, 100);
  LaneNote[10] = 0;
  playPos = 200;
  JudgeScrolledPast();
  EXPECT_EQ(Combo[0], 0);  // by the judgement
  EXPECT_EQ(Combo[1], 0);  // by the check
}

TEST_F(ScrolledPastTest, FailFadeFreesTheLaneWithoutAJudgement) {
  FadeState = kFadeFail;
  Combo[0] = 5;
  Lay(11, 100);
  LaneNote[0] = 0;
  playPos = 200;
  JudgeScrolledPast();
  EXPECT_EQ(LaneNote[0], -1);
  EXPECT_EQ(Combo[0], 0);
  EXPECT_EQ(JudgeCount[0][4], 0);
  EXPECT_FALSE(objs[0].hit);
}

TEST_F(ScrolledPastTest, FrameMissesWhatLiesBehindTheLine) {
  Lay(11, 100);
  Lay(ObjSeparator, 9000);
  Begin();
  PreviewActive = false;
  UserPlay = true;
  LaneNote[0] = 0;
  Turn(147);
  EXPECT_EQ(LaneNote[0], 0);
  Turn(148);
  EXPECT_EQ(LaneNote[0], -1);
  EXPECT_EQ(JudgeCount[0][4], 1);
}

TEST_F(ScrolledPastTest, MachineIsJudgedByItsSmallDeviation) {
  Lay(11, 100);
  Lay(ObjSeparator, 9000);
  Begin();
  DEMOMode = true;
  LaneNote[0] = 0;
  Turn(104);
  EXPECT_EQ(LaneNote[0], -1);
  EXPECT_EQ(LastJudge[0], kGreat);
  EXPECT_EQ(Combo[0], 1);
}

TEST_F(ScrolledPastTest, NoteHitByHandIsJudgedAgainByTheMachine) {
  Lay(11, 100).hit = true;
  Lay(ObjSeparator, 9000);
  Begin();
  DEMOMode = true;
  Turn(100);
  EXPECT_EQ(Combo[0], 1);
}

}  // namespace
}  // namespace qlm
