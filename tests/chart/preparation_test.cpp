// Preparation: bar lines, order, scaled positions, key sounds and the numbers of a play.
#include "chart/preparation.h"

#include <cmath>

#include "base/hooks.h"
#include "base/log.h"
#include "base/rnd.h"
#include "chart/reader.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/options.h"
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

class PreparationTest : public ChartTest {
 protected:
  static std::vector<KeySoundChange> KeySounds() {
    return {KeySoundChanges.begin(), KeySoundChanges.begin() + std::min(keySoundCount, 5001)};
  }
};

// --- the whole log ---

TEST_F(PreparationTest, LogsItsStepsAtTheirIndents) {
  Read({u"#BPM 150", u"#00111:01", u"#00201:0001"});
  log.clear();
  BMSPrepare();
  // The last object is the bar line of measure 3 at 576 units; at 150 / 1250 units a ms that is 4800 ms.
  // BMS-ID is 1 note * (3 + 1) + (2 + 1) * 150 + 4800.
  EXPECT_EQ(log, (Texts{u"[BMSPrepare] minimum: False",             //
                        u"    adding separator... (2)",             //
                        u"    sorting objects...",                  //
                        u"    recaliculating objects position...",  //
                        u"    [GetBMSLength] BPM:150",              //
                        u"    LastOBJPos=576",                      //
                        u"    BMSInfo --------",                    //
                        u"        * BMS-ID: 5254",                  //
                        u"        * 6objects, 2measures",           //
                        u"        * TotalNotes 1:1 2:0",            //
                        u"        * length 4800ms, 576pixels",      //
                        u"    complete."}));
  EXPECT_EQ(LogIndent, 0);
}

TEST_F(PreparationTest, PreviewIsLoggedAsMinimum) {
  PreviewActive = true;
  Prepare({u"#00111:01"});
  EXPECT_TRUE(Logged(u"[BMSPrepare] minimum: True"));
}

// --- bar lines ---

TEST_F(PreparationTest, EmptyMeasureZeroGetsItsBarLineToo) {
  Prepare({u"#00111:0001"});
  EXPECT_EQ(ObjsOf(-1), (Strings{"m0 t0 p0 c-1 v0", "m1 t0 p192 c-1 v0", "m2 t0 p384 c-1 v0"}));
  EXPECT_EQ(ObjsOf(11), (Strings{"m1 t96 p288 c11 v1"}));
  EXPECT_EQ(objCount, 4);
  EXPECT_EQ(LastObj()->speedMul, 1.0F);
}

TEST_F(PreparationTest, ChartWithoutObjectsGetsTwoBarLines) {
  Prepare({u"#BPM 150"});
  EXPECT_EQ(Objs(), (Strings{"m0 t0 p0 c-1 v0", "m1 t0 p192 c-1 v0"}));
  EXPECT_EQ(TotalNotes, (Counts{0, 0}));
  EXPECT_EQ(HdrTotal, 100);
  EXPECT_EQ(GaugeGain[0], HUGE_VALF);
  EXPECT_EQ(ScorePerNote[0], HUGE_VAL);
  EXPECT_EQ(BMSLengthMs, 1600);  // 192 / (150 / 1250)
  EXPECT_EQ(lastObjPos, 192);
}

TEST_F(PreparationTest, LineOfMeasure999AddsAThousandBarLinesMore) {
  Prepare({u"#00111:01", u"#99908:"});
  EXPECT_EQ(ObjsOf(-1).size(), 1001U);
  EXPECT_EQ(lastObjPos, 192'000);
}

TEST_F(PreparationTest, LengthsNotGivenBecomeOne) {
  Prepare({u"#00102:0.5", u"#00211:01"});
  EXPECT_EQ(MeasureLen[0], 1.0F);
  EXPECT_EQ(MeasureLen[1], 0.5F);
  EXPECT_EQ(MeasureLen[2], 1.0F);
  EXPECT_EQ(MeasureLen[3], 1.0F);
  EXPECT_EQ(MeasureLen[4], 0.0F);
}

// --- positions ---

TEST_F(PreparationTest, ShortMeasureMovesWhatFollowsUp) {
  Prepare({u"#00102:0.5", u"#00111:0001", u"#00211:02"});
  EXPECT_EQ(ObjsOf(11), (Strings{"m1 t96 p240 c11 v1", "m2 t0 p288 c11 v2"}));
  EXPECT_EQ(ObjsOf(-1),
            (Strings{"m0 t0 p0 c-1 v0", "m1 t0 p192 c-1 v0", "m2 t0 p288 c-1 v0", "m3 t0 p480 c-1 v0"}));
}

// 192 * 0.0026041667 is 0.5000000064 in 32 bits, which goes to 1; 0.00260416 is below a half and goes to 0.
TEST_F(PreparationTest, RunningTotalIsRoundedAtEachMeasure) {
  Prepare({u"#00002:0.00260416", u"#00102:0.00260416", u"#00201:01"});
  EXPECT_EQ(ObjsOf(1), (Strings{"m2 t0 p0 c1 v1"}));
  Prepare({u"#00002:0.002605", u"#00102:0.002605", u"#00201:01"});
  EXPECT_EQ(ObjsOf(1), (Strings{"m2 t0 p2 c1 v1"}));
}

// 3 * 0.5 = 1.5 and 5 * 0.5 = 2.5 both go to 2.
TEST_F(PreparationTest, ScaledTicksRoundHalfToEven) {
  Text line = u"#00001:";
  for (int cell = 0; cell < 192; ++cell) line += cell == 3 || cell == 5 ? u"01" : u"00";
  Prepare({u"#00002:0.5", line});
  EXPECT_EQ(ObjsOf(1), (Strings{"m0 t3 p2 c1 v1", "m0 t5 p2 c1 v1"}));
}

// Bar lines of measures 2048 and 2049: 2048 has a length, 2049 and 2050 have none and keep the reader's pos.
// The first object of 2049 adds the length of 2048, and then the total stands still.
TEST_F(PreparationTest, MeasuresFrom2049OnKeepTheReadersPos) {
  Read({u"#00002:0.5", u"#2E311:01"});
  MeasureLen[2048] = 0.5F;
  BasePos = 2000;
  BMSRead(WriteChart({u"#04811:01", u"#04911:0001", u"#05011:01"}));
  BMSPrepare();
  EXPECT_EQ(ObjsOf(11), (Strings{"m2000 t0 p383904 c11 v1", "m2048 t0 p393120 c11 v1",
                                 "m2049 t96 p393504 c11 v1", "m2050 t0 p393600 c11 v1"}));
  EXPECT_EQ(LastObj()->measure, 2051);
  EXPECT_EQ(LastObj()->pos, 2051 * 192);
  EXPECT_EQ(posTotal, 393120 + 96);
}

TEST_F(PreparationTest, ObjectsAreInOrderOfPosition) {
  Prepare({u"#00301:03", u"#00101:01", u"#00201:02"});
  EXPECT_EQ(ObjsOf(1), (Strings{"m1 t0 p192 c1 v1", "m2 t0 p384 c1 v2", "m3 t0 p576 c1 v3"}));
}

// --- two notes at one place ---

// All keys are equal but for the bar lines: n1 n2 b0 b1 with 0 0 0 192. Pivot 0: n1 and b0 change places, i
// and j meet at n2: b0 n2 n1 b1; left are b0, and n1 with b1 in order. So the second note of the file comes
// first and stays a note.
TEST_F(PreparationTest, SecondNoteAtOnePlaceBecomesABackgroundSound) {
  Prepare({u"#00011:01", u"#00011:02"});
  EXPECT_EQ(Objs(), (Strings{"m0 t0 p0 c-1 v0", "m0 t0 p0 c11 v2", "m0 t0 p0 c1 v1", "m1 t0 p192 c-1 v0"}));
  EXPECT_EQ(TotalNotes, (Counts{1, 0}));
}

TEST_F(PreparationTest, ThreeNotesAtOnePlaceLeaveOne) {
  Prepare({u"#00112:01", u"#00112:02", u"#00112:03"});
  EXPECT_EQ(TotalNotes, (Counts{1, 0}));
  EXPECT_EQ(ObjsOf(12).size(), 1U);
  EXPECT_EQ(ObjsOf(1).size(), 2U);
}

TEST_F(PreparationTest, NotesThatMeetOnlyAfterScalingAreDuplicates) {
  Text line = u"#00021:";
  for (int cell = 0; cell < 192; ++cell) line += cell == 3 || cell == 5 ? u"01" : u"00";
  Prepare({u"#00002:0.5", line});
  EXPECT_EQ(TotalNotes, (Counts{0, 1}));
  EXPECT_EQ(ObjsOf(21), (Strings{"m0 t3 p2 c21 v1"}));
  EXPECT_EQ(ObjsOf(1), (Strings{"m0 t5 p2 c1 v1"}));
}

TEST_F(PreparationTest, NotesOfOtherLanesAndInvisibleObjectsAreNoDuplicates) {
  Prepare({u"#00111:01", u"#00112:01", u"#00121:01", u"#00131:01", u"#00131:01"});
  EXPECT_EQ(TotalNotes, (Counts{2, 3}));
  EXPECT_EQ(ObjsOf(1).size(), 0U);
  EXPECT_EQ(ObjsOf(31).size(), 2U);
}

// --- key sounds ---

// From 0 to 192 and from 192 to 384 the midpoints are 96 and 288.
TEST_F(PreparationTest, KeySoundChangesHalfwayBetweenTwoNotes) {
  Prepare({u"#00111:01", u"#00211:02", u"#00214:05"});
  EXPECT_EQ(keySoundCount, 3);
  std::vector<KeySoundChange> sounds = KeySounds();
  std::sort(sounds.begin(), sounds.end(), [](const auto& a, const auto& b) { return a.value < b.value; });
  EXPECT_EQ(sounds, (std::vector<KeySoundChange>{{11, 96, 1}, {11, 288, 2}, {14, 192, 5}}));
}

TEST_F(PreparationTest, SameSoundAgainMakesNoChangeButMovesTheMidpoint) {
  Prepare({u"#00111:01", u"#00211:01", u"#00311:02"});
  EXPECT_EQ(KeySounds(), (std::vector<KeySoundChange>{{11, 96, 1}, {11, (384 + 576) / 2, 2}}));
}

TEST_F(PreparationTest, FirstNoteOfSoundZeroMakesNoChange) {
  Prepare({u"#00111:ZZ"});
  EXPECT_EQ(keySoundCount, 0);
}

TEST_F(PreparationTest, InvisibleObjectsMakeNoChange) {
  Prepare({u"#00131:01"});
  EXPECT_EQ(keySoundCount, 0);
}

// The note of sound 1 is the duplicate.
TEST_F(PreparationTest, DuplicateAlwaysTakesAPlaceAtPositionZero) {
  Prepare({u"#00011:01", u"#00011:02", u"#00211:02"});
  EXPECT_EQ(KeySounds(), (std::vector<KeySoundChange>{{11, 0, 2}, {1, 0, 1}}));
}

TEST_F(PreparationTest, PreviewMakesNoKeySoundChanges) {
  PreviewActive = true;
  Prepare({u"#00111:01", u"#00111:02"});
  EXPECT_EQ(keySoundCount, 0);
  EXPECT_EQ(TotalNotes, (Counts{1, 0}));
}

TEST_F(PreparationTest, KeySoundsPast5001AreCountedAndNotStored) {
  std::vector<Text> chart;
  for (int measure = 0; measure < 28; ++measure) {
    Text line = Join(u"#", Padded(measure, 3), u"11:");
    for (int cell = 0; cell < 192; ++cell) line += cell % 2 == 0 ? u"01" : u"02";
    chart.push_back(line);
  }
  Prepare(chart);
  EXPECT_EQ(keySoundCount, 28 * 192);
  EXPECT_EQ(KeySoundChanges[5000].channel, 11);
  EXPECT_EQ(KeySoundChanges[5000].pos, (4999 + 5000) / 2);
}

// --- scattering ---

TEST_F(PreparationTest, ScatteredNotesGetFreeLanesOfOnePlace) {
  ScatterNotes = true;
  Read({u"#00111:01", u"#00121:02", u"#00116:03"});
  // 16 and 17 are drawn again, and so is the lane that is taken.
  SetRndList({0.56F, 0.67F, 0.34F, 0.34F, 0.89F});
  BMSPrepare();
  EXPECT_EQ(ObjsOf(14).size(), 1U);
  EXPECT_EQ(ObjsOf(19).size(), 1U);
  EXPECT_EQ(ObjsOf(16).size(), 1U);
}

TEST_F(PreparationTest, ScatteringEndsWhenNoLaneIsLeft) {
  ScatterNotes = true;
  Read({u"#00111:01", u"#00112:02"});
  SetRndList({0.34F});
  BMSPrepare();
  EXPECT_EQ(ObjsOf(14).size(), 1U);
}

// --- sides ---

TEST_F(PreparationTest, DoublePlayCountsBothSidesAsOne) {
  Prepare({u"#PLAYER 3", u"#00111:01", u"#00121:0101"});
  EXPECT_EQ(ScoreSide, (Counts{0, 0}));
  EXPECT_EQ(TotalNotes, (Counts{3, 2}));
  EXPECT_EQ(SideCount, 2);
}

TEST_F(PreparationTest, OtherChartsKeepTheirSides) {
  ScoreSide = {0, 0};
  Prepare({u"#PLAYER 2", u"#00111:01", u"#00121:0101"});
  EXPECT_EQ(ScoreSide, (Counts{0, 1}));
  EXPECT_EQ(TotalNotes, (Counts{1, 2}));
  EXPECT_EQ(SideCount, 2);
}

TEST_F(PreparationTest, SideCountFollowsThePlayer) {
  Prepare({u"#PLAYER 0"});
  EXPECT_EQ(SideCount, 1);
  Prepare({u"#PLAYER 3"});
  EXPECT_EQ(SideCount, 2);
  Prepare({u"#PLAYER 4"});
  EXPECT_EQ(SideCount, 2);
  Prepare({u"#PLAYER 1"});
  EXPECT_EQ(SideCount, 1);
  Prepare({u"#PLAYER 4"});
  EXPECT_EQ(SideCount, 1);
}

// --- length ---

TEST_F(PreparationTest, LengthOfOneTempo) {
  Prepare({u"#BPM 125", u"#00111:01"});
  EXPECT_EQ(BMSLengthMs, 3840);  // 384 / 0.1
  EXPECT_EQ(GetBMSLength(), 3840);
}

// 192 units at 125 take 1920 ms; at 250 the remaining 384 - 192 take 960 ms.
// o = 0 - 192 / 0.1 * 0.1 = -192; 384 / 0.2 + 192 / 0.2 = 2880.
TEST_F(PreparationTest, LengthObeysDirectTempoChanges) {
  Prepare({u"#BPM 125", u"#00103:FA"});
  EXPECT_TRUE(Logged(u"    (192) BPM -> 125"));
  EXPECT_EQ(BMSLengthMs, 2880);
}

// With a second change back to 125 at 288: o = -192 - (288 + 192) / 0.2 * -0.1 = 48; 384 / 0.1 - 48 / 0.1 =
// 3360.
TEST_F(PreparationTest, LengthStaysContinuousOverSeveralChanges) {
  Prepare({u"#BPM 125", u"#00103:FA7D"});
  EXPECT_TRUE(Logged(u"    (288) BPM -> 250"));
  EXPECT_EQ(BMSLengthMs, 3360);
}

TEST_F(PreparationTest, LengthDoesNotKnowTempoChangesByTable) {
  Prepare({u"#BPM 125", u"#BPM01 250", u"#00108:01"});
  EXPECT_EQ(BMSLengthMs, 3840);
}

TEST_F(PreparationTest, LengthOfTempoZeroIsZero) {
  Prepare({u"#BPM 0", u"#00111:01"});
  EXPECT_EQ(BMSLengthMs, 0);
  // The change at position 0: (0 - 0) / 0 is no number, and what comes of it neither.
  Prepare({u"#BPM 0", u"#00003:78", u"#00111:01"});
  EXPECT_EQ(BMSLengthMs, 0);
}

TEST_F(PreparationTest, LengthOutOfRangeIsZero) {
  Prepare({u"#BPM 0.0001", u"#00111:01"});
  EXPECT_EQ(BMSLengthMs, 0);  // 384 / 0.00000008 is 4.8 milliards
}

TEST_F(PreparationTest, FractionalTempoIsLoggedInItsOwnWidth) {
  Prepare({u"#BPM 133.33", u"#00103:78"});
  EXPECT_TRUE(Logged(u"    [GetBMSLength] BPM:133.33"));
  EXPECT_TRUE(Logged(u"    (192) BPM -> 133.33"));
}

TEST_F(PreparationTest, LengthOfAnEmptyTableIsZero) {
  BMSInit();
  EXPECT_EQ(GetBMSLength(), 0);
}

// --- derived numbers ---

// (2 + 1) * (5 + 1) + (1 + 1) * 133.25 + length; 384 / (133.25 / 1250) is 3602.25, so 3602: 3886.5 goes to
// 3886.
TEST_F(PreparationTest, BmsIdIsRoundedHalfToEven) {
  Prepare({u"#BPM 133.25", u"#PLAYLEVEL 5", u"#RANK 1", u"#00111:01", u"#00112:01", u"#00121:01"});
  EXPECT_EQ(BMSLengthMs, 3602);
  EXPECT_EQ(BMSID, 3886);
}

TEST_F(PreparationTest, BmsIdOutOfRangeKeepsItsValue) {
  BMSID = 77;
  Prepare({u"#PLAYLEVEL 2000000000", u"#00111:0101"});
  EXPECT_EQ(BMSID, 77);
}

TEST_F(PreparationTest, TotalNotGivenIsNotesAndAHundred) {
  Prepare({u"#00111:01010101"});
  EXPECT_EQ(HdrTotal, 104);
  EXPECT_EQ(GaugeGain[0], 26.0F);
  EXPECT_EQ(GaugeGain[1], HUGE_VALF);
  EXPECT_EQ(ScorePerNote[0], 25000.0);
  EXPECT_EQ(ScorePerNote[1], HUGE_VAL);
}

TEST_F(PreparationTest, BackgroundSoundsAloneGiveATotalOfHundred) {
  Prepare({u"#00101:01"});
  EXPECT_EQ(TotalNotes, (Counts{0, 0}));
  EXPECT_EQ(HdrTotal, 100);
}

TEST_F(PreparationTest, TotalGivenIsDividedByTheNotes) {
  Prepare({u"#TOTAL 200", u"#00111:010101", u"#00121:01"});
  EXPECT_EQ(GaugeGain[0], 200.0F / 3);
  EXPECT_EQ(GaugeGain[1], 200.0F);
  EXPECT_EQ(ScorePerNote[0], 100000.0 / 3);
}

TEST_F(PreparationTest, HazardGaugeHasAGainOfItsOwn) {
  HazardGauge = true;
  Prepare({u"#TOTAL 200", u"#00111:01"});
  EXPECT_EQ(GaugeGain, (std::array<float, 2>{0.05F, 0.05F}));
}

TEST_F(PreparationTest, CourseScoresOneANote) {
  CourseMode = true;
  Prepare({u"#00111:0101"});
  EXPECT_EQ(ScorePerNote, (std::array<double, 2>{1.0, 1.0}));
}

TEST_F(PreparationTest, TempoIsMultipliedByTheSpeed) {
  RealHiSpeed = 1.5F;
  Prepare({u"#BPM 150", u"#00111:01"});
  EXPECT_EQ(curBPM, 225.0F);
  EXPECT_EQ(rawBPM, 150.0F);
  EXPECT_EQ(pixPerMs, 0.18);
}

TEST_F(PreparationTest, JudgeWindowFollowsTheRank) {
  Prepare({u"#RANK 0"});
  EXPECT_EQ(JudgeWindow, (std::array<int32_t, 4>{1, 2, 6, 8}));
  Prepare({u"#RANK 3"});
  EXPECT_EQ(JudgeWindow, (std::array<int32_t, 4>{4, 8, 24, 32}));
  Prepare({u"#RANK 4"});
  EXPECT_EQ(JudgeWindow, (std::array<int32_t, 4>{4, 8, 24, 32}));
  Prepare({u"#RANK -1"});
  EXPECT_EQ(JudgeWindow, (std::array<int32_t, 4>{4, 8, 24, 32}));
}

TEST_F(PreparationTest, HistoryStepIsAThreeHundredthOfTheLength) {
  Prepare({u"#BPM 125", u"#00111:01"});
  EXPECT_EQ(HistoryStep, 12.8F);
}

// --- titles ---

std::vector<Text> captions;

TEST_F(PreparationTest, CaptionInAWindowOnly) {
  captions.clear();
  hooks.setCaption = [](TextView text) { captions.emplace_back(text); };
  const std::vector<Text> chart = {u"#GENRE Pop", u"#TITLE Song", u"#ARTIST Me"};
  Prepare(chart);
  EXPECT_TRUE(captions.empty());
  Windowed = true;
  Prepare(chart);
  EXPECT_EQ(captions, (Texts{u"[Pop] Song / Me - quillmarch"}));
}

TEST_F(PreparationTest, MarqueeHasTheSkinsBlanksBehindIt) {
  Prepare({u"#TITLE Song", u"#ARTIST Me"});
  EXPECT_EQ(MarqueeText, u"Song / Me");
  TitleChars = 3;
  Prepare({u"#TITLE Song", u"#ARTIST Me"});
  EXPECT_EQ(MarqueeText, u"Song / Me   ");
}

TEST_F(PreparationTest, MarqueeIsConvertedForAPlayOnly) {
  const std::vector<Text> chart = {u"#TITLE ギター", u"#ARTIST Me"};
  TitleChars = 2;
  Prepare(chart);
  EXPECT_EQ(MarqueeText, u"ギター / Me  ");
  GameState = kStatePlay;
  Prepare(chart);
  EXPECT_EQ(MarqueeText, u"GITA- / Me  ");
}

TEST_F(PreparationTest, MarqueeOfACourse) {
  CourseMode = true;
  TitleChars = 2;
  Prepare({u"#TITLE Song"});
  EXPECT_EQ(MarqueeText, u"COURSE MODE!  ");
}

// --- what stays loaded ---

TEST_F(PreparationTest, FilesThatTheChartNoLongerNamesAreReleased) {
  Read({u"#WAV01 a.wav", u"#BMP01 a.bmp"});
  WavHeldName[1] = WavFile[1];
  BmpHeldName[1] = BmpFile[1];
  WavHeldName[2] = BmpHeldName[2] = Text(u"old");
  WavHeldName[255] = BmpHeldName[255] = Text(u"old");
  BMSPrepare();
  EXPECT_EQ(WavHeldName[1], WavFile[1]);
  EXPECT_EQ(BmpHeldName[1], BmpFile[1]);
  for (const int slot : {2, 255}) {
    EXPECT_EQ(WavHeldName[slot], u"");
    EXPECT_EQ(BmpHeldName[slot], u"");
  }
}

TEST_F(PreparationTest, PreviewReleasesNothing) {
  PreviewActive = true;
  Read({});
  WavHeldName[2] = BmpHeldName[2] = Text(u"old");
  BMSPrepare();
  EXPECT_EQ(WavHeldName[2], u"old");
  EXPECT_EQ(BmpHeldName[2], u"old");
}

// --- too many objects ---

TEST_F(PreparationTest, BarLinesThatDoNotFitRaiseTheFatalMessage) {
  numObjs = 3;
  Prepare({u"#00111:0101"});
  ASSERT_EQ(fatals.size(), 1U);
  EXPECT_EQ(fatals[0].title, u"too few numObjs!");
  EXPECT_TRUE(
      fatals[0].message.starts_with(u"this time, I need at least 5 objs. but current numObjs value is 3."));
  EXPECT_EQ(CountLogged(u"complete."), 0);
}

// The last object did not fit, so that neither its line nor the way back of the indent is there.
TEST_F(PreparationTest, LinesAboutAnObjectThatDidNotFitAreNotLogged) {
  numObjs = 1;
  Prepare({u"#00111:01"});
  EXPECT_EQ(CountLogged(u"* 4objects, 1measures"), 1);
  EXPECT_EQ(CountLogged(u"LastOBJPos=192"), 0);
  EXPECT_EQ(BMSLengthMs, 0);
}

TEST_F(PreparationTest, TwoBillionMeasuresTakeNoTime) {
  Prepare({u"#2E911:01"});
  EXPECT_EQ(objCount, 2'000'000'003);
  EXPECT_EQ(fatals.size(), 1U);
}

}  // namespace
}  // namespace qlm
