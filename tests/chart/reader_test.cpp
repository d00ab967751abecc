// The reader: from chart text to objects, and what a read empties, sets and logs.
#include "chart/reader.h"

#include "base/hooks.h"
#include "base/log.h"
#include "base/rnd.h"
#include "platform/clock.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/options.h"
#include "state/records.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tests/chart/chart_test.h"

namespace qlm {
namespace {

using Strings = std::vector<std::string>;
using Texts = std::vector<Text>;
using Counts = std::array<int32_t, 2>;
using Flags = std::array<bool, 2>;

class ReaderTest : public ChartTest {};

// --- emptying ---

TEST_F(ReaderTest, InitEmptiesWhatOneChartOwns) {
  numObjs = 9;
  WavFile[1] = BmpFile[1] = Text(u"x");
  WavLoaded[1] = BmpLoaded[1] = 255;
  KeySoundChanges[0] = {11, 5, 7};
  MeasureLen[3] = 0.5F;
  VoiceList[0] = 1;
  VoiceStart[1] = 5;
  VoiceActive[1] = true;
  VoiceCount = EchoCount = RecCount = 4;
  objs.resize(1);
  objs[0].channel = 11;
  objCount = keySoundCount = lastMeasure = posOffset = posTotal = 3;
  TotalNotes = {1, 2};
  ScoreShown = {1, 2};
  JPtsShown = {1, 2};
  BMSInit();
  EXPECT_TRUE(Logged(u"[BMSInit] Initializing values"));
  EXPECT_EQ(WavFile[1], u"");
  EXPECT_EQ(BmpFile[1], u"");
  EXPECT_EQ(WavLoaded[1], 0);
  EXPECT_EQ(BmpLoaded[1], 0);
  EXPECT_EQ(KeySoundChanges[0], KeySoundChange{});
  EXPECT_EQ(MeasureLen[3], 0);
  EXPECT_EQ(VoiceList[0], 0);
  EXPECT_EQ(VoiceStart[1], 0U);
  EXPECT_FALSE(VoiceActive[1]);
  EXPECT_EQ(objs, std::vector<ChartObj>(10));
  EXPECT_EQ(objCount, 0);
  EXPECT_EQ(keySoundCount, 0);
  EXPECT_EQ(lastMeasure, 0);
  EXPECT_EQ(posOffset, 0);
  EXPECT_EQ(posTotal, 0);
  EXPECT_EQ(VoiceCount, 0);
  EXPECT_EQ(EchoCount, 0);
  EXPECT_EQ(RecCount, 0);
  EXPECT_EQ(TotalNotes, (Counts{0, 0}));
  EXPECT_EQ(ScoreShown, (std::array<double, 2>{0, 0}));
  EXPECT_EQ(JPtsShown, (std::array<float, 2>{0, 0}));
}

TEST_F(ReaderTest, InitKeepsHeaderTempoTableAndHeldFiles) {
  HdrTitle = Text(u"title");
  HdrTotal = 7;
  BpmTable[1] = 99;
  WavHeldName[1] = BmpHeldName[1] = Text(u"held");
  BMSInit();
  EXPECT_EQ(HdrTitle, u"title");
  EXPECT_EQ(HdrTotal, 7);
  EXPECT_EQ(BpmTable[1], 99);
  EXPECT_EQ(WavHeldName[1], u"held");
  EXPECT_EQ(BmpHeldName[1], u"held");
}

TEST_F(ReaderTest, TableHoldsOneRecordMoreThanNumObjs) {
  BMSInit();
  EXPECT_EQ(objs.size(), 65536U);
}

TEST_F(ReaderTest, TableThatCannotBeAllocatedIsEmpty) {
  for (const int32_t size : {-5, INT32_MAX}) {
    numObjs = size;
    Read({u"#00111:01"});
    EXPECT_TRUE(objs.empty());
    EXPECT_EQ(objCount, 1);
  }
}

// --- the log of a read, and where lines are found ---

TEST_F(ReaderTest, LogsItsStepsAtTheirIndents) {
  const Text path = WriteChart({u"#TITLE x", u"#00711:01"});
  BMSRead(path);
  EXPECT_EQ(log, (Texts{u"[BMSRead] chart.bms", u"    Found First at 4", u"    all lines compiled",
                        u"    last measure: 7", u"    Read complete"}));
  EXPECT_EQ(LogIndent, 0);
}

TEST_F(ReaderTest, FileWithoutObjectsLeavesTheLogIndented) {
  BMSRead(WriteChart({u"#TITLE x"}));
  EXPECT_EQ(log, (Texts{u"[BMSRead] chart.bms", u"    Found First at 4", u"    all lines compiled",
                        u"    last measure: 0"}));
  EXPECT_EQ(LogIndent, 1);
}

TEST_F(ReaderTest, FirstLineCommandIsIgnored) {
  ReadBytes("#PLAYER 3\r\n#TITLE seen\r\n");
  EXPECT_EQ(HdrPlayer, 1);
  EXPECT_EQ(HdrTitle, u"seen");
  EXPECT_TRUE(Logged(u"    Found First at 13"));
}

TEST_F(ReaderTest, PlaceOfTheFirstCommandCountsCharacters) {
  ReadBytes("\x8A\x4A\x8A\x4A\r\n#TITLE x\r\n");  // two characters of two bytes
  EXPECT_TRUE(Logged(u"    Found First at 6"));
}

TEST_F(ReaderTest, CommandBehindABlankIsIgnored) {
  Read({u" #TITLE no", u"\t#TITLE no", u"TITLE no", u"#ARTIST yes"});
  EXPECT_EQ(HdrTitle, u"");
  EXPECT_EQ(HdrArtist, u"yes");
}

TEST_F(ReaderTest, LfOnlyFileHasNoLines) {
  ReadBytes("\n#TITLE x\n#00111:01\n");
  EXPECT_EQ(CountLogged(u"Return-code converted"), 1);
  EXPECT_EQ(CountLogged(u"Found First at 3"), 1);
  EXPECT_EQ(HdrTitle, u"");
  EXPECT_EQ(objCount, 0);
}

TEST_F(ReaderTest, CrOnlyFileIsConvertedAndRead) {
  ReadBytes("\r#TITLE x\r#00111:01\r");
  EXPECT_EQ(CountLogged(u"Return-code converted"), 1);
  EXPECT_EQ(CountLogged(u"Found First at 4"), 1);
  EXPECT_EQ(HdrTitle, u"x");
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c11 v1"}));
}

TEST_F(ReaderTest, CrLfFileIsNotConverted) {
  Read({u"#TITLE x"});
  EXPECT_EQ(CountLogged(u"Return-code converted"), 0);
}

TEST_F(ReaderTest, EmptyAndMissingFilesAreConverted) {
  ReadBytes("");
  EXPECT_EQ(CountLogged(u"Return-code converted"), 1);
  BMSRead(Song(u"none.bms"));
  EXPECT_EQ(CountLogged(u"Return-code converted"), 2);
  EXPECT_EQ(CountLogged(u"Found First at 3"), 2);
  EXPECT_EQ(objCount, 0);
}

TEST_F(ReaderTest, NulEndsTheChart) {
  ReadBytes(std::string_view("\r\n#00111:01\r\n\0\r\n#00211:01\r\n", 27));
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c11 v1"}));
}

// The first CR LF # stands behind the NUL.
TEST_F(ReaderTest, NulBeforeTheFirstLineLeavesNothing) {
  ReadBytes(std::string_view("\0\r\n#00111:01\r\n", 14));
  EXPECT_EQ(objCount, 0);
  EXPECT_EQ(CountLogged(u"Return-code converted"), 1);
}

TEST_F(ReaderTest, LineHoldingOnlyHashRunsOnThroughTheNext) {
  Read({u"#", u"#TITLE no", u"#ARTIST yes"});
  EXPECT_EQ(HdrTitle, u"");
  EXPECT_EQ(HdrArtist, u"yes");
}

TEST_F(ReaderTest, HashAtTheVeryEndIsNoCommand) {
  ReadBytes("\r\n#00111:01\r\n#");
  EXPECT_EQ(objCount, 1);
}

TEST_F(ReaderTest, LastLineNeedsNoLineEnd) {
  ReadBytes("\r\n#TITLE x");
  EXPECT_EQ(HdrTitle, u"x");
}

// --- what a read sets at its start ---

TEST_F(ReaderTest, DefaultsAreSetAtEachRead) {
  Read({u"#RANK 0", u"#PLAYLEVEL 9", u"#PLAYER 3", u"#BPM 77", u"#TOTAL 300"});
  Read({});
  EXPECT_EQ(HdrRank, 2);
  EXPECT_EQ(HdrPlayLevel, 3);
  EXPECT_EQ(HdrPlayer, 1);
  EXPECT_EQ(HdrBPM, 120);
  EXPECT_EQ(HdrTotal, 0);
}

TEST_F(ReaderTest, TextsVolumeAndTempoTableStayFromTheChartBefore) {
  Read({u"#TITLE t", u"#ARTIST a", u"#GENRE g", u"#MIDIFILE m", u"#VOLWAV 80", u"#BPM0A 99"});
  Read({});
  EXPECT_EQ(HdrTitle, u"t");
  EXPECT_EQ(HdrArtist, u"a");
  EXPECT_EQ(HdrGenre, u"g");
  EXPECT_EQ(HdrMidiFile, u"m");
  EXPECT_EQ(HdrVolWav, 80);
  EXPECT_EQ(BpmTable[10], 99);
}

TEST_F(ReaderTest, FlagsOfTheFileAreClearedAtEachRead) {
  Read({u"#00118:01", u"#00121:01"});
  EXPECT_TRUE(uses89);
  EXPECT_EQ(sideUsed, (Flags{true, true}));
  sideUsesBga = {true, true};
  Read({});
  EXPECT_FALSE(uses89);
  EXPECT_EQ(sideUsed, (Flags{false, false}));
  EXPECT_EQ(sideUsesBga, (Flags{false, false}));
}

TEST_F(ReaderTest, SoundDescriptionIsSetUpAtEachRead) {
  wavDescription = {};
  wavFormat = {};
  Read({});
  EXPECT_EQ(wavDescription.flags, 32994U);
  EXPECT_EQ(wavFormat.tag, 1);
  EXPECT_EQ(wavFormat.channels, 2);
  EXPECT_EQ(wavFormat.samplesPerSec, 44100U);
  EXPECT_EQ(wavFormat.bitsPerSample, 16);
  EXPECT_EQ(wavFormat.blockAlign, 4);
  EXPECT_EQ(wavFormat.avgBytesPerSec, 176400U);
}

TEST_F(ReaderTest, PathOfTheChartIsKept) {
  Read({});
  EXPECT_EQ(BMSPath, Song(u"chart.bms"));
}

TEST_F(ReaderTest, RandomNumbersAreSeededFromTheClock) {
  FourDMode = true;
  const std::vector<Text> chart = {u"#00101:0101"};
  Read(chart);
  const std::vector<ChartObj> first = objs;
  Read(chart);
  EXPECT_EQ(objs, first);
  platform::UseVirtualClock(1'234'567);
  Read(chart);
  EXPECT_NE(objs, first);
}

// --- numbered lines ---

TEST_F(ReaderTest, ObjectHoldsMeasureTickPosChannelAndValue) {
  Read({u"#00211:00AB00"});
  EXPECT_EQ(Objs(), (Strings{"m2 t64 p448 c11 v171"}));
  EXPECT_FALSE(objs[0].hit);
  EXPECT_EQ(objs[0].speedMul, 1.0F);
}

TEST_F(ReaderTest, ObjectsStandInTheOrderOfTheFile) {
  Read({u"#00511:01", u"#00104:0203", u"#00511:04"});
  EXPECT_EQ(Objs(),
            (Strings{"m5 t0 p960 c11 v1", "m1 t0 p192 c4 v2", "m1 t96 p288 c4 v3", "m5 t0 p960 c11 v4"}));
}

TEST_F(ReaderTest, ReadsAppend) {
  Read({u"#00111:01"});
  BMSRead(WriteChart({u"#00211:02"}));
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c11 v1", "m2 t0 p384 c11 v2"}));
}

TEST_F(ReaderTest, OnlyTheKnownChannelsMakeObjects) {
  std::vector<int32_t> makers;
  for (int32_t channel = 0; channel <= 99; ++channel) {
    Read({Join(u"#001", Padded(channel, 2), u":01")});
    EXPECT_EQ(lastMeasure, 1) << channel;
    if (objCount == 0) continue;
    makers.push_back(channel);
    EXPECT_EQ(objs[0].channel, channel);
  }
  EXPECT_EQ(makers, (std::vector<int32_t>{1,  3,  4,  6,  7,  8,  11, 12, 13, 14, 15, 16, 18, 19,
                                          21, 22, 23, 24, 25, 26, 28, 29, 31, 32, 33, 34, 35, 36,
                                          37, 38, 39, 41, 42, 43, 44, 45, 46, 47, 48, 49}));
}

TEST_F(ReaderTest, ChannelIsDecimal) {
  Read({u"#0011A:05"});
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c1 v5"}));
}

TEST_F(ReaderTest, CharacterSixIsPassedOverWhateverItIs) {
  Read({u"#00111x01", u"#00211 02", u"#003110303"});
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c11 v1", "m2 t0 p384 c11 v2", "m3 t0 p576 c11 v48"}));
}

TEST_F(ReaderTest, CellsAreHexadecimalOnly) {
  Read({u"#00101:1G", u"#00201:ZZ", u"#00301:0Z", u"#00401:fF"});
  EXPECT_EQ(Objs(),
            (Strings{"m1 t0 p192 c1 v1", "m2 t0 p384 c1 v0", "m3 t0 p576 c1 v0", "m4 t0 p768 c1 v255"}));
}

TEST_F(ReaderTest, TrailingOddCharacterIsIgnored) {
  Read({u"#00101:01020"});
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c1 v1", "m1 t96 p288 c1 v2"}));
}

// "01" and two blanks are two cells.
TEST_F(ReaderTest, TrailingBlanksAreCellsToo) {
  Read({u"#00101:01  "});
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c1 v1", "m1 t96 p288 c1 v0"}));
}

TEST_F(ReaderTest, DoubleByteCharactersCountAsOne) {
  Read({u"#00101:開01"});
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c1 v0"}));
}

TEST_F(ReaderTest, EmptyDataMakesNothingButRaisesTheLastMeasure) {
  Read({u"#00511:", u"#00711:0", u"#009"});
  EXPECT_EQ(objCount, 0);
  EXPECT_EQ(lastMeasure, 9);
}

TEST_F(ReaderTest, UnknownChannelsRaiseTheLastMeasure) {
  Read({u"#00309:01", u"#00417:01"});
  EXPECT_EQ(objCount, 0);
  EXPECT_EQ(lastMeasure, 4);
}

TEST_F(ReaderTest, TicksOfThreeAndOf128Cells) {
  Read({u"#00001:010101"});
  EXPECT_EQ(Objs(), (Strings{"m0 t0 p0 c1 v1", "m0 t64 p64 c1 v1", "m0 t128 p128 c1 v1"}));
  Text line = u"#00001:";
  for (int cell = 0; cell < 128; ++cell) line += cell < 5 ? u"01" : u"00";
  Read({line});
  EXPECT_EQ(Objs(), (Strings{"m0 t0 p0 c1 v1", "m0 t2 p2 c1 v1", "m0 t3 p3 c1 v1", "m0 t4 p4 c1 v1",
                             "m0 t6 p6 c1 v1"}));
}

TEST_F(ReaderTest, TickOfTheLastOf400CellsIs192) {
  Text line = u"#00101:";
  for (int cell = 0; cell < 400; ++cell) line += cell == 399 ? u"01" : u"00";
  Read({line});
  EXPECT_EQ(Objs(), (Strings{"m1 t192 p384 c1 v1"}));
}

TEST_F(ReaderTest, MeasureOutOfRangeIsThePreviousLines) {
  Read({u"#00411:01", u"#9E911:02"});
  EXPECT_EQ(Objs(), (Strings{"m4 t0 p768 c11 v1", "m4 t0 p768 c11 v2"}));
  EXPECT_EQ(lastMeasure, 4);
}

// 2E9 * 192 is out of range, so that pos keeps its 0.
TEST_F(ReaderTest, PosOutOfRangeKeepsItsZero) {
  Read({u"#2E911:02"});
  EXPECT_EQ(Objs(), (Strings{"m2000000000 t0 p0 c11 v2"}));
}

TEST_F(ReaderTest, MeasureIsReadAsANumberAndRounded) {
  Read({u"#1.511:01", u"#1 211:02", u"#0x111:03"});
  EXPECT_EQ(Objs(), (Strings{"m2 t0 p384 c11 v1", "m12 t0 p2304 c11 v2", "m0 t0 p0 c11 v3"}));
}

TEST_F(ReaderTest, MeasureLengths) {
  Read({u"#00002:0.75", u"#00102:1.5x", u"#00202:", u"#00302:abc", u"#2E302:2", u"#9E302:2", u"#00402:2",
        u"#00402:1E39"});
  EXPECT_EQ(MeasureLen[0], 0.75F);
  EXPECT_EQ(MeasureLen[1], 1.5F);
  EXPECT_EQ(MeasureLen[2], 0.0F);
  EXPECT_EQ(MeasureLen[3], 0.0F);
  EXPECT_EQ(MeasureLen[2000], 2.0F);
  EXPECT_EQ(MeasureLen[4], 2.0F);
  EXPECT_EQ(lastMeasure, 9000);
  EXPECT_EQ(objCount, 0);
}

// The course starts at 2040, so that measure 8 is the last that has a length.
TEST_F(ReaderTest, MeasureLengthPast2048IsDropped) {
  BasePos = 2040;
  Read({u"#00802:0.5", u"#00902:0.25"});
  EXPECT_EQ(MeasureLen[2048], 0.5F);
  EXPECT_EQ(lastMeasure, 2049);
}

TEST_F(ReaderTest, BasePosIsAddedToMeasures) {
  BasePos = 10;
  Read({u"#00211:01"});
  EXPECT_EQ(Objs(), (Strings{"m12 t0 p2304 c11 v1"}));
  EXPECT_EQ(lastMeasure, 12);
}

TEST_F(ReaderTest, NotesAreCountedBySide) {
  Read({u"#00111:01", u"#00116:0101", u"#00101:01", u"#00108:01"});
  EXPECT_EQ(TotalNotes, (Counts{3, 0}));
  EXPECT_EQ(sideUsed, (Flags{true, false}));
  EXPECT_FALSE(uses89);
  Read({u"#00121:01", u"#00129:01"});
  EXPECT_EQ(TotalNotes, (Counts{0, 2}));
  EXPECT_EQ(sideUsed, (Flags{false, true}));
  EXPECT_FALSE(uses89);
}

TEST_F(ReaderTest, InvisibleObjectsOfBothSidesCountForSideTwo) {
  Read({u"#00131:01", u"#00139:01", u"#00141:01"});
  EXPECT_EQ(TotalNotes, (Counts{0, 3}));
  EXPECT_EQ(sideUsed, (Flags{false, true}));
}

TEST_F(ReaderTest, Lanes18And19AreNoted) {
  Read({u"#00118:01"});
  EXPECT_TRUE(uses89);
  Read({u"#00119:01"});
  EXPECT_TRUE(uses89);
}

TEST_F(ReaderTest, ChartWithoutNotesCompletes) {
  Read({u"#00101:01"});
  EXPECT_EQ(TotalNotes, (Counts{0, 0}));
  EXPECT_TRUE(Logged(u"    Read complete"));
}

TEST_F(ReaderTest, NoBgaDropsBaseAndLayerButNotPoor) {
  NoBGA = true;
  Read({u"#00104:01", u"#00206:01", u"#00307:01"});
  EXPECT_EQ(Objs(), (Strings{"m2 t0 p384 c6 v1"}));
  EXPECT_EQ(lastMeasure, 3);
}

TEST_F(ReaderTest, FourDModeDrawsASpeedForEachObject) {
  FourDMode = true;
  SetRndList({0, 0.5F, 0.9375F});
  Read({u"#00101:010001"});
  EXPECT_EQ(objs[0].speedMul, 1.0F);
  EXPECT_EQ(objs[1].speedMul, 1.25F);
  EXPECT_EQ(Rnd(), 0.9375F);
}

// --- song change ---

TEST_F(ReaderTest, CourseAddsTempoAndMarker) {
  CourseMode = true;
  CourseSong = 5;
  BasePos = 10;
  Read({u"#BPM 150.5", u"#00111:01"});
  EXPECT_TRUE(Logged(u"    <COURSE> Add SONGCHANGE note"));
  EXPECT_EQ(Objs(), (Strings{"m11 t0 p2112 c11 v1", "m10 t0 p1920 c3 v150", "m9 t0 p1728 c-2 v5"}));
  EXPECT_EQ(objs[1].speedMul, 0);
  EXPECT_EQ(objs[2].speedMul, 0);
  EXPECT_EQ(MeasureLen[9], 0.1F);
}

TEST_F(ReaderTest, PreviewOfACourseSongAddsNone) {
  CourseMode = true;
  PreviewActive = true;
  Read({u"#00111:01"});
  EXPECT_EQ(objCount, 1);
}

TEST_F(ReaderTest, ForcingLeavesTheMarkerAlone) {
  CourseMode = true;
  BasePos = 2;
  PlayerForce = 2;
  Read({u"#00111:01"});
  EXPECT_EQ(Objs(),
            (Strings{"m3 t0 p576 c11 v1", "m2 t0 p384 c3 v120", "m1 t0 p192 c-2 v0", "m3 t0 p576 c21 v1"}));
}

// --- too many objects ---

TEST_F(ReaderTest, TooFewRecordsRaiseTheFatalMessageOnceAndStop) {
  numObjs = 2;
  Read({u"#00111:01010101"});
  EXPECT_EQ(objCount, 4);
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c11 v1", "m1 t48 p240 c11 v1", "m1 t96 p288 c11 v1", "none"}));
  ASSERT_EQ(fatals.size(), 1U);
  EXPECT_EQ(fatals[0].title, u"too few numObjs!");
  EXPECT_EQ(fatals[0].message,
            u"this time, I need at least 4 objs. but current numObjs value is 2.\r\n"
            u"please check \"numObjs\" value in \"qlm_conf.ini\" file.");
  EXPECT_EQ(log.back(), u"    last measure: 1");
  EXPECT_FALSE(ReportShortage());
}

// The table has room for one more than numObjs, which the test does not know.
TEST_F(ReaderTest, ShortageIsMeasuredAgainstNumObjs) {
  numObjs = 3;
  Read({u"#00111:010101"});
  EXPECT_TRUE(fatals.empty());
  Read({u"#00111:01010101"});
  EXPECT_EQ(fatals.size(), 1U);
  EXPECT_EQ(Objs().back(), "m1 t144 p336 c11 v1");
}

TEST_F(ReaderTest, NotesThatDoNotFitAreCountedAllTheSame) {
  numObjs = 0;
  Read({u"#00111:010101"});
  EXPECT_EQ(TotalNotes, (Counts{3, 0}));
}

}  // namespace
}  // namespace qlm
