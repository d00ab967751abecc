// The wide reading: charts as they are written today.
#include "chart/wide_reading.h"

#include <algorithm>

#include "base/paths.h"
#include "base/rnd.h"
#include "chart/reader.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/slots.h"
#include "state/timeline.h"
#include "state/wide_chart.h"
#include "tests/chart/chart_test.h"

namespace qlm {
namespace {

using Strings = std::vector<std::string>;
using Counts = std::array<int32_t, 2>;

class WideReadingTest : public ChartTest {
 protected:
  WideReadingTest() { WideCharts = true; }

  // The numbers of the lines "#mmm01:01" that are read, by their measures.
  Text MeasuresOf(const std::vector<Text>& lines) const {
    Read(lines);
    Text measures;
    for (int32_t i = 0; i < objCount; ++i) measures = Join(measures, FindObj(i)->measure);
    return measures;
  }
  // "channel: head to end" of each long note, by positions.
  static Strings Bodies() {
    Strings bodies;
    for (const LongNote& note : LongNotes) {
      const ChartObj& head = objs[static_cast<size_t>(note.head)];
      bodies.push_back(std::to_string(head.channel) + ": " + std::to_string(head.pos) + " to " +
                       std::to_string(note.end));
    }
    std::sort(bodies.begin(), bodies.end());
    return bodies;
  }
};

// --- slots ---

TEST_F(WideReadingTest, SlotsAreOfBase36) {
  Read({u"#WAV0Z a.wav", u"#WAVzz b.wav", u"#BMPG0 c.bmp", u"#BPM1G 150.5", u"#00101:0Z00ZZ1g"});
  EXPECT_EQ(GetFileName(WavFile[35]), u"a.wav");
  EXPECT_EQ(GetFileName(WavFile[1295]), u"b.wav");
  EXPECT_EQ(GetFileName(BmpFile[576]), u"c.bmp");  // 16 * 36
  EXPECT_EQ(BpmTable[52], 150.5F);                 // 36 + 16
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c1 v35", "m1 t96 p288 c1 v1295", "m1 t144 p336 c1 v52"}));
}

TEST_F(WideReadingTest, TempiOfChannel3StayHexadecimal) {
  Read({u"#00103:96", u"#00108:96"});
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c3 v150", "m1 t0 p192 c8 v330"}));  // 9 * 36 + 6
}

TEST_F(WideReadingTest, DigitsGoAsFarAsTheyAreDigits) {
  Read({u"#00101:1-.1"});
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c1 v1", "m1 t96 p288 c1 v0"}));
}

TEST_F(WideReadingTest, Base62TellsSmallLettersApart) {
  Read({u"#BASE 62", u"#WAVaz a.wav", u"#WAVAZ b.wav", u"#00101:azAZzz"});
  EXPECT_EQ(LastSlot, 3843);
  EXPECT_EQ(GetFileName(WavFile[36 * 62 + 61]), u"a.wav");
  EXPECT_EQ(GetFileName(WavFile[10 * 62 + 35]), u"b.wav");
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c1 v2293", "m1 t64 p256 c1 v655", "m1 t128 p320 c1 v3843"}));
  EXPECT_EQ(SlotName(2293), u"az");
  Read({u"#WAVaz a.wav"});
  EXPECT_EQ(LastSlot, 1295);
  EXPECT_EQ(GetFileName(WavFile[395]), u"a.wav");  // 10 * 36 + 35
}

TEST_F(WideReadingTest, ClassicReadingIsUntouchedWhenItIsOff) {
  WideCharts = false;
  Read({u"#LNOBJ 02", u"#STOP01 48", u"#0010Z:01", u"#00109:01", u"#00151:01", u"#001D1:01",
        u"#00111:01020Z"});
  EXPECT_EQ(Objs(), (Strings{"m1 t0 p192 c11 v1", "m1 t64 p256 c11 v2", "m1 t128 p320 c11 v0"}));
  EXPECT_EQ(TotalNotes, (Counts{3, 0}));
}

// --- stops and tempi ---

TEST_F(WideReadingTest, AStopMovesWhatIsBehindIt) {
  Prepare({u"#STOP01 48", u"#STOP0Z 96.4", u"#00109:00010Z00", u"#00111:0101", u"#00112:00010100"});
  // In quarters of 48: stops at 240 of 48 and at 288 of 96. What lies at a stop does not wait for it.
  EXPECT_EQ(ObjsOf(11), (Strings{"m1 t0 p192 c11 v1", "m1 t96 p336 c11 v1"}));
  EXPECT_EQ(ObjsOf(12), (Strings{"m1 t48 p240 c12 v1", "m1 t96 p336 c12 v1"}));
  EXPECT_EQ(ObjsOf(ObjSeparator).back(), "m2 t0 p528 c-1 v0");  // 384 + 48 + 96
  ASSERT_EQ(Stops.size(), 2U);
  EXPECT_EQ(Stops[0].pos, 240);
  EXPECT_EQ(Stops[0].units, 48);
  EXPECT_EQ(Stops[1].pos, 336);
  EXPECT_EQ(Stops[1].units, 96);
  EXPECT_EQ(Stops[1].before, 48);
  EXPECT_EQ(BMSLengthMs, 5500);  // 528 units at 120: 528 / 0.096
}

TEST_F(WideReadingTest, StopsAtOnePlaceAddUp) {
  Prepare({u"#STOP01 10", u"#STOP02 20", u"#00109:01", u"#00109:02", u"#00111:0001"});
  EXPECT_EQ(ObjsOf(11), (Strings{"m1 t96 p318 c11 v1"}));
  ASSERT_EQ(Stops.size(), 1U);
  EXPECT_EQ(Stops[0].units, 30);
}

TEST_F(WideReadingTest, AStopThatIsNotDefinedOrBelow0TakesNoTime) {
  Prepare({u"#STOP02 -5", u"#00109:0102", u"#00111:0001"});
  EXPECT_EQ(ObjsOf(11), (Strings{"m1 t96 p288 c11 v1"}));
  EXPECT_TRUE(Stops.empty());
}

TEST_F(WideReadingTest, AStopIsAsLongInAShortMeasure) {
  Prepare({u"#STOP01 48", u"#00102:0.5", u"#00109:01", u"#00111:0001"});
  EXPECT_EQ(ObjsOf(11), (Strings{"m1 t96 p288 c11 v1"}));  // 192 + 48 of the half measure + 48
}

TEST_F(WideReadingTest, TempiByTableCountForTheLength) {
  Prepare({u"#BPM 120", u"#EXBPM0Z 240.5", u"#BPM01 60", u"#00108:0Z", u"#00208:01"});
  // 192 units at 120, 192 at 240.5, 192 at 60: 2000 + 997.92 + 4000 ms.
  EXPECT_EQ(BMSLengthMs, 6998);
}

TEST_F(WideReadingTest, TablesOfTheChartBeforeAreEmpty) {
  Read({u"#BPM01 60", u"#STOP01 5", u"#TITLE old", u"#ARTIST old", u"#GENRE old"});
  Read({});
  EXPECT_EQ(BpmTable[1], 0);
  EXPECT_EQ(StopTable[1], 0);
  EXPECT_EQ(HdrTitle, u"");
  EXPECT_EQ(HdrArtist, u"");
  EXPECT_EQ(HdrGenre, u"");
}

TEST_F(WideReadingTest, EachSongOfACourseHasItsOwnTempiAndStops) {
  CourseMode = true;
  BMSInit();
  BasePos = 2;
  BMSRead(WriteChart({u"#BPM 100.5", u"#BPM01 60", u"#STOP01 5", u"#00008:01", u"#00009:01"}));
  BasePos = 5;
  BMSRead(WriteChart({u"#BPM01 90", u"#STOP01 7", u"#00008:01", u"#00009:01"}));
  const auto tempo = [](int32_t i) { return BpmTable[FindObj(i)->value]; };
  EXPECT_EQ(FindObj(0)->channel, 8);
  EXPECT_EQ(tempo(0), 60);
  EXPECT_EQ(FindObj(1)->value, 5);
  EXPECT_EQ(tempo(2), 100.5F);  // of the song's start
  EXPECT_EQ(tempo(4), 90);
  EXPECT_EQ(FindObj(5)->value, 7);
  CourseMode = false;
}

TEST_F(WideReadingTest, ASongOfACourseLeavesTheTempiOfThoseBeforeItAlone) {
  CourseMode = true;
  BMSInit();
  BasePos = 2;
  BMSRead(WriteChart({u"#BPM 100.5", u"#BPM01 60", u"#00008:01"}));
  BasePos = 5;
  // 1296 and 1297 are the first slots behind those of base 36, and song 2 has no 01.
  BMSRead(WriteChart({u"#BASE 62", u"#BPMKu 999", u"#BPMKv 998", u"#00008:01"}));
  EXPECT_EQ(BpmTable[1296], 999);
  const auto tempo = [](int32_t i) { return BpmTable[FindObj(i)->value]; };
  EXPECT_EQ(tempo(0), 60);
  EXPECT_EQ(tempo(1), 100.5F);
  EXPECT_EQ(tempo(3), 0);
  CourseMode = false;
}

TEST_F(WideReadingTest, TheTempiOfALongCourseStayWhenItsSlotsGrow) {
  CourseMode = true;
  BMSInit();
  BasePos = 2;
  Text cells;
  for (int32_t i = 0; i < 4000; ++i) cells += u"01";
  BMSRead(WriteChart({u"#BPM01 60", Join(u"#00008:", cells)}));
  BasePos = 5;
  BMSRead(WriteChart({u"#BASE 62"}));
  const float* const last = BpmTable.Find(FindObj(3999)->value);
  ASSERT_NE(last, nullptr);
  EXPECT_EQ(*last, 60);
  CourseMode = WideCharts = false;
  Read({});
  EXPECT_EQ(BpmTable.Last(), 255);
}

// --- long notes and mines ---

TEST_F(WideReadingTest, PairsOfTheLongChannelsAreLongNotes) {
  Prepare({u"#WAV01 a.wav", u"#00151:0102", u"#00251:03", u"#00168:01", u"#00268:0001"});
  EXPECT_EQ(ObjsOf(11), (Strings{"m1 t0 p192 c11 v1", "m2 t0 p384 c11 v3"}));
  EXPECT_EQ(ObjsOf(28), (Strings{"m1 t0 p192 c28 v1"}));
  EXPECT_EQ(Bodies(), (Strings{"11: 192 to 288", "28: 192 to 480"}));
  EXPECT_EQ(TotalNotes, (Counts{2, 1}));
  EXPECT_FALSE(uses89);
  EXPECT_EQ(sideUsed, (std::array<bool, 2>{true, true}));
}

TEST_F(WideReadingTest, LnobjEndsTheNoteBeforeIt) {
  Prepare({u"#00111:010Z0200", u"#00112:0z01", u"#LNOBJ 0z", u"#00211:0Z"});
  // 11: a long note from 192 to 240, a note at 288 that measure 2 makes long. 12: an end without a head.
  EXPECT_EQ(ObjsOf(11), (Strings{"m1 t0 p192 c11 v1", "m1 t96 p288 c11 v2"}));
  EXPECT_EQ(ObjsOf(12), (Strings{"m1 t96 p288 c12 v1"}));
  EXPECT_EQ(Bodies(), (Strings{"11: 192 to 240", "11: 288 to 384"}));
  EXPECT_EQ(TotalNotes, (Counts{3, 0}));
}

TEST_F(WideReadingTest, LongNotesWaitForStops) {
  Prepare({u"#STOP01 48", u"#00109:0001", u"#00151:0101", u"#00156:01000001"});
  EXPECT_EQ(Bodies(), (Strings{"11: 192 to 288", "16: 192 to 384"}));  // 336 and the stop
}

TEST_F(WideReadingTest, OfTwoNotesAtOnePlaceTheFirstIsLong) {
  Prepare({u"#LNOBJ ZZ", u"#00111:0100", u"#00111:0200", u"#00111:00ZZ"});
  ASSERT_EQ(LongNotes.size(), 1U);
  EXPECT_EQ(objs[static_cast<size_t>(LongNotes[0].head)].channel, 11);
  EXPECT_EQ(TotalNotes, (Counts{1, 0}));
}

TEST_F(WideReadingTest, ALongNoteWithoutAnEndIsANote) {
  Prepare({u"#00151:01"});
  EXPECT_EQ(ObjsOf(11), (Strings{"m1 t0 p192 c11 v1"}));
  EXPECT_TRUE(LongNotes.empty());
  EXPECT_EQ(TotalNotes, (Counts{1, 0}));
}

TEST_F(WideReadingTest, MinesAreNoNotes) {
  Prepare({u"#001D1:0A", u"#001e9:ZZ", u"#001D7:01", u"#001F1:01"});
  EXPECT_EQ(ObjsOf(71), (Strings{"m1 t0 p192 c71 v10"}));
  EXPECT_EQ(ObjsOf(89), (Strings{"m1 t0 p192 c89 v1295"}));
  EXPECT_EQ(objCount, 2 + 3);  // and bar lines
  EXPECT_EQ(TotalNotes, (Counts{0, 0}));
}

TEST_F(WideReadingTest, OtherChannelsMakeNothing) {
  Read({u"#001SC:01", u"#001SP:01", u"#0010A:01", u"#00171:01", u"#00191:01", u"#00117:01", u"#00157:01",
        u"#00110:01", u"#00999:01"});
  EXPECT_EQ(objCount, 0);
  EXPECT_EQ(lastMeasure, 9);
}

TEST_F(WideReadingTest, ForcedSidesTakeLongNotesAndMinesAlong) {
  PlayerForce = 1;
  Prepare({u"#00161:0101", u"#001E2:01", u"#LNOBJ ZZ", u"#00122:01ZZ"});
  EXPECT_EQ(Bodies(), (Strings{"11: 192 to 288", "12: 192 to 288"}));
  EXPECT_EQ(ObjsOf(72).size(), 1U);
  EXPECT_EQ(TotalNotes, (Counts{2, 0}));
  PlayerForce = 2;
  Prepare({u"#00151:0101", u"#001D2:01", u"#LNOBJ ZZ", u"#00112:01ZZ"});
  EXPECT_EQ(LongNotes.size(), 4U);
  EXPECT_EQ(ObjsOf(82).size(), 1U);
  EXPECT_EQ(TotalNotes, (Counts{2, 2}));
}

TEST_F(WideReadingTest, AShuffledKeymapMovesWholeLanes) {
  // Lane 11 draws 12, and each other lane itself: 11 and 12 change places.
  Random = true;
  SetRndList({1.5F / 9, 1.5F / 9, 2.5F / 9, 3.5F / 9, 4.5F / 9, 5.5F / 9, 7.5F / 9, 8.5F / 9});
  Read({u"#00111:0101", u"#00151:0101"});
  const int32_t note = FindObj(0)->channel;
  EXPECT_EQ(FindObj(1)->channel, note);
  EXPECT_EQ(FindObj(2)->channel, note + 40);
  EXPECT_EQ(FindObj(3)->channel, note + 40);
}

// --- blocks ---

TEST_F(WideReadingTest, ElseAndElseIfTakeWhatIsLeft) {
  const std::vector<Text> lines = {u"#RANDOM 3", u"#IF 1",     u"#00101:01", u"#ELSEIF 2",  u"#00201:01",
                                   u"#ELSE",     u"#00301:01", u"#ENDIF",    u"#ENDRANDOM", u"#00401:01"};
  SetRndList({0.0F});
  EXPECT_EQ(MeasuresOf(lines), u"14");
  SetRndList({0.5F});
  EXPECT_EQ(MeasuresOf(lines), u"24");
  SetRndList({0.9F});
  EXPECT_EQ(MeasuresOf(lines), u"34");
}

TEST_F(WideReadingTest, SetRandomChoosesTheBlock) {
  EXPECT_EQ(MeasuresOf({u"#SETRANDOM 2", u"#IF 1", u"#00101:01", u"#ENDIF", u"#IF 2", u"#00201:01", u"#ENDIF",
                        u"#00301:01"}),
            u"23");
}

TEST_F(WideReadingTest, BlocksNest) {
  EXPECT_EQ(MeasuresOf({u"#SETRANDOM 1", u"#IF 1",  u"#SETRANDOM 2", u"#IF 1",        u"#00101:01",
                        u"#ENDIF",       u"#IF 2",  u"#00201:01",    u"#ENDIF",       u"#ENDRANDOM",
                        u"#00301:01",    u"#ENDIF", u"#IF 2",        u"#SETRANDOM 1", u"#IF 1",
                        u"#00401:01",    u"#ENDIF", u"#ENDRANDOM",   u"#ENDIF",       u"#00501:01"}),
            u"235");
}

TEST_F(WideReadingTest, ARandomInASkippedBlockDrawsNothing) {
  SetRndList({0.0F, 0.9F});
  // The first number chooses 1, so that the #RANDOM inside #IF 2 is passed over, and the next gets 0.9.
  EXPECT_EQ(MeasuresOf({u"#RANDOM 2", u"#IF 2", u"#RANDOM 2", u"#IF 1", u"#00101:01", u"#ENDIF",
                        u"#ENDRANDOM", u"#ENDIF", u"#ENDRANDOM", u"#RANDOM 2", u"#IF 1", u"#00201:01",
                        u"#ENDIF", u"#IF 2", u"#00301:01", u"#ENDIF"}),
            u"3");
}

TEST_F(WideReadingTest, WhatIsLeftOpenIsClosedByWhatFollows) {
  EXPECT_EQ(MeasuresOf({u"#SETRANDOM 2", u"#IF 1", u"#00101:01", u"#IF 2", u"#00201:01", u"#ENDIF",
                        u"#SETRANDOM 1", u"#IF 1", u"#00301:01", u"#END IF", u"#00401:01"}),
            u"234");
  EXPECT_EQ(MeasuresOf({u"#ENDIF", u"#ENDRANDOM", u"#ELSE", u"#SKIP", u"#ENDSW", u"#CASE 1", u"#00101:01"}),
            u"1");
  EXPECT_EQ(MeasuresOf({u"#IF 1", u"#00101:01", u"#ENDIF", u"#00201:01"}), u"2");
}

TEST_F(WideReadingTest, AChartWithFewerBlocksThanNamedGoesOn) {
  EXPECT_EQ(MeasuresOf({u"#SETRANDOM 3", u"#IF 1", u"#00101:01", u"#ENDIF", u"#00201:01"}), u"2");
}

TEST_F(WideReadingTest, ASwitchReadsFromItsCaseToTheNextSkip) {
  const auto switched = [](TextView word) {
    return std::vector<Text>{Join(u"#SETSWITCH ", word),
                             u"#CASE 1",
                             u"#00101:01",
                             u"#SKIP",
                             u"#CASE 2",
                             u"#00201:01",
                             u"#CASE 3",
                             u"#00301:01",
                             u"#SKIP",
                             u"#DEF",
                             u"#00401:01",
                             u"#ENDSW",
                             u"#00501:01"};
  };
  EXPECT_EQ(MeasuresOf(switched(u"1")), u"15");
  EXPECT_EQ(MeasuresOf(switched(u"2")), u"235");
  EXPECT_EQ(MeasuresOf(switched(u"3")), u"35");
  EXPECT_EQ(MeasuresOf(switched(u"4")), u"45");
}

TEST_F(WideReadingTest, ASwitchDrawsAndMayHoldBlocks) {
  SetRndList({0.9F});
  EXPECT_EQ(
      MeasuresOf({u"#SWITCH 2", u"#CASE 1", u"#00101:01", u"#SKIP", u"#CASE 2", u"#SETRANDOM 1", u"#IF 1",
                  u"#00201:01", u"#SKIP", u"#ENDIF", u"#ENDRANDOM", u"#00301:01", u"#ENDSW", u"#00401:01"}),
      u"24");
}

// --- text ---

TEST_F(WideReadingTest, Utf8IsReadWhereItIs) {
  ReadBytes("\r\n#TITLE \xE6\x9B\xB2\r\n");
  EXPECT_EQ(HdrTitle, u"曲");
  ReadBytes("\r\n#TITLE \x8B\xC8\r\n");  // code page 932
  EXPECT_EQ(HdrTitle, u"曲");
  ReadBytes("\xEF\xBB\xBF#TITLE caf\xC3\xA9\r\n");
  EXPECT_EQ(HdrTitle, u"café");
}

TEST_F(WideReadingTest, EveryLineEndCountsAndTheFirstLineIsRead) {
  ReadBytes("#TITLE a\n#ARTIST b\r#GENRE c\r\n#00101:01\n");
  EXPECT_EQ(HdrTitle, u"a");
  EXPECT_EQ(HdrArtist, u"b");
  EXPECT_EQ(HdrGenre, u"c");
  EXPECT_EQ(objCount, 1);
  EXPECT_EQ(CountLogged(u"Return-code converted"), 1);
}

TEST_F(WideReadingTest, ANulEndsTheChart) {
  ReadBytes(std::string_view("#TITLE a\r\n\0#TITLE b\r\n", 21));
  EXPECT_EQ(HdrTitle, u"a");
}

// --- header ---

TEST_F(WideReadingTest, TitleAndArtistHaveTheirSecondLines) {
  Read({u"#TITLE Song", u"#SUBTITLE ~remix~", u"#ARTIST me", u"#SUBARTIST obj: you", u"#DIFFICULTY 4"});
  EXPECT_EQ(HdrTitle, u"Song ~remix~ [ANOTHER]");
  EXPECT_EQ(HdrArtist, u"me obj: you");
}

TEST_F(WideReadingTest, ADifficultyThatTheTitleTellsIsNotToldTwice) {
  Read({u"#TITLE Song [Another]", u"#DIFFICULTY 4"});
  EXPECT_EQ(HdrTitle, u"Song [Another]");
  Read({u"#TITLE Song", u"#DIFFICULTY 6"});
  EXPECT_EQ(HdrTitle, u"Song");
  Read({u"#DIFFICULTY 1"});
  EXPECT_EQ(HdrTitle, u"[BEGINNER]");
}

TEST_F(WideReadingTest, VolwavIsAPercentage) {
  Read({});
  EXPECT_EQ(ChartVolume, 0);
  Read({u"#VOLWAV 50"});
  EXPECT_EQ(ChartVolume, -602);  // 20 lg 0.5 is -6.0206 dB
  Read({u"#VOLWAV 0"});
  EXPECT_EQ(ChartVolume, -10000);
}

TEST_F(WideReadingTest, APreviewHasTheChartsFolder) {
  Read({u"#PREVIEW pre.ogg"});
  EXPECT_EQ(HdrPreview, Join(AppPath, u"\\song\\pre.ogg"));
  Read({});
  EXPECT_EQ(HdrPreview, u"");
}

TEST_F(WideReadingTest, ScrollWordsArePassedOver) {
  Read({u"#SCROLL01 2", u"#SPEED01 0.5", u"#TITLE a"});
  EXPECT_EQ(HdrTitle, u"a");
}

}  // namespace
}  // namespace qlm
