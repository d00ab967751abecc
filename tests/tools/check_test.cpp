// The probe's check: each finding on its line, and nothing on a chart that is well.
#include "tests/tools/probe.h"
#include "tools/media_files/encoded.h"

namespace qlm {
namespace {

class CheckTest : public ProbeTest {
 protected:
  CheckTest() {
    WriteWav("x.wav", {1, 2, 3});
    WriteBmp("p.bmp", 256, 256);
  }
  // A chart without a fault, with these lines behind its ten; the first of them is line 12.
  std::string With(const std::vector<std::string>& lines) const {
    std::vector<std::string> all = {"#PLAYER 1", "#TITLE t",     "#ARTIST a",    "#GENRE g",  "#BPM 120",
                                    "#RANK 2",   "#WAV01 x.wav", "#BMP01 p.bmp", "#00011:01", "#00004:01"};
    all.insert(all.end(), lines.begin(), lines.end());
    return Chart("c.bms", all);
  }
  // Expects exactly this one finding.
  void ExpectOne(const std::vector<std::string>& lines, int line, const std::string& kind,
                 const std::string& words) const {
    const ProcessResult result = Probe({"check", With(lines)});
    EXPECT_EQ(result.exitStatus, 1) << testing::PrintToString(lines);
    EXPECT_TRUE(Holds(result.output,
                      "{\"line\": " + std::to_string(line) + ", \"kind\": \"" + kind + "\", \"text\": \""));
    EXPECT_TRUE(Holds(result.output, words));
    // What the wide reading makes of the fault is told beside it.
    EXPECT_EQ(CountOf(result.output, "\"kind\"") - CountOf(result.output, "\"kind\": \"wide\""), 1U)
        << result.output;
  }
  static size_t CountOf(const std::string& text, const std::string& words) {
    size_t count = 0;
    for (size_t at = text.find(words); at != std::string::npos; at = text.find(words, at + 1)) ++count;
    return count;
  }
  // Expects this finding on what the wide reading makes otherwise.
  void ExpectWide(const std::vector<std::string>& lines, int line, const std::string& words) const {
    const ProcessResult result = Probe({"check", With(lines)});
    EXPECT_TRUE(Holds(result.output, "{\"line\": " + std::to_string(line) +
                                         ", \"kind\": \"wide\", \"text\": \"" + words + "\"}"));
    const ProcessResult wide = Probe({"check", "--wide", With(lines)});
    EXPECT_EQ(CountOf(wide.output, "\"kind\": \"wide\""), 0U);
  }
  void ExpectNone(const std::vector<std::string>& lines) const {
    const ProcessResult result = Probe({"check", With(lines)});
    EXPECT_EQ(result.exitStatus, 0) << result.output;
    EXPECT_TRUE(Holds(result.output, "\"findings\": []"));
  }
};

TEST_F(CheckTest, GoodChartHasNoFindings) {
  ExpectNone({});
  ExpectNone({"#00102:0.5", "#TOTAL 200", "#VOLWAV 100", "#MIDIFILE a.mid", "#PLAYLEVEL 3", "#BPM01 90",
              "#00108:01", "#00031:01", "#00101:0101", "#00116:0001", "#00118:01", "#STAGEFILE p.bmp",
              "*---- a comment"});
}

TEST_F(CheckTest, UnreadableFileIsTold) {
  const ProcessResult result = Probe({"check", At("none.bms")});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.errors, "qlmprobe: " + At("none.bms") + ": there is no such file\n");
  EXPECT_TRUE(Holds(result.output, "\"charts\": []"));
}

TEST_F(CheckTest, EveryChartIsLookedAt) {
  const ProcessResult result = Probe({"check", With({}), Chart("d.bms", {"#00011:01"})});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_TRUE(Holds(result.output, "c.bms\", \"findings\": []"));
  EXPECT_TRUE(Holds(result.output, "d.bms\", \"findings\": [\n"));
}

TEST_F(CheckTest, FirstLineIsNotRead) {
  WriteData(u"f.bms", "#PLAYER 1\r\n#TITLE t\r\n#ARTIST a\r\n#GENRE g\r\n#WAV01 x.wav\r\n#00011:01\r\n");
  EXPECT_TRUE(Holds(Probe({"check", At("f.bms")}).output, "{\"line\": 1, \"kind\": \"first-line\""));
}

TEST_F(CheckTest, LineEnds) {
  WriteData(u"f.bms", "\n#TITLE t\n#ARTIST a\n#GENRE g\n#WAV01 x.wav\n#00011:01\n");
  EXPECT_TRUE(Holds(Probe({"check", At("f.bms")}).output, "{\"line\": 0, \"kind\": \"line-ends\""));
  WriteData(u"f.bms", "\r\n#TITLE t\r\n#ARTIST a\n#GENRE g\r\n#WAV01 x.wav\r\n#00011:01\r\n");
  EXPECT_TRUE(Holds(Probe({"check", At("f.bms")}).output, "{\"line\": 4, \"kind\": \"line-ends\""));
  WriteData(u"f.bms", "\r#TITLE t\r#ARTIST a\r#GENRE g\r#WAV01 x.wav\r#00011:01\r");
  EXPECT_EQ(Probe({"check", At("f.bms")}).exitStatus, 0) << "CR alone is converted";
}

TEST_F(CheckTest, HiddenCommands) {
  ExpectOne({" #00111:01"}, 12, "blank", "hide the command");
  ExpectOne({"#", "x"}, 12, "empty", "swallows");
}

TEST_F(CheckTest, ZeroByteAndUtf8) {
  ExpectOne({std::string("#00111:01\0", 10), "#wat"}, 12, "nul", "ends the chart");
  ExpectOne({"#TITLE 羽ペン"}, 0, "encoding", "UTF-8");
}

TEST_F(CheckTest, Numbers) {
  ExpectOne({"#RANK easy"}, 12, "number", "the rank keeps");
  ExpectOne({"#RANK 4"}, 12, "rank", "outside 0 to 3");
  ExpectOne({"#TOTAL x"}, 12, "number", "the total");
  ExpectOne({"#VOLWAV x"}, 12, "number", "the volume");
  ExpectOne({"#PLAYLEVEL x"}, 12, "number", "the level");
  ExpectOne({"#PLAYER 4"}, 12, "player", "1, 2 or 3");
  ExpectOne({"#BPM x"}, 12, "number", "the tempo keeps");
  ExpectOne({"#BPM 0"}, 12, "tempo", "nothing moves");
  ExpectOne({"#BPM02 0"}, 12, "tempo", "changes nothing");
}

TEST_F(CheckTest, UnknownCommands) { ExpectOne({"#LNOBJ ZZ"}, 12, "command", "does not know #LNOBJ"); }

TEST_F(CheckTest, FilesThatAreNotThere) {
  ExpectOne({"#WAV02 kick.wav"}, 12, "sound", "tried kick.wav, kick.mp3 and kick.wavwav");
  WriteData(u"snare.ogg", "x");
  ExpectOne({"#WAV02 snare.wav"}, 12, "sound", "snare.ogg is there");
  WriteData(u"text.wav", "no sound at all, only words");
  ExpectOne({"#WAV02 text.wav"}, 12, "sound", "is no sound that the game can load");
  ExpectOne({"#BMP02 film.mpg"}, 12, "picture", "tried film.mpg");
  ExpectOne({"#STAGEFILE s.png"}, 12, "picture", "tried s.png");
  WriteData(u"text.bmp", "no picture");
  ExpectOne({"#BMP02 text.bmp"}, 12, "picture", "is no picture");
}

TEST_F(CheckTest, TellsWhatTheWideReadingTakesForAMissingFile) {
  const auto sound = [](media::Coding coding) { return media::EncodedSound(coding, {0, 0.5F}, 1, 44100); };
  WriteData(u"snare.ogg", sound(media::Coding::kVorbis));
  ExpectOne({"#WAV02 snare.wav"}, 12, "sound",
            "tried snare.wav, snare.mp3 and snare.wavwav; the wide reading takes snare.ogg");
  WriteData(u"snare.wav", sound(media::Coding::kWav24));
  ExpectOne({"#WAV02 snare.wav"}, 12, "sound",
            "snare.wav is there, but is no sound that the game can load; the wide reading can");
  WriteBmp("q.png", 2, 2);
  ExpectOne({"#BMP02 q.bmp"}, 12, "picture", "tried q.bmp; the wide reading takes q.png");
}

TEST_F(CheckTest, InTheWideReadingTheyAreNotMissing) {
  const auto wide = [&](const std::vector<std::string>& lines) {
    return Probe({"check", "--wide", With(lines)}).output;
  };
  WriteData(u"snare.opus", media::EncodedSound(media::Coding::kOpus, {0, 0.5F}, 1, 48000));
  WriteBmp("q.png", 2, 2);
  const std::string fine = wide({"#WAV02 snare.wav", "#BMP02 q.bmp", "#STAGEFILE q.jpg"});
  EXPECT_FALSE(fine.find("\"sound\"") != std::string::npos) << fine;
  EXPECT_FALSE(fine.find("\"picture\"") != std::string::npos) << fine;
  EXPECT_TRUE(Holds(wide({"#WAV02 kick.wav"}),
                    "no such file; tried kick.wav and the same as .wav, .ogg, .flac, .opus and .mp3"));
  EXPECT_TRUE(Holds(wide({"#BMP02 r.bmp"}),
                    "no such file; tried r.bmp and the same as .bmp, .png, .jpg, .jpeg and .gif"));
  WriteData(u"kick.ogg", "OggS and no more");
  EXPECT_TRUE(Holds(wide({"#WAV02 kick.wav"}), "kick.ogg is there, but is no sound that the game can load"));
}

TEST_F(CheckTest, InTheWideReadingOnlyWhatHoldsThereIsTold) {
  // UTF-8, line feeds alone, a command on the first line, words and channels of today, slots beyond FF.
  WriteWav("曲.wav", {1, 2, 3});
  WriteData(u"today.bms",
            "#SUBTITLE b\n#BPM 120\n#RANK x\n#WAV01 曲.wav\n#WAV1G gone.wav\n#WAV2G x.wav\n#LNOBJ ZZ\n"
            "#STOP01 4\n#BMPZZ p.bmp\n#00109:01\n#00111:011G\n#00153:2G2G\n#00104:ZZ\n#00212:01ZZ\n");
  const ProcessResult result = Probe({"check", "--wide", At("today.bms")});
  EXPECT_EQ(CountOf(result.output, "\"kind\""), 2U) << result.output;
  EXPECT_TRUE(Holds(result.output, "{\"line\": 3, \"kind\": \"number\""));
  EXPECT_TRUE(
      Holds(result.output, "{\"line\": 5, \"kind\": \"sound\", \"text\": \"no such file; tried gone.wav"));
}

TEST_F(CheckTest, InTheWideReadingLongNotesAreNotesToo) {
  const auto wide = [&](const std::vector<std::string>& lines) {
    return Probe({"check", "--wide", Chart("n.bms", lines)}).output;
  };
  EXPECT_TRUE(Holds(wide({"#WAV01 x.wav", "#00151:0101"}), "\"findings\": []"));
  EXPECT_TRUE(Holds(wide({"#WAV01 x.wav", "#00101:01", "#00109:01", "#001D1:01"}), "\"kind\": \"no-notes\""));
}

TEST_F(CheckTest, VideoIsNotPlayed) {
  WriteData(u"film.mpg", "pictures that move");
  ExpectOne({"#BMP02 film.mpg"}, 12, "picture",
            "film.mpg is a video, and none is played: its place stays dark");
}

TEST_F(CheckTest, LargePicturesDoNotShow) {
  WriteBmp("big.bmp", 320, 240);
  ExpectNone({"#BMP02 big.bmp"});
  ExpectOne({"#BMP02 big.bmp", "#00104:02"}, 12, "picture",
            "big.bmp has 320 by 240 pixels: as base or layer nothing above 256 by 256 is shown; the wide "
            "reading makes it smaller");
  const std::string wide = Probe({"check", "--wide", With({"#BMP02 big.bmp", "#00104:02"})}).output;
  EXPECT_TRUE(Holds(wide, "\"findings\": []"));
}

TEST_F(CheckTest, Slots) {
  ExpectOne({"#WAV01 x.wav"}, 12, "redefined", "line 8 already");
  ExpectOne({"#WAV00 x.wav"}, 12, "slot-0", "never loaded");
  ExpectOne({"#BMPG1 p.bmp"}, 12, "index", "slot 00");
  ExpectOne({"#00111:02"}, 12, "undefined", "#WAV02 is not defined and is used 1 time: silence");
  ExpectOne({"#00107:0202"}, 12, "undefined", "#BMP02 is not defined and is used 2 times: no picture");
  ExpectOne({"#00108:02"}, 12, "undefined", "#BPM02 is not defined");
}

TEST_F(CheckTest, DataLines) {
  ExpectOne({"#00109:01"}, 12, "channel", "no stops");
  ExpectOne({"#00117:01"}, 12, "channel", "no free zone");
  ExpectOne({"#00151:01"}, 12, "channel", "no long notes");
  ExpectOne({"#0011A:01"}, 12, "channel", "is read as channel 1");
  ExpectOne({"#1E011:01"}, 12, "measure", "the game takes measure 1");
  ExpectOne({"#00311:01", "#9E911:0001"}, 13, "measure", "the game takes measure 3");
  ExpectOne({"#00111-01"}, 12, "colon", "passed over");
  ExpectOne({"#00111:010"}, 12, "odd", "passed over");
  ExpectOne({"#00111:1G"}, 12, "cell", "makes an object with 01");
  ExpectOne({"#00102:0"}, 12, "length", "gets the length 1");
  ExpectOne({"#00102:1E39"}, 12, "length", "so large is dropped");
}

TEST_F(CheckTest, DuplicatesAreFoundByPosition) {
  ExpectOne({"#00011:0100"}, 12, "duplicate", "holds a note of line 10 already");
  // In a measure of 0.005 both ticks round to one position.
  ExpectOne({"#00202:0.005", "#00211:0101"}, 13, "duplicate", "measure 2, tick 96");
  // Measure 1 begins at 19, and its ticks 32 and 64 lie 0.5 and 1 behind: the sums round to 20 both.
  ExpectOne({"#00002:0.099", "#00102:0.015625", "#00111:000101000000"}, 14, "duplicate",
            "measure 1, tick 64");
  ExpectNone({"#00001:0101", "#00001:01"});
}

TEST_F(CheckTest, WholeCharts) {
  ExpectOne({"#00121:01"}, 0, "player", "second side");
  ExpectOne({"#99911:00"}, 0, "last-measure", "measure 999");
  const ProcessResult result = Probe({"check", Chart("e.bms", {"#PLAYER 1"})});
  EXPECT_TRUE(Holds(result.output, "the chart has no notes"));
  EXPECT_TRUE(Holds(result.output, "there is no #TITLE"));
}

TEST_F(CheckTest, RandomBlocks) {
  ExpectNone({"#RANDOM 2", "#IF 1", "#00111:01", "#ENDIF", "#IF 2", "#00111:01", "#ENDIF"});
  ExpectOne({"#RANDOM 3", "#IF 1", "#ENDIF", "#IF 2", "#ENDIF"}, 12, "random", "has 2 #IF blocks");
  ExpectOne({"#RANDOM 1", "#IF 1", "#ENDIF", "#ENDRANDOM"}, 15, "random", "is not needed");
  ExpectOne({"#IF 1", "#ENDIF"}, 12, "random", "without a #RANDOM always holds");
  ExpectOne({"#RANDOM 1", "#IF 1", "#RANDOM 1", "#IF 1", "#ENDIF", "#ENDIF"}, 14, "random", "inside an #IF");
}

TEST_F(CheckTest, EveryBlockOfARandomIsRead) {
  ExpectOne({"#RANDOM 2", "#IF 1", "#00151:01", "#ENDIF", "#IF 2", "#ENDIF"}, 14, "channel", "no long notes");
  ExpectOne({"#RANDOM 2", "#IF 1", "#ENDIF", "#IF 2", "#00151:01", "#ENDIF"}, 16, "channel", "no long notes");
}

// Each of these is told of, and the command itself is read all the same.
TEST_F(CheckTest, HiddenCommandsAreReadAsTheirAuthorMeansThem) {
  WriteData(u"f.bms", "#00111:0G\n#\n#00112:0G\r\n#00113:0G");
  const std::string output = Probe({"check", At("f.bms")}).output;
  for (const std::string line : {"1", "3", "4"}) {
    EXPECT_TRUE(Holds(output, "{\"line\": " + line + ", \"kind\": \"cell\""));
  }
}

TEST_F(CheckTest, FindingsPastTenThousandOfAKindAreCounted) {
  const std::vector<std::string> blanks(10'001, " #00111:01");
  std::string cells;
  for (int i = 0; i < 10'003; ++i) cells += "ZZ";
  std::vector<std::string> lines = blanks;
  lines.push_back("#00101:" + cells);
  const std::string output = Probe({"check", With(lines)}).output;
  EXPECT_TRUE(Holds(output, "\"kind\": \"blank\", \"text\": \"and 1 more of this kind\""));
  EXPECT_TRUE(Holds(output, "\"kind\": \"cell\", \"text\": \"and 3 more of this kind\""));
}

TEST_F(CheckTest, MoreObjectsThanFit) {
  std::vector<std::string> lines;
  std::string cells;
  for (int i = 0; i < 192; ++i) cells += "01";
  for (int measure = 1; measure < 360; ++measure) {
    std::string digits = std::to_string(measure);
    digits.insert(0, 3 - digits.size(), '0');
    lines.push_back(std::string("#").append(digits).append("01:").append(cells));
  }
  ExpectOne(lines, 0, "objects", "room for 65536");
}

TEST_F(CheckTest, WhatTheWideReadingMakesOtherwiseIsTold) {
  ExpectWide({"#00111:010Z", "#00112:0Z"}, 12,
             "2 lines with slots beyond FF: the wide reading has a place for each");
  ExpectWide({"#WAV0Z x.wav"}, 12, "1 line with slots beyond FF: the wide reading has a place for each");
  ExpectWide({"#BASE 62"}, 12,
             "1 line with #BASE 62: the wide reading tells capital and small letters of slots apart");
  ExpectWide({"#STOP01 48", "#00109:01"}, 12, "2 lines with stops: the wide reading makes them");
  ExpectWide({"#00111:01", "#00151:0101"}, 13, "1 line with long notes: the wide reading has them");
  ExpectWide({"#001D1:01"}, 12, "1 line with mines: the wide reading shows them, and they do no harm");
  ExpectWide({"#SETRANDOM 1"}, 12, "1 line with blocks beyond #IF and #ENDIF: the wide reading follows them");
  ExpectWide({"#DIFFICULTY 2"}, 12,
             "1 line with a second title or artist, or a difficulty: the wide reading shows it");
  ExpectWide({"#VOLWAV 50"}, 12, "1 line with #VOLWAV: the wide reading plays at this volume");
  ExpectWide({"#001SC:01"}, 12,
             "1 line with scroll speeds of the chart: the wide reading passes them over too");
}

TEST_F(CheckTest, WhatTheWideReadingMakesOtherwiseIsNoFault) {
  const ProcessResult result = Probe({"check", With({"#BPM01 240", "#00108:01", "#00111:01"})});
  EXPECT_TRUE(Holds(result.output, "\"kind\": \"wide\", \"text\": \"by the wide reading the chart lasts"));
  EXPECT_EQ(CountOf(result.output, "\"kind\""), 1U);
  EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(CheckTest, NotesAndLengthsOfBothReadingsAreCompared) {
  ExpectWide({"#00111:01", "#00152:0101"}, 0, "the wide reading finds 3 notes, and the classic one 2");
  // One measure of two seconds behind the first, and a stop of 96 units at 120: one second.
  ExpectWide({"#STOP01 96", "#00109:01", "#00111:01"}, 0,
             "by the wide reading the chart lasts 5 s, and by the classic one 4 s");
}

}  // namespace
}  // namespace qlm
