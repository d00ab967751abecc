// The play screen as a whole: what lies over what, and what goes on without a screen.
#include "play_screen/play_screen.h"

#include <algorithm>
#include <limits>

#include "graphics/present.h"
#include "platform/clock.h"
#include "sound/play.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/message.h"
#include "state/options.h"
#include "state/session.h"
#include "state/sounds.h"
#include "state/timeline.h"
#include "tests/play_screen/play_screen_ground.h"
#include "tests/support/allocations.h"

namespace qlm {
namespace {

constexpr int32_t kSteps = 17;
constexpr Colour kStep = 0x300000;

// Every step of the drawing has a clip, 1 to 17, of 20 by 20 in its own colour; all of them stand at (200,
// 200).
class WholeScreen : public PlayScreenTest {
 protected:
  static constexpr int16_t kX = 200;
  static constexpr int16_t kY = 200;
  WholeScreen() {
    for (int32_t step = 1; step <= kSteps; ++step) LayClip(step, 20, 20, kStep + static_cast<Colour>(step));
  }
  static SkinPos Step(uint8_t step, int16_t p3 = 0) { return {step, kX, kY, p3, 0}; }
  // The step whose clip lies on top.
  static int32_t OnTop() {
    Draw();
    return static_cast<int32_t>(At(kX + 5, kY + 5) - kStep);
  }
};

TEST_F(WholeScreen, TheStepsLieOverEachOtherInTheirOrder) {
  platform::UseVirtualClock(kNow + 950);
  DDSkinBack = Solid(640, 480, kStep + 1);
  EXPECT_EQ(OnTop(), 1);
  // The pictures.
  BmpSurface[1] = Solid(256, 256, kStep + 2);
  BmpRect[1] = {0, 0, 256, 256};
  curBaseBGA = 1;
  BGADirty = true;
  EXPECT_EQ(OnTop(), 2);
  LinePos[0][0][0] = Step(3);
  LineList[0].last = 0;
  EXPECT_EQ(OnTop(), 3);
  KeyPos[0] = Step(4);
  EXPECT_EQ(OnTop(), 4);
  // A marker, and a beam of another lane.
  LayObj(11, 0);
  LaneNote[0] = 0;
  JudgeWindow = {3, 6, 18, 24};
  BlinkPos[0][0] = Step(5);
  EXPECT_EQ(OnTop(), 5);
  LayClip(6, 20, 480, kStep + 6);
  LaneBeam[1] = 127;
  LaneDown[1] = true;
  NoteSkin[2].beamClip = 6;
  NoteSkin[2].x = kX;
  EXPECT_EQ(OnTop(), 6);
  LenPos[0] = Step(7);
  LenUsed[0] = true;
  playPos = 20;
  objs[0].pos = 20;
  EXPECT_EQ(OnTop(), 7);
  LayerClip[0] = 8;
  LayerX[0] = kX;
  LayerY[0] = kY;
  LayerList.last = 0;
  EXPECT_EQ(OnTop(), 8);
  JudgeLinePos[0][0] = Step(9);
  EXPECT_EQ(OnTop(), 9);
  LayObj(13, 20 + 400 - kY);
  NoteSkin[3] = {.clip = 10, .x = kX};
  EXPECT_EQ(OnTop(), 10);
  // Figures: a strip whose every glyph is one colour.
  LayStrip(1, 20, 20);
  SkinFile[254]->Fill(SkinFile[254]->Bounds(), kStep + 11);
  StagePos = {1, kX, kY, 0, 0};
  EXPECT_EQ(OnTop(), 11);
  // A bomb.
  LayClip(12, 20, 20, kStep + 12).speed = 2000;
  BombPos[0].id = 12;
  LaneHit[4] = 1;
  LaneHitTime[4] = kNow;
  NoteSkin[5] = {.clip = 12, .x = kX};
  JudgeLinePos[0][0].y = kY + 10;
  EXPECT_EQ(OnTop(), 12);
  // The word, as it is squashed.
  LastJudge[0] = 4;
  LastJudgeTime[0] = kNow + 600;
  JudgePos[0][4] = Step(13);
  EXPECT_EQ(OnTop(), 13);
  FanPos[0][0] = Step(14);
  EXPECT_EQ(OnTop(), 14);
  GaugeBackPos[0] = Step(15);
  EXPECT_EQ(OnTop(), 15);
  ClassPos[0][6] = Step(16);
  EXPECT_EQ(OnTop(), 16);
  OptionPos[0][0] = Step(17);
  EXPECT_EQ(OnTop(), 17);
  FadeState = kFadeFail;
  FadeStart = kNow + 950 - 2000;
  EXPECT_EQ(OnTop(), static_cast<int32_t>(0 - kStep));  // black
}

TEST_F(WholeScreen, AnEmptySkinDrawsNothing) {
  for (int32_t channel = 11; channel <= 29; ++channel) LayObj(channel, 50);
  LaneHit.fill(3);
  LastJudge = {4, 4};
  LastJudgeTime = {kNow, kNow};
  Combo = {5, 5};
  ComboDigitCount = {1, 1};
  SideCount = 2;
  Draw();
  EXPECT_TRUE(Only({}, 0));
}

TEST_F(WholeScreen, ASkinWithoutSheetsDrawsNothing) {
  for (int32_t step = 1; step <= kSteps; ++step) SkinFile[step].reset();
  KeyPos[0] = Step(4);
  GaugePos[0] = Step(5, 1);
  GaugeShown[0] = 50;
  LastJudge[0] = 4;
  LastJudgeTime[0] = kNow;
  JudgePos[0][4] = Step(6);
  LenPos[0] = Step(7);
  LenUsed[0] = true;
  Draw();
  EXPECT_TRUE(Only({}, 0));
}

TEST_F(WholeScreen, SideCountsOutOfRangeDoNoHarm) {
  DDSkinBack = Solid(640, 480, kStep + 1);
  for (const int32_t sides : {INT32_MIN, -1, 0, 3, INT32_MAX}) {
    SideCount = sides;
    HdrPlayer = 3;
    // The ground of the skin shows, as with sides.
    Draw();
    EXPECT_EQ(At(0, 0), kStep + 1) << sides;
    EXPECT_EQ(At(639, 479), kStep + 1) << sides;
  }
}

TEST_F(WholeScreen, ThePlayGoesOnWithoutAScreen) {
  DDBack.reset();
  LayObj(11, 20);
  LaneBeam[0] = 1;
  LaneHit[2] = 3;
  LaneHitTime[2] = kNow - 10;
  FadeState = kFadeEnd;
  FadeLeaving = 1;
  FadeStart = kNow - 201;
  DrawPlayFrame();
  EXPECT_EQ(LaneNote[0], 0);
  EXPECT_FLOAT_EQ(KeyBeam[0], 0.96F);
  EXPECT_EQ(LaneHit[2], 0);
  EXPECT_TRUE(BlinkToggle);
  EXPECT_TRUE(PlayEnd);
}

TEST_F(WholeScreen, TitleAndTilesEndWithoutAScreenToo) {
  DDBack.reset();
  DDSnapshot.reset();
  FadeState = kFadeTitle;
  FadeStart = kNow - 500;
  DrawPlayFrame();
  EXPECT_EQ(FadeState, kFadeTiles);
  EXPECT_EQ(FadeStart, kNow);
  FadeStart = kNow - 500;
  DrawPlayFrame();
  EXPECT_EQ(FadeState, kFadeNone);
}

TEST_F(WholeScreen, ADoublePlayHasOneWordOneBarAndOneClass) {
  SideCount = 2;
  LastJudge[1] = 4;
  LastJudgeTime[1] = kNow;
  GaugeShown[1] = 50;
  playPos = 20;  // where the word does not bounce
  const auto alone = [](SkinPos& pos, const SkinPos& value) {
    pos = value;
    const bool shown = OnTop() == value.id;
    pos = {};
    return shown;
  };
  for (const int32_t player : {2, 3}) {
    HdrPlayer = player;
    EXPECT_EQ(alone(JudgePos[1][4], Step(1)), player == 2);
    EXPECT_EQ(alone(GaugeBackPos[1], Step(2)), player == 2);
    EXPECT_EQ(alone(GaugePos[1], Step(3, 1)), player == 2);
    EXPECT_EQ(alone(ClassPos[1][6], Step(4)), player == 2);
    EXPECT_TRUE(alone(KeyPos[2], Step(5)));
    EXPECT_TRUE(alone(JudgeLinePos[1][0], Step(6)));
  }
}

// Numbers at the ends of their ranges everywhere: nothing is worth more than that nothing overflows.
TEST_F(WholeScreen, AbsurdNumbersDoNoHarm) {
  DDSkinBack = Solid(640, 480, kStep);
  SideCount = 2;
  HdrPlayer = 2;
  LayStrip(1, 8, 12);
  ComboNumber = 1;
  LayObj(11, INT32_MAX).speedMul = 1e38F;
  LayObj(12, INT32_MIN).speedMul = -1e38F;
  LayObj(ObjSeparator, 5);
  LastJudge = {4, 4};
  LastJudgeTime = {kNow, kNow};
  Combo = MaxCombo = {INT32_MAX, INT32_MIN};
  ComboDigitCount = {5, 5};
  ComboRound = ComboLost = true;
  ComboRoundTime = ComboLostTime = kNow;
  ComboRoundValue = ComboLostValue = INT32_MIN;
  LenUsed.fill(true);
  LineList[0].last = LineList[1].last = LayerList.last = ClipList.last = INT32_MAX;
  for (const int32_t most : {INT32_MIN, INT32_MAX}) {
    const auto edge = static_cast<int16_t>(most > 0 ? INT16_MAX : INT16_MIN);
    SkinClip& clip = Clip[1];
    clip.frames = UINT16_MAX;
    clip.x = clip.y = most;
    clip.stepX = clip.stepY = 2 * int64_t{most};
    clip.rect = {INT32_MIN, INT32_MIN, most, most};
    clip.width = clip.height = most;
    Number[1].width = Number[1].height = most;
    TitleRect = {most, most, most, most};
    TitleChars = most;
    MarqueeText = u"title";
    JudgeY = edge;
    NoteSkin.Fill({.clip = 1, .x = edge, .yOffset = edge, .beamClip = 1});
    const SkinPos pos = {1, edge, edge, edge, edge};
    for (BySide<SkinPos>* both : {&ScorePos, &JPointPos, &MaxPos, &GaugeNumPos, &GaugePos, &GaugeBackPos})
      both->fill(pos);
    for (SkinPos* one : {&BpmPos, &PlayPos1, &PlayFullPos, &CountPos, &StagePos, &FpsPos}) *one = pos;
    for (size_t side = 0; side < 2; ++side) {
      ScoreCountPos[side].fill(pos);
      JudgePos[side].fill(pos);
      JudgeLinePos[side].fill(pos);
      ClassPos[side].fill(pos);
      FanPos[side].fill(pos);
      OptionPos[side].fill(pos);
    }
    LenPos.fill(pos);
    KeyPos.fill(pos);
    for (const double value : {1e300, -1e300, 9.3e18, 2147483648.0, std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
      const auto narrow = static_cast<float>(std::clamp(value, -3e38, 3e38));
      playPos = curMeasure = value;
      HiSpeed = RealHiSpeed = GaugeStep = shownBPM = narrow;
      clip.speed = narrow;
      clip.animMode = kClipByPosition;
      MeasureLen.Fill(1e-9F);
      ScoreShown.fill(value);
      Gauge = GaugeShown = JPts = JPtsShown = {narrow, narrow};
      KeyBeam.fill(narrow);
      LaneBeam.fill(1);
      LaneHit.fill(1);
      playClock = curMeasurePos = most;
      BMSLengthMs = INT32_MAX;
      CourseSong = most;
      Draw();
      BMSLengthMs = 1;
      playClock = INT32_MIN;
      curMeasure = 0;
      HalfField = Quil = Accel = !Quil;
      Draw();
      // Nothing of all that lies in the last corner: the ground shows.
      EXPECT_EQ(At(639, 479), kStep) << most << ", " << value;
    }
  }
}

TEST_F(WholeScreen, TheBlinkTurnsOncePerPlayer) {
  Draw();
  EXPECT_TRUE(BlinkToggle);
  SideCount = 2;
  HdrPlayer = 2;
  Draw();
  EXPECT_TRUE(BlinkToggle);
  HdrPlayer = 3;
  Draw();
  EXPECT_FALSE(BlinkToggle);
}

// A skin with something everywhere, in motion.
TEST_F(WholeScreen, EachFrameTakesTheSoundsThatHaveEndedFromTheVoices) {
  WavLengthMs[3] = 10;
  VoiceAdd(3);
  platform::UseVirtualClock(kNow + 10);
  Draw();
  EXPECT_EQ(VoiceCount, 1);
  platform::UseVirtualClock(kNow + 11);
  EXPECT_EQ(VoiceCount, 1);
  Draw();
  EXPECT_EQ(VoiceCount, 0);
  VoiceAdd(3);
  platform::UseVirtualClock(kNow + 22);
  Draw();
  EXPECT_EQ(VoiceCount, 0);
}

TEST_F(WholeScreen, AFrameOfAFullSkinTakesNothingFromTheHeap) {
  SideCount = 2;
  HdrPlayer = 2;
  DDSkinBack = Solid(640, 480, kStep);
  LayStrip(1, 8, 12);
  ComboNumber = 1;
  SkinFile[1] = Solid(1024, 16, kStep);
  for (Rect& cell : SysFont) cell = {0, 0, 8, 16};
  SysFontW = 8;
  MarqueeText = u"羽ペンの行進 / a title that is longer than a short text may be";
  TitleChars = 30;
  for (SkinPos* pos : {&BpmPos, &PlayPos1, &PlayFullPos, &CountPos, &StagePos, &FpsPos})
    *pos = {1, 20, 20, 6, 0};
  for (size_t side = 0; side < 2; ++side) {
    for (BySide<SkinPos>* pos : {&ScorePos, &JPointPos, &MaxPos, &GaugeNumPos})
      (*pos)[side] = {1, 20, 50, 0, 0};
    GaugePos[side] = Step(2, 1);
    JudgePos[side].fill(Step(3));
    ClassPos[side].fill(Step(4));
    OptionPos[side].fill(Step(5));
    KeyPos[side * 2] = Step(6);
  }
  for (int32_t channel = 11; channel <= 29; ++channel)
    NoteSkin[channel - 10] = {.clip = 7, .x = 100, .beamClip = 8};
  for (int32_t i = 0; i < 150; ++i) LayObj(11 + i % 6, 2 * i);
  LastJudge = {4, 4};
  Combo = MaxCombo = {1234, 1234};
  ComboDigitCount = {4, 4};
  ComboRound = ComboLost = true;
  platform::SetFrameClock([](uint32_t now) { return now + 17; });
  GameState = kStatePlay;
  Draw();  // the code page's table is made
  PresentFrame();
  const size_t before = Allocations();
  for (int32_t frame = 0; frame < 100; ++frame) {
    playClock = frame * 17;
    playPos = frame;
    LastJudgeTime = {platform::Now(), platform::Now() - 950};
    ComboRoundTime = ComboLostTime = platform::Now();
    LaneHit.fill(3);
    LaneBeam.fill(frame % 2);
    GaugeShown = {static_cast<float>(frame), 100};
    ScoreShown = {1000.0 * frame, 1};
    DrawPlayFrame();
    PresentFrame();
  }
  EXPECT_EQ(Allocations(), before);
}

}  // namespace
}  // namespace qlm
