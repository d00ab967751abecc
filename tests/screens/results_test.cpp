// The result screen.
#include "screens/results.h"

#include <map>
#include <memory>
#include <set>

#include "base/hooks.h"
#include "platform/clock.h"
#include "platform/sound_device.h"
#include "screens/result_pieces.h"
#include "sound/play.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/network.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"
#include "tests/screens/letters.h"

namespace qlm {
namespace {

constexpr platform::Colour kHeld = 0x112233;
constexpr platform::Colour kTile = 0x445566;
constexpr platform::Colour kGraph = 0x778899;
constexpr platform::Colour kSealColour = 0xD9A441;
constexpr platform::Colour kTornColour = 0xC8385A;
constexpr platform::Colour kNibColour = 0xF3EAD3;

// The frames that were shown, by the milliseconds since the screen began. The fade before it shows one every
// 10 ms for 200 ms, and one more.
constexpr int32_t kBegin = 210;
std::map<int32_t, SurfacePtr> frames;
std::set<int32_t> wanted;

int32_t Time() { return platform::Elapsed(platform::Now(), 1'000'000) - kBegin; }

class ResultsTest : public PlayTest {
 protected:
  ResultsTest() {
    PlayEnd = true;
    DDPrimary = std::make_shared<Surface>(640, 480);
    DDBack->Fill(kScreen, kHeld);
    DDGraph->Fill(DDGraph->Bounds(), kGraph);
    SSBack = std::make_shared<Surface>(160, 120);
    SSBack->Fill(SSBack->Bounds(), kTile);
    ResultObj = std::make_shared<Surface>(304, 128);
    ResultObj->Fill(kSealPiece, kSealColour);
    ResultObj->Fill(kTornSealPiece, kTornColour);
    ResultObj->Fill(kNibPiece, kNibColour);
    GiveReadableLetters();
    for (const SE sound : {SE::kClear, SE::kFail, SE::kTick, SE::kFade}) FillSound(sound);
    frames.clear();
    wanted.clear();
    hooks.framePresented = [] {
      if (!wanted.contains(Time()) || GameState == kStateSongSelect) return;
      frames[Time()] = std::make_shared<Surface>(640, 480);
      frames[Time()]->Copy(0, 0, *DDBack, kScreen);
    };
  }

  // Shows the screen, keeps its frames of these moments, and presses a lane at `end`.
  static void Show(const std::set<int32_t>& moments, int32_t end = 2100) {
    SetNow(kStart);
    wanted = moments;
    RunFrames(10, [end](int32_t) {
      if (Time() == end) LaneDown[1] = true;
    });
    ShowResults();
    RunFrames(10);
  }
  static const Surface& At(int32_t ms) {
    EXPECT_TRUE(frames.contains(ms)) << ms;
    static const Surface none(640, 480);
    return frames.contains(ms) ? *frames[ms] : none;
  }
};

TEST_F(ResultsTest, TheGroundOpensFromTheMiddleLineWithinAFifthOfASecond) {
  Show({0, 50, 190, 200});
  EXPECT_EQ(At(0).Pixel(639, 239), kHeld);
  // round(240 - 1.2 * 50) is 180.
  EXPECT_EQ(At(50).Pixel(639, 179), kHeld);
  EXPECT_EQ(At(50).Pixel(639, 180), kTile);
  EXPECT_EQ(At(50).Pixel(639, 299), kTile);
  EXPECT_EQ(At(50).Pixel(639, 300), kHeld);
  EXPECT_EQ(At(190).Pixel(639, 11), kHeld);
  EXPECT_EQ(At(190).Pixel(639, 12), kTile);
  EXPECT_EQ(At(200).Pixel(639, 0), kTile);
  EXPECT_EQ(At(200).Pixel(639, 479), kTile);
  EXPECT_EQ(ScreenRect, kScreen);
}

TEST_F(ResultsTest, WithoutAMovingGroundItIsBlack) {
  DRAWLIMIT = 3;
  Show({50, 1000});
  EXPECT_EQ(At(50).Pixel(639, 179), kHeld);
  EXPECT_EQ(At(50).Pixel(639, 180), 0U);
  EXPECT_EQ(At(1000).Pixel(639, 0), 0U);
}

TEST_F(ResultsTest, FiguresCountUpByWholeNumbersInTwoSeconds) {
  Score[0] = 199999.5;
  JPts[0] = -61.5F;
  MaxCombo[0] = 39;
  JudgeCount[0] = {10, 7, 0, 0, 0};
  Show({0, 1000, 1990, 2000, 2050});
  EXPECT_EQ(TextAt(At(0), 320, 260), "SCORE: 0");
  // round(199999.5 * 1000) \ 2000, 27 * 1000 \ 2000, round(-61.5 * 1000) \ 2000 and 39 * 1000 \ 2000.
  EXPECT_EQ(TextAt(At(1000), 320, 260), "SCORE: 99999");
  EXPECT_EQ(TextAt(At(1000), 320, 275), "ExPTS: 13");
  EXPECT_EQ(TextAt(At(1000), 320, 290), "J-PTS: -30");
  EXPECT_EQ(TextAt(At(1000), 320, 320), "COMBO: 19");
  EXPECT_EQ(TextAt(At(1990), 320, 320), "COMBO: 38");
  for (const int32_t end : {2000, 2050}) {
    EXPECT_EQ(TextAt(At(end), 320, 260), "SCORE: 199999") << "truncated, and not rounded";
    EXPECT_EQ(TextAt(At(end), 320, 275), "ExPTS: 27");
    EXPECT_EQ(TextAt(At(end), 320, 290), "J-PTS: -61");
    EXPECT_EQ(TextAt(At(end), 320, 320), "COMBO: 39");
  }
}

TEST_F(ResultsTest, TheGraphIsWipedOpenFromTheLeftWithinASecond) {
  Show({0, 100, 500, 990, 1000});
  const auto widthAt = [](int32_t ms) {
    int32_t width = 0;
    while (At(ms).Pixel(31 + width, 40) == kGraph) ++width;
    return width;
  };
  EXPECT_EQ(widthAt(0), 0);
  EXPECT_EQ(widthAt(100), 3);  // 0.0003 * 100 * 100
  EXPECT_EQ(widthAt(500), 75);
  EXPECT_EQ(widthAt(990), 294);  // 294.03
  EXPECT_EQ(widthAt(1000), 300);
  EXPECT_EQ(At(1000).Pixel(31, 30), kTile);
  EXPECT_EQ(At(1000).Pixel(31, 31), kGraph);
  EXPECT_EQ(At(1000).Pixel(330, 233), kGraph);
  EXPECT_EQ(At(1000).Pixel(330, 234), kTile);
  // The nib's point follows, in the middle of the graph's height.
  EXPECT_EQ(At(500).Pixel(31 + 75, 31 + 101 - 1), kNibColour);
  EXPECT_NE(At(1000).Pixel(332, 31 + 101 - 1), kNibColour);
}

TEST_F(ResultsTest, TheCountsSlideInFromTheLeftWithTheirWords) {
  // Digit n is drawn in the colour 0x010000 * (n + 1), the word of a grade in 0x01 * (grade + 1).
  SkinFile[2] = std::make_shared<Surface>(64, 64);
  Number[3].file = 2;
  Number[3].width = Number[3].height = 4;
  for (int32_t digit = 0; digit <= 9; ++digit) {
    const Rect cell{digit * 4, 0, digit * 4 + 4, 4};
    SkinFile[2]->Fill(cell, 0x010000U * static_cast<uint32_t>(digit + 1));
    Number[3].rects[static_cast<size_t>(digit) + 1] = cell;
  }
  for (uint8_t grade = 0; grade < 5; ++grade) {
    const Rect cell{grade * 4, 8, grade * 4 + 4, 12};
    SkinFile[2]->Fill(cell, grade + 1U);
    Clip[10 + grade].file = 2;
    Clip[10 + grade].rect = cell;
    JudgePos[0][grade].id = static_cast<uint8_t>(10 + grade);
  }
  JudgeCount[0] = {1234, 5, 6, 7, 8};
  Show({1500, 1900, 2000});
  constexpr std::array<int32_t, 5> kRows = {260, 300, 340, 380, 420};
  // (2000 - 1900) squared by 0.001 is 10: row k stands 10 * k to the left.
  for (int32_t k = 1; k <= 5; ++k) {
    const int32_t y = kRows[static_cast<size_t>(k - 1)];
    EXPECT_EQ(At(1900).Pixel(50 - 10 * k, y), 6U - static_cast<uint32_t>(k)) << k;
    EXPECT_EQ(At(2000).Pixel(50, y), 6U - static_cast<uint32_t>(k)) << k;
  }
  // 1234 * 1900 \ 2000 is 1172: its second digit is a 1.
  EXPECT_EQ(At(1900).Pixel(190, 260), 0x020000U);
  EXPECT_EQ(At(1900).Pixel(190 + 8, 260), 0x080000U);
  EXPECT_EQ(At(2000).Pixel(200 + 12, 260), 0x050000U);
  // Four cells, of which zeros ahead are empty: 8 stands in the last one.
  EXPECT_EQ(At(2000).Pixel(200, 420), kTile);
  EXPECT_EQ(At(2000).Pixel(212, 420), 0x090000U);
  // At 1500 ms a row has gone 250 * k: the first word lies outside.
  EXPECT_EQ(At(1500).Pixel(50, 260), kTile);
}

TEST_F(ResultsTest, TheSealComesOnceAllIsCounted) {
  struct Play {
    float gauge;
    bool reachedItsEnd;
    platform::Colour seal;
  };
  for (const Play& play :
       {Play{80, true, kSealColour}, Play{79.9F, true, kTornColour}, Play{100, false, kTornColour}}) {
    LaneDown = {};
    frames.clear();
    Gauge[0] = play.gauge;
    PlayCleared = play.reachedItsEnd;
    Show({1990, 2000});
    EXPECT_EQ(At(1990).Pixel(480, 32), kTile);
    EXPECT_EQ(At(2000).Pixel(480, 32), play.seal) << play.gauge;
    EXPECT_EQ(At(2000).Pixel(607, 159), play.seal);
    EXPECT_EQ(At(2000).Pixel(608, 159), kTile);
  }
}

TEST_F(ResultsTest, JinglesOfClearAndFailure) {
  struct Case {
    std::array<float, 2> gauge;
    SE jingle;
  };
  for (const Case& play : {Case{{80, 22}, SE::kClear}, Case{{79.9F, 79.9F}, SE::kFail},
                           Case{{0, 100}, SE::kClear}}) {  // one player under the hazard gauge
    LaneDown = {};
    Gauge = play.gauge;
    SetNow(kStart);
    bool right = false;
    RunFrames(10, [&](int32_t) {
      if (Time() == 100) {
        right = Sounding(play.jingle) && Sounding(SE::kTick) &&
                !Sounding(play.jingle == SE::kClear ? SE::kFail : SE::kClear);
        LaneDown[1] = true;
      }
    });
    ShowResults();
    EXPECT_TRUE(right) << play.gauge[0];
    for (const SE sound : {SE::kClear, SE::kFail, SE::kTick}) EXPECT_FALSE(Sounding(sound));
  }
}

TEST_F(ResultsTest, TheRatchetStopsBehindTwoSeconds) {
  std::map<int32_t, bool> ticking;
  SetNow(kStart);
  RunFrames(10, [&](int32_t) {
    ticking[Time()] = Sounding(SE::kTick);
    if (Time() == 2100) LaneDown[1] = true;
  });
  ShowResults();
  EXPECT_TRUE(ticking[1990]);
  EXPECT_TRUE(ticking[2000]);
  EXPECT_FALSE(ticking[2010]);
}

TEST_F(ResultsTest, AnyLaneButTheTurntablesEndsIt) {
  for (size_t lane = 0; lane < LaneDown.size(); ++lane) {
    const size_t channel = lane + 11;
    const bool ends = channel != 16 && channel != 17 && channel != 20 && channel != 26 && channel != 27;
    LaneDown = {};
    SetNow(kStart);
    int32_t end = 0;
    RunFrames(10, [&](int32_t) {
      LaneDown[lane] = true;
      if (Time() >= 500) LaneDown[1] = true;
      end = Time();
    });
    ShowResults();
    // It ends with a fade of 200 ms and one more frame.
    EXPECT_EQ(end >= 500, !ends) << channel;
  }
}

TEST_F(ResultsTest, EscEndsItAsLaneElevenAndOneThatWasHeldBeforeDoesNot) {
  LaneDown[0] = true;
  SetNow(kStart);
  int32_t end = 0;
  RunFrames(10, [&](int32_t) {
    if (Time() == 300) ProcessKey_Results(kKeyEsc);
    end = Time();
  });
  ShowResults();
  EXPECT_EQ(end, 300 + 210);
}

TEST_F(ResultsTest, ItWaitsForTheEndOfThePlayAndOfTheBattle) {
  PlayEnd = false;
  network.NetPlaying = true;
  LaneDown[1] = true;
  std::map<int32_t, int32_t> states;
  SetNow(kStart);
  RunFrames(10, [&](int32_t) {
    states[Time()] = GameState;
    if (Time() == 300) PlayEnd = true;
    if (Time() == 400) network.NetPlaying = false;
  });
  ShowResults();
  EXPECT_EQ(states[300], kStatePlayOver);
  EXPECT_EQ(states[390], kStatePlayOver);
  EXPECT_EQ(states.rbegin()->first, 400 + 210);
}

TEST_F(ResultsTest, InABattleThePlayersStandInThePlaceOfTheSeal) {
  network.NetActive = true;
  network.NetUserCount = 1;
  Gauge[0] = 100;
  PlayCleared = true;
  Show({2000});
  EXPECT_EQ(At(2000).Pixel(480, 32), kTile);
  EXPECT_EQ(At(2000).Pixel(607, 159), kTile);
  EXPECT_EQ(TextAt(At(2000), 0, 0, 5), "NET:1");
}

TEST_F(ResultsTest, StateSoundAndPlayStandAsTheyShould) {
  GameState = kStateCourses;
  PlayAlive = true;
  int32_t state = -1;
  SetNow(kStart);
  RunFrames(10, [&](int32_t) {
    if (Time() == 100) {
      state = GameState;
      LaneDown[1] = true;
    }
  });
  ShowResults();
  EXPECT_EQ(state, kStateResults);
  EXPECT_EQ(GameState, kStateCourses);
  EXPECT_FALSE(PlayAlive);
  EXPECT_EQ(DDPrimary->Pixel(320, 100), 0U) << "faded to black";
}

TEST_F(ResultsTest, ACourseListsTheExPtsOfItsSongs) {
  CourseMode = true;
  CourseSong = 2;
  CourseExPts[0] = 40;
  CourseExPts[1] = 100;
  CourseExPts[3] = 7;  // of a longer course before
  JudgeCount[0] = {50, 5, 0, 0, 0};
  Show({2000});
  EXPECT_EQ(CourseExPts[0], 40);
  EXPECT_EQ(CourseExPts[1], 60);
  EXPECT_EQ(CourseExPts[2], 5);
  EXPECT_EQ(TextAt(At(2000), 400, 240, 9), "1. 40");
  // The lines are 14 pixels apart under letters of 16, so that a line is read at its lower half.
  EXPECT_EQ(TextAt(At(2000), 400, 271, 9), "3. 5");
  EXPECT_EQ(At(2000).Pixel(401, 290), kTile);
}

TEST_F(ResultsTest, APlayThatIsNoCourseListsNone) {
  CourseExPts[0] = 40;
  Show({2000});
  EXPECT_EQ(TextAt(At(2000), 400, 240), "");
  EXPECT_EQ(CourseExPts[0], 40);
}

TEST_F(ResultsTest, AComboThatStandsAtTheEndIsALastPointOfTheGraph) {
  TotalNotes[0] = 300;
  JPtsMax[0] = 18 * 150;
  Combo[0] = 60;
  LastJudge[0] = kPerfect;
  Show({});
  EXPECT_EQ(DDGraph->Pixel(150, 160), 0xFFFF00U);  // 200 - 60 * 200 \ 300
  Combo[0] = 0;
  JPtsMax[0] = 18 * 100;
  LaneDown = {};
  Show({});
  EXPECT_EQ(DDGraph->Pixel(100, 200), kGraph);
}

}  // namespace
}  // namespace qlm
