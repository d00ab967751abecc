// Tests of the load behind the loading screen.
#include <algorithm>
#include <utility>
#include <vector>

#include "base/hooks.h"
#include "base/paths.h"
#include "chart/loading.h"
#include "screens/road.h"
#include "sound/play.h"
#include "state/courses.h"
#include "state/gauge.h"
#include "state/lists.h"
#include "state/network.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "tests/graphics/picture_files.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

class LoadingTest : public PlayTest {
 protected:
  LoadingTest() {
    WAVLoadmode = 0;
    RunFrames(10);
    chart_ = WriteText(u"song\\a.bms", u"\r\n#TITLE one\r\n#WAV01 a.wav\r\n#00111:01\r\n");
  }

  // The lines of a whole load that the play itself writes.
  std::vector<Text> OwnLines() const {
    std::vector<Text> lines;
    for (const Text& line : log) {
      for (const TextView words : {u"[Ready BMS] Timer start", u"Ready BMS", u"Load Complete",
                                   u"[Unload-BMS] > faked", u"Send [STANDBY]"}) {
        if (Trim(line) == words) lines.push_back(Text(words));
      }
    }
    return lines;
  }

  Text chart_;
};

TEST_F(LoadingTest, ChartIsLoadedBehindHalfASecond) {
  PreviewActive = true;
  LoadAbort = true;
  uint32_t fadeOfFirstFrame = 0;
  RunFrames(10, [&](int32_t ms) {
    if (ms == 0) fadeOfFirstFrame = FadeStart;
  });
  ReadyBMS(chart_);
  EXPECT_FALSE(LoadAbort);
  EXPECT_EQ(HdrTitle, u"one");
  EXPECT_EQ(objCount, 4);
  EXPECT_EQ(GameState, kStatePlay);
  EXPECT_EQ(ReturnState, kStateSongSelect);
  EXPECT_FALSE(PreviewActive);
  EXPECT_EQ(FadeState, kFadeTiles);
  EXPECT_EQ(fadeOfFirstFrame, kStart);
  EXPECT_EQ(FadeStart, kStart + 500 - 2000);
  EXPECT_EQ(FramesShown(), 52);  // 50 of 10 ms, and two more with the tiles gone
  EXPECT_EQ(OwnLines(), (std::vector<Text>{u"[Ready BMS] Timer start", u"Ready BMS", u"Load Complete"}));
}

TEST_F(LoadingTest, LoadLeadsToThePlayWhateverHappenedOnTheWay) {
  hooks.loadPump = [] { GameState = kStateLists; };
  ReadyBMS(chart_);
  EXPECT_EQ(GameState, kStatePlay);
}

TEST_F(LoadingTest, EmptyPathTakesTheCurrentEntry) {
  songList.resize(2);
  songList[1].path = chart_;
  lastSong = listCursor = 1;
  ReadyBMS(u"");
  EXPECT_EQ(objCount, 4);
}

TEST_F(LoadingTest, EmptyPathWithoutAnEntryFails) {
  listCursor = 3;
  ReadyBMS(u"");
  EXPECT_TRUE(LoadAbort);
}

TEST_F(LoadingTest, MusicOfTheListStopsBeforeTheScreenShows) {
  FillSound(SE::kSelectMusic);
  PlaySE(SE::kSelectMusic, true);
  bool sounded = false;
  RunFrames(10, [&](int32_t) { sounded = sounded || Sounding(SE::kSelectMusic); });
  ReadyBMS(chart_);
  EXPECT_FALSE(sounded);
  EXPECT_FALSE(Sounding(SE::kSelectMusic));
}

TEST_F(LoadingTest, TitlePictureOfTheChartReplacesTheLastBeforeTheScreenShows) {
  WriteData(u"song\\title.bmp", SolidBmp(3, 2, 0x00FF00));
  songList.resize(1);
  songList[0].stageFile = u"title.bmp";
  lastSong = 0;
  DDStage = Solid(1, 1, 0xFF0000);
  Rect first;
  RunFrames(10, [&](int32_t ms) {
    if (ms == 0 && DDStage) first = DDStage->Bounds();
  });
  ReadyBMS(chart_);
  EXPECT_EQ(first, (Rect{0, 0, 3, 2}));
  ASSERT_TRUE(DDStage);
  EXPECT_EQ(DDStage->Pixel(2, 1), 0x00FF00U);
}

// The tiles take 300 ms of the 500. What is shown last stands while the chart is read.
TEST_F(LoadingTest, TitlePictureLiesUnderTheTilesAndStaysOverTheLoad) {
  WriteData(u"song\\title.bmp", SolidBmp(3, 2, 0x00FF00));
  songList.resize(1);
  songList[0].stageFile = u"title.bmp";
  lastSong = 0;
  DDPrimary = Solid(640, 480, 0);
  DDSnapshot->Fill(FullRect, 0x0000FF);
  std::vector<Colour> shown;
  RunFrames(10, [&](int32_t) { shown.push_back(DDBack->Pixel(0, 479)); });
  ReadyBMS(chart_);
  ASSERT_EQ(shown.size(), 52U);
  EXPECT_EQ(shown[0], 0x0000FFU);
  for (size_t frame = 30; frame < shown.size(); ++frame) EXPECT_EQ(shown[frame], 0x00FF00U) << frame;
}

TEST_F(LoadingTest, WithoutATitlePictureTheDeskLiesUnderTheTiles) {
  DDPrimary = Solid(640, 480, 0);
  DDSnapshot->Fill(FullRect, 0x0000FF);
  std::vector<std::pair<Colour, Colour>> shown;
  RunFrames(10, [&](int32_t) { shown.emplace_back(DDBack->Pixel(320, 0), DDBack->Pixel(320, 479)); });
  ReadyBMS(chart_);
  ASSERT_EQ(shown.size(), 52U);
  EXPECT_EQ(shown.front(), std::pair(0x0000FFU, 0x0000FFU));
  EXPECT_EQ(shown.back(), std::pair(0x0B1020U, 0x131A2EU));
}

TEST_F(LoadingTest, TitlePictureOfTheLastChartGoesWhereThisOneHasNone) {
  songList.resize(1);
  songList[0].stageFile = u"none.bmp";
  lastSong = 0;
  for (const int32_t row : {0, 3}) {  // without a file, and without an entry at all
    listCursor = row;
    DDStage = Solid(1, 1, 0xFF0000);
    ReadyBMS(chart_);
    EXPECT_FALSE(DDStage) << row;
  }
}

TEST_F(LoadingTest, FailedLoadReturnsWithSoundsStopped) {
  FillSlot(1);
  WavBuffer[1]->Play(true);
  ReadyBMS(Join(AppPath, u"\\none.bms"));
  EXPECT_TRUE(LoadAbort);
  EXPECT_EQ(objCount, 0);
  EXPECT_FALSE(WavBuffer[1]->Playing());
  EXPECT_EQ(OwnLines(),
            (std::vector<Text>{u"[Ready BMS] Timer start", u"Ready BMS", u"[Unload-BMS] > faked"}));
}

TEST_F(LoadingTest, LoadGivenUpOnItsScreenReadsNothing) {
  RunFrames(10, [](int32_t ms) {
    if (ms == 100) AbortLoad();
  });
  ReadyBMS(chart_);
  EXPECT_TRUE(LoadAbort);
  EXPECT_EQ(objCount, 0);
  EXPECT_EQ(LinesBeginning(u"[BMSLoad]"), 0);
  EXPECT_EQ(OwnLines().back(), u"[Unload-BMS] > faked");
}

TEST_F(LoadingTest, NothingIsGivenUpOutsideALoad) {
  AbortLoad();
  EXPECT_FALSE(LoadAbort);
  ReadyBMS(chart_);
  AbortLoad();
  EXPECT_FALSE(LoadAbort);
}

TEST_F(LoadingTest, BattleGoesOnWithItsLoad) {
  network.NetActive = true;
  RunFrames(10, [](int32_t ms) {
    if (ms == 100) AbortLoad();
  });
  ReadyBMS(Join(AppPath, u"\\none.bms"));
  EXPECT_EQ(OwnLines(), (std::vector<Text>{u"[Ready BMS] Timer start", u"Ready BMS", u"Load Complete",
                                           u"Send [STANDBY]"}));
}

TEST_F(LoadingTest, HazardGaugeGoesWithCourseBattleAndEndlessRun) {
  ReadyBMS(chart_);
  EXPECT_FALSE(HazardGauge);
  HazardGauge = true;  // as the list may choose
  ReadyBMS(chart_);
  EXPECT_TRUE(HazardGauge);
  for (bool* way : {&CourseMode, &network.NetActive, &EndlessRun}) {
    HazardGauge = false;
    *way = true;
    ReadyBMS(chart_);
    EXPECT_TRUE(HazardGauge);
    *way = false;
  }
}

TEST_F(LoadingTest, CourseIsJoinedAndItsSoundsWait) {
  const Text second = WriteText(u"song\\b.bms", u"\r\n#TITLE two\r\n#WAV02 b.wav\r\n#00011:02\r\n");
  CourseSongs.resize(2);
  CourseSongs[0].path = chart_;
  CourseSongs[1].path = second;
  numsongs = 2;
  CourseMode = true;
  GameState = kStateCourses;
  WAVLoadmode = 0;
  ReadyBMS(u"");
  EXPECT_EQ(WAVLoadmode, 0);
  EXPECT_EQ(ReturnState, kStateCourses);
  EXPECT_EQ(GameState, kStatePlay);
  EXPECT_EQ(LinesBeginning(u"loadwav"), 0);
  EXPECT_EQ(std::count_if(objs.begin(), objs.end(),
                          [](const ChartObj& obj) { return obj.channel == ObjSongChange; }),
            2);
}

TEST_F(LoadingTest, CourseGivenUpPutsItsLoadModeBack) {
  CourseSongs.resize(1);
  CourseSongs[0].path = chart_;
  numsongs = 1;
  CourseMode = true;
  RunFrames(10, [](int32_t ms) {
    if (ms >= 520) AbortLoad();  // the frame between songs
  });
  ReadyBMS(u"");
  EXPECT_EQ(WAVLoadmode, 0);
}

}  // namespace
}  // namespace qlm
