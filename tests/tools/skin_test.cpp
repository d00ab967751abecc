// The command `skin`, and plays with a skin of one's choice.
#include <filesystem>

#include "base/paths.h"
#include "tests/tools/probe.h"

namespace qlm {
namespace {

class SkinCommandTest : public ProbeTest {
 protected:
  SkinCommandTest() {
    WriteBmp("_qlmfiles/sheet.bmp", 320, 256);
    WriteBmp("_qlmfiles/back.bmp", 640, 480);
  }

  // Runs the command on a skin of these lines.
  std::string Skin(const std::vector<std::string>& lines, std::vector<std::string> options = {}) const {
    std::string text;
    for (const std::string& line : lines) text += line + "\r\n";
    WriteData(u"_qlmfiles\\ink.brd", text);
    options.insert(options.begin(), {"skin", At("_qlmfiles/ink.brd")});
    const ProcessResult result = Probe(options);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    return result.output;
  }
  // A sound skin and one line more, in line 5, that gets exactly one warning.
  void ExpectOne(const std::string& line, const std::string& warning) const {
    const std::string output =
        Skin({"#BACK00 back.bmp", "#FILE01 sheet.bmp", "#CLIP01 1,0,0,32,16", "#NUM01 1,0,0,16,16", line});
    const std::string expected = "\"warnings\": [\n    {\"line\": 5, \"text\": \"";
    const size_t at = output.find(expected);
    ASSERT_NE(at, std::string::npos) << line << "\n" << output.substr(output.find("\"warnings\""));
    const std::string rest = output.substr(at + expected.size());
    EXPECT_EQ(rest.substr(0, rest.find("\"}")), warning + ": " + line);
    EXPECT_EQ(rest.find("{\"line\""), std::string::npos) << rest;
  }
  // The same where one mistake brings others with it.
  void ExpectAmong(const std::string& line, const std::string& warning) const {
    EXPECT_TRUE(Holds(Skin({line}), "{\"line\": 1, \"text\": \"" + warning + ": " + line + "\"}"));
  }
  void ExpectNone(const std::vector<std::string>& lines) const {
    std::vector<std::string> all = {"#BACK00 back.bmp", "#FILE01 sheet.bmp", "#CLIP01 1,0,0,32,16",
                                    "#NUM01 1,0,0,16,16"};
    all.insert(all.end(), lines.begin(), lines.end());
    EXPECT_TRUE(Holds(Skin(all), "\"warnings\": []"));
  }
};

TEST_F(SkinCommandTest, PrintsTheTablesAndOnlyWhatTheFileSetOfTheSparseOnes) {
  const std::string output = Skin({"#FILE01 sheet.bmp", "#CLIP0A 1,0,0,8,4,0,0,2,-24",
                                   "#NUM02 1,0,0,8,16,0,1", "#NOTE11 0A,00,00,100,200", "#LAYER05 0A,1,2,1",
                                   "#LINE_1P_L3 0A,5,6", "#BGA_1P 1,2,3,4", "#GAUGESTEP 2.5"},
                                  {"--scratch1p", "1"});
  EXPECT_TRUE(Holds(output,
                    "\"Clip\": {\n    \"10\": {\"file\": 1, \"frames\": 2, \"rects\": [[0, 0, 8, 4], "
                    "[8, 0, 16, 4]], \"speed\": 24, \"animMode\": 2, \"rect\": [0, 0, 8, 4], "
                    "\"width\": 8, \"height\": 4, \"flag\": 0}\n  }"));
  EXPECT_TRUE(Holds(output, "\"ClipList\": [10]"));
  EXPECT_TRUE(Holds(output,
                    "\"1\": {\"clip\": 10, \"x\": 200, \"yOffset\": -4, \"xLeft\": 100, \"xRight\": 200, "
                    "\"p5\": 0, \"p6\": 0, \"beamClip\": 0, \"spareClip\": 0}"));
  EXPECT_TRUE(Holds(output, "\"5\": {\"clip\": 10, \"x\": 1, \"y\": 2, \"wide\": true}"));
  EXPECT_TRUE(Holds(output, "\"LayerList\": [5]"));
  EXPECT_TRUE(Holds(output, "\"GaugeStep\": 2.5"));
  EXPECT_TRUE(Holds(output, "\"JudgeY\": 480"));
  EXPECT_TRUE(Holds(output, "\"files\": {\n    \"1\": \"sheet.bmp\"\n  }"));
  EXPECT_TRUE(Holds(output, "\"background\": \"\""));
}

TEST_F(SkinCommandTest, ASoundSkinHasNoWarnings) {
  ExpectNone(
      {"#TITLE ink", "#SKINSTYLE 1P", "free text", "// #CLIP", "#KEY1P_L 01,0,0", "#SCORE_1P 01,10,10"});
}

TEST_F(SkinCommandTest, WordsThatAreNotKnown) {
  ExpectOne("#CILP02 1,0,0,8,8", "there is no such directive");
  ExpectOne("#SC_FINE_1P 01,1,1", "the word is none that this directive knows: FINE");
  ExpectOne("#SC_GREAT_1 01,1,1", "the word does not end in a side, 1P or 2P");
  ExpectOne("#SCORE_P1 01,1,1", "the word does not end in a side, 1P or 2P");
  ExpectOne("#BOMB_BAD 01,1,1", "the word is none that this directive knows: BAD");
  ExpectOne("#ST_NONE 01", "the word is none that this directive knows: NONE");
  ExpectOne("#GAUGES_1P 01,1,1", "the word is none that this directive knows: #GAUGES_1P");
  ExpectOne("#EXGAUGE_1P 01,1,1", "the word is none that this directive knows: #EXGAUGE_1P");
  ExpectOne("#JUDGES_GOOD_1P 01,1,1", "the word is none that this directive knows: #JUDGES");
  ExpectOne("#playpos 01,1,1", "the word is neither #PLAYPOS nor #PLAY_FULLPOS, in capitals");
  ExpectOne("#key1p_l 01,1,1", "the line begins neither with #KEY1P nor with #KEY2P, in capitals");
  ExpectOne("#KEY1P_r 01,1,1", "column 8 holds neither L nor R, in capitals: it counts as L");
  ExpectOne("#JUDGEPOS_1P_X 01,1,1", "the word names no place of the turntable, L or R: it counts as L");
  ExpectOne("#JUDGEPOS_3P_L 01,1,1", "the second part of the word is no side, 1P or 2P");
  ExpectOne("#LINE_3P_L1 01,1,1", "the second part of the word is no side, 1P or 2P");
  ExpectOne("#LINE_1P_L16 01,1,1", "the word ends in no number from 0 to 15");
  ExpectOne("#LEN 01,1,1", "the word does not end in a digit from 1 to 4");
  ExpectOne("#FAN50_1P 01,1,1", "the number in the word is not 0, 20, 80 or 99");
  ExpectOne("#BLINK_30 1,1,1,1,1", "the word names no channel from 11 to 29");
  ExpectOne("#NOTE61 01,01,00,1,1", "channels go from 10 to 60");
}

TEST_F(SkinCommandTest, OptionsThatAreNotKnown) {
  ExpectNone({"#CLIP00 1,0,0,8,8", "#OP_NONE 01,1,1,1,1"});
  ExpectOne("#OP_DOUBLE 01,1,1,1,1",
            "the option is none that the game knows, and this line sets the mark of HIDDEN");
  EXPECT_TRUE(Holds(Skin({"#FILE01 sheet.bmp", "#CLIP20 1,0,0,8,8", "#OP_DOUBLE 20,1,1,1,1"}),
                    "the option is none that the game knows, and this line sets nothing: DOUBLE"));
}

TEST_F(SkinCommandTest, NumbersThatAreNoneOrDoNotFit) {
  ExpectOne("#COUNT 01,1O,5", "x is no number: 1O");
  ExpectOne("#COUNT 01,10", "y is missing");
  ExpectOne("#COUNT 01,,5", "x is missing");
  ExpectOne("#COUNT 01,40000,5", "x is out of range: 40000");
  ExpectAmong("#COUNT 0x1,1,5", "the number of the digits is no hexadecimal number: 0x1");
  ExpectOne("#YPOSITION 300px", "y is no number: 300px");
  ExpectAmong("#COMBO 256", "the number of the digits is out of range: 256");
  ExpectOne("#CLIP02 1,0,0,8,8,0,0,70000", "the number of frames is out of range: 70000");
  ExpectOne("#CLIP02 1,0,0,8,8,0,0,2,fast", "the speed is no number: fast");
  ExpectOne("#GAUGESTEP wide", "the step is no number: wide");
  ExpectOne("#YPOSITION 0", "notes are judged off the screen, at y 0");
}

TEST_F(SkinCommandTest, ColumnsThatDoNotHoldWhatIsExpected) {
  ExpectAmong("#NOTE1 01,01,00,1,1", "columns 6 and 7 hold no two digits");
  ExpectAmong("#YPOS 300", "the arguments are read from column 11 on, but stand at column 7");
  ExpectAmong("#CLIP1 1,0,0,8,8", "columns 6 and 7 hold no two hexadecimal digits");
  EXPECT_TRUE(Holds(Skin({"#CLIP01  1,0,0,8,8", "#FILE001 sheet.bmp"}),
                    "column 8 holds no blank: #FILE001 sheet.bmp"));
}

TEST_F(SkinCommandTest, PicturesThatAreMissingOrNone) {
  WriteData(u"_qlmfiles\\text.bmp", "no picture");
  ExpectOne("#FILE02 none.bmp", "there is no such picture: none.bmp");
  ExpectOne("#FILE02 text.bmp", "this is no picture that the game can load: text.bmp");
  ExpectOne("#FILE02", "the name of the picture is missing");
  EXPECT_TRUE(Holds(Skin({"#BACK00 sheet.bmp"}),
                    "a background of 320 by 256 pixels is not drawn: it must have 640 by 480"));
}

TEST_F(SkinCommandTest, NumbersThatNothingStandsBehind) {
  ExpectOne("#KEY1P_L 02,0,0", "no #CLIP02 line makes this clip");
  ExpectOne("#SCORE_1P 0A,0,0", "no #NUM0A line makes these digits");
  ExpectOne("#CLIP02 2,0,0,8,8", "no #FILE02 line gives this sheet a picture");
  EXPECT_TRUE(Holds(Skin({"#FILE01 sheet.bmp", "#CLIPFE 1,0,0,8,8", "#CLASS_1P FE,0,0"}),
                    "no #CLIPFF line makes this clip: #CLASS_1P FE,0,0"));
}

TEST_F(SkinCommandTest, RectanglesOutsideTheirPicture) {
  ExpectOne("#CLIP02 1,300,0,32,8",
            "frame 0, (300, 0) to (332, 8), lies outside its picture of 320 by 256 pixels and is not drawn");
  ExpectOne("#CLIP02 1,0,0,32,100,2,0,3",
            "frame 2, (0, 200) to (32, 300), lies outside its picture of 320 by 256 pixels and is not drawn");
  ExpectOne("#CLIP02 1,0,0,0,8", "a clip of 0 by 8 pixels shows nothing");
  ExpectOne("#NUM02 1,0,0,24,8",
            "glyph 13, (312, 0) to (336, 8), lies outside its picture of 320 by 256 pixels and is not drawn");
  ExpectOne(
      "#SYSFONT 0,0,8,16",
      "the cell of @, (-8, 16) to (0, 32), lies outside its picture of 320 by 256 pixels and is not drawn");
  ExpectNone({"#SYSFONT 8,0,8,16"});
}

TEST_F(SkinCommandTest, PlacesOffTheScreen) {
  ExpectOne("#SCORE_1P 01,640,0", "(640, 0) is off the screen");
  ExpectOne("#LAYER01 01,600,480", "(600, 480) is off the screen");
  ExpectOne("#LAYER01 01,-1,0", "a layer with x or y below 0 is left out");
  ExpectNone({"#LAYER01 01,630,470"});
  ExpectOne(
      "#KEY1P_L 01,620,0",
      "at (620, 0) this clip of 32 by 16 pixels sticks out of the screen, and is then not drawn at all");
  ExpectOne("#BGA_1P 0,0,257,256", "a BGA of more than 256 by 256 pixels is not shown");
  ExpectOne("#BGA_1P 400,0,256,256", "a BGA that sticks out of the screen is not shown");
}

TEST_F(SkinCommandTest, EntriesThatAreSetTwice) {
  ExpectOne("#CLIP01 1,0,0,8,8", "line 3 has set this already");
  ExpectNone({"#SCORE_1P 01,1,1", "#SCORE_2P 01,1,1"});
}

TEST_F(SkinCommandTest, NotesBeforeTheirClip) {
  EXPECT_TRUE(
      Holds(Skin({"#FILE01 sheet.bmp", "#NOTE11 05,00,00,1,1", "#CLIP05 1,0,0,8,8"}),
            "{\"line\": 2, \"text\": \"a note finds its height only in a clip that stands further up: "
            "#NOTE11 05,00,00,1,1\"}"));
}

TEST_F(SkinCommandTest, AMissingSkinIsRefused) {
  EXPECT_EQ(Probe({"skin", At("none.brd")}).exitStatus, 1);
  EXPECT_EQ(Probe({"skin"}).exitStatus, 2);
  EXPECT_EQ(Probe({"skin", At("none.brd"), "--side-count", "3"}).exitStatus, 2);
}

TEST_F(SkinCommandTest, TheExampleOfTheDocumentsIsSound) {
  std::filesystem::copy(QLM_SOURCE_DIR "/docs/example-skin", At("example"),
                        std::filesystem::copy_options::recursive);
  WriteData(u"_qlmfiles\\example-back.png",
            ReadBytes(Join(AppPath, u"\\example\\_qlmfiles\\example-back.png")));
  WriteData(u"_qlmfiles\\example-sheet.png",
            ReadBytes(Join(AppPath, u"\\example\\_qlmfiles\\example-sheet.png")));
  const ProcessResult result = Probe({"skin", At("example/_qlmfiles/example.brd")});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_TRUE(Holds(result.output, "\"warnings\": []"));
  EXPECT_TRUE(Holds(result.output, "\"background\": \"example-back.png\""));
}

class SkinOptionTest : public ProbeTest {
 protected:
  SkinOptionTest() {
    WriteData(u"_qlmfiles\\default.brd", "#YPOSITION 200\r\n");
    WriteData(u"mine.brd", "#YPOSITION 300\r\n");
    chart_ = Chart("a.bms", {"#PLAYER 1", "#TITLE a", "#ARTIST b", "#GENRE c", "#BPM 240", "#00111:01"});
  }
  // The log of a run.
  std::string LogOf(std::vector<std::string> arguments) const {
    arguments.insert(arguments.end(), {"--log", At("log.txt")});
    EXPECT_EQ(Probe(arguments).exitStatus, 0);
    return ReadBytes(Join(AppPath, u"\\log.txt"));
  }

  std::string chart_;
};

TEST_F(SkinOptionTest, PlayLoadsTheSkinThatIsNamedAndElseNone) {
  EXPECT_TRUE(Holds(LogOf({"play", chart_, "--skin", At("mine.brd")}), "[loadSkin] : mine.brd"));
  EXPECT_EQ(LogOf({"play", chart_}).find("default.brd"), std::string::npos);
}

TEST_F(SkinOptionTest, FrameTakesTheStockSkinInstead) {
  EXPECT_TRUE(Holds(LogOf({"frame", chart_, "--at", "0", "--out", At("shot"), "--skin", At("mine.brd")}),
                    "[loadSkin] : mine.brd"));
  EXPECT_TRUE(Holds(LogOf({"frame", chart_, "--at", "0", "--out", At("shot")}), "[loadSkin] : default.brd"));
}

TEST_F(SkinOptionTest, NextSkinMovesTheLineOfAPlayWithoutPictures) {
  // 240 beats a minute are 0.192 units a millisecond: at 700 ms the note lies 58 units off, within reach of a
  // press where the line stands at 480, and not yet on a screen whose line stands at 20.
  WriteData(u"_qlmfiles\\default.brd", "#YPOSITION 20\r\n");
  WriteData(u"early.txt", "700 down 44\n");
  WriteData(u"next.txt", "100 down 67\n700 down 44\n");
  EXPECT_TRUE(Holds(Probe({"play", chart_, "--events", At("early.txt")}).output, "\"tooEarly\": true"));
  const std::string missedOnly = Probe({"play", chart_, "--events", At("next.txt")}).output;
  EXPECT_TRUE(Holds(missedOnly, "\"delta_used\": 48"));
  EXPECT_EQ(missedOnly.find("\"tooEarly\": true"), std::string::npos);
}

TEST_F(SkinOptionTest, AMissingSkinIsRefused) {
  EXPECT_EQ(Probe({"play", chart_, "--skin", At("none.brd")}).exitStatus, 1);
}

}  // namespace
}  // namespace qlm
