// Loading of one chart and joining of a course.
#include "chart/loading.h"

#include "base/hooks.h"
#include "base/log.h"
#include "base/rnd.h"
#include "chart/reader.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "tests/chart/chart_test.h"

namespace qlm {
namespace {

using Strings = std::vector<std::string>;

class LoadingTest : public ChartTest {
 protected:
  // Adds a song to the course.
  void AddSong(const std::vector<Text>& lines, TextView name) {
    SongEntry song;
    song.path = WriteChart(lines, name);
    CourseSongs.push_back(song);
    numsongs = static_cast<uint8_t>(CourseSongs.size());
  }
};

// --- one chart ---

TEST_F(LoadingTest, LoadReadsAndPrepares) {
  LoadAbort = true;
  EXPECT_EQ(BMSLoad(WriteChart({u"#BPM 125", u"#00111:01"})), 1);
  EXPECT_FALSE(LoadAbort);
  EXPECT_EQ(ObjsOf(11), (Strings{"m1 t0 p192 c11 v1"}));
  EXPECT_EQ(BMSLengthMs, 3840);
  EXPECT_EQ(log.front(), u"[BMSLoad] chart.bms");
  EXPECT_TRUE(Logged(u"    [BMSInit] Initializing values"));
  EXPECT_TRUE(Logged(u"    [BMSRead] chart.bms"));
  EXPECT_TRUE(Logged(u"    [BMSPrepare] minimum: False"));
  EXPECT_EQ(log.back(), u"    loaded.");
  EXPECT_EQ(LogIndent, 0);
}

TEST_F(LoadingTest, MissingFileEmptiesTheTable) {
  BMSLoad(WriteChart({u"#00111:01"}));
  log.clear();
  LoadAbort = true;
  EXPECT_EQ(BMSLoad(Join(WriteChart({}), u".none")), -1);
  EXPECT_EQ(log, (std::vector<Text>{u"[BMSLoad] chart.bms.none", u"    [BMSInit] Initializing values",
                                    u"    file not exist."}));
  EXPECT_EQ(LogIndent, 0);
  EXPECT_EQ(objCount, 0);
  EXPECT_TRUE(LoadAbort);
}

TEST_F(LoadingTest, FolderIsNoChart) {
  const Text path = WriteChart({});
  EXPECT_EQ(BMSLoad(TextView(path).substr(0, path.rfind(u'\\'))), -1);
}

TEST_F(LoadingTest, AbortedReadIsPreparedAllTheSame) {
  hooks.loadPump = [] { LoadAbort = true; };
  EXPECT_EQ(BMSLoad(WriteChart({u"#00111:01", u"#WAV01 a.wav", u"#00511:01"})), 1);
  EXPECT_TRUE(LoadAbort);
  EXPECT_EQ(Objs().size(), 4U);  // the note and the bar lines 0 to 2
}

TEST_F(LoadingTest, TooFewRecordsEndTheLoad) {
  numObjs = 2;
  EXPECT_EQ(BMSLoad(WriteChart({u"#00111:01010101"})), -1);
  EXPECT_EQ(fatals.size(), 1U);
  EXPECT_EQ(CountLogged(u"[BMSPrepare] minimum: False"), 0);
  EXPECT_EQ(BMSLoad(WriteChart({u"#00111:0101"})), -1);
  EXPECT_EQ(fatals.size(), 2U);
  EXPECT_EQ(CountLogged(u"loaded."), 0);
}

// --- courses ---

TEST_F(LoadingTest, OneSongCourse) {
  AddSong({u"#BPM 150.5", u"#00011:01"}, u"a.bms");
  BMSLoadCourse();
  // Measure 0 is whole, the gap in measure 1 a tenth of 192, rounded: 192 + 19 = 211.
  EXPECT_EQ(ObjsOf(-1),
            (Strings{"m0 t0 p0 c-1 v0", "m1 t0 p192 c-1 v0", "m2 t0 p211 c-1 v0", "m3 t0 p403 c-1 v0"}));
  EXPECT_EQ(ObjsOf(-2), (Strings{"m1 t0 p192 c-2 v0"}));
  EXPECT_EQ(ObjsOf(3), (Strings{"m2 t0 p211 c3 v150"}));
  EXPECT_EQ(ObjsOf(11), (Strings{"m2 t0 p211 c11 v1"}));
  EXPECT_EQ(lastMeasure, 2);
  EXPECT_TRUE(CourseMode);
  EXPECT_EQ(CourseSong, 0);
  EXPECT_EQ(BasePos, 0);
  EXPECT_TRUE(Logged(u"[BMSLoad:Course] numsongs:1"));
  EXPECT_TRUE(Logged(u"[BMSPrepare] minimum: False"));
}

TEST_F(LoadingTest, SongsFollowEachOtherTwoMeasuresApart) {
  AddSong({u"#BPM 125", u"#00311:01"}, u"a.bms");
  AddSong({u"#BPM 250", u"#00112:02", u"#00408:"}, u"b.bms");
  BMSLoadCourse();
  // Song 0 from 2 to 5, its closing measure 5, the gap 6, song 1 from 7 to 11.
  EXPECT_EQ(lastMeasure, 11);
  EXPECT_EQ(ObjsOf(-1).size(), 13U);
  EXPECT_EQ(MeasureLen[1], 0.1F);
  EXPECT_EQ(MeasureLen[6], 0.1F);
  EXPECT_EQ(MeasureLen[5], 1.0F);
  // 0: 0, 1: 192, 2: 211, 3: 403, 4: 595, 5: 787, 6: 979, 7: 998, 8: 1190.
  EXPECT_EQ(ObjsOf(-2), (Strings{"m1 t0 p192 c-2 v0", "m6 t0 p979 c-2 v1"}));
  EXPECT_EQ(ObjsOf(3), (Strings{"m2 t0 p211 c3 v125", "m7 t0 p998 c3 v250"}));
  EXPECT_EQ(ObjsOf(11), (Strings{"m5 t0 p787 c11 v1"}));
  EXPECT_EQ(ObjsOf(12), (Strings{"m8 t0 p1190 c12 v2"}));
  // Objects of song 0 end with its marker at measure 1, whose pos is 192.
  EXPECT_EQ(CountLogged(u"*** loading 1 : BasePos=192 NumObjs=3"), 1);
}

TEST_F(LoadingTest, NothingIsLoggedBeforeTheFirstSong) {
  AddSong({u"#00011:01"}, u"a.bms");
  BMSLoadCourse();
  for (const Text& line : log) EXPECT_FALSE(Trim(line).starts_with(u"*** loading 0")) << Utf8(line);
}

TEST_F(LoadingTest, SongsGetRankLevelAndTempoOfTheirCharts) {
  AddSong({u"#TITLE chart", u"#RANK 1", u"#PLAYLEVEL 7", u"#BPM 90.5"}, u"a.bms");
  AddSong({}, u"b.bms");
  CourseSongs[0].title = u"list";
  CourseSongs[0].total = 5;
  BMSLoadCourse();
  EXPECT_EQ(CourseSongs[0].rank, 1);
  EXPECT_EQ(CourseSongs[0].playLevel, 7);
  EXPECT_EQ(CourseSongs[0].bpm, 90.5F);
  EXPECT_EQ(CourseSongs[0].title, u"list");
  EXPECT_EQ(CourseSongs[0].total, 5);
  EXPECT_EQ(CourseSongs[1].rank, 2);
  EXPECT_EQ(CourseSongs[1].bpm, 120.0F);
}

TEST_F(LoadingTest, DerivedNumbersAreThoseOfTheLastSong) {
  AddSong({u"#RANK 0", u"#TITLE a", u"#PLAYER 3", u"#BPM 90"}, u"a.bms");
  AddSong({u"#RANK 3", u"#TITLE b", u"#PLAYER 1", u"#BPM 180"}, u"b.bms");
  BMSLoadCourse();
  EXPECT_EQ(HdrTitle, u"b");
  EXPECT_EQ(JudgeWindow[0], 4);
  EXPECT_EQ(SideCount, 1);
  EXPECT_TRUE(Logged(u"    [GetBMSLength] BPM:180"));
  EXPECT_EQ(ScorePerNote[0], 1.0);
  EXPECT_EQ(MarqueeText, u"COURSE MODE!");
}

// All at 125: 0.1 units a ms. Song 0 is measures 2 to 2, song 1 at 4 to 4, then its closing bar line at 5:
// 192 + 19 + 192 + 19 + 192 = 614 units.
TEST_F(LoadingTest, LengthIsThatOfTheWholeJoin) {
  AddSong({u"#BPM 125", u"#00011:01"}, u"a.bms");
  AddSong({u"#BPM 125", u"#00011:01"}, u"b.bms");
  BMSLoadCourse();
  EXPECT_EQ(lastObjPos, 614);
  EXPECT_EQ(BMSLengthMs, 6140);
}

TEST_F(LoadingTest, MissingSongIsPassedThroughInOneStep) {
  AddSong({u"#00011:01"}, u"a.bms");
  CourseSongs[0].path += u".none";
  AddSong({u"#00012:01"}, u"b.bms");
  BMSLoadCourse();
  EXPECT_EQ(CountLogged(u"Found First at 3"), 1);
  EXPECT_EQ(ObjsOf(-2), (Strings{"m1 t0 p192 c-2 v0", "m3 t0 p403 c-2 v1"}));
  EXPECT_EQ(ObjsOf(12), (Strings{"m4 t0 p422 c12 v1"}));
}

TEST_F(LoadingTest, FileTablesHold128Songs) {
  for (int song = 0; song < 128; ++song) AddSong({u"#WAV01 a.wav", u"#BMP01 a.bmp"}, u"a.bms");
  BMSLoadCourse();
  EXPECT_NE(CourseWavFile[127][1], u"");
  EXPECT_NE(CourseBmpFile[127][1], u"");
  EXPECT_EQ(ObjsOf(-2).size(), 128U);
}

TEST_F(LoadingTest, Song129HasNoFiles) {
  for (int song = 0; song < 129; ++song) AddSong({u"#WAV01 a.wav", u"#BMP01 a.bmp"}, u"a.bms");
  BMSLoadCourse();
  EXPECT_EQ(ObjsOf(-2).size(), 129U);
  EXPECT_EQ(WavFile[1], u"");
  EXPECT_EQ(BmpFile[1], u"");
}

TEST_F(LoadingTest, KeymapIsShuffledForEachSong) {
  AddSong({u"#00011:01"}, u"a.bms");
  AddSong({u"#00011:01"}, u"b.bms");
  Random = true;
  // First all lanes stay, then 11 changes places with 12.
  SetRndList({0.0F, 0.12F, 0.23F, 0.34F, 0.45F, 0.78F, 0.89F,  //
              0.12F, 0.12F, 0.23F, 0.34F, 0.45F, 0.78F, 0.89F});
  BMSLoadCourse();
  EXPECT_EQ(CountLogged(u"<RANDOM> Randomize keymap"), 2);
  EXPECT_EQ(ObjsOf(11).size(), 1U);
  EXPECT_EQ(ObjsOf(12).size(), 1U);
}

TEST_F(LoadingTest, RandomBlocksAreChosenAnewAtEachLoad) {
  AddSong({u"#RANDOM 2", u"#IF 1", u"#00001:01", u"#ENDIF", u"#IF 2", u"#00001:02", u"#ENDIF"}, u"a.bms");
  SetRndList({0, 0.5F});
  BMSLoadCourse();
  EXPECT_EQ(ObjsOf(1), (Strings{"m2 t0 p211 c1 v1"}));
  BMSLoadCourse();
  EXPECT_EQ(ObjsOf(1), (Strings{"m2 t0 p211 c1 v2"}));
}

int frames = 0;

TEST_F(LoadingTest, LoadingScreenIsDrawnOnceASong) {
  frames = 0;
  hooks.loadingFrame = [] { ++frames; };
  AddSong({}, u"a.bms");
  AddSong({}, u"b.bms");
  BMSLoadCourse();
  EXPECT_EQ(frames, 2);
}

std::vector<bool> titlePictures;

TEST_F(LoadingTest, TitlePicturesAreShownWhileSongsLoadWithCourseLoadModeTwo) {
  titlePictures.clear();
  hooks.loadingFrame = [] { titlePictures.push_back(DDStage != nullptr); };
  WriteData(u"stage.bmp", TinyBitmap());
  AddSong({}, u"a.bms");
  AddSong({}, u"b.bms");
  CourseSongs[0].stageFile = Text(u"stage.bmp");
  CourseLoadMode = 2;
  BMSLoadCourse();
  EXPECT_EQ(titlePictures, (std::vector<bool>{true, false}));
  titlePictures.clear();
  CourseLoadMode = 1;
  BMSLoadCourse();
  EXPECT_EQ(titlePictures, (std::vector<bool>{false, false}));
}

TEST_F(LoadingTest, TitlePictureIsReleasedAtTheEnd) {
  WriteData(u"stage.bmp", TinyBitmap());
  AddSong({}, u"a.bms");
  CourseSongs[0].stageFile = Text(u"stage.bmp");
  CourseLoadMode = 2;
  BMSLoadCourse();
  EXPECT_EQ(DDStage, nullptr);
}

TEST_F(LoadingTest, AbortEndsTheJoinBeforeTheNextSong) {
  AddSong({u"#00011:01"}, u"a.bms");
  AddSong({u"#00012:01"}, u"b.bms");
  hooks.loadingFrame = [] { LoadAbort = true; };
  BMSLoadCourse();
  EXPECT_EQ(CountLogged(u"[BMSRead] a.bms"), 1);
  EXPECT_EQ(CountLogged(u"[BMSRead] b.bms"), 0);
  EXPECT_EQ(CountLogged(u"[BMSPrepare] minimum: False"), 0);
}

TEST_F(LoadingTest, AbortDuringASongAddsNoMarker) {
  AddSong({u"#00011:01", u"#WAV01 a.wav", u"#00111:01"}, u"a.bms");
  hooks.loadPump = [] { LoadAbort = true; };
  BMSLoadCourse();
  EXPECT_EQ(Objs(), (Strings{"m2 t0 p384 c11 v1"}));
}

TEST_F(LoadingTest, ShortageEndsTheJoinAtTheSongWhereItHappens) {
  numObjs = 4;
  AddSong({u"#00011:01"}, u"a.bms");
  AddSong({u"#00011:01"}, u"b.bms");
  AddSong({u"#00011:01"}, u"c.bms");
  BMSLoadCourse();
  ASSERT_EQ(fatals.size(), 1U);
  EXPECT_TRUE(fatals[0].message.starts_with(u"this time, I need at least 6 objs."));
  EXPECT_EQ(CountLogged(u"[BMSRead] b.bms"), 1);
  EXPECT_EQ(CountLogged(u"[BMSRead] c.bms"), 0);
}

TEST_F(LoadingTest, ReadingOfACourseLeavesItUnprepared) {
  AddSong({u"#00011:01"}, u"a.bms");
  AddSong({u"#00012:02"}, u"b.bms");
  EXPECT_TRUE(ReadCourse());
  // Two notes, and for each song its tempo and its marker.
  EXPECT_EQ(Objs().size(), 6U);
  EXPECT_EQ(CountLogged(u"[BMSPrepare] minimum: False"), 0);
  EXPECT_EQ(BasePos, 0);
  LoadAbort = true;
  EXPECT_FALSE(ReadCourse());
}

TEST_F(LoadingTest, PreviewIsOverWhenACourseIsJoined) {
  PreviewActive = true;
  AddSong({}, u"a.bms");
  BMSLoadCourse();
  EXPECT_FALSE(PreviewActive);
  EXPECT_EQ(ObjsOf(-2).size(), 1U);
}

TEST_F(LoadingTest, SongsThatAreNotListedArePassedOver) {
  AddSong({u"#00011:01"}, u"a.bms");
  numsongs = 3;
  BMSLoadCourse();
  EXPECT_EQ(ObjsOf(-2).size(), 1U);
}

}  // namespace
}  // namespace qlm
