// Tests of the loop of the list screens.
#include "screens/song_select.h"

#include "base/hooks.h"
#include "base/paths.h"
#include "library/lists.h"
#include "platform/timers.h"
#include "screens/list_rows.h"
#include "state/chart.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "state/surfaces.h"
#include "tests/screens/list_ground.h"
#include "tools/media_files/bmp.h"

namespace qlm {
namespace {

class SongSelectLoop : public ListTest {
 protected:
  SongSelectLoop() {
    NOVSync = true;
    DDPreview = std::make_shared<Surface>(192, 144);
    Fps = 60;
  }
  // A turn of the loop at a moment, in ms behind kStart.
  static void TurnAt(uint32_t ms) {
    SetClock(ms);
    ListTurn();
  }
};

TEST_F(SongSelectLoop, OpensOnTheJukeboxesWithMusicAndEndsWithTheWindow) {
  FillSound(SE::kSelectMusic);
  FillSound(SE::kSelectStart);
  int32_t state = -1;
  float settle = 0;
  RunFrames(10, [&](int32_t ms) {
    if (ms == 0) {
      state = GameState;
      settle = songSelect.listSettleGoal;
    }
    if (ms >= 50) formRunning = false;
  });
  ListAnm();
  EXPECT_EQ(state, kStateLists);
  EXPECT_EQ(settle, 1);
  EXPECT_EQ(FramesShown(), 6);
  EXPECT_TRUE(Sounding(SE::kSelectMusic));
  EXPECT_TRUE(Sounding(SE::kSelectStart));
}

TEST_F(SongSelectLoop, HeldKeyRepeatsAfter300MsEvery50UntilItIsLetGo) {
  ShowCharts({u"A", u"B", u"C", u"D", u"E", u"F", u"G", u"H"});
  KeyHeld[kKeyDown] = true;  // its own step is the key event's
  TurnAt(0);
  TurnAt(299);
  EXPECT_EQ(listCursor, 0);
  TurnAt(300);
  EXPECT_EQ(listCursor, 1);
  TurnAt(349);
  EXPECT_EQ(listCursor, 1);
  TurnAt(350);
  EXPECT_EQ(listCursor, 2);
  // The key that went down last counts, from its own press on.
  KeyHeld[kKeyPageDown] = true;
  TurnAt(400);
  TurnAt(699);
  EXPECT_EQ(listCursor, 2);
  TurnAt(700);
  EXPECT_EQ(listCursor, 7);
  KeyHeld[kKeyPageDown] = false;
  TurnAt(800);
  TurnAt(2000);
  EXPECT_EQ(listCursor, 7) << "the one that is still held does not begin anew";
}

TEST_F(SongSelectLoop, OtherKeysDoNotRepeat) {
  ShowCharts({u"A", u"B"});
  KeyHeld[kKeyF10] = true;
  TurnAt(0);
  TurnAt(1000);
  EXPECT_EQ(PlayerForce, 0);
}

TEST_F(SongSelectLoop, WheelEasesByTheFrameRate) {
  ShowCharts({u"A", u"B"});
  struct Step {
    double fps;
    float left;  // of 4 rows
  };
  // 80% of the way is left at 60 frames a second, 95% at 110 and more, 71% at 30 (0.3 * -30 is -9).
  for (const Step& step : {Step{60, 3.2F}, Step{30, 2.84F}, Step{110, 3.8F}, Step{1000, 3.8F}}) {
    Fps = step.fps;
    songSelect.listScroll = 4;
    TurnAt(0);
    EXPECT_FLOAT_EQ(songSelect.listScroll, step.left) << step.fps;
  }
}

class TitlePicture : public SongSelectLoop {
 protected:
  TitlePicture() {
    WriteData(u"song\\title.bmp", media::BmpOf({{0xFF0000, 0xFF0000}, {0xFF0000, 0xFF0000}}));
    ShowCharts({u"A", u"B"});
    songList[0].stageFile = u"title.bmp";
  }
};

TEST_F(TitlePicture, IsReadOnceWhenTheWheelStops) {
  songSelect.listScroll = 0.02F;  // 0.016, still moving
  TurnAt(0);
  EXPECT_EQ(DDStage, nullptr);
  songSelect.listScroll = 0.012F;  // 0.0096
  TurnAt(0);
  ASSERT_NE(DDStage, nullptr);
  EXPECT_EQ(songSelect.listScroll, 0);
  EXPECT_EQ(DDStage->Pixel(0, 0), 0xFF0000U);
  DDStage.reset();
  TurnAt(0);
  EXPECT_EQ(DDStage, nullptr) << "a wheel at rest reads nothing";
}

TEST_F(TitlePicture, ComesInTheSameFrameWithoutSmoothScrolling) {
  NOSMOOTHSCROLL = true;
  Press(kKeyDown);
  Press(kKeyUp);
  TurnAt(0);
  EXPECT_EQ(songSelect.listScroll, 0);
  EXPECT_NE(DDStage, nullptr);
}

TEST_F(TitlePicture, RowWithoutOneShowsNone) {
  listCursor = 1;
  songSelect.listScroll = kWheelStops;
  TurnAt(0);
  EXPECT_EQ(songSelect.listScroll, 0);
  EXPECT_EQ(DDStage, nullptr);
}

TEST_F(SongSelectLoop, JukeReadyShowsTheJukeboxesWhereTheyWereLeft) {
  ShowCharts({u"A"});
  for (const TextView name : {u"x", u"y", u"z"}) SaveAsJukebox(name);
  UpdateJukeList();
  ShowCharts({u"A"});
  FillSound(SE::kFade);
  songSelect.jukeCursorSaved = 2;
  DDStage = std::make_shared<Surface>(4, 4);
  log.clear();
  JukeReady();
  EXPECT_EQ(log.front(), u"[Load JukeList]");
  EXPECT_EQ(GameState, kStateLists);
  EXPECT_EQ(Titles(), "x y z");
  EXPECT_EQ(lastSong, 2);
  EXPECT_EQ(listCursor, 2);
  EXPECT_EQ(songCleared.size(), 3U);
  EXPECT_EQ(songSelect.listSettle, 3.0F);
  EXPECT_EQ(songSelect.listFadeIn, 1000.0F);
  EXPECT_EQ(DDStage, nullptr);
  EXPECT_TRUE(Sounding(SE::kFade));
}

TEST_F(SongSelectLoop, JukeReadyStaysWithinAListThatHasShrunk) {
  ShowCharts({u"A"});
  SaveAsJukebox(u"x");
  UpdateJukeList();
  songSelect.jukeCursorSaved = 7;
  JukeReady();
  EXPECT_EQ(listCursor, 0);
}

TEST_F(SongSelectLoop, DroppedFolderBecomesTheList) {
  CourseMode = true;
  GameState = kStateCourses;
  for (const TextView name : {u"dropped 羽\\b.bms", u"dropped 羽\\sub\\c.bme", u"dropped 羽\\d.txt"}) {
    WriteText(name, u"\r\n#TITLE t\r\n");
  }
  ShowDroppedFolder(Join(AppPath, u"\\dropped 羽"));
  EXPECT_EQ(GameState, kStateSongSelect);
  EXPECT_FALSE(CourseMode);
  EXPECT_EQ(lastSong, 1);
  EXPECT_EQ(songSelect.jukeName, u"dropped 羽");
  EXPECT_EQ(songSelect.titleMain, u"t");
  EXPECT_EQ(listCursor, 0);
}

TEST_F(SongSelectLoop, DroppedFileGivesAnEmptyListAndSaysSo) {
  ShowCharts({u"A", u"B"});
  Press(kKeyPad1);
  ShowDroppedFolder(Join(AppPath, u"\\song\\1.bms"));
  EXPECT_EQ(PanelRow(), nullptr) << "nothing of the list that was sorted";
  EXPECT_EQ(lastSong, -1);
  EXPECT_EQ(GameState, kStateSongSelect);
  EXPECT_EQ(message.text, u"NO CHARTS IN 1.bms: DROP A FOLDER OF CHARTS");
  // The empty list lives.
  for (const int32_t key : {kKeyDown, kKeyEnter, kKeyPad1, kKeyPageUp}) Press(key);
  TurnAt(0);
}

TEST_F(SongSelectLoop, RunningPreviewEndsWithTheDrop) {
  ShowCharts({u"A"});
  previewRunning = true;
  platform::SetTimer(platform::kTimerPreview, 20, [] {});
  ShowDroppedFolder(Join(AppPath, u"\\song"));
  EXPECT_FALSE(platform::TimerArmed(platform::kTimerPreview));
}

}  // namespace
}  // namespace qlm
