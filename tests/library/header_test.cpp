// The header-only read: words of a chart, and the estimate of its length.
#include "library/header.h"

#include "state/chart.h"
#include "state/lists.h"
#include "state/settings.h"
#include "state/slots.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class HeaderTest : public GameTest {
 protected:
  // Reads these lines into a fresh row.
  const SongEntry& Read(const std::vector<Text>& lines) {
    Text text(kCrLf);
    for (const Text& line : lines) text.append(line).append(kCrLf);
    path_ = WriteText(u"chart.bms", text);
    return ReadFresh();
  }
  const SongEntry& ReadBytes(std::string_view bytes) {
    path_ = WriteData(u"chart.bms", bytes);
    return ReadFresh();
  }

  Text path_;

 private:
  const SongEntry& ReadFresh() {
    songList.assign(1, SongEntry{});
    ReadBMSHeader(path_, 0);
    return songList[0];
  }
};

// --- words ---

TEST_F(HeaderTest, AllWords) {
  const SongEntry& song =
      Read({u"#TITLE  春の歌 ", u"#ARTIST Me", u"#GENRE Pop", u"#BPM 150.5", u"#PLAYER 3", u"#PLAYLEVEL 12",
            u"#MIDIFILE a.mid", u"#RANK 1", u"#VOLWAV 90", u"#TOTAL 250", u"#STAGEFILE stage.bmp",
            u"#WAV01 a", u"#WAV01 a", u"#BMP01 b"});
  EXPECT_EQ(song.title, u"春の歌");
  EXPECT_EQ(song.artist, u"Me");
  EXPECT_EQ(song.genre, u"Pop");
  EXPECT_EQ(song.bpm, 150.5F);
  EXPECT_EQ(song.player, 3);
  EXPECT_EQ(song.playLevel, 12);
  EXPECT_EQ(song.midiFile, u"a.mid");
  EXPECT_EQ(song.rank, 1);
  EXPECT_EQ(song.volWav, 90);
  EXPECT_EQ(song.total, 250);
  EXPECT_EQ(song.stageFile, u"stage.bmp");
  EXPECT_EQ(song.numWav, 2);
  EXPECT_EQ(song.numBmp, 1);
  EXPECT_EQ(song.path, path_);
}

TEST_F(HeaderTest, Defaults) {
  const SongEntry& song = Read({});
  SongEntry expected;
  expected.player = 1;
  expected.playLevel = 3;
  expected.rank = 2;
  expected.path = path_;
  EXPECT_EQ(song, expected);
}

TEST_F(HeaderTest, MissingFileLeavesTheDefaults) {
  songList.assign(1, SongEntry{});
  ReadBMSHeader(u"\\none\\x.bms", 0);
  EXPECT_EQ(songList[0].player, 1);
  EXPECT_EQ(songList[0].path, u"\\none\\x.bms");
  EXPECT_EQ(songList[0].lengthMs, 0);
}

TEST_F(HeaderTest, RowThatDoesNotExistIsPassedOver) {
  songList.assign(1, SongEntry{});
  ReadBMSHeader(u"x", 1);
  ReadBMSHeader(u"x", -1);
  EXPECT_EQ(songList, std::vector<SongEntry>(1));
}

TEST_F(HeaderTest, NothingOfTheChartInMemoryChanges) {
  objCount = 5;
  HdrTitle = Text(u"kept");
  Read({u"#TITLE x", u"#00111:01", u"#WAV01 a"});
  EXPECT_EQ(objCount, 5);
  EXPECT_EQ(HdrTitle, u"kept");
  EXPECT_EQ(WavFile[1], u"");
  EXPECT_TRUE(log.empty());
}

TEST_F(HeaderTest, WordsAreReadInAnyCaseAndByTheirFirstLetters) {
  const SongEntry& song = Read({u"#titlex x", u"#StageFile y", u"#playerX2", u"#PLAYLEVEL:7"});
  EXPECT_EQ(song.title, u"x");
  EXPECT_EQ(song.stageFile, u"y");
  EXPECT_EQ(song.player, 2);
  EXPECT_EQ(song.playLevel, 7);
}

TEST_F(HeaderTest, LongTextIsCut) {
  EXPECT_EQ(Read({Join(u"#TITLE ", Text(70'000, u'a'))}).title, Text(65'535, u'a'));
}

TEST_F(HeaderTest, UnreadableFileIsToldInTheLog) {
  songList.assign(1, SongEntry{});
  ReadBMSHeader(u"\\none\\x.bms", 0);
  EXPECT_EQ(log, (std::vector<Text>{u"# cannot be read: \\none\\x.bms: No such file or directory"}));
}

TEST_F(HeaderTest, LaterLinesWin) { EXPECT_EQ(Read({u"#TITLE a", u"#TITLE b"}).title, u"b"); }

TEST_F(HeaderTest, ValuesThatDoNotConvertLeaveTheFieldAsItWas) {
  const SongEntry& song =
      Read({u"#RANK 1", u"#RANDOM 3", u"#PLAYER x", u"#TOTAL 1,5", u"#BPM 99", u"#BPM01 200", u"#BPM0A 3"});
  EXPECT_EQ(song.rank, 1);
  EXPECT_EQ(song.player, 1);
  EXPECT_EQ(song.total, 0);
  EXPECT_EQ(song.bpm, 99.0F);
}

// Of #BPM011 the header read sees the value "11".
TEST_F(HeaderTest, TempoTableMayConvertByChance) { EXPECT_EQ(Read({u"#BPM 99", u"#BPM011"}).bpm, 11.0F); }

// --- lines ---

TEST_F(HeaderTest, TitleOnTheVeryFirstLineIsNotSeen) {
  const SongEntry& song = ReadBytes("#TITLE x\r\n#ARTIST y\r\n");
  EXPECT_EQ(song.title, u"");
  EXPECT_EQ(song.artist, u"y");
}

TEST_F(HeaderTest, CrOnlyFileIsReadAsIfItHadCrLf) {
  EXPECT_EQ(ReadBytes("\r#TITLE x\r#ARTIST y\r").artist, u"y");
}

TEST_F(HeaderTest, LfOnlyFileHasNoLines) { EXPECT_EQ(ReadBytes("\n#TITLE x\n").title, u""); }

TEST_F(HeaderTest, NulEndsTheText) {
  const SongEntry& song = ReadBytes(std::string_view("\r\n#TITLE x\r\n\0\r\n#ARTIST y\r\n", 26));
  EXPECT_EQ(song.title, u"x");
  EXPECT_EQ(song.artist, u"");
}

TEST_F(HeaderTest, LineHoldingOnlyHashIsEmptyAndTheNextIsSeen) {
  EXPECT_EQ(Read({u"#", u"#TITLE x"}).title, u"x");
}

TEST_F(HeaderTest, BinaryDataIsHarmless) {
  const SongEntry& song = ReadBytes(std::string_view("qlm_juke\0\0\0\x01\r\n#TITLE x\xFF", 23));
  EXPECT_EQ(song.title, u"");
  EXPECT_EQ(song.player, 1);
}

// --- length ---

// One bar line for each measure from 0 to the highest seen: the last stands at 192, 0.1 units a ms.
TEST_F(HeaderTest, LengthRunsToTheBarLineOfTheLastMeasure) {
  EXPECT_EQ(Read({u"#BPM 125", u"#00111:01"}).lengthMs, 1920);
}

TEST_F(HeaderTest, EveryDataLineRaisesTheLastMeasure) {
  EXPECT_EQ(Read({u"#BPM 125", u"#00399:"}).lengthMs, 5760);
}

TEST_F(HeaderTest, MeasureOutOfRangeIsThePreviousLines) {
  EXPECT_EQ(Read({u"#BPM 125", u"#00211:01", u"#9E911:01"}).lengthMs, 3840);
}

TEST_F(HeaderTest, MeasureLengthsCount) {
  EXPECT_EQ(Read({u"#BPM 125", u"#00002:0.5", u"#00111:01"}).lengthMs, 960);
}

// 192 * 0.33 is 63.36, rounded to 63 in each measure.
TEST_F(HeaderTest, RunningTotalIsRoundedAtEachMeasure) {
  EXPECT_EQ(Read({u"#BPM 125", u"#00002:0.33", u"#00102:0.33", u"#00211:01"}).lengthMs, 1260);
}

// At 96 from 125 to 250: adj = -0.1 * 96 / 0.1 = -96; (384 + 96) * 1250 / 250 = 2400: 960 ms, then 288 units
// in 1440 ms.
TEST_F(HeaderTest, LengthObeysDirectTempoChanges) {
  EXPECT_EQ(Read({u"#BPM 125", u"#00003:00FA", u"#00211:01"}).lengthMs, 2400);
}

TEST_F(HeaderTest, TempoChangesByTableDoNotCount) {
  EXPECT_EQ(Read({u"#BPM 125", u"#BPM01 250", u"#00008:01", u"#00111:01"}).lengthMs, 1920);
}

// 192 * 1250 / 150 and / 152.
TEST_F(HeaderTest, FractionalTempoIsRoundedHalfToEven) {
  EXPECT_EQ(Read({u"#BPM 150.5", u"#00111:01"}).lengthMs, 1600);
  EXPECT_EQ(Read({u"#BPM 151.5", u"#00111:01"}).lengthMs, 1579);
}

TEST_F(HeaderTest, WithoutTempoTheLengthIsZero) {
  EXPECT_EQ(Read({u"#00111:01"}).lengthMs, 0);
  EXPECT_EQ(Read({u"#BPM 0", u"#00111:01"}).lengthMs, 0);
  EXPECT_EQ(Read({u"#BPM 0", u"#00003:78", u"#00111:01"}).lengthMs, 0);
}

TEST_F(HeaderTest, TempoPastSixteenBitsCountsAsNone) {
  const SongEntry& song = Read({u"#BPM 40000", u"#00111:01"});
  EXPECT_EQ(song.bpm, 40000.0F);
  EXPECT_EQ(song.lengthMs, 0);
}

// Lengths go to 1024 and the table holds bar lines 0 to 1000.
TEST_F(HeaderTest, TableOfThousandAndOneObjectsStopsTheLength) {
  EXPECT_EQ(Read({u"#BPM 125", u"#2E311:01"}).lengthMs, 1'920'000);
  EXPECT_EQ(Read({u"#BPM 125", u"#2E911:01"}).lengthMs, 1'920'000);
}

// 1001 tempo changes at position 0 leave no room for bar lines.
TEST_F(HeaderTest, TempoChangesMayFillTheTable) {
  std::vector<Text> lines = {u"#BPM 125", u"#00111:01"};
  for (int line = 0; line < 1001; ++line) lines.push_back(u"#00003:7D");
  EXPECT_EQ(Read(lines).lengthMs, 0);
}

// --- the wide reading ---

TEST_F(HeaderTest, WideEntriesFollowTheWideReading) {
  WideCharts = true;
  const SongEntry& song = ReadBytes(
      "#TITLE Song\n#SUBTITLE mix\n#ARTIST me\n#SUBARTIST you\n#DIFFICULTY 3\n#BPM 120\n#WAVZZ a.ogg\n");
  EXPECT_EQ(song.title, u"Song mix [HYPER]");
  EXPECT_EQ(song.artist, u"me you");
  EXPECT_EQ(song.bpm, 120);
  EXPECT_EQ(song.numWav, 1);
}

TEST_F(HeaderTest, AWideLengthCountsTempiByTableStopsAndTheLastMeasure) {
  WideCharts = true;
  // Measure 0 at 120 lasts 2000 ms, half of it 1000. Measure 1: half at 120, half at 240.5, and a stop of 48
  // at that: 500 + 248.96 + 249.48. Measure 2 at 240.5: 997.92.
  EXPECT_EQ(Read({u"#BPM 120", u"#BPMZZ 240.5", u"#STOP0Z 48", u"#00108:00ZZ", u"#00109:000Z", u"#00211:01"})
                .lengthMs,
            2000 + 1000 + 249 + 499 + 998);
  // With a measure of half its length.
  EXPECT_EQ(Read({u"#BPM 125", u"#00002:0.5", u"#00011:01"}).lengthMs, 960);
}

TEST_F(HeaderTest, AWideLengthOfMeasuresBeyondTheTableEnds) {
  WideCharts = true;
  EXPECT_EQ(Read({u"#BPM 125", u"#9E811:01"}).lengthMs, 1025 * 1920);
  EXPECT_EQ(Read({u"#BPM 0", u"#00111:01"}).lengthMs, 0);
}

TEST_F(HeaderTest, TheDigitsOfTheChartInMemoryStay) {
  WideCharts = true;
  SlotBase = 62;
  Read({u"#BPM 120"});
  EXPECT_EQ(SlotBase, 62);
}

}  // namespace
}  // namespace qlm
