// Tests of the join of two songs of a course.
#include "play/song_change.h"

#include <algorithm>

#include "base/log.h"
#include "base/paths.h"
#include "platform/clock.h"
#include "state/courses.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/message.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

class SongChangeTest : public PlayTest {
 protected:
  SongChangeTest() {
    CourseMode = true;
    GameState = kStatePlay;
    CourseLoadMode = 2;
    CourseSongs.resize(3);
    SongEntry& song = CourseSongs[1];
    song.title = u"Second";
    song.artist = u"Quill";
    song.genre = u"March";
    song.bpm = 140;
    song.player = 3;
    song.playLevel = 7;
    song.midiFile = u"x.mid";
    song.rank = 3;
    song.volWav = 80;
    song.total = 333;
    song.path = Join(AppPath, u"\\song\\b.bms");
    TotalNotes[0] = 100;
    HistoryStep = 10;
  }
};

TEST_F(SongChangeTest, HeaderOfTheSongIsTaken) {
  ChangeSong(1);
  EXPECT_EQ(CourseSong, 1);
  EXPECT_EQ(HdrTitle, u"Second");
  EXPECT_EQ(HdrArtist, u"Quill");
  EXPECT_EQ(HdrGenre, u"March");
  EXPECT_FLOAT_EQ(HdrBPM, 140);
  EXPECT_EQ(HdrPlayer, 3);
  EXPECT_EQ(HdrPlayLevel, 7);
  EXPECT_EQ(HdrMidiFile, u"x.mid");
  EXPECT_EQ(HdrRank, 3);
  EXPECT_EQ(HdrVolWav, 80);
  EXPECT_EQ(HdrTotal, 333);
}

TEST_F(SongChangeTest, SongIsAnnounced) {
  ChangeSong(1);
  EXPECT_EQ(message.text, u"Song: [2] Second / Quill");
}

TEST_F(SongChangeTest, MarqueeHasItsGap) {
  TitleChars = 5;
  ChangeSong(1);
  EXPECT_EQ(MarqueeText, u"Second / Quill     ");
}

TEST_F(SongChangeTest, MarqueeIsConvertedOnce) {
  CourseSongs[1].title = u"ギター";
  ChangeSong(1);
  EXPECT_EQ(MarqueeText, u"GITA- / Quill");
  EXPECT_EQ(std::count(log.begin(), log.end(), Text(u"[Cvt2ASCII]: ギター / Quill")), 1);
}

TEST_F(SongChangeTest, ExPtsReachedSoFarAreStored) {
  CourseSong = 0;
  JudgeCount[0] = {10, 3, 9, 9, 9};
  ChangeSong(1);
  EXPECT_EQ(CourseExPts[0], 23);
  JudgeCount[0] = {20'000, 0, 0, 0, 0};  // past 16 bits
  ChangeSong(2);
  EXPECT_EQ(CourseExPts[1], 0);
}

TEST_F(SongChangeTest, WindowsFollowTheRank) {
  ChangeSong(1);
  EXPECT_EQ(JudgeWindow, (std::array<int32_t, 4>{4, 8, 24, 32}));
  CourseSongs[2].rank = 0;
  ChangeSong(2);
  EXPECT_EQ(JudgeWindow, (std::array<int32_t, 4>{1, 2, 6, 8}));
  CourseSongs[1].rank = 4;
  ChangeSong(1);
  EXPECT_EQ(JudgeWindow, (std::array<int32_t, 4>{1, 2, 6, 8}));
}

TEST_F(SongChangeTest, LoadStatesOfTheSongAreTaken) {
  WavLoaded[1] = WavLoaded[2] = 255;
  BmpLoaded[1] = BmpLoaded[2] = 255;
  CourseWavLoaded[1][2] = true;
  CourseWavLoaded[1][255] = true;
  CourseBmpLoaded[1][3] = 255;
  ChangeSong(1);
  EXPECT_EQ(WavLoaded[1], 0);
  EXPECT_EQ(WavLoaded[2], 255);
  EXPECT_EQ(WavLoaded[255], 255);
  EXPECT_EQ(BmpLoaded[1], 0);
  EXPECT_EQ(BmpLoaded[3], 255);
}

TEST_F(SongChangeTest, PicturesOfTheSongBeforeGo) {
  curBaseBGA = curLayerBGA = 4;
  ChangeSong(1);
  EXPECT_EQ(curBaseBGA, -1);
  EXPECT_EQ(curLayerBGA, -1);
}

TEST_F(SongChangeTest, MarkStandsOnTheGraph) {
  playClock = 500;       // slot 50
  JPtsMax[0] = 18 * 20;  // 20 of 100 notes judged: column 60
  ChangeSong(1);
  EXPECT_EQ(DDGraph->Pixel(50, 0), platform::Rgb(0, 64, 192));
}

TEST_F(SongChangeTest, MarkWithoutNotesIsSkipped) {
  TotalNotes[0] = 0;
  ChangeSong(1);
  for (int32_t x = 0; x < 300; ++x) EXPECT_EQ(DDGraph->Pixel(x, 0), 0U);
}

TEST_F(SongChangeTest, LoadedCourseLosesNoTime) {
  Lay(ObjSongChange, 100, 1);
  Lay(ObjSeparator, 9000);
  Begin();
  logOutput.afterLine = [] { SetNow(platform::Now() + 1); };
  Turn(100);
  EXPECT_EQ(LinesBeginning(u"loadwav"), 0);
  EXPECT_EQ(playStart, kStart);
}

// Each log line of a load takes a millisecond here.
TEST_F(SongChangeTest, TimeOfTheLoadDoesNotCount) {
  CourseLoadMode = 1;
  Lay(ObjSongChange, 100, 1);
  Lay(ObjSeparator, 9000);
  Begin();
  logOutput.afterLine = [] { SetNow(platform::Now() + 1); };
  Turn(100);
  EXPECT_EQ(LinesBeginning(u"loadwav2"), 255);  // slot 0 is never loaded
  EXPECT_EQ(playStart, kStart + 255);
  EXPECT_TRUE(CourseWavLoaded[1][7]);
  EXPECT_TRUE(CourseWavLoaded[1][0]);
  EXPECT_EQ(CourseBmpLoaded[1][7], 255);
  EXPECT_EQ(WavLoaded[7], 255);
  EXPECT_EQ(BmpLoaded[0], 255);
  logOutput.afterLine = nullptr;
  Turn(100 + 255 + 10);
  EXPECT_EQ(playClock, 110);
  EXPECT_DOUBLE_EQ(playPos, 110);
}

TEST_F(SongChangeTest, SoundsThatPlayGoOnThroughTheLoad) {
  CourseLoadMode = 1;
  FillSlot(9);
  const Text file = u"\\a.wav";
  WavHeldName[9] = file;
  CourseWavFile[1][9] = file;  // the song names the file that the slot holds
  WavBuffer[9]->Play(false);
  ChangeSong(1);
  EXPECT_TRUE(WavBuffer[9]->Playing());
}

TEST_F(SongChangeTest, EffectShowsTheTitlePicture) {
  // A 2 by 1 picture of 24 bits.
  std::string bmp("BM\x3e\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x02\0\0\0\x01\0\0\0\x01\0\x18\0", 30);
  bmp.resize(54 + 8, '\0');
  WriteData(u"song\\stage.bmp", bmp);
  CourseSongs[1].stageFile = u"stage.bmp";
  CourseEffect = true;
  SetClock(777);
  ChangeSong(1);
  EXPECT_NE(DDStage, nullptr);
  EXPECT_EQ(FadeState, kFadeTitle);
  EXPECT_EQ(FadeStart, kStart + 777);
}

TEST_F(SongChangeTest, WithoutTheEffectNoTitlePictureIsLoaded) {
  WriteData(u"song\\stage.bmp", "never read");
  CourseSongs[1].stageFile = u"stage.bmp";
  CourseEffect = false;
  DDStage = std::make_shared<Surface>(4, 4);
  ChangeSong(1);
  EXPECT_NE(DDStage, nullptr) << "the one before stays";
  EXPECT_EQ(FadeState, kFadeNone);
}

TEST_F(SongChangeTest, EffectWithoutAPictureHasNoFade) {
  CourseEffect = true;
  DDStage = std::make_shared<Surface>(4, 4);
  ChangeSong(1);
  EXPECT_EQ(DDStage, nullptr);
  EXPECT_EQ(FadeState, kFadeNone);
}

TEST_F(SongChangeTest, SongOutsideTheCourseKeepsTheHeader) {
  HdrTitle = u"kept";
  CourseLoadMode = 1;
  ChangeSong(200);
  EXPECT_EQ(HdrTitle, u"kept");
  EXPECT_EQ(CourseSong, 200);
  ChangeSong(-1);
  EXPECT_EQ(HdrTitle, u"kept");
}

}  // namespace
}  // namespace qlm
