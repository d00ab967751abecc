// Notes and bar lines: where they stand, what the options do to them, and which note becomes that of its
// lane.
#include "play_screen/objects.h"

#include <limits>

#include "state/options.h"
#include "state/settings.h"
#include "state/timeline.h"
#include "tests/play_screen/play_screen_ground.h"

namespace qlm {
namespace {

constexpr Colour kNote = 0x112233;
constexpr Colour kBar = 0x445566;
constexpr Colour kSecondBar = 0x778899;

// A note clip of 20 by 10 for channels 11 and 12, a bar line of 40 by 2 for side 1.
class Objects : public PlayScreenTest {
 protected:
  Objects() {
    LayClip(1, 20, 10, kNote);
    LayClip(2, 40, 2, kBar);
    LayLane(11, 1, 100);
    LayLane(12, 1, 130);
    LayLane(10, 2, 100);
  }
  // The upper edge of the note on channel 11, alone in the chart at `pos`; -1 where it does not show.
  static int32_t TopOf(int32_t pos, float speedMul = 1) {
    objCount = 0;
    LayObj(11, pos).speedMul = speedMul;
    Draw();
    return Find(kNote).y;
  }
  static bool ShowsAt(int32_t pos) { return TopOf(pos) >= 0; }
};

TEST_F(Objects, ANotesLowerEdgeStandsOnItsPlace) {
  LayObj(11, 100);
  Draw();
  EXPECT_TRUE(Only({100, 290, 120, 300}, kNote));
}

TEST_F(Objects, HiSpeedScalesTheDistance) {
  HiSpeed = 2.5F;
  EXPECT_EQ(TopOf(100), 400 - 250 - 10);
}

TEST_F(Objects, ThePlaceRoundsHalfToEven) {
  playPos = 0.5;
  EXPECT_EQ(TopOf(1), 390);  // 399.5
  EXPECT_EQ(TopOf(2), 388);  // 398.5
}

TEST_F(Objects, ANotesOwnSpeedScalesItsDistanceFromTheLine) {
  EXPECT_EQ(TopOf(100, 1.5F), 400 - 150 - 10);
  EXPECT_EQ(TopOf(0, 1.5F), 390);
}

TEST_F(Objects, NotesAreCutAtTheUpperEdge) {
  EXPECT_EQ(TopOf(395), 0);
  EXPECT_EQ(Extent(kNote), (Rect{100, 0, 120, 5}));
  EXPECT_EQ(TopOf(400), -1);
}

TEST_F(Objects, TheWalkBeginsAtTheFirstObjectThatIsNotPassed) {
  LayObj(11, 100);
  LayObj(12, 200);
  objCursor = 1;
  Draw();
  EXPECT_TRUE(Only({130, 190, 150, 200}, kNote));
  EXPECT_EQ(LaneNote[0], -1);
}

TEST_F(Objects, TheWalkEndsAtTheFirstObjectAboveTheScreen) {
  LayObj(11, 401);
  LayObj(12, 10);
  Draw();
  EXPECT_TRUE(Only({}, 0));
  EXPECT_EQ(LaneNote[1], -1);
}

TEST_F(Objects, TheEndOfTheWalkLeavesOutTheNotesOwnSpeed) {
  // Drawn it would stand at 400 - 401 * 0.5, but the walk has ended.
  EXPECT_EQ(TopOf(401, 0.5F), -1);
  // Drawn it stands above the screen, and the walk goes on.
  objCount = 0;
  LayObj(11, 300).speedMul = 1.5F;
  LayObj(12, 310);
  Draw();
  EXPECT_TRUE(Only({130, 80, 150, 90}, kNote));
}

TEST_F(Objects, TheWalkEndsAtAnObjectBelowTheLine) {
  LayObj(11, -1);
  LayObj(12, 10);
  Draw();
  EXPECT_TRUE(Only({}, 0));
  EXPECT_EQ(LaneNote[0], -1);
  EXPECT_EQ(LaneNote[1], -1);
}

TEST_F(Objects, TheWalkEndsWithTheTable) {
  LayObj(11, 100);
  objCount = 100'000;
  objs.resize(1);
  Draw();
  EXPECT_TRUE(Only({100, 290, 120, 300}, kNote));
  objCursor = -1;
  Draw();
  EXPECT_TRUE(Only({}, 0));
}

TEST_F(Objects, OtherChannelsDrawNothing) {
  for (const int32_t channel : {17, 20, 27}) LayLane(channel, 1, 200);
  for (const int32_t channel : {-2, 1, 3, 4, 6, 7, 8, 17, 20, 27, 31, 49, 61, 1000}) LayObj(channel, 100);
  Draw();
  EXPECT_TRUE(Only({}, 0));
}

TEST_F(Objects, EveryNoteChannelHasItsLane) {
  for (int32_t channel = 11; channel <= 29; ++channel) {
    if (!IsNoteChannel(channel)) continue;
    LayLane(channel, 1, static_cast<int16_t>(channel * 10));
    objCount = 0;
    LayObj(channel, 100);
    Draw();
    EXPECT_TRUE(Only({channel * 10, 290, channel * 10 + 20, 300}, kNote)) << channel;
  }
}

TEST_F(Objects, ANoteWithoutASkinDrawsNothing) {
  LayObj(13, 100);
  LayObj(14, 100);
  LayLane(14, 7, 200);
  Draw();
  EXPECT_TRUE(Only({}, 0));
}

// Bar lines.

TEST_F(Objects, ABarLineStandsOnItsPlaceForEachSide) {
  LayClip(3, 40, 4, kSecondBar);
  LayLane(20, 3, 300);
  LayObj(ObjSeparator, 100);
  Draw();
  EXPECT_TRUE(Only({100, 298, 140, 300}, kBar));
  SideCount = 2;
  Draw();
  EXPECT_EQ(Extent(kBar), (Rect{100, 298, 140, 300}));
  EXPECT_EQ(Extent(kSecondBar), (Rect{300, 296, 340, 300}));
}

TEST_F(Objects, BarLinesAreDrawnThoughNotesAreHidden) {
  Stealth = Hidden = Sudden = true;
  LayObj(11, 100);
  LayObj(ObjSeparator, 100);
  Draw();
  EXPECT_TRUE(Only({100, 298, 140, 300}, kBar));
}

// Appearance.

TEST_F(Objects, StealthHidesNotesAndPicksThemUp) {
  Stealth = true;
  EXPECT_FALSE(ShowsAt(50));
  EXPECT_EQ(LaneNote[0], 0);
}

TEST_F(Objects, SuddenHidesNotesFartherThan124Pixels) {
  Sudden = true;
  EXPECT_TRUE(ShowsAt(124));
  EXPECT_FALSE(ShowsAt(125));
  HiSpeed = 2;
  EXPECT_TRUE(ShowsAt(62));
  EXPECT_FALSE(ShowsAt(63));
}

TEST_F(Objects, HiddenHidesNotesNearerThan120Pixels) {
  Hidden = true;
  EXPECT_FALSE(ShowsAt(119));
  EXPECT_TRUE(ShowsAt(120));
}

TEST_F(Objects, HiddenAndSuddenLeaveABandFrom120To124) {
  Hidden = Sudden = true;
  EXPECT_FALSE(ShowsAt(119));
  EXPECT_TRUE(ShowsAt(120));
  EXPECT_TRUE(ShowsAt(124));
  EXPECT_FALSE(ShowsAt(125));
}

TEST_F(Objects, TheBandIsMeasuredWithoutTheNotesOwnSpeed) {
  Sudden = true;
  EXPECT_EQ(TopOf(120, 1.5F), 400 - 180 - 10);
}

TEST_F(Objects, AccelBunchesNotesAtTheTop) {
  Accel = true;
  EXPECT_EQ(TopOf(200), 100 - 10);  // half way down becomes a quarter
  EXPECT_EQ(TopOf(100), 225 - 10);  // (300 / 400)^2 * 400
  EXPECT_EQ(TopOf(0), 390);         // and the line stays
  EXPECT_EQ(TopOf(399), -1);        // (1 / 400)^2 * 400 rounds to 0: all of it above the screen
}

TEST_F(Objects, QuilLetsNotesComeLateAndBrakesThem) {
  Quil = true;
  EXPECT_EQ(TopOf(300), 200 - 10);  // sqrt(400 / 100) * 100
  EXPECT_EQ(TopOf(39), 370);        // sqrt(400 / 361) * 361 = 380
  EXPECT_EQ(TopOf(0), 390);
}

TEST_F(Objects, QuilAtTheUpperEdgeLeavesTheNoteThere) {
  Quil = true;
  LayClip(1, 20, 10, kNote);
  LayLane(11, 1, 100).yOffset = 0;
  EXPECT_EQ(TopOf(400), 0);
}

TEST_F(Objects, QuilLeavesNotesAboveTheScreenHidden) {
  Quil = true;
  LayObj(11, 300).speedMul = 2;  // at -200, whose root is none
  LayObj(12, 300);
  Draw();
  EXPECT_TRUE(Only({130, 190, 150, 200}, kNote));
}

TEST_F(Objects, QuilIsReckonedBeforeAccel) {
  Quil = Accel = true;
  EXPECT_EQ(TopOf(300), 100 - 10);  // 100 becomes 200, and 200 becomes 100
}

TEST_F(Objects, ANoteAboveTheScreenIsHiddenAndTheWalkGoesOn) {
  LayLane(11, 1, 100).yOffset = 50;
  LayObj(11, 90).speedMul = 5;  // at -50, and its picture at 0
  LayObj(12, 90);
  Draw();
  EXPECT_TRUE(Only({130, 300, 150, 310}, kNote));
  EXPECT_EQ(LaneNote[0], 0);
}

TEST_F(Objects, HiSpeed0PutsTheWholeChartOnTheLine) {
  HiSpeed = 0;
  LayObj(11, 100);
  for (int32_t i = 0; i < 150; ++i) LayObj(13, 1000 * i);
  LayObj(12, 1'000'000);
  Draw();
  EXPECT_EQ(At(100, 390), kNote);
  EXPECT_EQ(At(130, 399), kNote);
  EXPECT_EQ(Extent(kNote), (Rect{100, 390, 150, 400}));
}

TEST_F(Objects, AnEndlessHiSpeedEndsTheWalkAtOnce) {
  HiSpeed = std::numeric_limits<float>::infinity();
  LayObj(11, 1);
  Draw();
  EXPECT_TRUE(Only({}, 0));
  EXPECT_EQ(LaneNote[0], -1);
}

TEST_F(Objects, ANoteThatHasNoPlaceTakesThatOfTheOneBefore) {
  LayObj(11, 100);
  LayObj(12, 200).speedMul = std::numeric_limits<float>::quiet_NaN();
  Draw();
  EXPECT_EQ(Extent(kNote), (Rect{100, 290, 150, 300}));
}

TEST_F(Objects, APositionThatIsNoNumberPicksNothingUp) {
  playPos = std::numeric_limits<double>::quiet_NaN();
  LayObj(11, 100);
  LayObj(ObjSeparator, 100);
  Draw();
  EXPECT_TRUE(Only({}, 0));
  EXPECT_EQ(LaneNote[0], -1);
}

TEST_F(Objects, FarObjectsDoNoHarm) {
  HiSpeed = -1e30F;
  LayObj(11, INT32_MAX);
  LayObj(ObjSeparator, INT32_MIN);
  Draw();
  EXPECT_TRUE(Only({}, 0));
  HiSpeed = 1e-9F;
  objCount = 0;
  LayObj(ObjSeparator, 10).speedMul = 2e17F;  // at about -2 * 10^9
  LayObj(11, 20);
  Draw();
  EXPECT_TRUE(Only({100, 390, 120, 400}, kNote));
}

// HalfField.

class HalfFieldObjects : public Objects {
 protected:
  HalfFieldObjects() { HalfField = true; }
};

TEST_F(HalfFieldObjects, OddChannelsFallToTheMiddle) { EXPECT_EQ(TopOf(50), 200 - 50 - 10); }

TEST_F(HalfFieldObjects, EvenChannelsRunFromTheMiddleDownWithTheirUpperEdge) {
  LayObj(12, 50);
  Draw();
  EXPECT_TRUE(Only({130, 250, 150, 260}, kNote));
}

TEST_F(HalfFieldObjects, EvenChannelsKnowNoSpeedOfTheirOwn) {
  LayObj(12, 50).speedMul = 1.5F;
  Draw();
  EXPECT_TRUE(Only({130, 250, 150, 260}, kNote));
  Accel = true;
  Draw();
  EXPECT_TRUE(Only({130, 250, 150, 260}, kNote));
}

TEST_F(HalfFieldObjects, AllOfThemAreDividedByTheirParity) {
  for (int32_t channel = 11; channel <= 29; ++channel) {
    if (!IsNoteChannel(channel)) continue;
    LayLane(channel, 1, 100);
    objCount = 0;
    LayObj(channel, 50);
    Draw();
    EXPECT_EQ(Find(kNote).y, channel % 2 == 0 ? 250 : 140) << channel;
  }
}

TEST_F(HalfFieldObjects, ABarLineHasAMirrorImage) {
  LayObj(ObjSeparator, 50);
  Draw();
  EXPECT_EQ(Extent(kBar), (Rect{100, 148, 140, 252}));
  EXPECT_EQ(At(100, 149), kBar);
  EXPECT_EQ(At(100, 150), 0U);
  EXPECT_EQ(At(100, 249), 0U);
  EXPECT_EQ(At(100, 250), kBar);
}

TEST_F(HalfFieldObjects, TheWalkEndsAtHalfTheDistance) {
  EXPECT_EQ(TopOf(199), 0);
  LayObj(12, 201);
  LayObj(12, 100);
  Draw();
  EXPECT_EQ(LaneNote[1], -1);
}

TEST_F(HalfFieldObjects, AnOddLineIsHalvedDownwards) {
  JudgeY = 401;
  EXPECT_EQ(TopOf(50), 200 - 50 - 10);
}

TEST_F(HalfFieldObjects, QuilAndAccelStillGoByTheWholeField) {
  Accel = true;
  EXPECT_EQ(TopOf(0), 100 - 10);  // (200 / 400)^2 * 400
  Accel = false;
  Quil = true;
  EXPECT_EQ(TopOf(100), 200 - 10);  // sqrt(400 / 100) * 100
}

// The note of a lane.

TEST_F(Objects, ANoteIsPickedUpFrom96UnitsAhead) {
  LayObj(11, 96);
  Draw();
  EXPECT_EQ(LaneNote[0], -1);
  playPos = 0.25;
  Draw();
  EXPECT_EQ(LaneNote[0], 0);
}

TEST_F(Objects, TheFirstUnjudgedNoteOfEachLaneIsPickedUp) {
  LayObj(11, 10).hit = true;
  LayObj(11, 20);
  LayObj(12, 20);
  LayObj(11, 30);
  Draw();
  EXPECT_EQ(LaneNote[0], 1);
  EXPECT_EQ(LaneNote[1], 2);
}

TEST_F(Objects, OfNotesAtOnePlaceTheFirstInTheTableIsPickedUp) {
  LayObj(11, 20);
  LayObj(11, 20);
  Draw();
  EXPECT_EQ(LaneNote[0], 0);
}

TEST_F(Objects, AnotherNoteComesInOnlyWithTheNextFrame) {
  LayObj(11, 20);
  LayObj(11, 30);
  Draw();
  EXPECT_EQ(LaneNote[0], 0);
  objs[0].hit = true;
  LaneNote[0] = -1;
  Draw();
  EXPECT_EQ(LaneNote[0], 1);
}

TEST_F(Objects, APendingNoteStaysThoughItLiesBehindTheLine) {
  LayObj(11, 20);
  LayObj(11, 60);
  Draw();
  playPos = 50;
  objCursor = 1;
  Draw();
  EXPECT_EQ(LaneNote[0], 0);
}

TEST_F(Objects, NothingIsPickedUpWithoutAPlayer) {
  UserPlay = false;
  LayObj(11, 20);
  Draw();
  EXPECT_EQ(LaneNote[0], -1);
  EXPECT_EQ(Find(kNote).y, 370);
}

TEST_F(Objects, HiddenNotesArePickedUp) {
  Hidden = true;
  LayObj(11, 20);
  Draw();
  EXPECT_EQ(LaneNote[0], 0);
  EXPECT_TRUE(Only({}, 0));
}

TEST_F(Objects, AVeryHighHiSpeedShortensTheReach) {
  HiSpeed = 10;  // 40 units fill the field
  LayObj(11, 41);
  Draw();
  EXPECT_EQ(LaneNote[0], -1);
  playPos = 1;
  Draw();
  EXPECT_EQ(LaneNote[0], 0);
}

TEST_F(Objects, NotesArePickedUpWithoutAScreen) {
  DDBack.reset();
  LayObj(11, 20);
  LayObj(22, 20);
  DrawObjects();
  EXPECT_EQ(LaneNote[0], 0);
  EXPECT_EQ(LaneNote[11], 1);
}

}  // namespace
}  // namespace qlm
