// Tests of the walk over objects and key sound changes, and of sounds loaded ahead.
#include "play/object_events.h"

#include <cmath>

#include "base/rnd.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

class WalkTest : public PlayTest {
 protected:
  void LayKeySound(int32_t channel, int32_t pos, int32_t value) {
    KeySoundChanges.Put(keySoundCount++, {channel, pos, value});
  }
};

TEST_F(WalkTest, ObjectAtThePositionHappensThisTurn) {
  Lay(6, 100, 7);
  Lay(ObjSeparator, 500);
  Begin();
  Turn(99);
  EXPECT_EQ(poorBGA, 0);
  EXPECT_EQ(objCursor, 0);
  Turn(100);
  EXPECT_EQ(poorBGA, 7);
  EXPECT_EQ(objCursor, 1);
}

TEST_F(WalkTest, KeySoundChangeAtThePositionWaits) {
  Lay(ObjSeparator, 500);
  LayKeySound(14, 100, 9);
  Begin();
  LaneSound.fill(-1);
  Turn(100);
  EXPECT_EQ(LaneSound[3], -1);
  Turn(101);
  EXPECT_EQ(LaneSound[3], 9);
  EXPECT_EQ(keySoundCursor, 1);
}

TEST_F(WalkTest, KeySoundChangeOfABackgroundSoundHasNoLane) {
  Lay(ObjSeparator, 500);
  LayKeySound(1, 0, 9);
  LayKeySound(11, 10, 8);
  Begin();
  LaneSound.fill(-1);
  Turn(50);
  EXPECT_EQ(keySoundCursor, 2);
  EXPECT_EQ(LaneSound[0], 8);
  for (size_t lane = 1; lane < LaneSound.size(); ++lane) EXPECT_EQ(LaneSound[lane], -1);
}

TEST_F(WalkTest, KeySoundChangesEndAtTheTablesEnd) {
  Lay(ObjSeparator, 500);
  keySoundCount = 6000;
  Begin();
  Turn(50);
  EXPECT_EQ(keySoundCursor, 5001);
  Turn(60);
  EXPECT_EQ(keySoundCursor, 5001);
}

TEST_F(WalkTest, ObjectsAtOnePositionKeepTheirOrder) {
  Lay(4, 100, 1);
  Lay(4, 100, 2);
  Lay(ObjSeparator, 500);
  Begin();
  Turn(150);
  EXPECT_EQ(curBaseBGA, 2);
}

TEST_F(WalkTest, ObjectHappensOnce) {
  Lay(4, 100, 1);
  Lay(ObjSeparator, 500);
  Begin();
  Turn(100);
  curBaseBGA = -1;
  Turn(110);
  EXPECT_EQ(curBaseBGA, -1);
}

TEST_F(WalkTest, LongStallLetsEverythingHappenButOldSounds) {
  FillSlot(1);
  FillSlot(2);
  Lay(1, 100, 1);   // 900 units late
  Lay(4, 200, 5);   // pictures count
  Lay(31, 300, 6);  // lane sounds too
  Lay(8, 400, 3);   // and tempi, undefined here
  Lay(1, 952, 1);   // 48 late: too late
  Lay(1, 953, 2);   // 47 late
  Lay(ObjSeparator, 960);
  Lay(ObjSeparator, 5000);
  LayKeySound(12, 500, 9);
  Begin();
  Turn(1000);
  EXPECT_EQ(objCursor, 7);
  EXPECT_EQ(curBaseBGA, 5);
  EXPECT_EQ(LaneSound[0], 6);
  EXPECT_EQ(LaneSound[1], 9);
  EXPECT_EQ(curMeasurePos, 960);
  EXPECT_EQ(Starts(), "2@1000");
}

TEST_F(WalkTest, LateTemposApplyInOrderAtTheSameClock) {
  Lay(3, 100, 2500);
  Lay(3, 200, 625);
  Lay(ObjSeparator, 9000);
  Begin();
  Turn(1000);
  ASSERT_EQ(played.tempi.size(), 2U);
  EXPECT_EQ(played.tempi[0].posOffset, -1000);
  EXPECT_EQ(played.tempi[1].posOffset, 500);  // -1000 - (625 - 2500) / 1250 * 1000
  Turn(1100);
  EXPECT_DOUBLE_EQ(playPos, 1050);  // the stall's own time ran at the first tempo
}

TEST_F(WalkTest, SecondOfTwoTemposAtOnePlaceWins) {
  Lay(3, 100, 2500);
  Lay(3, 100, 625);
  Lay(ObjSeparator, 9000);
  Begin();
  Turn(100);
  EXPECT_FLOAT_EQ(curBPM, 625);
  EXPECT_FLOAT_EQ(shownBPM, 625);
  EXPECT_EQ(posOffset, 50);  // -100, then + 150
  Turn(200);
  EXPECT_DOUBLE_EQ(playPos, 150);
}

TEST_F(WalkTest, TempoObjectsLeaveTheStartTempo) {
  Lay(3, 100, 250);
  Lay(ObjSeparator, 9000);
  Begin();
  Turn(100);
  EXPECT_FLOAT_EQ(rawBPM, 1250);
  EXPECT_FLOAT_EQ(curBPM, 250);
}

TEST_F(WalkTest, TableTempoOfZeroOrBelowChangesNothing) {
  Lay(8, 100, 1);
  Lay(8, 110, 2);
  Lay(8, 120, 3);
  Lay(ObjSeparator, 9000);
  BpmTable[2] = -5;
  BpmTable[3] = 300.5F;
  Begin();
  shownBPM = 0;
  Turn(110);
  EXPECT_FLOAT_EQ(curBPM, 1250);
  EXPECT_FLOAT_EQ(shownBPM, 1250);  // the digits are refreshed all the same
  EXPECT_TRUE(played.tempi.empty());
  Turn(120);
  EXPECT_FLOAT_EQ(curBPM, 300.5F);
}

TEST_F(WalkTest, BarLineSetsTheMeasure) {
  LayBars(3);
  Begin();
  Turn(200);
  EXPECT_DOUBLE_EQ(curMeasure, 1);
  EXPECT_EQ(curMeasurePos, 192);
  EXPECT_FLOAT_EQ(HiSpeedTarget, 0);
}

TEST_F(WalkTest, BarLinePicksARandomHiSpeed) {
  LayBars(3);
  Begin();
  RandomHiSpeed = true;
  SetRndList({0.9F, 0.5F, 0.5F, 0.25F});
  Turn(0);
  EXPECT_FLOAT_EQ(HiSpeedTarget, 3.5F);  // 0.9 * 9 is at least 7: 0.5 * 5 + 1
  Turn(192);
  EXPECT_FLOAT_EQ(HiSpeedTarget, 1.5F);  // 0.5 * 9 is not: 2 * 0.25 + 1
}

TEST_F(WalkTest, ADrawOfExactly7IsOfTheWiderRange) {
  LayBars(3);
  Begin();
  RandomHiSpeed = true;
  constexpr float kSeven = 7 / 9.0F;
  static_assert(kSeven * 9 == 7);
  SetRndList({kSeven, 0.5F, std::nextafter(kSeven, 0.0F), 0.5F});
  Turn(0);
  EXPECT_FLOAT_EQ(HiSpeedTarget, 3.5F);  // 0.5 * 5 + 1
  Turn(192);
  EXPECT_FLOAT_EQ(HiSpeedTarget, 2);  // 2 * 0.5 + 1
}

TEST_F(WalkTest, RandomHiSpeedIsRoundedOnce) {
  LayBars(2);
  Begin();
  RandomHiSpeed = true;
  // 0.034 * 5 rounded to 32 bits before the 1 is added would come out one place above 1.17.
  SetRndList({0.9F, 0.034F});
  Turn(0);
  EXPECT_EQ(HiSpeedTarget, 1.17F);
}

TEST_F(WalkTest, InvisibleObjectsSetLaneSounds) {
  Lay(31, 10, 1);
  Lay(39, 10, 2);
  Lay(41, 10, 3);
  Lay(49, 10, 4);
  Lay(ObjSeparator, 500);
  Begin();
  LaneSound.fill(-1);
  Turn(10);
  EXPECT_EQ(LaneSound[0], 1);
  EXPECT_EQ(LaneSound[8], 2);
  EXPECT_EQ(LaneSound[10], 3);
  EXPECT_EQ(LaneSound[18], 4);
  EXPECT_EQ(Starts(), "");
}

TEST_F(WalkTest, PicturesChangeAndMayRestart) {
  Lay(4, 10, 1);
  Lay(7, 20, 2).tick = -127;
  Lay(4, 30, 3).tick = -127;
  Lay(ObjSeparator, 500);
  Begin();
  BGADirty = false;
  Turn(10);
  EXPECT_EQ(curBaseBGA, 1);
  EXPECT_FALSE(BGARestart[0]);
  EXPECT_TRUE(BGADirty);
  Turn(20);
  EXPECT_EQ(curLayerBGA, 2);
  EXPECT_TRUE(BGARestart[1]);
  EXPECT_FALSE(BGARestart[0]);
  Turn(30);
  EXPECT_EQ(curBaseBGA, 3);
  EXPECT_TRUE(BGARestart[0]);
}

TEST_F(WalkTest, BackgroundSoundsObeyTheirSwitch) {
  FillSlot(1);
  Lay(1, 10, 1);
  Lay(1, 20, 1);
  Lay(ObjSeparator, 500);
  Begin();
  PlaySound = false;
  Turn(10);
  EXPECT_EQ(Starts(), "");
  PlaySound = true;
  Turn(20);
  EXPECT_EQ(Starts(), "1@20");
}

TEST_F(WalkTest, SlotWithoutASoundIsSilent) {
  Lay(1, 10, 9);
  Lay(1, 20, 0);
  Lay(1, 30, 300);
  Lay(6, 40, 4);
  Lay(ObjSeparator, 500);
  Begin();
  Turn(40);
  EXPECT_EQ(objCursor, 4);
  EXPECT_EQ(poorBGA, 4);
}

TEST_F(WalkTest, PlayersNoteIsNotTouched) {
  FillSlot(1);
  Lay(11, 10, 1);
  Lay(ObjSeparator, 500);
  Begin();
  LaneNote[0] = 0;
  Turn(30);
  EXPECT_EQ(objCursor, 1);
  EXPECT_EQ(LaneNote[0], 0);
  EXPECT_EQ(Starts(), "");
}

TEST_F(WalkTest, MachinePlaysEveryNoteOfADemo) {
  FillSlot(1);
  FillSlot(2);
  FillSlot(3);
  Lay(11, 10, 1);
  Lay(16, 20, 2);
  Lay(29, 30, 3);
  Lay(ObjSeparator, 500);
  DEMOMode = true;
  Begin();
  LaneNote = {};
  Turn(30);
  EXPECT_EQ(Starts(), "1@30 2@30 3@30");
  EXPECT_EQ(LaneNote[0], -1);
  EXPECT_EQ(LaneNote[5], -1);
  EXPECT_EQ(LaneNote[18], -1);
  EXPECT_EQ(LaneNote[1], 0);
}

TEST_F(WalkTest, MachinePlaysItsLanesOnly) {
  FillSlot(1);
  FillSlot(2);
  Lay(11, 10, 1);
  Lay(12, 10, 2);
  Lay(ObjSeparator, 500);
  AutoLane[1] = true;
  Begin();
  LaneNote = {};
  Turn(10);
  EXPECT_EQ(Starts(), "2@10");
  EXPECT_EQ(LaneNote[0], 0);
  EXPECT_EQ(LaneNote[1], -1);
}

TEST_F(WalkTest, MachinesNoteIsSilentWhenLate) {
  FillSlot(1);
  Lay(11, 10, 1);
  Lay(ObjSeparator, 500);
  DEMOMode = true;
  Begin();
  LaneNote = {};
  Turn(58);
  EXPECT_EQ(Starts(), "");
  EXPECT_EQ(LaneNote[0], -1);
}

TEST_F(WalkTest, RecordDecidesInAReplay) {
  FillSlot(1);
  Lay(11, 10, 1);
  Lay(ObjSeparator, 500);
  DEMOMode = true;
  AutoLane[0] = true;
  ShowRec = true;
  Begin();
  LaneNote = {};
  Turn(10);
  EXPECT_EQ(Starts(), "");
  EXPECT_EQ(LaneNote[0], 0);
}

TEST_F(WalkTest, NotesMaySoundByThemselves) {
  FillSlot(1);
  Lay(11, 10, 1);
  Lay(11, 100, 1);
  Lay(ObjSeparator, 500);
  PlayKeySound = true;
  Begin();
  LaneNote = {};
  Turn(10);
  EXPECT_EQ(Starts(), "1@10");
  EXPECT_EQ(LaneNote[0], 0);
  Turn(148);
  EXPECT_EQ(Starts(), "1@10");
}

TEST_F(WalkTest, WalkEndsAtTheTablesCapacity) {
  objs.resize(2);
  Lay(6, 10, 1);
  Lay(6, 20, 2);
  AddObj();
  AddObj();
  EXPECT_EQ(objCount, 4);
  playStart = kStart;
  pixPerMs = 1;
  PreviewActive = true;
  Turn(100);
  EXPECT_EQ(objCursor, 2);
  EXPECT_EQ(poorBGA, 2);
}

TEST_F(WalkTest, SoundsAreLoadedAhead) {
  Lay(ObjSeparator, 0);
  Lay(1, 100, 1);
  Lay(11, 120, 2);
  Lay(29, 120, 3);
  Lay(4, 120, 4);
  Lay(31, 120, 5);
  Lay(1, 121, 6);
  Lay(ObjSeparator, 500);
  Begin();
  Turn(0);
  EXPECT_EQ(WavLoaded[1], 0);  // the next object itself is not ahead
  EXPECT_EQ(WavLoaded[2], 255);
  EXPECT_EQ(WavLoaded[3], 255);
  EXPECT_EQ(WavLoaded[4], 0);
  EXPECT_EQ(WavLoaded[5], 0);
  EXPECT_EQ(WavLoaded[6], 0);
}

TEST_F(WalkTest, LoadedSoundIsNotLoadedAgain) {
  Lay(ObjSeparator, 0);
  Lay(1, 100, 1);
  Lay(1, 110, 2);
  Lay(ObjSeparator, 500);
  Begin();
  Turn(0);
  EXPECT_EQ(LinesBeginning(u"loadwav: 2"), 1);
  Turn(1);
  EXPECT_EQ(LinesBeginning(u"loadwav: 2"), 1);
  WavLoaded[2] = 254;
  Turn(2);
  EXPECT_EQ(LinesBeginning(u"loadwav: 2"), 2);
}

TEST_F(WalkTest, SharedCounterStandsAtTheFirstObjectTooFarAhead) {
  HistoryStep = 0;  // no gauge walk behind it
  Lay(ObjSeparator, 0);
  Lay(1, 50, 1);
  Lay(1, 100, 1);
  Lay(1, 200, 1);
  Lay(ObjSeparator, 500);
  Begin();
  Turn(0);
  EXPECT_EQ(loopCounter, 3);
}

TEST_F(WalkTest, SharedCounterStandsBehindTheLastObject) {
  HistoryStep = 0;
  Lay(ObjSeparator, 0);
  Lay(1, 50, 1);
  Lay(1, 100, 1);
  Begin();
  Turn(10);
  // The empty record behind the last object is looked at too.
  EXPECT_EQ(loopCounter, objCount + 1);
}

TEST_F(WalkTest, SharedCounterOfATempoChangeIsOvertakenByLaterWalks) {
  Lay(3, 0, 250);
  Lay(ObjSeparator, 500);
  HistoryStep = 0;
  Begin();
  Turn(0);
  EXPECT_EQ(loopCounter, 3);  // not the 256 of the frequencies
}

}  // namespace
}  // namespace qlm
