// A display that is taken away from a running play and comes back, with the game put together as it starts.
#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include "base/hooks.h"
#include "graphics/display.h"
#include "platform/clock.h"
#include "platform/window.h"
#include "play/loop.h"
#include "shell/main_form.h"
#include "state/key_numbers.h"
#include "state/message.h"
#include "state/session.h"
#include "state/skin.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

std::vector<int32_t> shown;  // when each frame was presented, ms behind the start

// Frames of 10 ms and one position unit a millisecond. The pre-roll takes a second, and the chart four.
class LostDisplayInAPlay : public PlayTest {
 protected:
  LostDisplayInAPlay() {
    ConnectHooks();
    GameState = kStatePlay;
    InitDD(DisplayOutput::kUnseen);
    CreateSurfaces();
    SkinPath = WriteData(u"_qlmfiles\\ink.brd", "#CLIP01 1,0,0,8,8\r\n");
    Lay(ObjSeparator, 0);
    FillSlot(1);
    Lay(1, 100, 1);
    Lay(ObjSeparator, 4000);
    shown.clear();
    hooks.framePresented = [] { shown.push_back(platform::Elapsed(platform::Now(), kStart)); };
  }
  ~LostDisplayInAPlay() override { platform::TakeDisplayAway(false); }

  // Runs the play; the display is away from the pump at `from` to that at `to`. `look` is called in each
  // pump.
  static void PlayWithoutDisplay(int32_t from, int32_t to, std::function<void(int32_t)> look = {}) {
    RunFrames(10, [from, to, look = std::move(look)](int32_t ms) {
      if (ms == from) platform::TakeDisplayAway(true);
      if (ms == to) platform::TakeDisplayAway(false);
      if (ms > 20'000) PlayEnd = true;  // a play that stays paused has no end of its own
      if (look) look(ms);
    });
    PlayLoop();
  }
  // The frames between which nothing was presented for more than a frame.
  static std::vector<std::pair<int32_t, int32_t>> Gaps() {
    std::vector<std::pair<int32_t, int32_t>> gaps;
    for (size_t i = 1; i < shown.size(); ++i) {
      if (shown[i] - shown[i - 1] > 10) gaps.emplace_back(shown[i - 1], shown[i]);
    }
    return gaps;
  }
};

TEST_F(LostDisplayInAPlay, PausesThePlayUntilItComesBack) {
  std::vector<bool> paused;
  std::vector<double> places;
  std::vector<bool> sounding;
  PlayWithoutDisplay(1500, 2500, [&](int32_t ms) {
    if (ms != 1500 && ms != 1510 && ms != 2500 && ms != 2510 && ms != 2520) return;
    paused.push_back(Paused);
    places.push_back(playPos);
    sounding.push_back(WavBuffer[1]->Playing());
  });
  // The turn at 1510 finds it lost, at the position that it has just worked out, and that at 2510 finds it
  // back. From there the position goes on by 10 units a frame.
  EXPECT_EQ(paused, (std::vector<bool>{false, true, true, false, false}));
  EXPECT_EQ(places, (std::vector<double>{500, 510, 510, 510, 520}));
  EXPECT_EQ(sounding, (std::vector<bool>{true, false, false, true, true}));
  // The clock's start stays; the offset takes what the pause lasted: 510 - 1510.
  EXPECT_EQ(playStart, kStart + 1000);
  EXPECT_EQ(posOffset, -1000);
  // The last object lies at 4000 units, 5000 ms behind the start of the chart.
  EXPECT_EQ(FadeStart, kStart + 1000 + 5000 + 10);
  EXPECT_TRUE(PlayCleared);
}

TEST_F(LostDisplayInAPlay, PresentsNothingWhileItIsAway) {
  PlayWithoutDisplay(1500, 2500);
  EXPECT_EQ(Gaps(), (std::vector<std::pair<int32_t, int32_t>>{{1500, 2510}}));
}

TEST_F(LostDisplayInAPlay, ReadsTheSkinAnewIntoEmptyTablesWhenItComesBack) {
  PlayWithoutDisplay(1500, 1600, [&](int32_t ms) {
    if (ms != 1500) return;
    log.clear();
    Clip[5].width = 3;  // of a skin before
    DDSkinBack = std::make_shared<Surface>(1, 1);
  });
  EXPECT_EQ(LinesBeginning(u"[loadSkin] : ink.brd"), 1);
  EXPECT_EQ(Clip[1].width, 8);
  EXPECT_EQ(Clip[5].width, 0);
  EXPECT_FALSE(DDSkinBack);
  // All of it in one frame: surfaces, skin, and then the play goes on.
  EXPECT_LT(std::find(log.begin(), log.end(), u"[CreateSurfaces]"),
            std::find(log.begin(), log.end(), u"[loadSkin] : ink.brd"));
  EXPECT_LT(std::find(log.begin(), log.end(), u"[loadSkin] : ink.brd"),
            std::find(log.begin(), log.end(), u"[BMSResume] BPM:1250"));
}

TEST_F(LostDisplayInAPlay, InThePreRollPausesItAndProlongsIt) {
  std::vector<Text> messages;
  PlayWithoutDisplay(300, 500, [&](int32_t ms) {
    if (ms == 300 || ms == 310 || ms == 510) messages.push_back(message.text);
  });
  // The tempo's message of the pause and that of the resume prolong it by their own seconds.
  EXPECT_EQ(messages, (std::vector<Text>{u"R E A D Y ?", u"BPM CHANGE : 0", u"BPM CHANGE : 1250"}));
  EXPECT_EQ(playStart, kStart + 510 + 1000);
  EXPECT_FALSE(Paused);
  EXPECT_EQ(Starts(), "1@100");
  EXPECT_EQ(Gaps(), (std::vector<std::pair<int32_t, int32_t>>{{300, 510}}));
}

TEST_F(LostDisplayInAPlay, BehindThePreRollTheChartRunsUnseen) {
  std::vector<bool> paused;
  PlayWithoutDisplay(300, 1600, [&](int32_t ms) {
    if (ms == 1600 || ms == 1610) paused.push_back(Paused);
  });
  // The pause comes at 310 and the chart begins a second later, at the tempo that the seek gives it.
  EXPECT_EQ(playStart, kStart + 1310);
  EXPECT_EQ(Starts(), "1@100");
  EXPECT_EQ(paused, (std::vector<bool>{true, false}));
  EXPECT_EQ(FadeStart, kStart + 1310 + 4000 + 10);
  EXPECT_EQ(Gaps(), (std::vector<std::pair<int32_t, int32_t>>{{300, 1610}}));
}

TEST_F(LostDisplayInAPlay, APlayThatThePlayerHadPausedGoesOnToo) {
  PlayWithoutDisplay(1500, 1600, [&](int32_t ms) {
    if (ms == 1400) hooks.keyDown(kKeyF12);
  });
  // Paused at 400 units, seen at 1610: 210 ms later.
  EXPECT_EQ(FadeStart, kStart + 1000 + 4000 + 210 + 10);
}

}  // namespace
}  // namespace qlm
