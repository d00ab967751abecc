// Tests of what a decision on the song select leads to: one play, a run of a jukebox, and a load given up.
#include "base/hooks.h"
#include "base/log.h"
#include "base/paths.h"
#include "base/rnd.h"
#include "chart/loading.h"
#include "library/jukebox.h"
#include "library/lists.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/timers.h"
#include "screens/list_cursor.h"
#include "screens/road.h"
#include "screens/song_select.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/keys.h"
#include "state/last_play.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/network.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "tests/screens/list_ground.h"

namespace qlm {
namespace {

// The charts that were loaded, in order: the number that each has for a name.
class Decision : public ListTest {
 protected:
  Decision() {
    DEMOMode = true;
    BMSPreview = 0;
    RunFrames(10, [](int32_t) {
      // The results end with a key of a lane, once a frame.
      if (GameState == kStateResults) LaneDown[0] = true;
    });
  }

  std::string Loaded() const {
    std::string loaded;
    for (const Text& line : log) {
      const TextView words = Trim(line);
      if (words.starts_with(u"[BMSLoad] ")) loaded += Utf8(words.substr(10, 1));
    }
    return loaded;
  }
};

TEST_F(Decision, NothingHappensUntilSomethingIsDecided) {
  ShowCharts({u"A"});
  FadeEndSubject();
  EXPECT_EQ(Loaded(), "");
}

TEST_F(Decision, RowInHandIsPlayedAndTheListComesBack) {
  ShowCharts({u"A", u"B", u"C"});
  FillSound(SE::kFade);
  listCursor = 1;
  Press(kKeyEnter);
  RunTimers();
  EXPECT_EQ(Loaded(), "1");
  EXPECT_TRUE(PlayCleared);
  EXPECT_EQ(GameState, kStateSongSelect);
  EXPECT_EQ(listCursor, 1);
  EXPECT_EQ(songSelect.deciding, 0);
  EXPECT_EQ(songSelect.listScroll, kWheelStops);
  EXPECT_EQ(songSelect.listSettle, 3.0F);
  EXPECT_EQ(FadeState, kFadeIn);
  EXPECT_EQ(FadeLeaving, 0);
  EXPECT_EQ(songSelect.rowCursorTime, platform::Now());
  EXPECT_TRUE(Sounding(SE::kFade));
  EXPECT_FALSE(platform::TimerArmed(platform::kTimerRunFESub)) << "once";
}

// The machine strikes the one note that each chart has.
TEST_F(Decision, WhatThePlayCameToIsRemembered) {
  ShowCharts({u"A", u"B"});
  listCursor = 1;
  Press(kKeyEnter);
  RunTimers();
  ASSERT_TRUE(lastPlay);
  EXPECT_EQ(lastPlay->title, u"B");
  EXPECT_EQ(lastPlay->path, songList[1].path);
  EXPECT_TRUE(lastPlay->machine);
  EXPECT_EQ(lastPlay->counts, (std::array<int32_t, 5>{1, 0, 0, 0, 0}));
  EXPECT_EQ(lastPlay->outcome, Gauge[0] >= kClearGauge ? Outcome::kCleared : Outcome::kFailed);
}

// As when the program is ended inside it.
TEST_F(Decision, APlayThatRunsIsRememberedAsLeft) {
  ShowCharts({u"A", u"B"});
  static std::vector<Outcome> inside;
  inside.clear();
  RunFrames(10, [](int32_t) {
    if (GameState == kStatePlay && lastPlay) inside.push_back(lastPlay->outcome);
    if (GameState == kStateResults) LaneDown[0] = true;
  });
  listCursor = 1;
  Press(kKeyEnter);
  RunTimers();
  ASSERT_FALSE(inside.empty());
  for (const Outcome outcome : inside) EXPECT_EQ(outcome, Outcome::kLeft);
  EXPECT_EQ(lastPlay->title, u"B");
  EXPECT_NE(lastPlay->outcome, Outcome::kLeft) << "it has ended";
}

TEST_F(Decision, NothingIsRememberedOfAChartThatIsGone) {
  ShowCharts({u"A"});
  songList[0].path = Join(AppPath, u"\\song\\gone.bms");
  Press(kKeyEnter);
  RunTimers();
  EXPECT_FALSE(lastPlay);
  PlayListEntry(0);
  EXPECT_GE(LinesBeginning(u"[PlayLoop]"), 1);
  EXPECT_FALSE(lastPlay);
}

TEST_F(Decision, HistoryTellsTheSongOfThisSessionAlone) {
  ShowCharts({u"A", u"B"});
  for (const int32_t row : {0, 1}) {
    listCursor = row;
    Press(kKeyEnter);
    RunTimers();
  }
  const std::string history = ReadBytes(Join(AppPath, u"\\lastplay.txt"));
  EXPECT_TRUE(
      history.starts_with("1>\t\x81\x9A"
                          "1 [] B / \t<"))
      << history;
  EXPECT_EQ(history.find('\n'), history.size() - 1);
}

TEST_F(Decision, EscWhileTheChartLoadsLeadsBackAsIfNothingHadBegun) {
  ShowCharts({u"A"});
  FillSound(SE::kSelectMusic);
  DEMOMode = false;
  hooks.loadPump = AbortLoad;
  WriteText(u"song\\0.bms", u"\r\n#WAV01 a.wav\r\n#WAV02 b.wav\r\n#00011:01\r\n");
  HazardGauge = true;
  Press(kKeyEnter);
  RunTimers();
  EXPECT_EQ(LinesBeginning(u"[PlayLoop]"), 0);
  EXPECT_EQ(GameState, kStateSongSelect);
  EXPECT_EQ(message.text, u"LOAD ABORTED");
  EXPECT_FALSE(FileExists(Join(AppPath, u"\\song\\0.qsd")));
  EXPECT_FALSE(HazardGauge);
  EXPECT_EQ(songSelect.deciding, 0);
  EXPECT_TRUE(Sounding(SE::kSelectMusic));
}

TEST_F(Decision, EscBeforeTheLoadLeadsBackToo) {
  ShowCharts({u"A"});
  RunFrames(10, [](int32_t) { AbortLoad(); });
  Press(kKeyEnter);
  RunTimers();
  EXPECT_EQ(Loaded(), "");
  EXPECT_EQ(message.text, u"LOAD ABORTED");
}

TEST_F(Decision, ChartThatIsGoneIsPlayedOnAnEmptyTable) {
  ShowCharts({u"A"});
  Press(kKeyEnter);
  platform::DeleteFile(songList[0].path);
  RunTimers();
  EXPECT_EQ(LinesBeginning(u"[PlayLoop]"), 1);
  EXPECT_TRUE(Logged(u"totalobjs: 0"));
}

TEST_F(Decision, PreviewEndsAndNoPlayRunsAsOne) {
  ShowCharts({u"A"});
  BMSPreview = 1;
  previewRunning = true;
  platform::SetTimer(platform::kTimerPreview, 20, [] {});
  PreviewActive = true;
  bool active = false;
  RunFrames(10, [&](int32_t) {
    if (PlayAlive && GameState == kStatePlay && PreviewActive) active = true;
    if (GameState == kStateResults) LaneDown[0] = true;
  });
  Press(kKeyEnter);
  EXPECT_FALSE(platform::TimerArmed(platform::kTimerPreview));
  EXPECT_FALSE(platform::TimerArmed(platform::kTimerPlayCurSong));
  RunTimers();
  EXPECT_FALSE(active);
  EXPECT_TRUE(platform::TimerArmed(platform::kTimerPlayCurSong)) << "for the row that is back in hand";
}

TEST_F(Decision, MadeWithinAPreviewsLoadWaitsForItsEnd) {
  ShowCharts({u"A", u"B"});
  for (const TextView name : {u"song\\0.bms", u"song\\1.bms"}) {
    WriteText(name, u"\r\n#WAV01 a.wav\r\n#WAV02 b.wav\r\n#00011:01\r\n");
  }
  BMSPreview = 1;
  PreviewDelay = 1;
  RestartPreviewTimer();
  hooks.loadPump = [] {
    hooks.loadPump = nullptr;
    Press(kKeyDown);
    Press(kKeyEnter);
    RunTimers();
  };
  RunTimers();
  EXPECT_EQ(Loaded(), "0") << "the preview's alone";
  EXPECT_EQ(LinesBeginning(u"[Ready BMS]"), 0);
  EXPECT_EQ(songSelect.deciding, 1);
  RunTimers();
  EXPECT_EQ(Loaded().substr(0, 2), "01");
  EXPECT_EQ(LinesBeginning(u"[PlayLoop]"), 1);
  EXPECT_EQ(songSelect.deciding, 0);
}

TEST_F(Decision, InABattleTheOthersAreWaitedFor) {
  ShowCharts({u"A"});
  network.NetActive = true;
  Press(kKeyEnter);
  RunTimers();
  EXPECT_EQ(GameState, kStateBattleSongs);
  EXPECT_TRUE(selectLocked);
  EXPECT_EQ(Loaded(), "");
}

class JukeboxRun : public Decision {
 protected:
  // A jukebox of these charts, in hand and open for a run that ends behind so many plays.
  void Begin(const std::vector<Text>& titles, size_t plays) {
    ShowCharts(titles);
    SaveAsJukebox(u"x");
    UpdateJukeList();
    GameState = kStateLists;
    RunFrames(10, [this, plays](int32_t) {
      if (GameState == kStateResults) LaneDown[0] = true;
      // The last chart fails, which ends the run.
      if (Loaded().size() >= plays && GameState == kStatePlay) PlayFailed = true;
    });
    KeyHeld[kKeyLeftShift] = true;
    Press(kKeyEnter);
    KeyHeld[kKeyLeftShift] = false;
  }
};

TEST_F(JukeboxRun, TakesAShuffledOrderWithoutItsFirstRow) {
  ENDLESSMODE = 0;
  // Four rows, Int(Rnd * 3). With 0, 0, 0, 0 each swaps with place 0: 0123, 1023, 2013, 3012.
  SetRndList({0});
  Begin({u"A", u"B", u"C", u"D"}, 3);
  RunTimers();
  EXPECT_EQ(Loaded(), "012");
  EXPECT_FALSE(EndlessRun);
  EXPECT_EQ(GameState, kStateLists) << "the run was begun there";
  EXPECT_EQ(Titles(), "x");
}

TEST_F(JukeboxRun, ShufflesAnewAfterAsManyRowsAsTheLastIndex) {
  ENDLESSMODE = 0;
  // Three rows: 012, with 0 each: 012, 102, 201: rows 0 and 1. Then from 201: 201, 021, 120: rows 2 and 0.
  SetRndList({0});
  Begin({u"A", u"B", u"C"}, 4);
  RunTimers();
  EXPECT_EQ(Loaded(), "0120");
}

TEST_F(JukeboxRun, OfOneRowPlaysThatRow) {
  ENDLESSMODE = 0;
  Begin({u"A"}, 2);
  RunTimers();
  EXPECT_EQ(Loaded(), "00");
}

TEST_F(JukeboxRun, TakesOnlyChartsForOnePlayerWhereItIsSetSo) {
  ENDLESSMODE = 1;
  SetRndList({0});
  Begin({u"A", u"B", u"C", u"D"}, 1);
  songList[0].player = 3;
  RunTimers();
  EXPECT_EQ(Loaded(), "1") << "0 would be next";
}

TEST_F(JukeboxRun, WithoutAChartForOnePlayerStillPlays) {
  ENDLESSMODE = 1;
  SetRndList({0});
  Begin({u"A", u"B"}, 1);
  for (SongEntry& song : songList) song.player = 3;
  RunTimers();
  EXPECT_EQ(Loaded().size(), 1U);
}

TEST_F(JukeboxRun, GaugeAndComboGoOnFromChartToChart) {
  ENDLESSMODE = 0;
  SetRndList({0});
  Begin({u"A", u"B", u"C"}, 3);
  int32_t most = 0;
  RunFrames(10, [this, &most](int32_t) {
    if (GameState == kStateResults) LaneDown[0] = true;
    most = MaxCombo[0];
    if (Loaded().size() >= 3 && GameState == kStatePlay && Combo[0] == 3) PlayFailed = true;
  });
  RunTimers();
  EXPECT_EQ(most, 3) << "one note each";
}

}  // namespace
}  // namespace qlm
