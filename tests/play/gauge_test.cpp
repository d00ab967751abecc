// Tests of gauge, score, accuracy and class.
#include "play/gauge.h"

#include <limits>

#include "play/turn.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/session.h"
#include "state/surfaces.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

class GaugeTest : public PlayTest {
 protected:
  GaugeTest() {
    Gauge = {50, 50};
    GaugeGain = {1.5F, 1.5F};
    ScorePerNote = {100, 100};
  }

  // What one judgement adds to gauge and score.
  static float GaugeStep(int32_t grade, float delta = 30) {
    Gauge[0] = 50;
    Score[0] = 0;
    RateGrade(0, grade, delta);
    return Gauge[0] - 50;
  }
  static float JPtsStep(float delta) {
    JPts[0] = 0;
    AddJPts(0, delta);
    return JPts[0];
  }
};

TEST_F(GaugeTest, NormalGaugeByGrade) {
  EXPECT_FLOAT_EQ(GaugeStep(kPerfect), 1.5F);
  EXPECT_DOUBLE_EQ(Score[0], 200);
  EXPECT_FLOAT_EQ(GaugeStep(kGreat), 1.5F);
  EXPECT_DOUBLE_EQ(Score[0], 100);
  EXPECT_FLOAT_EQ(GaugeStep(kGood), 0.5F);
  EXPECT_DOUBLE_EQ(Score[0], 50);
  EXPECT_FLOAT_EQ(GaugeStep(kBad), -1);
  EXPECT_DOUBLE_EQ(Score[0], 0);
  EXPECT_FLOAT_EQ(GaugeStep(kPoor), -3);
  EXPECT_DOUBLE_EQ(Score[0], 0);
}

TEST_F(GaugeTest, HazardGaugeByGrade) {
  HazardGauge = true;
  EXPECT_FLOAT_EQ(GaugeStep(kPerfect), 50.05F - 50);
  EXPECT_DOUBLE_EQ(Score[0], 200);
  EXPECT_FLOAT_EQ(GaugeStep(kGreat), 50.025F - 50);
  EXPECT_DOUBLE_EQ(Score[0], 100);
  EXPECT_FLOAT_EQ(GaugeStep(kGood), 50.01F - 50);
  EXPECT_DOUBLE_EQ(Score[0], 0);  // a GOOD adds no score under the hazard rule
  EXPECT_FLOAT_EQ(GaugeStep(kBad), -1);
  EXPECT_FLOAT_EQ(GaugeStep(kPoor), -2);
  EXPECT_FLOAT_EQ(GaugeStep(kPoor, kMissUnits), -2);
}

// Quirk: whoever is off by exactly 48 pays like a missed note.
TEST_F(GaugeTest, PoorOfExactly48PaysTwice) {
  EXPECT_FLOAT_EQ(GaugeStep(kPoor, 48), -6);
  EXPECT_FLOAT_EQ(GaugeStep(kPoor, 47.99F), -3);
  EXPECT_FLOAT_EQ(GaugeStep(kPoor, 48.01F), -3);
}

TEST_F(GaugeTest, GaugeStaysFrom0To100) {
  Gauge = {100.5F, -0.5F};
  BoundGauge(0);
  BoundGauge(1);
  EXPECT_FLOAT_EQ(Gauge[0], 100);
  EXPECT_FLOAT_EQ(Gauge[1], 0);
  EXPECT_FALSE(PlayFailed);  // a normal gauge never ends a play
}

TEST_F(GaugeTest, FiftyMissesEmptyTheHazardGaugeAndTheNextFails) {
  HazardGauge = true;
  Gauge[0] = 100;
  for (int32_t miss = 0; miss < 50; ++miss) {
    RateGrade(0, kPoor, kMissUnits);
    BoundGauge(0);
  }
  EXPECT_FLOAT_EQ(Gauge[0], 0);
  EXPECT_FALSE(PlayFailed);
  RateGrade(0, kPoor, kMissUnits);
  BoundGauge(0);
  EXPECT_FLOAT_EQ(Gauge[0], 0);
  EXPECT_TRUE(PlayFailed);
  EXPECT_EQ(PlayFailedTime, kStart);
}

TEST_F(GaugeTest, FortySevenPerfectsOfFourHundredClear) {
  Gauge[0] = 22;
  GaugeGain[0] = 1.25F;  // 500 over 400 notes
  for (int32_t note = 0; note < 46; ++note) RateGrade(0, kPerfect, 0);
  EXPECT_FLOAT_EQ(Gauge[0], 79.5F);
  RateGrade(0, kPerfect, 0);
  EXPECT_FLOAT_EQ(Gauge[0], 80.75F);
}

TEST_F(GaugeTest, AllPerfectIs200000) {
  ScorePerNote[0] = 100000.0 / 7;
  for (int32_t note = 0; note < 7; ++note) RateGrade(0, kPerfect, 0);
  EXPECT_NEAR(Score[0], 200000, 1e-6);
  Score[0] = 0;
  ScorePerNote[0] = 1;  // of a course
  for (int32_t note = 0; note < 7; ++note) RateGrade(0, kPerfect, 0);
  EXPECT_DOUBLE_EQ(Score[0], 14);
}

TEST_F(GaugeTest, SideWithoutNotesHasInfiniteGain) {
  GaugeGain[1] = std::numeric_limits<float>::infinity();
  RateGrade(1, kPerfect, 0);
  BoundGauge(1);
  EXPECT_FLOAT_EQ(Gauge[1], 100);
}

TEST_F(GaugeTest, LatenessPast18CountsDouble) {
  EXPECT_FLOAT_EQ(JPtsStep(0), 18);
  EXPECT_FLOAT_EQ(JPtsStep(5), 13);
  EXPECT_FLOAT_EQ(JPtsStep(18), 0);
  EXPECT_FLOAT_EQ(JPtsStep(19), -2);
  EXPECT_FLOAT_EQ(JPtsStep(48), -60);
  EXPECT_EQ(JPtsMax[0], 5 * 18);
}

TEST_F(GaugeTest, AllPoorIsEmptyAndClassE) {
  for (int32_t miss = 0; miss < 20; ++miss) {
    RateGrade(0, kPoor, kMissUnits);
    BoundGauge(0);
    AddJPts(0, kMissUnits);
  }
  EXPECT_FLOAT_EQ(Gauge[0], 0);
  EXPECT_FLOAT_EQ(JPts[0], -1200);
  EXPECT_FALSE(PlayFailed);
  EXPECT_EQ(ClassOf(JPts[0], JPtsMax[0]), 6);
}

TEST_F(GaugeTest, ClassBeginsAtItsPercent) {
  struct Case {
    float ratio;
    int32_t index;
  };
  for (const Case& each : {Case{1, 0}, Case{0.95F, 0}, Case{0.9499F, 1}, Case{0.9F, 1}, Case{0.8999F, 2},
                           Case{0.8F, 2}, Case{0.7999F, 3}, Case{0.7F, 3}, Case{0.6999F, 4}, Case{0.5F, 4},
                           Case{0.4999F, 5}, Case{0.3F, 5}, Case{0.2999F, 6}, Case{0, 6}, Case{-3, 6}}) {
    EXPECT_EQ(ClassOf(each.ratio, 1), each.index) << each.ratio;
    EXPECT_EQ(ClassOf(each.ratio * 1800, 1800), each.index) << each.ratio;
  }
  EXPECT_EQ(ClassOf(std::numeric_limits<float>::quiet_NaN(), 1), 6);
  EXPECT_EQ(ClassOf(0, 0), 6) << "nothing judged";
  EXPECT_EQ(ClassOf(18, 0), 6);
  EXPECT_EQ(RankLetters[0], u"SS");
  EXPECT_EQ(RankLetters[6], u"E");
}

TEST_F(GaugeTest, ExPtsCountPerfectsTwiceAndGreatsOnce) {
  JudgeCount[0] = {10, 3, 5, 6, 7};
  EXPECT_EQ(ExPts(), 23);
}

TEST_F(GaugeTest, ShownFiguresEaseByTheFrameRate) {
  Fps = 100;
  Gauge = {50, 20};
  GaugeShown = {30, 20};
  Score = {1000, 0};
  JPts = {100, 0};
  EaseShownFigures();
  EXPECT_FLOAT_EQ(GaugeShown[0], 32);
  EXPECT_FLOAT_EQ(GaugeShown[1], 20);
  EXPECT_DOUBLE_EQ(ScoreShown[0], 180);
  EXPECT_FLOAT_EQ(JPtsShown[0], 18);
}

TEST_F(GaugeTest, ShownFiguresArriveWithinATenth) {
  Fps = 100;
  Gauge[0] = 50;
  GaugeShown[0] = 49.8875F;  // 0.10125 away behind the step
  EaseShownFigures();
  EXPECT_FLOAT_EQ(GaugeShown[0], 49.89875F);
  EaseShownFigures();
  EXPECT_FLOAT_EQ(GaugeShown[0], 50);
}

TEST_F(GaugeTest, ShownFiguresStandWhileTheFrameRateIsOneOrLess) {
  Gauge[0] = 50;
  GaugeShown[0] = 30;
  Fps = 1;
  EaseShownFigures();
  EXPECT_FLOAT_EQ(GaugeShown[0], 30);
  Fps = 1.25;
  EaseShownFigures();
  EXPECT_FLOAT_EQ(GaugeShown[0], 190);  // 20 * 8 beyond
}

TEST_F(GaugeTest, TickEasesTheShownFigures) {
  Fps = 100;
  GaugeShown[0] = 30;
  PlayTick();
  EXPECT_FLOAT_EQ(GaugeShown[0], 32);
}

}  // namespace
}  // namespace qlm
