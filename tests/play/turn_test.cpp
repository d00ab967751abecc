// Tests of one turn: its frame, its tick, and what a turn looks at by itself.
#include "play/turn.h"

#include "base/hooks.h"
#include "graphics/display.h"
#include "platform/timers.h"
#include "platform/window.h"
#include "play/input.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/records.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"
#include "tests/support/virtual_keyboard.h"

namespace qlm {
namespace {

using TurnTest = PlayTest;

TEST_F(TurnTest, DueEchoesAreCounted) {
  FillSlot(1);
  Lay(ObjSeparator, 9000);
  Begin();
  EchoQueue[0] = {.time = 200, .slot = 1, .step = 1};
  EchoQueue[1] = {.time = 400, .slot = 1, .step = 2};
  EchoCount = 2;
  Turn(200);  // an echo waits until its time has passed
  EXPECT_EQ(playedEchoes, 0);
  Turn(201);
  EXPECT_EQ(playedEchoes, 1);
  Turn(500);
  EXPECT_EQ(playedEchoes, 2);
  EXPECT_EQ(EchoCount, 0);
}

TEST_F(TurnTest, EscHeldForHalfASecondFadesOut) {
  Lay(ObjSeparator, 9000);
  Begin();
  EscHeld = true;
  EscStart = kStart + 100;
  Turn(600);
  EXPECT_EQ(FadeState, kFadeNone);
  Turn(601);
  EXPECT_EQ(FadeState, kFadeEnd);
  EXPECT_EQ(FadeStart, kStart + 601);
  EXPECT_EQ(FadeLeaving, 1);
  EXPECT_FALSE(EscHeld);
  EXPECT_FALSE(PlayCleared);
}

TEST_F(TurnTest, EscReleasedInTimeDoesNothing) {
  Lay(ObjSeparator, 9000);
  Begin();
  EscHeld = true;
  EscStart = kStart + 100;
  Turn(500);
  EscHeld = false;
  Turn(1000);
  EXPECT_EQ(FadeState, kFadeNone);
}

TEST_F(TurnTest, PlayIsAliveUntilTheLastObjectHasPassed) {
  Lay(ObjSeparator, 100);
  Begin();
  Turn(99);
  EXPECT_TRUE(PlayAlive);
  Turn(100);
  EXPECT_FALSE(PlayAlive);
}

TEST_F(TurnTest, TranscriptTellsTemposPlacesAndTurns) {
  Lay(3, 100, 250);
  Lay(ObjSeparator, 5000);
  Begin();
  for (uint32_t turn = 0; turn < 101; ++turn) Turn(turn * 2);
  EXPECT_EQ(played.turns, 101);
  ASSERT_EQ(played.places.size(), 3U);
  EXPECT_EQ(played.places[0].clock, 0);
  EXPECT_EQ(played.places[1].clock, 100);
  EXPECT_DOUBLE_EQ(played.places[1].playPos, 100);
  EXPECT_EQ(played.places[2].clock, 200);
  EXPECT_DOUBLE_EQ(played.places[2].playPos, 120);  // 100 + 100 * 0.2
  ASSERT_EQ(played.tempi.size(), 1U);
  EXPECT_EQ(played.tempi[0].clock, 100);
  EXPECT_FLOAT_EQ(played.tempi[0].curBPM, 250);
  EXPECT_EQ(played.tempi[0].posOffset, 80);  // -(250 - 1250) / 1250 * 100
}

TEST_F(TurnTest, FrameBehindTheTableIsNotDrawn) {
  Lay(ObjSeparator, 0);
  RunFrames(10);
  PlayFrame(2);
  EXPECT_EQ(FramesShown(), 0);
  PlayFrame(1);
  EXPECT_EQ(FramesShown(), 1);
}

// A press that comes behind the pump of the turn at 0 ms, while its frame waits; the next turn is at 16.
class PressInTheWait : public TurnTest {
 protected:
  PressInTheWait() {
    InitDD(DisplayOutput::kUnseen);
    CreateSurfaces();
    FillSlot(1);
    Lay(ObjSeparator, 9000);
    Begin();
    PreviewActive = false;
    LaneNote.fill(-1);
    LaneSound[0] = 1;
    UserPlay = UserRec = true;
    KeyMap[kKey] = 11;
    hooks.keyDown = ProcessKey_Play;
    hooks.keyUp = [](int32_t key) { ReleaseLane(LaneChannel(key)); };
    RunFrames(16, [](int32_t ms) {
      if (ms == 0) VirtualKeyboard::Key(kUsage, true);
    });
  }
  static constexpr int32_t kUsage = 29;  // the key Z
  static constexpr int32_t kKey = 44;
  VirtualKeyboard keyboard;
};

TEST_F(PressInTheWait, SoundsWithTheNextTurnAtItsPosition) {
  PlayStep();
  EXPECT_FALSE(LaneDown[0]);
  EXPECT_EQ(Starts(), "");
  PlayStep();
  EXPECT_TRUE(LaneDown[0]);
  EXPECT_EQ(Starts(), "1@16");
  ASSERT_EQ(RecCount, 1);
  EXPECT_EQ(PlayRecord[0].pos, 16);
}

TEST_F(PressInTheWait, SoundsAtOnceAtThePositionOfItsTurn) {
  KeysAtOnce = true;
  PlayStep();
  EXPECT_TRUE(LaneDown[0]);
  EXPECT_EQ(Starts(), "1@0");
  PlayStep();
  EXPECT_EQ(Starts(), "1@0");
  ASSERT_EQ(RecCount, 1);
  EXPECT_EQ(PlayRecord[0].pos, 0);
}

// Nothing waits for a flip while another program has the screen: the pump of that wait serves the keys.
TEST_F(PressInTheWait, SoundsWithTheNextTurnWhileTheDisplayIsLost) {
  KeysAtOnce = true;
  platform::TakeDisplayAway(true);
  PlayStep();
  EXPECT_EQ(Starts(), "");
  PlayStep();
  platform::TakeDisplayAway(false);
  EXPECT_EQ(Starts(), "1@16");
}

TEST_F(TurnTest, TickEndsItsTimer) {
  platform::SetTimer(platform::kTimerPlay, 1, PlayTick);
  PlayAlive = true;
  PlayEnd = false;
  PlayTick();
  EXPECT_TRUE(platform::TimerArmed(platform::kTimerPlay));
  PlayAlive = false;
  PlayTick();
  EXPECT_FALSE(platform::TimerArmed(platform::kTimerPlay));
  platform::SetTimer(platform::kTimerPlay, 1, PlayTick);
  PlayAlive = PlayEnd = true;
  PlayTick();
  EXPECT_FALSE(platform::TimerArmed(platform::kTimerPlay));
}

}  // namespace
}  // namespace qlm
