// What the reader makes of header lines: fields, tempo table, and the files that a chart names.
#include "chart/reader.h"

#include "base/hooks.h"
#include "base/rnd.h"
#include "platform/clock.h"
#include "state/chart.h"
#include "state/options.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "tests/chart/chart_test.h"

namespace qlm {
namespace {

class ReaderHeaderTest : public ChartTest {};

// --- header lines ---

TEST_F(ReaderHeaderTest, HeaderFields) {
  Read({u"#TITLE  My Song ", u"#ARTIST Me", u"#GENRE Pop", u"#MIDIFILE a.mid", u"#BPM 150.5", u"#PLAYER 3",
        u"#PLAYLEVEL 12", u"#RANK 1", u"#TOTAL 250", u"#VOLWAV 90"});
  EXPECT_EQ(HdrTitle, u"My Song");
  EXPECT_EQ(HdrArtist, u"Me");
  EXPECT_EQ(HdrGenre, u"Pop");
  EXPECT_EQ(HdrMidiFile, u"a.mid");
  EXPECT_EQ(HdrBPM, 150.5F);
  EXPECT_EQ(HdrPlayer, 3);
  EXPECT_EQ(HdrPlayLevel, 12);
  EXPECT_EQ(HdrRank, 1);
  EXPECT_EQ(HdrTotal, 250);
  EXPECT_EQ(HdrVolWav, 90);
}

TEST_F(ReaderHeaderTest, CommandsAreReadInAnyCaseAndByTheirFirstLetters) {
  Read({u"#titles x", u"#Art___ y", u"#ranks 3", u"#playerX2", u"#playlevels7"});
  EXPECT_EQ(HdrTitle, u"x");
  EXPECT_EQ(HdrArtist, u"y");
  EXPECT_EQ(HdrPlayer, 2);
  EXPECT_EQ(HdrPlayLevel, 7);
  EXPECT_EQ(HdrRank, 3);
}

TEST_F(ReaderHeaderTest, TrimTakesBlanksOnly) {
  Read({u"#TITLE \tx\t "});
  EXPECT_EQ(HdrTitle, u"\tx\t");
}

TEST_F(ReaderHeaderTest, TitleInShiftJis) {
  Read({u"#TITLE 春の歌"});
  EXPECT_EQ(HdrTitle, u"春の歌");
}

TEST_F(ReaderHeaderTest, LaterCommandsWin) {
  Read({u"#TITLE a", u"#TITLE b", u"#RANK 1", u"#RANK 3", u"#BPM01 5", u"#BPM01 6"});
  EXPECT_EQ(HdrTitle, u"b");
  EXPECT_EQ(HdrRank, 3);
  EXPECT_EQ(BpmTable[1], 6);
}

TEST_F(ReaderHeaderTest, NumberThatDoesNotConvertLeavesTheFieldAsItWas) {
  Read({u"#RANK 1", u"#RANK x", u"#RANK", u"#PLAYLEVEL 5", u"#PLAYLEVEL 9E9", u"#TOTAL 1,5", u"#PLAYER 2",
        u"#PLAYER \t3", u"#BPM 99", u"#BPM &H10", u"#BPM 1E39", u"#BPM"});
  EXPECT_EQ(HdrRank, 1);
  EXPECT_EQ(HdrPlayLevel, 5);
  EXPECT_EQ(HdrTotal, 0);
  EXPECT_EQ(HdrPlayer, 2);
  EXPECT_EQ(HdrBPM, 99);
}

TEST_F(ReaderHeaderTest, WholeNumbersRoundHalfToEven) {
  Read({u"#RANK 0.5", u"#TOTAL 1.5", u"#PLAYLEVEL 2.5", u"#VOLWAV 1E2", u"#PLAYER 2.6"});
  EXPECT_EQ(HdrRank, 0);
  EXPECT_EQ(HdrTotal, 2);
  EXPECT_EQ(HdrPlayLevel, 2);
  EXPECT_EQ(HdrVolWav, 100);
  EXPECT_EQ(HdrPlayer, 3);
}

TEST_F(ReaderHeaderTest, TempoZeroStands) {
  Read({u"#BPM 0"});
  EXPECT_EQ(HdrBPM, 0);
}

TEST_F(ReaderHeaderTest, TempoTableIsIndexedInHexadecimal) {
  Read({u"#BPM0A 200.25", u"#BPMFF 3", u"#BPMZZ 4", u"#BPM1G 5", u"#BPM\t6"});
  EXPECT_EQ(BpmTable[10], 200.25F);
  EXPECT_EQ(BpmTable[255], 3);
  EXPECT_EQ(BpmTable[0], 4);
  EXPECT_EQ(BpmTable[1], 5);
  EXPECT_EQ(HdrBPM, 120);
}

TEST_F(ReaderHeaderTest, UnknownCommandsHaveNoEffect) {
  Read({u"#LNOBJ 01", u"#BACKBMP x.bmp", u"#STP00100 5", u"#STAGEFILE x.bmp", u"#RANG 5", u"#PLAYED 3"});
  EXPECT_EQ(HdrRank, 2);
  EXPECT_EQ(HdrPlayer, 1);
  EXPECT_EQ(objCount, 0);
  EXPECT_EQ(BmpFile[0], u"");
}

// --- files ---

TEST_F(ReaderHeaderTest, FilesAreJoinedToTheChartsFolder) {
  Read({u"#WAV01  kick.wav ", u"#wavFF sub\\snare.wav", u"#BMP0a back.bmp", u"#WAVZZ zero.wav"});
  EXPECT_EQ(WavFile[1], Song(u"kick.wav"));
  EXPECT_EQ(WavFile[255], Song(u"sub\\snare.wav"));
  EXPECT_EQ(BmpFile[10], Song(u"back.bmp"));
  EXPECT_EQ(WavFile[0], Song(u"zero.wav"));
}

TEST_F(ReaderHeaderTest, WavLineWithoutNameNamesTheFolder) {
  Read({u"#WAV01"});
  EXPECT_EQ(WavFile[1], Song(u""));
}

TEST_F(ReaderHeaderTest, WavLineClearsTheLoadState) {
  BMSInit();
  WavLoaded[1] = WavLoaded[2] = 255;
  BMSRead(WriteChart({u"#WAV01 a.wav"}));
  EXPECT_EQ(WavLoaded[1], 0);
  EXPECT_EQ(WavLoaded[2], 255);
}

TEST_F(ReaderHeaderTest, NoWavIgnoresSounds) {
  NoWAV = true;
  Read({u"#WAV01 a.wav", u"#BMP01 a.bmp"});
  EXPECT_EQ(WavFile[1], u"");
  EXPECT_EQ(BmpFile[1], Song(u"a.bmp"));
}

TEST_F(ReaderHeaderTest, NoBgaIgnoresPictures) {
  NoBGA = true;
  Read({u"#WAV01 a.wav", u"#BMP01 a.bmp"});
  EXPECT_EQ(WavFile[1], Song(u"a.wav"));
  EXPECT_EQ(BmpFile[1], u"");
}

TEST_F(ReaderHeaderTest, TwoLinesForOneSlotLoadBothAndKeepTheSecond) {
  WAVLoadmode = 0;
  Read({u"#WAV01 a.wav", u"#WAV01 b.wav"});
  EXPECT_EQ(WavFile[1], Song(u"b.wav"));
  EXPECT_EQ(CountLogged(u"LoadWav:a.wav - ERROR"), 1);
  EXPECT_EQ(CountLogged(u"LoadWav:b.wav - ERROR"), 1);
}

TEST_F(ReaderHeaderTest, SoundsWaitWithAnotherLoadMode) {
  WAVLoadmode = 1;
  Read({u"#WAV01 a.wav"});
  EXPECT_EQ(CountLogged(u"LoadWav:a.wav - ERROR"), 0);
  EXPECT_EQ(WavLoaded[1], 0);
}

TEST_F(ReaderHeaderTest, PicturesOfOtherKindsThanBmpAreLoadedInEveryLoadMode) {
  BMPLoadmode = 1;
  Read({u"#BMP01 a.mpg", u"#BMP02 b.BmP"});
  EXPECT_EQ(BmpHeldName[1], Song(u"a.mpg"));
  EXPECT_EQ(BmpHeldName[2], u"");
  BMPLoadmode = 0;
  Read({u"#BMP02 b.BmP"});
  EXPECT_EQ(BmpHeldName[2], Song(u"b.BmP"));
}

TEST_F(ReaderHeaderTest, BmpPicturesWaitInEveryLoadModeButZero) {
  for (const int32_t mode : {1, 2, 255, -1}) {
    BMPLoadmode = mode;
    Read({u"#BMP01 a.bmp"});
    EXPECT_EQ(BmpFile[1], Song(u"a.bmp"));
    EXPECT_EQ(BmpHeldName[1], u"") << mode;
  }
}

TEST_F(ReaderHeaderTest, CourseFilesGoToTheSongsTables) {
  CourseMode = true;
  CourseSong = 3;
  CourseLoadMode = 1;
  CourseWavLoaded[3][1] = true;
  CourseBmpLoaded[3][1] = 255;
  Read({u"#WAV01 a.wav", u"#BMP01 a.bmp"});
  EXPECT_EQ(CourseWavFile[3][1], Song(u"a.wav"));
  EXPECT_EQ(CourseBmpFile[3][1], Song(u"a.bmp"));
  EXPECT_FALSE(CourseWavLoaded[3][1]);
  EXPECT_EQ(CourseBmpLoaded[3][1], 0);
  EXPECT_EQ(WavFile[1], u"");
  EXPECT_EQ(BmpFile[1], u"");
}

TEST_F(ReaderHeaderTest, CourseFilesAreLoadedAtOnceWithCourseLoadModeTwo) {
  CourseMode = true;
  CourseLoadMode = 2;
  WriteData(u"song\\a.bmp", TinyBitmap());
  Read({u"#WAV01 a.wav", u"#BMP01 a.bmp"});
  EXPECT_TRUE(CourseWavLoaded[0][1]);
  EXPECT_NE(CourseBmpSurface[0][1], nullptr);
}

TEST_F(ReaderHeaderTest, FilesOfACourseSongPast127AreDropped) {
  CourseMode = true;
  CourseSong = 128;
  CourseLoadMode = 2;
  Read({u"#WAV01 a.wav", u"#BMP01 a.bmp", u"#00111:01"});
  EXPECT_EQ(WavFile[1], u"");
  EXPECT_EQ(BmpFile[1], u"");
  EXPECT_EQ(ObjsOf(11).size(), 1U);
}

// --- giving up ---

TEST_F(ReaderHeaderTest, LoadAbortStopsBehindTheNextFileLine) {
  PlayerForce = 2;
  LoadAbort = true;
  Read({u"#00111:01", u"#TITLE read", u"#WAV01 a.wav", u"#00211:01"});
  EXPECT_EQ(objCount, 1);
  EXPECT_EQ(HdrTitle, u"read");
  EXPECT_EQ(WavFile[1], Song(u"a.wav"));
  EXPECT_EQ(HdrPlayer, 1);
  EXPECT_EQ(CountLogged(u"all lines compiled"), 0);
}

TEST_F(ReaderHeaderTest, LoadAbortStopsBehindIgnoredFileLinesToo) {
  LoadAbort = true;
  NoWAV = NoBGA = true;
  Read({u"#WAV01 a.wav", u"#00211:01"});
  EXPECT_EQ(objCount, 0);
  Read({u"#BMP01 a.bmp", u"#00211:01"});
  EXPECT_EQ(objCount, 0);
}

TEST_F(ReaderHeaderTest, LoadAbortIsNotLookedAtBehindOtherLines) {
  LoadAbort = true;
  SetRndList({0});
  Read({u"#00111:01", u"#RANDOM 2", u"#IF 2", u"#WAV01 skipped.wav", u"#ENDIF", u"#IF 9", u"#ENDIF",
        u"#00211:01"});
  EXPECT_EQ(objCount, 2);
  EXPECT_EQ(CountLogged(u"Read complete"), 1);
}

int pumps = 0;

TEST_F(ReaderHeaderTest, EventsRunBehindFileLinesAtMostEvery20Ms) {
  pumps = 0;
  hooks.loadPump = [] { ++pumps; };
  Read({u"#WAV01 a", u"#WAV02 b", u"#BMP01 c", u"#TITLE x"});
  EXPECT_EQ(pumps, 1);
  pumps = 0;
  hooks.loadPump = [] {
    ++pumps;
    platform::UseVirtualClock(platform::Now() + 20);
  };
  Read({u"#WAV01 a", u"#WAV02 b", u"#BMP01 c", u"#TITLE x"});
  EXPECT_EQ(pumps, 3);
}

TEST_F(ReaderHeaderTest, AnEventMayAbortTheLoad) {
  hooks.loadPump = [] { LoadAbort = true; };
  Read({u"#00111:01", u"#WAV01 a", u"#00211:01"});
  EXPECT_EQ(objCount, 1);
}

}  // namespace
}  // namespace qlm
