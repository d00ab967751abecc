// Tests of the preview on the song select screen.
#include "play/preview.h"

#include "base/hooks.h"
#include "base/log.h"
#include "base/paths.h"
#include "platform/timers.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "state/sounds.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

class PreviewTest : public PlayTest {
 protected:
  PreviewTest() {
    BMSPreview = 1;
    WAVLoadmode = 0;
    CourseMode = true;
    for (const TextView name : {u"a.wav", u"b.wav", u"c.wav"}) {
      WriteData(Join(u"song\\", name), WavBytes(20));
    }
    songList.resize(1);
    lastSong = 0;
    // 1250 BPM: measure 1 begins at 192 units, which are 192 ms.
    songList[0].path = WriteText(u"song\\a.bms",
                                 u"\r\n#BPM 1250\r\n#WAV01 a.wav\r\n#WAV02 b.wav\r\n#WAV03 c.wav\r\n"
                                 u"#00111:01020003\r\n#00131:03\r\n");
  }

  // The 20 ms timer's calls up to `ms` after kStart.
  static void Tick(uint32_t ms) {
    SetClock(ms);
    platform::RunDueTimers();
  }
  static bool Running() { return platform::TimerArmed(platform::kTimerPreview); }
};

TEST_F(PreviewTest, ChartIsLoadedAndSoughtToItsFirstSound) {
  StartPreview();
  EXPECT_TRUE(PreviewActive);
  EXPECT_TRUE(Running());
  EXPECT_DOUBLE_EQ(playPos, 192);
  EXPECT_FALSE(PlayEnd);
  EXPECT_TRUE(PlayAlive);
  EXPECT_FALSE(UserPlay);
  EXPECT_TRUE(PlayKeySound);
  // What the load changed for itself is put back.
  EXPECT_EQ(WAVLoadmode, 0);
  EXPECT_FALSE(NoBGA);
  EXPECT_TRUE(CourseMode);
  EXPECT_EQ(GameState, kStateSongSelect);
}

TEST_F(PreviewTest, SoundsOfTheFirstBeatAreLoaded) {
  StartPreview();
  EXPECT_EQ(WavLoaded[1], 255);
  EXPECT_EQ(WavLoaded[2], 255);  // 48 units behind the first
  EXPECT_EQ(WavLoaded[3], 0);
}

TEST_F(PreviewTest, PathIsShown) {
  songList[0].path = u"\\nowhere\\none.bms";
  StartPreview();
  EXPECT_EQ(message.text, u"load:\\nowhere\\none.bms");
}

TEST_F(PreviewTest, ChartPlaysItselfWithoutFrames) {
  CourseMode = false;
  StartPreview();
  RunFrames(0);
  for (uint32_t ms = 20; ms <= 160; ms += 20) Tick(ms);
  EXPECT_EQ(FramesShown(), 0);
  // Positions 192, 240 and 336 are 0, 48 and 144 ms behind the start, which the chart's clock calls 192.
  EXPECT_EQ(Starts(), "1@212 2@252 3@352");
  EXPECT_TRUE(Running());
}

TEST_F(PreviewTest, SelectMusicSinksToItsFloor) {
  StartPreview();
  Tick(20);
  EXPECT_EQ(SelectVolume, -50);
  for (int i = 0; i < 40; ++i) {
    PlayAlive = true;
    PreviewTick();
  }
  EXPECT_EQ(SelectVolume, -1500);
}

TEST_F(PreviewTest, EndsWithTheChart) {
  StartPreview();
  Tick(5000);
  EXPECT_FALSE(Running());
  EXPECT_EQ(message.text, u"PLAY STOP");
  EXPECT_FALSE(PlayAlive);
  EXPECT_FALSE(PlayKeySound);
  EXPECT_TRUE(UserPlay);
  EXPECT_TRUE(Logged(u"[Unload-BMS] > faked"));
}

TEST_F(PreviewTest, EndsWhenTold) {
  StartPreview();
  Tick(20);
  EXPECT_TRUE(Running());
  PlayEnd = true;
  Tick(40);
  EXPECT_FALSE(Running());
}

TEST_F(PreviewTest, SwitchedOffDoesNothing) {
  BMSPreview = 0;
  StartPreview();
  EXPECT_TRUE(PreviewActive);
  EXPECT_FALSE(Running());
  EXPECT_EQ(LinesBeginning(u"[BMSLoad]"), 0);
}

TEST_F(PreviewTest, OtherListsHaveNoPreview) {
  GameState = kStateLists;
  StartPreview();
  EXPECT_FALSE(Running());
}

TEST_F(PreviewTest, RunningPreviewIsNotStartedAgain) {
  StartPreview();
  log.clear();
  StartPreview();
  EXPECT_EQ(LinesBeginning(u"[BMSLoad]"), 0);
  PlayEnd = true;  // told to stop, another may begin
  StartPreview();
  EXPECT_EQ(LinesBeginning(u"[BMSLoad]"), 1);
}

TEST_F(PreviewTest, MissingChartIsNotPreviewed) {
  songList[0].path = u"\\nowhere\\none.bms";
  StartPreview();
  EXPECT_TRUE(LoadAbort);
  EXPECT_FALSE(Running());
  EXPECT_EQ(WAVLoadmode, 0);
}

TEST_F(PreviewTest, RowThatMovesDuringTheLoadOfTheChartEndsIt) {
  hooks.loadPump = [] { listCursor = 1; };
  StartPreview();
  EXPECT_EQ(objCount, 7) << "the chart itself is read: three notes, an invisible object, three bar lines";
  EXPECT_EQ(WavLoaded[1], 0);
  EXPECT_FALSE(Running());
  EXPECT_FALSE(PlayAlive);
}

TEST_F(PreviewTest, ListThatAKeyBringsUpDuringTheLoadStays) {
  CourseMode = false;
  hooks.loadPump = [] {
    GameState = kStateCourses;
    CourseMode = true;
  };
  StartPreview();
  EXPECT_EQ(GameState, kStateCourses);
  EXPECT_TRUE(CourseMode);
  EXPECT_FALSE(Running());
}

TEST_F(PreviewTest, RowThatASortBringsUnderTheCursorDuringTheLoadIsAnotherOne) {
  hooks.loadPump = [] { songList[0].path = u"\\other.bms"; };
  StartPreview();
  EXPECT_FALSE(Running());
}

TEST_F(PreviewTest, DecisionDuringTheLoadLeavesNoPreview) {
  hooks.loadPump = [] { songSelect.deciding = 1; };
  StartPreview();
  EXPECT_FALSE(Running());
}

TEST_F(PreviewTest, OneThatWasToldToStopHasEndedWhenTheNextLoads) {
  StartPreview();
  previewStop = true;
  static bool ranOn;
  ranOn = false;
  hooks.loadPump = [] { ranOn = ranOn || Running(); };
  StartPreview();
  EXPECT_FALSE(ranOn);
  EXPECT_TRUE(Running());
}

TEST_F(PreviewTest, RowThatMovesDuringTheFirstSoundsEndsTheirLoad) {
  logOutput.afterLine = [] {
    if (WavHeldName[1] != u"") listCursor = 1;
  };
  StartPreview();
  EXPECT_EQ(WavLoaded[1], 255);
  EXPECT_EQ(WavLoaded[2], 0);
  EXPECT_FALSE(Running());
  EXPECT_FALSE(PlayAlive);
}

TEST_F(PreviewTest, LoadThatIsGivenUpStopsOnTheSpot) {
  hooks.loadPump = EndPreview;
  StartPreview();
  EXPECT_EQ(objCount, 2) << "bar lines; the lines of notes stand behind those of sounds";
  EXPECT_FALSE(Running());
  EXPECT_FALSE(previewLoading);
}

TEST_F(PreviewTest, NoPreviewBeginsWithinTheLoadOfAnother) {
  hooks.loadPump = StartPreview;
  StartPreview();
  EXPECT_EQ(LinesBeginning(u"[BMSLoad]"), 1);
  EXPECT_TRUE(Running());
}

TEST_F(PreviewTest, ChartWithoutSoundsIsNotPreviewed) {
  songList[0].path = WriteText(u"song\\b.bms", u"\r\n#00104:01\r\n");
  StartPreview();
  EXPECT_FALSE(Running());
}

TEST_F(PreviewTest, EmptyListIsNotPreviewed) {
  songList.clear();
  StartPreview();
  EXPECT_FALSE(Running());
}

TEST_F(PreviewTest, AWideChartMayNameItsPreview) {
  const Text chart =
      u"\r\n#PREVIEW c.wav\r\n#BPM 1250\r\n#WAV01 a.wav\r\n#WAV03 b.wav\r\n#00111:0103\r\n#00211:01\r\n";
  songList[0].path = WriteText(u"song\\b.bms", chart);
  WideCharts = true;
  StartPreview();
  EXPECT_TRUE(Running());
  EXPECT_EQ(GetFileName(WavHeldName[1]), u"c.wav");
  EXPECT_EQ(objCount, 2);
  EXPECT_EQ(playPos, 0);
  Tick(19);
  EXPECT_TRUE(Running());
  Tick(40);  // the sound of 20 ms has ended
  EXPECT_FALSE(Running());
}

TEST_F(PreviewTest, APreviewThatIsMissingLeavesTheChart) {
  songList[0].path = WriteText(u"song\\b.bms", u"\r\n#PREVIEW none.wav\r\n#WAV01 a.wav\r\n#00111:01\r\n");
  WideCharts = true;
  StartPreview();
  EXPECT_TRUE(Running());
  EXPECT_EQ(GetFileName(WavHeldName[1]), u"a.wav");
  EXPECT_EQ(playPos, 192);
}

TEST_F(PreviewTest, AChartThatIsMostlySilentIsOfferedTheWideReading) {
  const Text offer = u"MOST SOUNDS ARE MISSING: START WITH --wide, OR TICK IT IN THE MENU";
  uint32_t ms = 0;
  const auto previewed = [&](TextView wavs) {
    songList[0].path =
        WriteText(u"song\\b.bms", Join(u"\r\n#BPM 120\r\n", wavs, u"\r\n#00111:010203\r\n#00211:04\r\n"));
    StartPreview();
    EndPreview();
    StartPreview();
    for (int tick = 0; tick < 24; ++tick) Tick(ms += 20);
    EXPECT_NE(message.text, offer) << "who passes by does not wait for it";
    Tick(ms += 20);
    return message.text;
  };
  WriteData(u"song\\d.ogg", "none of its bytes are asked for");
  const Text three =
      u"#WAV01 a.wav\r\n#WAV02 d.wav\r\n#WAV03 e.wav";  // of which two are missing, one found as .ogg
  const Text two = u"#WAV01 a.wav\r\n#WAV02 b.wav\r\n#WAV03 d.wav";   // one is missing
  const Text lost = u"#WAV01 a.wav\r\n#WAV02 e.wav\r\n#WAV03 f.wav";  // and nobody has them
  EXPECT_EQ(previewed(three + u"\r\n#WAV04 g.wav"), offer);
  EXPECT_EQ(LinesBeginning(u"loadwav: 4"), 0);
  for (int tick = 0; tick < 25; ++tick) Tick(ms += 20);
  EXPECT_EQ(LinesBeginning(u"loadwav: 4"), 1);
  EXPECT_EQ(message.text, offer) << "no load takes it away";
  EXPECT_NE(previewed(two), offer);
  EXPECT_NE(previewed(lost), offer);
  WideCharts = true;
  EXPECT_NE(previewed(three), offer);
}

}  // namespace
}  // namespace qlm
