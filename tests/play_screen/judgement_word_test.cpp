// The judgement's word, its combo, the figures that rise and the combo box.
#include "play_screen/judgement_word.h"

#include <limits>

#include "platform/clock.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/options.h"
#include "state/settings.h"
#include "state/timeline.h"
#include "tests/play_screen/play_screen_ground.h"

namespace qlm {
namespace {

constexpr Colour kWord = 0x00AA00;
constexpr Colour kOther = 0xAA0000;

// A PERFECT at kNow, whose word of 60 by 40 stands at (200, 150). At place 20 nothing bounces.
class Word : public PlayScreenTest {
 protected:
  Word() {
    LayClip(1, 60, 40, kWord);
    JudgePos[0][4] = {1, 200, 150, 0, 0};
    LastJudge[0] = 4;
    LastJudgeTime[0] = kNow;
    playPos = 20;
  }
  // The word as it stands so many ms after the judgement.
  static Rect After(int32_t ms) {
    platform::UseVirtualClock(kNow + static_cast<uint32_t>(ms));
    DDBack->Fill(kScreen, 0);
    DrawJudgement(0, true);
    return Extent(kWord);
  }
  static Rect AtPlace(double place) {
    playPos = place;
    return After(500);
  }
};

constexpr Rect kWhole = {200, 150, 260, 190};

TEST_F(Word, StandsForLessThan1000Ms) {
  EXPECT_EQ(After(500), kWhole);
  EXPECT_EQ(After(900), kWhole);
  EXPECT_NE(After(999), Rect{});
  EXPECT_EQ(After(1000), Rect{});
}

TEST_F(Word, NeedsAJudgement) {
  LastJudge[0] = -1;
  EXPECT_EQ(After(0), Rect{});
  LastJudge[0] = 5;
  EXPECT_EQ(After(0), Rect{});
}

TEST_F(Word, EachGradeHasItsOwn) {
  LayClip(2, 30, 10, kOther);
  JudgePos[0][0] = {2, 50, 60, 0, 0};
  LastJudge[0] = 0;
  EXPECT_EQ(After(500), Rect{});
  EXPECT_EQ(Extent(kOther), (Rect{50, 60, 80, 70}));
}

TEST_F(Word, OpensWideAndNarrowsWithin100Ms) {
  EXPECT_EQ(After(0), (Rect{180, 150, 280, 190}));
  EXPECT_EQ(After(10), (Rect{184, 150, 276, 190}));  // 16.2
  EXPECT_EQ(After(25), (Rect{189, 150, 271, 190}));  // 11.25
  EXPECT_EQ(After(50), (Rect{195, 150, 265, 190}));
  EXPECT_EQ(After(99), kWhole);
  EXPECT_EQ(After(100), kWhole);
}

TEST_F(Word, IsSquashedInItsLastTenth) {
  EXPECT_EQ(After(905), kWhole);                      // 1, halved 0
  EXPECT_EQ(After(906), (Rect{200, 151, 260, 189}));  // 2
  EXPECT_EQ(After(950), (Rect{200, 158, 260, 182}));  // 16
  EXPECT_EQ(After(999), (Rect{200, 166, 260, 174}));  // 33
}

TEST_F(Word, BouncesInTheFirst8UnitsOfEachBeat) {
  EXPECT_EQ(AtPlace(240), (Rect{200, 156, 260, 184}));    // 12
  EXPECT_EQ(AtPlace(239.5), (Rect{200, 156, 260, 184}));  // the place is rounded
  EXPECT_EQ(AtPlace(243), (Rect{200, 154, 260, 186}));    // 7.5 to 8
  EXPECT_EQ(AtPlace(245), (Rect{200, 152, 260, 188}));    // 4.5 to 4
  EXPECT_EQ(AtPlace(247), (Rect{200, 151, 260, 189}));    // 1.5 to 2
  EXPECT_EQ(AtPlace(248), kWhole);
  EXPECT_EQ(AtPlace(-1), kWhole);
}

TEST_F(Word, IsWiderInTheFirst8UnitsOfEachMeasure) {
  EXPECT_EQ(AtPlace(192), (Rect{200, 156, 260, 184}));
  EXPECT_EQ(AtPlace(197), (Rect{195, 152, 265, 188}));
  EXPECT_EQ(AtPlace(199), (Rect{193, 151, 267, 189}));
  EXPECT_EQ(AtPlace(200), kWhole);
}

TEST_F(Word, AddsItsWidenings) {
  playPos = 197;
  EXPECT_EQ(After(50), (Rect{190, 152, 270, 188}));
  EXPECT_EQ(After(999), (Rect{195, 166, 265, 174}));  // in the last tenth nothing bounces
}

TEST_F(Word, StandsStillWithDontStretch) {
  DontStretch = true;
  EXPECT_EQ(After(0), kWhole);
  EXPECT_EQ(After(999), kWhole);
  EXPECT_EQ(AtPlace(192), kWhole);
  EXPECT_EQ(AtPlace(197), kWhole);
}

TEST_F(Word, SquashedToNothingIsNotDrawn) {
  LayClip(1, 60, 32, kWord);
  EXPECT_EQ(After(999), Rect{});
}

TEST_F(Word, IsCutAtTheScreensEdgeAsItWouldStandUncut) {
  // Left and right halves differ. Widened to 100 pixels, the halves meet at its middle.
  SkinFile[1]->Fill({30, 0, 60, 40}, kOther);
  JudgePos[0][4] = {1, -20, 460, 0, 0};
  EXPECT_EQ(After(0), (Rect{0, 460, 10, 480}));
  EXPECT_EQ(Extent(kOther), (Rect{10, 460, 60, 480}));
}

TEST_F(Word, APlaceThatIsNoNumberDoesNotBounce) {
  playPos = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(After(500), kWhole);
}

// The combo.

class Combos : public Word {
 protected:
  Combos() {
    LayStrip(7, 16, 20, 3);
    ComboNumber = 7;
    SetCombo(123);
    playPos = 12;
  }
  static void SetCombo(int32_t combo) {
    Combo[0] = MaxCombo[0] = combo;
    ComboDigitCount[0] = 0;
    for (const char digit : std::to_string(combo)) {
      ComboDigit[0][static_cast<size_t>(ComboDigitCount[0]++)] = static_cast<uint8_t>(digit - '0');
    }
  }
  static Colour Digit(uint32_t digit) { return kGlyph + 1 + digit; }
};

TEST_F(Combos, StandBehindTheWordOnAWave) {
  After(500);
  // 90, 150 and 210 degrees of a circle that is a little short: 3, 1.5002 and -1.4997 pixels up.
  EXPECT_EQ(Extent(Digit(1)), (Rect{260, 147, 276, 167}));
  EXPECT_EQ(Extent(Digit(2)), (Rect{276, 148, 292, 168}));
  EXPECT_EQ(Extent(Digit(3)), (Rect{292, 151, 308, 171}));
}

TEST_F(Combos, SwingTwiceInABeat) {
  SetCombo(5);
  playPos = 36;  // 270 degrees
  After(500);
  EXPECT_EQ(Extent(Digit(5)), (Rect{260, 153, 276, 173}));
}

TEST_F(Combos, AreStretchedByWhatTheWordLoses) {
  SetCombo(5);
  playPos = 240;  // 0 degrees, squash 12
  After(500);
  EXPECT_EQ(Extent(Digit(5)), (Rect{260, 144, 276, 176}));
}

TEST_F(Combos, BeginAtTheEdgeOfTheUnwidenedWord) {
  SetCombo(5);
  After(0);
  EXPECT_EQ(Extent(Digit(5)).left, 260);
}

TEST_F(Combos, ShowOnlyWithTheBlink) {
  platform::UseVirtualClock(kNow + 500);
  DrawJudgement(0, false);
  EXPECT_EQ(Extent(Digit(1)), Rect{});
  EXPECT_EQ(Extent(kWord), kWhole);
}

TEST_F(Combos, Of0AreNotDrawn) {
  Combo[0] = 0;
  After(500);
  EXPECT_EQ(Extent(Digit(1)), Rect{});
  Combo[0] = 1;
  ComboDigitCount[0] = -1;
  After(500);
  EXPECT_EQ(Extent(Digit(1)), Rect{});
}

TEST_F(Combos, NeedAWord) {
  EXPECT_EQ(After(1000), Rect{});
  EXPECT_EQ(Extent(Digit(1)), Rect{});
}

TEST_F(Combos, FlickerFromFrameToFrame) {
  platform::UseVirtualClock(kNow + 500);
  Draw();
  EXPECT_NE(Extent(Digit(1)), Rect{});
  Draw();
  EXPECT_EQ(Extent(Digit(1)), Rect{});
  Draw();
  EXPECT_NE(Extent(Digit(1)), Rect{});
}

TEST_F(Combos, WithTwoPlayersOnlyTheFirstShowsAndStandsStill) {
  SideCount = 2;
  HdrPlayer = 2;
  LastJudge[1] = 4;
  LastJudgeTime[1] = kNow;
  JudgePos[1][4] = {1, 400, 150, 0, 0};
  Combo[1] = 7;
  ComboDigit[1][0] = 7;
  ComboDigitCount[1] = 1;
  platform::UseVirtualClock(kNow + 500);
  for (int32_t frame = 0; frame < 4; ++frame) {
    Draw();
    EXPECT_NE(Extent(Digit(1)), Rect{});
    EXPECT_EQ(Extent(Digit(7)), Rect{});
    EXPECT_EQ(Extent(kWord), (Rect{200, 150, 460, 190}));
  }
}

// Figures that rise.

TEST_F(Combos, ABonusRisesFromTheWordForASecond) {
  SetCombo(0);
  ComboRound = true;
  ComboRoundTime = kNow;
  ComboRoundValue = 600;
  LastJudgeTime[0] = kNow + 500;
  After(0);
  EXPECT_EQ(Extent(Digit(6)), (Rect{200, 130, 216, 150}));
  EXPECT_EQ(Extent(Digit(0)), (Rect{219, 130, 254, 150}));  // two cells, 3 apart
  After(555);
  EXPECT_EQ(Extent(Digit(6)), (Rect{200, 75, 216, 95}));
  After(999);
  EXPECT_EQ(Extent(Digit(6)), (Rect{200, 31, 216, 51}));
  After(1000);
  EXPECT_EQ(Extent(Digit(6)), Rect{});
  ComboRound = false;
  After(0);
  EXPECT_EQ(Extent(Digit(6)), Rect{});
}

TEST_F(Combos, ALostComboRisesLikewise) {
  SetCombo(0);
  ComboLost = true;
  ComboLostTime = kNow;
  ComboLostValue = 48;
  After(100);
  EXPECT_EQ(Extent(Digit(4)), (Rect{200, 120, 216, 140}));
  EXPECT_EQ(Extent(Digit(8)), (Rect{219, 120, 235, 140}));
}

TEST_F(Combos, ALostComboRisesFromTheWordOfTheSecondSideToo) {
  LastJudge[1] = 4;
  LastJudgeTime[1] = kNow;
  JudgePos[1][4] = {1, 400, 250, 0, 0};
  ComboLost = true;
  ComboLostTime = kNow;
  ComboLostValue = 48;
  platform::UseVirtualClock(kNow + 100);
  DrawJudgement(1, true);
  EXPECT_EQ(Extent(Digit(4)), (Rect{400, 220, 416, 240}));
  EXPECT_EQ(Extent(Digit(8)), (Rect{419, 220, 435, 240}));
}

// The box.

class ComboBox : public Word {
 protected:
  static constexpr Colour kPressure = 0x000011;
  static constexpr Colour kBack = 0x000022;
  static constexpr Colour kBar = 0x000033;
  static constexpr Colour kNoMiss = 0x000044;
  static constexpr Colour kMax = 0x000055;
  ComboBox() {
    LayClip(10, 50, 6, kPressure);
    LayClip(11, 50, 6, kBack);
    LayClip(12, 50, 6, kBar);
    LayClip(13, 50, 6, kNoMiss);
    LayClip(14, 50, 6, kMax);
    PressureClip = 10;
    ComboGraphBackClip = 11;
    ComboGraphClip = 12;
    NoMissClip = 13;
    MaxComboClip = 14;
    Combo[0] = MaxCombo[0] = 3;
  }
  // Beneath the word's right edge.
  static constexpr Rect kBox = {260, 190, 310, 196};
};

TEST_F(ComboBox, TellsThatNothingWasMissed) {
  After(500);
  EXPECT_EQ(Extent(kNoMiss), kBox);
  After(0);  // also while the word is wide
  EXPECT_EQ(Extent(kNoMiss), kBox);
}

TEST_F(ComboBox, TellsOfTheBestComboAfterAMiss) {
  JudgeCount[0][3] = 1;
  After(500);
  EXPECT_EQ(Extent(kMax), kBox);
  JudgeCount[0] = {0, 0, 0, 0, 1};
  After(500);
  EXPECT_EQ(Extent(kMax), kBox);
}

TEST_F(ComboBox, ShowsHowFarTheComboIsFromTheBest) {
  Combo[0] = 1;
  After(500);
  EXPECT_EQ(Extent(kBar), (Rect{260, 190, 276, 196}));  // 50 * 1 \ 3
  EXPECT_EQ(Extent(kBack), (Rect{276, 190, 310, 196}));
  Combo[0] = 0;
  After(500);
  EXPECT_EQ(Extent(kBar), Rect{});
  EXPECT_EQ(Extent(kBack), kBox);
}

TEST_F(ComboBox, WithoutABestComboHasNoBar) {
  Combo[0] = 1;
  MaxCombo[0] = 0;
  After(500);
  EXPECT_EQ(Extent(kBack), kBox);
  EXPECT_EQ(Extent(kBar), Rect{});
}

TEST_F(ComboBox, TellsOfPressureBeforeAllElse) {
  Pressure = true;
  Combo[0] = 1;
  After(500);
  EXPECT_EQ(Extent(kPressure), kBox);
  EXPECT_EQ(Extent(kBack), Rect{});
}

TEST_F(ComboBox, OfANumberOutsideTheTableIsNotDrawn) {
  NoMissClip = -1;
  After(500);
  NoMissClip = 256;
  After(500);
  EXPECT_EQ(Extent(kNoMiss), Rect{});
}

}  // namespace
}  // namespace qlm
