// Tests of a whole play, from a chart file to the return to the list.
#include <array>
#include <cstdlib>
#include <functional>
#include <utility>
#include <vector>

#include "base/hooks.h"
#include "base/paths.h"
#include "chart/loading.h"
#include "graphics/display.h"
#include "platform/clock.h"
#include "platform/window.h"
#include "screens/road.h"
#include "state/gauge.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"
#include "tests/support/virtual_desktop.h"

namespace qlm {
namespace {

class StartPlayTest : public PlayTest {
 protected:
  StartPlayTest() {
    DEMOMode = true;
    GameState = kStatePlay;
    RunFrames(10);
  }

  // Who waits for the end of the results presses a lane there.
  static void RunFrames(uint32_t ms, std::function<void(int32_t)> hand = {}) {
    PlayTest::RunFrames(ms, [hand = std::move(hand)](int32_t passed) {
      if (hand) hand(passed);
      if (GameState == kStateResults) LaneDown[0] = true;
    });
  }

  // A chart of 150 BPM, 0.12 units a millisecond, with three sounds.
  int32_t Load(TextView lines) {
    for (const TextView name : {u"kick.wav", u"bass.wav", u"lead.wav"}) {
      WriteData(Join(u"song\\", name), WavBytes(20));
    }
    const Text path = WriteText(u"song\\a.bms", Join(u"\r\n#BPM 150\r\n#WAV01 kick.wav\r\n#WAV02 bass.wav\r\n"
                                                     u"#WAV03 lead.wav\r\n",
                                                     lines));
    return BMSLoad(path);
  }
};

TEST_F(StartPlayTest, MachinePlaysEveryNoteInTime) {
  WAVLoadmode = 0;
  ASSERT_EQ(Load(u"#00111:01000200\r\n#00113:00000003\r\n#00101:02\r\n"), 1);
  StartPlay();
  // Measure 1 begins at 192 / 0.12 = 1600 ms, a beat lasts 400 ms; turns come every 10 ms.
  ASSERT_EQ(played.starts.size(), 4U);
  EXPECT_EQ(played.starts[0].clock, 1600);
  EXPECT_EQ(played.starts[1].clock, 1600);
  EXPECT_EQ(played.starts[2].clock, 2400);
  EXPECT_EQ(played.starts[2].slot, 2);
  EXPECT_EQ(played.starts[3].clock, 2800);
  EXPECT_EQ(played.starts[3].slot, 3);
  EXPECT_TRUE(Logged(u"totalobjs: 7"));  // three notes, a background sound, bar lines of measures 0 to 2
  EXPECT_TRUE(PlayCleared);
  // The last bar line lies at 3200 ms.
  EXPECT_EQ(FadeStart, kStart + 1000 + 3210);
}

TEST_F(StartPlayTest, SoundsThatWaitAreLoadedAhead) {
  WAVLoadmode = 1;
  ASSERT_EQ(Load(u"#00111:01000200\r\n"), 1);
  EXPECT_EQ(WavLoaded[1], 0);
  int32_t loadedAt = -1;
  RunFrames(10, [&](int32_t ms) {
    if (loadedAt < 0 && WavLoaded[2] == 255) loadedAt = ms;
  });
  StartPlay();
  EXPECT_EQ(WavLoaded[1], 255);
  // The note stands at 288 units: 120 ahead of it are reached at 168 / 0.12 = 1400 ms.
  EXPECT_EQ(loadedAt, 1000 + 1400);
  EXPECT_EQ(Starts(), "1@1600 2@2400");
}

TEST_F(StartPlayTest, TempoChangesMoveWhatFollows) {
  ASSERT_EQ(Load(u"#BPM01 75\r\n#00103:0096\r\n#00208:01\r\n#00211:0001\r\n#00311:02\r\n"), 1);
  StartPlay();
  // 150 BPM until measure 1.5 and on from there (0x96 is 150): measure 2 begins at 3200 ms. At 75 BPM half a
  // measure takes 1600 ms.
  EXPECT_EQ(Starts(), "1@4800 2@6400");
  ASSERT_EQ(played.tempi.size(), 2U);
  EXPECT_FLOAT_EQ(played.tempi[0].curBPM, 150);
  EXPECT_EQ(played.tempi[0].clock, 2400);
  EXPECT_FLOAT_EQ(played.tempi[1].curBPM, 75);
  EXPECT_EQ(played.tempi[1].posOffset, 192);  // -(75 - 150) / 1250 * 3200
}

TEST_F(StartPlayTest, PreviewsHandsAreTakenOff) {
  PlayKeySound = true;
  UserPlay = false;
  StartPlay();
  EXPECT_FALSE(PlayKeySound);
  EXPECT_TRUE(UserPlay);
}

// What the play before has left.
void LeaveAPlay() {
  playPos = 5000;
  objCursor = 9;
  Score[0] = 1000;
}

TEST_F(StartPlayTest, PreRollStandsAtTheChartsBeginningWithFreshFigures) {
  ASSERT_EQ(Load(u"#00011:01\r\n"), 1);
  songList.resize(1);
  songList[0].path = Join(AppPath, u"\\song\\a.bms");
  lastSong = 0;
  for (const bool fromTheList : {true, false}) {
    SetNow(kStart);
    LeaveAPlay();
    bool fresh = false;
    RunFrames(10, [&](int32_t ms) {
      if (ms == 0) fresh = playPos == 0 && objCursor == 0 && Score[0] == 0;
    });
    if (fromTheList) {
      StartPlay();
    } else {
      PlayListEntry(0);
    }
    EXPECT_TRUE(fresh) << fromTheList;
  }
}

bool endAsked = false;

TEST_F(StartPlayTest, EntryOfTheListIsLoadedPlayedAndThenTheCurrentOne) {
  Load(u"");
  songList.resize(3);
  songList[2].path = Join(AppPath, u"\\song\\a.bms");
  lastSong = 2;
  hooks.loadPump = [] { endAsked = PlayEnd; };
  endAsked = false;
  int32_t cursor = -1;
  RunFrames(10, [&](int32_t) { cursor = listCursor; });
  EXPECT_TRUE(PlayListEntry(2));
  EXPECT_TRUE(endAsked) << "what plays must end while the next is loaded";
  EXPECT_EQ(cursor, 0);
  EXPECT_EQ(listCursor, 2);
  EXPECT_TRUE(PlayCleared);
}

TEST_F(StartPlayTest, EntryThatCannotBeLoadedIsLoggedBehindItsPlay) {
  listCursor = 5;
  EXPECT_FALSE(PlayListEntry(0));
  EXPECT_EQ(log.back(), u"error: File not found");
  EXPECT_EQ(LinesBeginning(u"playloop end"), 1);
  EXPECT_EQ(listCursor, 0);
}

TEST_F(StartPlayTest, ReturnsToTheList) {
  ReturnState = kStateCourses;
  HazardGauge = selectLocked = true;
  KeyHeld[30] = true;
  SkinPath = u"\\new.brd";
  RunFrames(10, [](int32_t ms) {
    if (ms == 1000) LaneDown.fill(true);
  });
  StartPlay();
  EXPECT_EQ(GameState, kStateCourses);
  EXPECT_FALSE(HazardGauge);
  EXPECT_FALSE(selectLocked);
  EXPECT_FALSE(KeyHeld[30]);
  for (const bool down : LaneDown) EXPECT_FALSE(down);
  EXPECT_TRUE(Logged(u"[Unload-BMS] > faked"));
  EXPECT_EQ(LinesBeginning(u"Restore SkinMap(0) :"), 1);
}

TEST_F(StartPlayTest, PutsTheMouseToTheCentreBehindThePlay) {
  // The display that nobody sees has 1024 by 768 pixels, and the frame stands in its middle.
  setenv("SDL_VIDEODRIVER", "dummy", 1);
  NOVSync = true;
  InitDD();
  ASSERT_EQ(Load(u""), 1);
  RunFrames(10, [](int32_t ms) {
    if (ms == 500) platform::MoveMouse(10, 20);
  });
  StartPlay();
  const PointerPlace place = WhereThePointerIs();
  ReleaseDD();
  EXPECT_EQ(place, (PointerPlace{192 + 320, 144 + 240}));
}

TEST_F(StartPlayTest, MusicOfTheListIsLoopedAtFullVolumeBehindThePlay) {
  // 10 ms of a tone that stands at 10000, which a preview has turned down to a tenth.
  const std::vector<int16_t> samples(441, 10000);
  const platform::SoundFormat format{.tag = 1, .channels = 1, .samplesPerSec = 44100, .bitsPerSample = 16};
  SoundBufferPtr& music = SystemSound[static_cast<int32_t>(SE::kSelectMusic)];
  music = platform::CreateSoundBuffer({.flags = 0, .bytes = 882}, format).buffer;
  music->Write(0, {reinterpret_cast<const unsigned char*>(samples.data()), 882});
  music->SetVolume(-2000);
  FillSound(SE::kSelectStart);
  StartPlay();
  EXPECT_TRUE(Sounding(SE::kSelectStart));
  std::array<int16_t, 2000> heard{};
  platform::RenderSound(heard);
  std::array<int16_t, 2000> tone{};
  tone.fill(10000);
  EXPECT_EQ(heard, tone);

  EXPECT_TRUE(Sounding(SE::kSelectMusic)) << "behind 1000 of its 441 frames";
}

TEST_F(StartPlayTest, MusicOfTheListIsSilentBetweenTheChartsOfARun) {
  ASSERT_EQ(Load(u"#00011:01\r\n"), 1);
  FillSound(SE::kSelectMusic);
  FillSound(SE::kSelectStart);
  EndlessRun = true;
  StartPlay();
  EXPECT_FALSE(Sounding(SE::kSelectMusic));
  EXPECT_FALSE(Sounding(SE::kSelectStart));
}

TEST_F(StartPlayTest, MissingChartEndsAtOnce) {
  EXPECT_EQ(BMSLoad(Join(AppPath, u"\\none.bms")), -1);
  StartPlay();
  EXPECT_TRUE(Logged(u"totalobjs: 0"));
  EXPECT_EQ(played.turns, 22);
  EXPECT_EQ(objCursor, 0);
  EXPECT_EQ(JudgeCount[0][4], 0);
}

TEST_F(StartPlayTest, ChartWithoutNotesEndsBehindItsBarLines) {
  ASSERT_EQ(Load(u""), 1);
  StartPlay();
  EXPECT_EQ(objCursor, 2);
  EXPECT_EQ(Starts(), "");
  EXPECT_TRUE(PlayCleared);
}

TEST_F(StartPlayTest, EndlessRunGoesOnBehindAChartThatEnds) {
  ASSERT_EQ(Load(u"#00011:01\r\n"), 1);
  EndlessRun = HazardGauge = true;
  SkinPath = u"\\new.brd";
  StartPlay();
  EXPECT_TRUE(EndlessRun);
  EXPECT_TRUE(HazardGauge);
  EXPECT_EQ(LinesBeginning(u"Restore SkinMap("), 0);  // no results between
}

TEST_F(StartPlayTest, EndlessRunEndsWithAFailure) {
  ASSERT_EQ(Load(u"#00911:01\r\n"), 1);
  EndlessRun = HazardGauge = true;
  RunFrames(10, [](int32_t ms) {
    if (ms == 1500) PlayFailed = true;
  });
  StartPlay();
  EXPECT_FALSE(EndlessRun);
  EXPECT_FALSE(HazardGauge);
  EXPECT_EQ(LinesBeginning(u"Restore SkinMap("), 1);
}

}  // namespace
}  // namespace qlm
