// Tests of the timed loop: pre-roll, turns, and every way in which a play ends.
#include "play/loop.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <thread>
#include <vector>

#include "base/hooks.h"
#include "base/paths.h"
#include "files/settings_file.h"
#include "graphics/display.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "platform/sound_device.h"
#include "platform/timers.h"
#include "play/pause.h"
#include "play/turn.h"
#include "state/last_play.h"
#include "state/message.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"
#include "tests/support/virtual_desktop.h"

namespace qlm {
namespace {

// Frames of 10 ms: the pre-roll takes 100 of them, so that 0 ms of the chart lies 1000 ms behind kStart.
class LoopTest : public PlayTest {
 protected:
  LoopTest() {
    FillSound(SE::kReady);
    FillSound(SE::kFade);
    RunFrames(10);
  }
};

TEST_F(LoopTest, ChartBeginsBehindTheReadyMessage) {
  Lay(ObjSeparator, 0);
  Lay(ObjSeparator, 100);
  FillSlot(1);
  Lay(1, 100, 1);
  bool ready = true;
  RunFrames(10, [&](int32_t ms) {
    if (ms >= 1000) return;
    ready = ready && message.text == u"R E A D Y ?" && objCursor == 0 && PlayAlive &&
            !platform::TimerArmed(platform::kTimerPlay) && playStart == platform::Now();
  });
  PlayLoop();
  EXPECT_TRUE(ready);
  EXPECT_EQ(playStart, kStart + 1000);
  EXPECT_EQ(Starts(), "1@100");
  EXPECT_TRUE(Logged(u"[PlayLoop]"));
  EXPECT_TRUE(Logged(u"playloop start"));
  EXPECT_TRUE(Logged(u"playloop end"));
  EXPECT_TRUE(Sounding(SE::kReady));
}

// The gap before the play is none of its own.
TEST_F(LoopTest, TheBlocksThatComeTooLateInAPlayAreCounted) {
  setenv("SDL_AUDIODRIVER", "dummy", 1);
  platform::OpenSoundDevice(platform::SoundOutput::kDevice);
  const auto waitUntil = [](const auto& happened) {
    for (int i = 0; i < 2500 && !happened(); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(2));
  };
  const auto drain = [&] {
    const int32_t late = platform::LateSoundBlocks();
    platform::DrainSoundDevice();
    waitUntil([&] { return platform::LateSoundBlocks() > late; });
  };
  waitUntil([] { return platform::SoundAheadMicroseconds() > 0; });  // the first block
  drain();
  Lay(ObjSeparator, 0);
  Lay(ObjSeparator, 100);
  const int32_t before = platform::LateSoundBlocks();
  const auto savedSettings = [&] {
    EXPECT_TRUE(SaveSettings());
    return ReadBytes(DataPath(u"qlm_conf.ini"));
  };
  const std::string settings = savedSettings();
  RunFrames(10, [&](int32_t ms) {
    if (ms == 1010) drain();
  });
  PlayLoop();
  EXPECT_GE(lateBlocks, 1);
  EXPECT_LE(lateBlocks, platform::LateSoundBlocks() - before);
  EXPECT_EQ(savedSettings(), settings) << "a play changes no setting";
  platform::CloseSoundDevice();
  unsetenv("SDL_AUDIODRIVER");
  PlayLoop();
  EXPECT_EQ(lateBlocks, 0) << "no device, no gaps";
}

TEST_F(LoopTest, ASpeedOfNothingIsToldWithTheKeyThatMendsIt) {
  Lay(ObjSeparator, 0);
  RealHiSpeed = 0;
  Text before;
  Text seen;
  RunFrames(10, [&](int32_t ms) {
    if (ms == 990) before = message.text;
    if (ms == 1010) seen = message.text;
    if (ms >= 1010) PlayEnd = true;
  });
  PlayLoop();
  EXPECT_EQ(before, u"R E A D Y ?");
  EXPECT_EQ(seen, u"RealHiSpeed is 0: nothing moves. Hold 3 and press 2");
}

TEST_F(LoopTest, WhatTheLoadHadToTellIsShownWhenThePlayBegins) {
  Lay(ObjSeparator, 0);
  loadNotice = u"over the load budget of 1 MiB: a.wav";
  Text seen;
  RunFrames(10, [&](int32_t ms) {
    if (ms == 1010) seen = message.text;
    if (ms >= 1010) PlayEnd = true;
  });
  PlayLoop();
  EXPECT_EQ(seen, u"over the load budget of 1 MiB: a.wav");
  EXPECT_TRUE(loadNotice.empty());
}

TEST_F(LoopTest, FramesOfThePreRollTickToo) {
  Lay(ObjSeparator, 0);
  HiSpeed = 2;
  HiSpeedTarget = 1;
  std::vector<float> speeds;
  RunFrames(10, [&](int32_t ms) {
    if (ms <= 20) speeds.push_back(HiSpeed);
  });
  PlayLoop();
  ASSERT_EQ(speeds.size(), 3U);
  EXPECT_FLOAT_EQ(speeds[0], 2);
  EXPECT_FLOAT_EQ(speeds[1], 1.9F);   // a tenth of the way
  EXPECT_FLOAT_EQ(speeds[2], 1.81F);  // and of what is left
}

// Paints each frame in the number of its milliseconds, so that the screen tells which one it shows.
void NumberFrames() {
  DDPrimary = std::make_shared<Surface>(640, 480);
  hooks.framePresented = [] {
    DDBack->Fill(kScreen, static_cast<platform::Colour>(platform::Now() - 1'000'000));
  };
}

TEST_F(LoopTest, TheScreenBeforeThePlayFallsAwayInNewTiles) {
  Lay(ObjSeparator, 0);
  NumberFrames();
  DDPrimary->Fill(kScreen, 0x123456);
  platform::Colour held = 0;
  int32_t slowest = 0;
  RunFrames(10, [&](int32_t ms) {
    if (ms != 0) return;
    held = DDSnapshot->Pixel(5, 5);
    slowest = *std::min_element(FadeTileSpeed.begin(), FadeTileSpeed.end());
  });
  PlayLoop();
  EXPECT_EQ(held, 0x123456U);
  EXPECT_GE(slowest, 480);
}

TEST_F(LoopTest, LastObjectLeadsToAShortFade) {
  Lay(ObjSeparator, 0);
  Lay(ObjSeparator, 100);
  PlayLoop();
  // The turn at 100 ms passes the object, the one at 110 begins the fade, and the frame at 320 is its first
  // above 200 ms.
  EXPECT_EQ(played.turns, 33);
  EXPECT_EQ(FadeStart, kStart + 1110);
  EXPECT_EQ(platform::Now(), kStart + 1330);
  EXPECT_TRUE(PlayCleared);
  EXPECT_FALSE(PlayFailed);
  EXPECT_FALSE(PlayAlive);
  EXPECT_TRUE(PlayEnd);
  EXPECT_EQ(FadeState, kFadeNone);
  EXPECT_EQ(GameState, kStatePlayOver);
  EXPECT_TRUE(Sounding(SE::kFade));
}

TEST_F(LoopTest, EachFadeOfAnEndSoundsFromItsFirstFrameOn) {
  Lay(ObjSeparator, 0);
  Lay(ObjSeparator, 100);
  for (const bool failed : {false, true}) {
    SetNow(kStart);
    SystemSound[static_cast<int32_t>(SE::kFade)]->Stop();
    std::vector<bool> sounding;  // in the frame before the fade, and in its first
    RunFrames(10, [&](int32_t ms) {
      if (ms == 1050) PlayFailed = failed;
      if (ms == (failed ? 1050 : 1100) || ms == (failed ? 1060 : 1110))
        sounding.push_back(Sounding(SE::kFade));
    });
    PlayLoop();
    EXPECT_EQ(sounding, (std::vector<bool>{false, true})) << failed;
  }
}

TEST_F(LoopTest, EmptyTableFadesFromItsFirstTurn) {
  PlayLoop();
  EXPECT_TRUE(Logged(u"Err: Range over"));
  EXPECT_EQ(FadeStart, kStart + 1000);
  EXPECT_EQ(played.turns, 22);
  EXPECT_TRUE(PlayCleared);
  EXPECT_EQ(GameState, kStatePlayOver);
}

TEST_F(LoopTest, EndWaitsForARunningFade) {
  // The turn at 1000 ms passes the last object and begins a title fade of 500 ms; the tiles behind it take
  // another 500, up to the frame at 2000.
  Lay(ObjSeparator, 0);
  RunFrames(10, [](int32_t ms) {
    if (ms == 1000) {
      FadeState = kFadeTitle;
      FadeStart = platform::Now();
    }
  });
  PlayLoop();
  EXPECT_EQ(FadeStart, kStart + 2010);
  EXPECT_TRUE(PlayCleared);
}

TEST_F(LoopTest, MessageProlongsThePreRollByItsOwnSecond) {
  Lay(ObjSeparator, 0);
  RunFrames(10, [](int32_t ms) {
    if (ms == 500) ShowMessage(u"hello");
  });
  PlayLoop();
  EXPECT_EQ(playStart, kStart + 1500);
}

TEST_F(LoopTest, EndInThePreRollRunsNoTurn) {
  Lay(ObjSeparator, 0);
  Lay(ObjSeparator, 100);
  GameState = kStatePlay;
  bool armed = false;
  RunFrames(10, [&](int32_t ms) {
    if (ms == 300) PlayEnd = true;
    armed = armed || platform::TimerArmed(platform::kTimerPlay);
  });
  PlayLoop();
  EXPECT_EQ(played.turns, 0);
  EXPECT_FALSE(armed);
  EXPECT_EQ(playStart, kStart + 310);
  EXPECT_FALSE(Logged(u"playloop end"));
  EXPECT_EQ(GameState, kStatePlayOver);
}

TEST_F(LoopTest, FailureLeadsToALongFade) {
  Lay(ObjSeparator, 0);
  Lay(ObjSeparator, 9000);
  RunFrames(10, [](int32_t ms) {
    if (ms == 1050) PlayFailed = true;
  });
  PlayLoop();
  EXPECT_EQ(FadeStart, kStart + 1060);
  EXPECT_EQ(platform::Now(), kStart + 3080);  // behind the frame at 3070, 2010 ms later
  EXPECT_TRUE(PlayFailed);
  EXPECT_FALSE(PlayCleared);
  EXPECT_LT(objCursor, objCount);
  EXPECT_TRUE(Sounding(SE::kFade));
}

// Quirk: the end is looked at before the failure.
TEST_F(LoopTest, FailureInTheLastTurnComesTooLate) {
  Lay(ObjSeparator, 0);
  Lay(ObjSeparator, 100);
  RunFrames(10, [](int32_t ms) {
    if (ms == 1100) PlayFailed = true;
  });
  PlayLoop();
  EXPECT_EQ(FadeStart, kStart + 1110);
  EXPECT_EQ(platform::Now(), kStart + 1330);
  EXPECT_TRUE(PlayCleared);
  EXPECT_TRUE(PlayFailed);
}

TEST_F(LoopTest, EscHeldLeadsToAShortFadeWithoutClear) {
  Lay(ObjSeparator, 0);
  Lay(ObjSeparator, 9000);
  RunFrames(10, [](int32_t ms) {
    if (ms != 1050) return;
    EscHeld = true;
    EscStart = platform::Now();
  });
  PlayLoop();
  EXPECT_EQ(FadeStart, kStart + 1560);  // 510 ms later
  EXPECT_EQ(platform::Now(), kStart + 1780);
  EXPECT_FALSE(PlayCleared);
  EXPECT_FALSE(PlayFailed);
  EXPECT_FALSE(Sounding(SE::kFade));
}

TEST_F(LoopTest, EndAskedForInAPlayHasNoFade) {
  Lay(ObjSeparator, 0);
  Lay(ObjSeparator, 9000);
  PlayCleared = true;  // as the play before left it
  std::vector<int32_t> states;
  RunFrames(10, [&](int32_t ms) {
    if (ms == 1050) PlayEnd = true;
    if (ms >= 1000) states.push_back(GameState);
  });
  PlayLoop();
  EXPECT_EQ(states, std::vector<int32_t>(6, kStatePlay));  // in each turn from 1000 to 1050
  EXPECT_EQ(platform::Now(), kStart + 1060);
  EXPECT_FALSE(PlayCleared);
  EXPECT_EQ(FadeState, kFadeNone);
}

TEST_F(LoopTest, EndlessRunLeavesAtOnce) {
  Lay(ObjSeparator, 0);
  Lay(ObjSeparator, 100);
  EndlessRun = true;
  NumberFrames();
  PlayLoop();
  EXPECT_EQ(DDSnapshot->Pixel(5, 5), 1100U) << "the last frame, for the tiles of the next chart";
  EXPECT_EQ(played.turns, 11);
  EXPECT_FALSE(Sounding(SE::kFade));
  EXPECT_FALSE(PlayEnd);
  EXPECT_FALSE(PlayCleared);
  EXPECT_EQ(FadeState, kFadeNone);
  EXPECT_FALSE(platform::TimerArmed(platform::kTimerPlay));
  EXPECT_EQ(GameState, kStatePlayOver);
}

TEST_F(LoopTest, TimerTicksDuringThePlay) {
  Lay(ObjSeparator, 0);
  Lay(ObjSeparator, 100);
  int32_t armed = 0;
  RunFrames(10, [&](int32_t) { armed += platform::TimerArmed(platform::kTimerPlay) ? 1 : 0; });
  PlayLoop();
  // From the first turn to the one that passes the last object; the tick of that turn's frame still runs.
  EXPECT_EQ(armed, 12);
  EXPECT_FALSE(platform::TimerArmed(platform::kTimerPlay));
}

TEST_F(LoopTest, StateOfTheLastPlayIsPutBack) {
  Lay(ObjSeparator, 0);
  RankLocked = PlayFailed = BreakActive = true;
  FadeLeaving = 1;
  posOffset = 50;
  curBPM = 3;
  bool atStart = false;
  RunFrames(10, [&](int32_t ms) {
    if (ms == 0) {
      atStart = FadeState == kFadeTiles && FadeLeaving == 0 && !RankLocked && posOffset == 0 &&
                curBPM == 1250 && rawBPM == 1250;
    }
  });
  PlayLoop();
  EXPECT_TRUE(atStart);
  EXPECT_FALSE(PlayFailed);
  EXPECT_FALSE(BreakActive);
}

TEST_F(LoopTest, TilesEndWithoutEndingThePlay) {
  Lay(ObjSeparator, 0);
  std::vector<int32_t> states;
  RunFrames(10, [&](int32_t ms) {
    if (ms == 490 || ms == 500) states.push_back(FadeState);
  });
  PlayLoop();
  EXPECT_EQ(states, (std::vector<int32_t>{kFadeTiles, kFadeNone}));
  EXPECT_GT(played.turns, 0);
}

TEST_F(LoopTest, ComboHiSpeedStartsAndEndsAtOne) {
  Lay(ObjSeparator, 0);
  Lay(ObjSeparator, 100);
  ComboHiSpeed = true;
  HiSpeed = 3;
  HiSpeedTarget = 2;
  float started = 0;
  float target = 9;
  RunFrames(10, [&](int32_t ms) {
    if (ms == 990) HiSpeedTarget = 4;  // in the pre-roll's last frame
    if (ms == 1000) {
      started = HiSpeed;
      target = HiSpeedTarget;
    }
    if (ms == 1050) HiSpeedTarget = 1.5F;
  });
  PlayLoop();
  EXPECT_FLOAT_EQ(started, 1);
  EXPECT_FLOAT_EQ(target, 0);
  EXPECT_FLOAT_EQ(HiSpeed, 1);
  EXPECT_FLOAT_EQ(HiSpeedTarget, 0);
}

TEST_F(LoopTest, RandomHiSpeedStartsAtOneAndEndsAtZero) {
  Lay(ObjSeparator, 0);
  Lay(ObjSeparator, 100);
  RandomHiSpeed = true;
  HiSpeed = 0;
  float started = 0;
  RunFrames(10, [&](int32_t ms) {
    if (ms == 1000) started = HiSpeed;
  });
  PlayLoop();
  EXPECT_FLOAT_EQ(started, 1);
  EXPECT_FLOAT_EQ(HiSpeed, 0);
  EXPECT_FLOAT_EQ(HiSpeedTarget, 0);
}

TEST_F(LoopTest, HiSpeedReturnsToWhatAnEffectTookItFrom) {
  Lay(ObjSeparator, 0);
  Lay(ObjSeparator, 100);
  RunFrames(10, [&](int32_t ms) {
    if (ms == 1050) {
      HiSpeedTarget = 2.5F;
      HiSpeed = 4;
    }
  });
  PlayLoop();
  EXPECT_FLOAT_EQ(HiSpeed, 2.5F);
  EXPECT_FLOAT_EQ(HiSpeedTarget, 0);
}

TEST_F(LoopTest, FramesShowAPointerThatMoves) {
  setenv("SDL_VIDEODRIVER", "dummy", 1);
  NOVSync = true;
  InitDD();
  Lay(ObjSeparator, 0);
  PlayFrame(0);
  EXPECT_FALSE(PointerShows());
  // Where it was seen first it has come to, and not moved.
  MoveVirtualMouse(10, 10);
  MoveVirtualMouse(20, 10);
  PlayFrame(0);
  EXPECT_TRUE(PointerShows());
  PresentFrame();
  EXPECT_FALSE(PointerShows()) << "other screens show none";
  ReleaseDD();
}

// Quirk: the seek behind the pre-roll sets the tempo anew.
TEST_F(LoopTest, PauseInThePreRollDoesNotHoldTheChartBack) {
  Lay(ObjSeparator, 0);
  Lay(ObjSeparator, 100);
  RunFrames(10, [](int32_t ms) {
    if (ms == 300) BMSPause();
    if (ms > 20'000) PlayEnd = true;  // a chart that is held back has no end of its own
  });
  PlayLoop();
  // The message of the pause's tempo prolongs the pre-roll to its own second.
  EXPECT_EQ(playStart, kStart + 1300);
  EXPECT_EQ(FadeStart, kStart + 1300 + 110);
  EXPECT_TRUE(PlayCleared);
  EXPECT_TRUE(Paused);
}

TEST_F(LoopTest, PauseDuringThePlayHoldsTheEndBack) {
  Lay(ObjSeparator, 0);
  Lay(ObjSeparator, 100);
  RunFrames(10, [](int32_t ms) {
    if (ms == 1050) BMSPause();
    if (ms == 2050) BMSResume();
  });
  PlayLoop();
  EXPECT_EQ(FadeStart, kStart + 2110);
  EXPECT_TRUE(PlayCleared);
}

}  // namespace
}  // namespace qlm
