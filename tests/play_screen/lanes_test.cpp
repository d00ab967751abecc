// Markers and beams of the lanes.
#include "play_screen/field.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/settings.h"
#include "state/timeline.h"
#include "tests/play_screen/play_screen_ground.h"

namespace qlm {
namespace {

constexpr Colour kMarker = 0x00FF00;
constexpr Colour kBeam = 0x0000FF;

class Markers : public PlayScreenTest {
 protected:
  // The marker of channel 13 with the turntable left, and a pending note at 50 whose window is 6 units.
  Markers() {
    LayClip(1, 10, 10, kMarker);
    BlinkPos[0][2] = {1, 60, 70, 0, 0};
    JudgeWindow = {3, 6, 18, 24};
    LayObj(13, 50);
    LaneNote[2] = 0;
  }
  static bool ShownAtPlace(double place) {
    playPos = place;
    Draw();
    return Find(kMarker) == Corner{60, 70};
  }
};

TEST_F(Markers, StandWhileTheNoteIsWithinTheSecondWindow) {
  EXPECT_FALSE(ShownAtPlace(44));
  EXPECT_TRUE(ShownAtPlace(44.01));
  EXPECT_TRUE(ShownAtPlace(50));
  EXPECT_TRUE(ShownAtPlace(55.99));
  EXPECT_FALSE(ShownAtPlace(56));
}

TEST_F(Markers, NeedAPendingNote) {
  LaneNote[2] = -1;
  UserPlay = false;
  EXPECT_FALSE(ShownAtPlace(50));
  LaneNote[2] = 1'000'000;
  EXPECT_FALSE(ShownAtPlace(50));
}

TEST_F(Markers, GoByThePlaceOfTheTurntableOfTheirSide) {
  SCRATCH1P = true;
  EXPECT_FALSE(ShownAtPlace(50));
  BlinkPos[1][2] = {1, 60, 70, 0, 0};
  EXPECT_TRUE(ShownAtPlace(50));
}

TEST_F(Markers, OfSideTwoNeedTwoSides) {
  objs[0].channel = 23;
  LaneNote[2] = -1;
  LaneNote[12] = 0;
  BlinkPos[0][12] = {1, 60, 70, 0, 0};
  EXPECT_FALSE(ShownAtPlace(50));
  SideCount = 2;
  SCRATCH1P = true;
  EXPECT_TRUE(ShownAtPlace(50));
  SCRATCH2P = true;
  EXPECT_FALSE(ShownAtPlace(50));
}

TEST_F(Markers, AreCutAtTheScreensEdge) {
  BlinkPos[0][2] = {1, -3, 70, 0, 0};
  playPos = 50;
  Draw();
  EXPECT_TRUE(Only({0, 70, 7, 80}, kMarker));
}

// A beam of 20 by 400 for channel 12. 50 frames a second: a frame lasts 20 ms.
class Beams : public PlayScreenTest {
 protected:
  Beams() {
    LayClip(3, 20, 400, kBeam);
    NoteSkin[2].beamClip = 3;
    NoteSkin[2].x = 50;
    LaneBeam.fill(127);
  }
};

TEST_F(Beams, AHeldLaneThatHasSettledShowsItsWholeBeam) {
  LaneDown[1] = true;
  Draw();
  EXPECT_TRUE(Only({50, 0, 70, 400}, kBeam));
}

TEST_F(Beams, AFreeLaneThatHasSettledShowsNothing) {
  KeyBeam[1] = 1;
  Draw();
  EXPECT_TRUE(Only({}, 0));
}

TEST_F(Beams, APressRaisesTheBeamWithinTwoFrames) {
  LaneBeam[1] = 1;
  LaneDown[1] = true;
  Draw();  // 0 + 1 * 48 * 0.02
  EXPECT_FLOAT_EQ(KeyBeam[1], 0.96F);
  EXPECT_EQ(LaneBeam[1], 1);
  EXPECT_TRUE(Only({50, 16, 70, 400}, kBeam));
  Draw();  // 0.96 + 0.04 * 0.96
  EXPECT_FLOAT_EQ(KeyBeam[1], 0.9984F);
  EXPECT_EQ(LaneBeam[1], 127);
  EXPECT_TRUE(Only({50, 1, 70, 400}, kBeam));
  Draw();
  EXPECT_TRUE(Only({50, 0, 70, 400}, kBeam));
}

TEST_F(Beams, AReleaseSinksTheBeamOut) {
  LaneBeam[1] = 0;
  KeyBeam[1] = 1;
  Draw();  // 1 - 4.8 * 0.02
  EXPECT_FLOAT_EQ(KeyBeam[1], 0.904F);
  EXPECT_EQ(Extent(kBeam), (Rect{50, 38, 70, 400}));  // round(361.6) high, from round(38.4) on
  KeyBeam[1] = 0.011F;
  Draw();  // 0.009944: within 0.01
  EXPECT_EQ(LaneBeam[1], 127);
  EXPECT_TRUE(Only({50, 396, 70, 400}, kBeam));
  Draw();
  EXPECT_TRUE(Only({}, 0));
}

TEST_F(Beams, TheUpperPartOfTheBeamIsWhatShows) {
  SkinFile[3]->Fill({0, 0, 20, 10}, 0xABCDEF);
  LaneBeam[1] = 0;
  KeyBeam[1] = 1;
  Draw();
  EXPECT_EQ(Extent(0xABCDEF), (Rect{50, 38, 70, 48}));
}

TEST_F(Beams, At30FramesASecondTheFallTakes16PercentOfTheRest) {
  LaneBeam[1] = 0;
  KeyBeam[1] = 1;
  Fps = 30;
  Draw();
  EXPECT_FLOAT_EQ(KeyBeam[1], 0.84F);
  KeyBeam[1] = 1;
  Fps = 60;
  Draw();
  EXPECT_FLOAT_EQ(KeyBeam[1], 0.92F);
}

TEST_F(Beams, Below48FramesASecondTheRiseSwingsPastItsEnd) {
  LaneBeam[1] = 1;
  Fps = 30;
  Draw();
  EXPECT_FLOAT_EQ(KeyBeam[1], 1.6F);
  EXPECT_TRUE(Only({}, 0));  // 640 rows, which the sheet does not have
  Draw();
  EXPECT_FLOAT_EQ(KeyBeam[1], 0.64F);
  EXPECT_EQ(Extent(kBeam).top, 144);
}

TEST_F(Beams, AtAVeryLowFrameRateNothingOverflows) {
  LaneBeam[1] = 1;
  Fps = 1.5;
  for (int32_t frame = 0; frame < 200; ++frame) Draw();
  EXPECT_TRUE(Only({}, 0));
  LaneBeam[1] = 0;
  Fps = 60;
  for (int32_t frame = 0; frame < 2000; ++frame) Draw();
  EXPECT_EQ(LaneBeam[1], 127);
}

TEST_F(Beams, StandUntilAFrameRateIsKnown) {
  LaneBeam[1] = 1;
  Fps = 1.0;
  Draw();
  EXPECT_EQ(KeyBeam[1], 0.0F);
  EXPECT_EQ(LaneBeam[1], 1);
}

TEST_F(Beams, MoveWithoutAScreenToo) {
  DDBack.reset();
  LaneBeam[1] = 1;
  DrawLanes();
  EXPECT_FLOAT_EQ(KeyBeam[1], 0.96F);
  DrawLanes();
  EXPECT_EQ(LaneBeam[1], 127);
}

TEST_F(Beams, OfSideTwoMoveOnlyWithTwoSides) {
  LaneBeam[11] = 1;
  NoteSkin[12].beamClip = 3;
  NoteSkin[12].x = 300;
  Draw();
  EXPECT_EQ(KeyBeam[11], 0.0F);
  SideCount = 2;
  Draw();
  EXPECT_EQ(Find(kBeam), (Corner{300, 16}));
}

TEST_F(Beams, Channels17And27HaveNone) {
  SideCount = 2;
  LaneBeam[6] = LaneBeam[16] = 1;
  Draw();
  EXPECT_EQ(KeyBeam[6], 0.0F);
  EXPECT_EQ(KeyBeam[16], 0.0F);
}

}  // namespace
}  // namespace qlm
