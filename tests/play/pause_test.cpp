// Tests of pause and resume.
#include "play/pause.h"
#include "platform/clock.h"
#include "play/turn.h"
#include "sound/play.h"
#include "state/options.h"
#include "state/session.h"
#include "state/sounds.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

using PauseTest = PlayTest;

TEST_F(PauseTest, ClockRunsOnAndThePositionStands) {
  Lay(ObjSeparator, 9000);
  Begin();
  Turn(300);
  BMSPause();
  Turn(1300);
  EXPECT_TRUE(Paused);
  EXPECT_EQ(playClock, 1300);
  EXPECT_DOUBLE_EQ(playPos, 300);
  EXPECT_FLOAT_EQ(savedBPM, 1250);
  BMSResume();
  EXPECT_FALSE(Paused);
  Turn(1400);
  EXPECT_DOUBLE_EQ(playPos, 400);
}

TEST_F(PauseTest, PositionFreezesOnAWholeUnit) {
  HdrBPM = 1000;  // 0.8 units a millisecond
  Lay(ObjSeparator, 9000);
  Begin();
  Turn(3);
  EXPECT_DOUBLE_EQ(playPos, 2.4000000000000004);
  BMSPause();
  Turn(50);
  EXPECT_DOUBLE_EQ(playPos, 2);
}

TEST_F(PauseTest, LinesAreLogged) {
  Lay(ObjSeparator, 9000);
  Begin();
  log.clear();
  BMSPause();
  BMSResume();
  const std::vector<Text> lines = {u"[BMSPause]", u"BPM->0 ( 0 * 1 )", u"[BMSResume] BPM:1250",
                                   u"BPM->1250 ( 1250 * 1 )", u"[Resumed]"};
  EXPECT_EQ(log, lines);
}

TEST_F(PauseTest, ResumeWithoutAPauseDoesNothing) {
  Lay(ObjSeparator, 9000);
  Begin();
  log.clear();
  savedBPM = 99;
  BMSResume();
  EXPECT_TRUE(log.empty());
  EXPECT_FLOAT_EQ(curBPM, 1250);
}

TEST_F(PauseTest, SoundsGoOnFromWhereTheyStopped) {
  FillSlot(1);
  FillSlot(2);
  Lay(ObjSeparator, 9000);
  Begin();
  PlayWav(1, 0, 0);
  BMSPause();
  EXPECT_TRUE(WavWasPlaying[1]);
  EXPECT_FALSE(WavWasPlaying[2]);
  EXPECT_FALSE(WavBuffer[1]->Playing());
  BMSResume();
  EXPECT_TRUE(WavBuffer[1]->Playing());
  EXPECT_FALSE(WavBuffer[2]->Playing());
}

// Quirk: RealHiSpeed is multiplied in twice.
TEST_F(PauseTest, RealHiSpeedIsSquaredUntilTheNextTempo) {
  RealHiSpeed = 1.5F;
  HdrBPM = 100;
  Lay(3, 400, 120);
  Lay(ObjSeparator, 9000);
  Begin();
  EXPECT_FLOAT_EQ(curBPM, 150);
  BMSPause();
  BMSResume();
  EXPECT_FLOAT_EQ(curBPM, 225);
  EXPECT_EQ(objCursor, 0);
  Turn(4000);  // 4000 ms * 225 / 1250 is 720 units
  EXPECT_FLOAT_EQ(curBPM, 180);
}

TEST_F(PauseTest, GaugeHistoryFillsDuringAPause) {
  HistoryStep = 10;
  Lay(ObjSeparator, 9000);
  Begin();
  Turn(0);
  BMSPause();
  Turn(1000);
  EXPECT_FLOAT_EQ(HistoryNext[0], 101);
}

TEST_F(PauseTest, FadeCompletesDuringAPause) {
  Lay(ObjSeparator, 9000);
  Begin();
  PreviewActive = false;
  GameState = kStatePlay;
  RunFrames(10);
  FadeState = kFadeEnd;
  FadeLeaving = 1;
  FadeStart = platform::Now();
  BMSPause();
  for (int turn = 0; turn < 21; ++turn) PlayStep();
  EXPECT_FALSE(PlayEnd);  // 200 ms is not over 200 ms
  PlayStep();
  EXPECT_TRUE(PlayEnd);
  EXPECT_EQ(FadeState, kFadeNone);
  EXPECT_DOUBLE_EQ(playPos, 0);
}

}  // namespace
}  // namespace qlm
