// Each directive of a skin, by hand-made lines.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/paths.h"
#include "graphics/clips.h"
#include "graphics/skin.h"
#include "graphics/skin_directives.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "tests/graphics/skin_files.h"
#include "tests/support/allocations.h"

namespace qlm {
namespace {

class SkinDirectivesTest : public SkinTest {
 protected:
  // What the tables hold from the lines read before stays.
  void Read(std::initializer_list<const char*> lines) {
    loadSkin(WriteSkin(lines), read_);
    read_ = true;
  }

  static std::vector<Rect> Frames(const SkinClip& clip) {
    std::vector<Rect> frames;
    for (int64_t frame = 0; frame < clip.frames; ++frame) frames.push_back(FrameOf(clip, frame).value());
    return frames;
  }

 private:
  bool read_ = false;
};

// Lines.

TEST_F(SkinDirectivesTest, BlanksTabsAndFreeTextAreNoDirectives) {
  Read({"", "  \t ", "YPOSITION 100", "#UNKNOWN 5", "// #YPOSITION 100", "\t  #YPOSITION\t 222 // not 333"});
  EXPECT_EQ(JudgeY, 222);
}

TEST_F(SkinDirectivesTest, RestOfTheWordIsNotLookedAt) {
  Read({"#ypox_____ 123"});
  EXPECT_EQ(JudgeY, 123);
}

TEST_F(SkinDirectivesTest, FieldsPastTheLastAreIgnored) {
  Read({"#COUNT 1,2,3,4,5,6,7"});
  EXPECT_EQ(CountPos, (SkinPos{1, 2, 3, 4, 5}));
}

TEST_F(SkinDirectivesTest, MissingAndBadFieldsKeepTheOldValue) {
  Read({"#COUNT 11,2,3,4,5", "#COUNT , x ,7,40000"});
  EXPECT_EQ(CountPos, (SkinPos{0, 2, 7, 4, 5}));  // an empty hexadecimal field is 0
  Read({"#COUNT 1FF,1"});
  EXPECT_EQ(CountPos.id, 0);  // more than a byte
  EXPECT_EQ(CountPos.x, 1);
  Read({"#COUNT"});
  EXPECT_EQ(CountPos, (SkinPos{0, 1, 7, 4, 5}));
  Read({"#COUNT 2G,2.5,-3.5"});
  EXPECT_EQ(CountPos, (SkinPos{2, 2, -4, 4, 5}));  // halves to even
}

// Pictures and sprites.

TEST_F(SkinDirectivesTest, BackgroundIsRelativeToTheDataFolder) {
  WriteData(u"_qlmfiles\\deep\\back.bmp", SolidBmp(5, 4, 0x112233));
  Read({"#BACKxx deep\\back.bmp"});
  ASSERT_NE(DDSkinBack, nullptr);
  EXPECT_EQ(DDSkinBack->Bounds(), (Rect{0, 0, 5, 4}));
}

TEST_F(SkinDirectivesTest, SheetsHaveANumberANameAndATransparentColour) {
  WriteData(u"_qlmfiles\\a.bmp", BmpOf({{0x000000, 0x123456}}));
  Read({"#FILE1F   a.bmp , 123456", "#FILE02 a.bmp"});
  DDBack->Fill(kScreen, 0xFFFFFF);
  ASSERT_NE(SkinFile[0x1F], nullptr);
  DDBack->Copy(0, 0, *SkinFile[0x1F], {0, 0, 2, 1}, platform::Keyed::kYes);
  EXPECT_EQ(DDBack->Pixel(0, 0), 0x000000U);
  EXPECT_EQ(DDBack->Pixel(1, 0), 0xFFFFFFU);
  ASSERT_NE(SkinFile[2], nullptr);
  DDBack->Copy(0, 1, *SkinFile[2], {0, 0, 2, 1}, platform::Keyed::kYes);
  EXPECT_EQ(DDBack->Pixel(0, 1), 0xFFFFFFU);
  EXPECT_EQ(DDBack->Pixel(1, 1), 0x123456U);
}

TEST_F(SkinDirectivesTest, NameWithAColonStandsAsItIs) {
  WriteData(u"_qlmfiles\\c:a.bmp", SolidBmp(2, 2, 0));
  Read({"#FILE02 c:a.bmp"});
  EXPECT_EQ(SkinFile[2], nullptr);
  EXPECT_TRUE(Logged(u"[LoadBitmap] : c:a.bmp"));
}

TEST_F(SkinDirectivesTest, PictureThatDoesNotLoadLeavesNone) {
  WriteData(u"_qlmfiles\\text.bmp", "no picture");
  SkinFile[2] = Solid(1, 1, 0);
  Read({"#FILE02 text.bmp", "#FILE03 none.bmp"});
  EXPECT_EQ(SkinFile[2], nullptr);
  EXPECT_EQ(SkinFile[3], nullptr);
}

TEST_F(SkinDirectivesTest, CommentBehindAFileNameIsCut) {
  WriteData(u"_qlmfiles\\a.bmp", SolidBmp(2, 2, 0));
  Read({"#FILE02 a.bmp// the sheet"});
  EXPECT_NE(SkinFile[2], nullptr);
}

TEST_F(SkinDirectivesTest, PathThatHoldsTwoSlashesIsCut) {
  WriteData(u"_qlmfiles\\a\\b.bmp", SolidBmp(2, 2, 0));
  Read({"#FILE02 a//b.bmp"});
  EXPECT_EQ(SkinFile[2], nullptr);
  EXPECT_TRUE(Logged(Join(u"[LoadExBitmap] : ", AppPath, u"\\_qlmfiles\\a")));
}

TEST_F(SkinDirectivesTest, StillClipNeedsFiveFields) {
  Read({"#CLIPa0 3,10,20,30,40"});
  const SkinClip& clip = Clip[0xA0];
  EXPECT_EQ(clip.file, 3);
  EXPECT_EQ(clip.frames, 1);
  EXPECT_EQ(Frames(clip), (std::vector<Rect>{{10, 20, 40, 60}}));
  EXPECT_EQ(clip.rect, (Rect{10, 20, 40, 60}));
  EXPECT_EQ(clip.speed, 0);
  EXPECT_EQ(clip.animMode, kClipByClock);
  EXPECT_EQ(clip.width, 30);
  EXPECT_EQ(clip.height, 40);
  EXPECT_EQ(clip.flag, 0);
  EXPECT_EQ(ClipList.last, 0);
  EXPECT_EQ(ClipList.entries[0], 0xA0);
}

TEST_F(SkinDirectivesTest, StripsRunAcrossOrDown) {
  Read({"#CLIP01 1,10,20,30,40,0,2,3,66.5,9", "#CLIP02 1,10,20,30,40,2,2,3,66,9"});
  EXPECT_EQ(Frames(Clip[1]), (std::vector<Rect>{{10, 20, 40, 60}, {42, 20, 72, 60}, {74, 20, 104, 60}}));
  EXPECT_EQ(Clip[1].speed, 66.5F);
  EXPECT_EQ(Clip[1].flag, 9);
  EXPECT_EQ(Frames(Clip[2]), (std::vector<Rect>{{10, 20, 40, 60}, {10, 62, 40, 102}, {10, 104, 40, 144}}));
}

TEST_F(SkinDirectivesTest, NegativeSpeedGoesByThePosition) {
  Read({"#CLIP01 1,0,0,8,8,0,0,4,-24"});
  EXPECT_EQ(Clip[1].animMode, kClipByPosition);
  EXPECT_EQ(Clip[1].speed, 24);
}

TEST_F(SkinDirectivesTest, NoFramesAreOneAndEmptyFieldsAreNothing) {
  Read({"#CLIP01 1,,x,8,8,,,0,"});
  EXPECT_EQ(Clip[1].frames, 1);
  EXPECT_EQ(Frames(Clip[1]), (std::vector<Rect>{{0, 0, 8, 8}}));
}

TEST_F(SkinDirectivesTest, ClipDefinedAgainHasOnlyItsNewFrames) {
  Read({"#CLIP01 1,0,0,8,8,2,0,65535,-9,1", "#CLIP01 1,0,0,4,4,0,0,2"});
  EXPECT_EQ(Frames(Clip[1]), (std::vector<Rect>{{0, 0, 4, 4}, {4, 0, 8, 4}}));
  EXPECT_EQ(Clip[1].speed, 0);
  EXPECT_EQ(Clip[1].flag, 0);
  EXPECT_EQ(ClipList.last, 1);
}

// All clips with all the frames that a clip can have cost no more than as many lines that are passed over.
TEST_F(SkinDirectivesTest, FramesTakeNoRoom) {
  const auto cost = [](const char* word) {
    std::string lines;
    constexpr std::string_view kDigits = "0123456789abcdef";
    for (const char high : kDigits) {
      for (const char low : kDigits) lines += std::string(word) + high + low + " 1,0,0,8,8,0,0,65535\r\n";
    }
    const size_t before = Allocations();
    ReadSkin(lines, nullptr);
    return Allocations() - before;
  };
  EXPECT_EQ(cost("#CLIP"), cost("#SLIP"));
  EXPECT_EQ(FrameOf(Clip[0xFF], 65534), (Rect{524272, 0, 524280, 8}));
  EXPECT_EQ(FrameOf(Clip[0xFF], 65535), std::nullopt);
  EXPECT_EQ(FrameOf(Clip[0xFF], -1), std::nullopt);
}

TEST_F(SkinDirectivesTest, FramesBeyondAllNumbersAreEmpty) {
  Read({"#CLIP01 1,2147483000,0,600,8,0,0,2"});
  EXPECT_EQ(Frames(Clip[1]), (std::vector<Rect>{{2147483000, 0, 2147483600, 8}, {}}));
  Read({"#CLIP02 1,2147483647,0,600,8,0,0,2"});
  EXPECT_EQ(Clip[2].rect, Rect{});
}

TEST_F(SkinDirectivesTest, ListOfClipsTakes256) {
  std::string text;
  for (int i = 0; i < 300; ++i) text += "#CLIP01 1,0,0,8,8\n";
  loadSkin(WriteData(u"_qlmfiles\\many.brd", text), false);
  EXPECT_EQ(ClipList.last, 255);
}

TEST_F(SkinDirectivesTest, DigitsAreCutSideBySide) {
  Read({"#NUM0a 2,100,50,16,24,4,1"});
  const SkinNumber& number = Number[10];
  EXPECT_EQ(number.file, 2);
  EXPECT_EQ(number.rects[0], (Rect{100, 50, 116, 74}));
  EXPECT_EQ(number.rects[1], (Rect{120, 50, 136, 74}));
  EXPECT_EQ(number.rects[13], (Rect{360, 50, 376, 74}));
  EXPECT_EQ(number.rects[14], Rect{});
  EXPECT_EQ(number.width, 16);
  EXPECT_EQ(number.height, 24);
  EXPECT_EQ(number.gap, 1);
}

TEST_F(SkinDirectivesTest, DigitsWithoutSpacingLieEdgeToEdge) {
  Read({"#NUM01 2,0,0,16,24"});
  EXPECT_EQ(Number[1].rects[2], (Rect{32, 0, 48, 24}));
  EXPECT_EQ(Number[1].gap, 0);
}

// Notes and lanes.

TEST_F(SkinDirectivesTest, NotesStandOnTheirComputedHeight) {
  Read({"#CLIP0B 1,0,0,30,12", "#NOTE11 0B,1C,2D,100,200,5,6"});
  const LaneSkin& note = NoteSkin[1];
  EXPECT_EQ(note.clip, 0x0B);
  EXPECT_EQ(note.beamClip, 0x1C);
  EXPECT_EQ(note.spareClip, 0x2D);
  EXPECT_EQ(note.xLeft, 100);
  EXPECT_EQ(note.xRight, 200);
  EXPECT_EQ(note.p5, 5);
  EXPECT_EQ(note.p6, 6);
  EXPECT_EQ(note.yOffset, -12);
}

TEST_F(SkinDirectivesTest, NotesOfChannelsOutsideAreSkipped) {
  Read({"#NOTE09 01,01,00,9,9", "#NOTE61 01,01,00,9,9", "#NOTEXX 01,01,00,9,9", "#NOTE60 01,01,00,9,9"});
  for (int64_t row = 0; row < 50; ++row) EXPECT_EQ(NoteSkin[row].xLeft, 0) << row;
  EXPECT_EQ(NoteSkin[50].x, 9);
}

TEST_F(SkinDirectivesTest, BlinkGivesTheTwoPlacementsDecimalClips) {
  Read({"#BLINK_12 300,10,16,20,17", "#BLINK_29 1,2,3,4,5", "#BLINK_30 9,9,9,9,9", "#BLINK_10 9,9,9,9,9"});
  EXPECT_EQ(BlinkPos[0][1], (SkinPos{16, 10, 300, 0, 0}));
  EXPECT_EQ(BlinkPos[1][1], (SkinPos{17, 20, 300, 0, 0}));
  EXPECT_EQ(BlinkPos[1][18], (SkinPos{5, 4, 1, 0, 0}));
}

TEST_F(SkinDirectivesTest, LinesNameSidePlacementAndNumber) {
  Read({"#LINE_1P_L0 0A,1,2,3,4", "#line_2p_r15 0B,5,6", "#LINE_1P_L16 0C,9,9", "#LINE_3P_L1 0C,9,9",
        "#LINE_1P_L 0C,9,9"});
  EXPECT_EQ(LinePos[0][0][0], (SkinPos{10, 1, 2, 3, 4}));
  EXPECT_EQ(LinePos[1][1][15], (SkinPos{11, 5, 6, 0, 0}));
  EXPECT_EQ(LinePos[0][0][1], SkinPos{});
}

TEST_F(SkinDirectivesTest, JudgeLinesStandRightOrElseLeft) {
  Read({"#JUDGEPOS_1P_L 01,1,2", "#JUDGEPOS_1P_R 02,3,4", "#JUDGEPOS_2P_RIGHT 03,5,6"});
  EXPECT_EQ(JudgeLinePos[0][0], (SkinPos{1, 1, 2, 0, 0}));
  EXPECT_EQ(JudgeLinePos[0][1], (SkinPos{2, 3, 4, 0, 0}));
  EXPECT_EQ(JudgeLinePos[1][0], (SkinPos{3, 5, 6, 0, 0}));
}

TEST_F(SkinDirectivesTest, JudgementWordsHaveARowAGrade) {
  Read({"#JUDGE_POOR_1P 01,1,1", "#JUDGE_BAD_1P 02,2,2", "#JUDGE_GOOD_1P 03,3,3", "#JUDGE_GREAT_1P 04,4,4",
        "#judge_perfect_2p 05,5,5", "#JUDGE_FINE_1P 09,9,9", "#JUDGES_POOR_1P 09,9,9"});
  EXPECT_EQ(JudgePos[0][0], (SkinPos{1, 1, 1, 0, 0}));
  EXPECT_EQ(JudgePos[0][1], (SkinPos{2, 2, 2, 0, 0}));
  EXPECT_EQ(JudgePos[0][2], (SkinPos{3, 3, 3, 0, 0}));
  EXPECT_EQ(JudgePos[0][3], (SkinPos{4, 4, 4, 0, 0}));
  EXPECT_EQ(JudgePos[1][4], (SkinPos{5, 5, 5, 0, 0}));
}

TEST_F(SkinDirectivesTest, KeysMustStandInCapitals) {
  Read({"#KEY1P_L 01,1,2", "#KEY1P_R 02,3,4", "#KEY2P_L 03,5,6", "#KEY2P_R 04,7,8", "#key1p_l 09,9,9",
        "#KEY1P_r 05,5,5", "#KEY3P_L 09,9,9"});
  EXPECT_EQ(KeyPos[0], (SkinPos{5, 5, 5, 0, 0}));  // a small r is not right
  EXPECT_EQ(KeyPos[1], (SkinPos{2, 3, 4, 0, 0}));
  EXPECT_EQ(KeyPos[2], (SkinPos{3, 5, 6, 0, 0}));
  EXPECT_EQ(KeyPos[3], (SkinPos{4, 7, 8, 0, 0}));
}

TEST_F(SkinDirectivesTest, JudgeYIsReadFromItsColumn) {
  Read({"#YPOSITION 384"});
  EXPECT_EQ(JudgeY, 384);
  Read({"#YPOS 200"});  // column 11 lies behind the line's end
  EXPECT_EQ(JudgeY, 384);
  Read({"#YPOSITION 99999"});
  EXPECT_EQ(JudgeY, 384);
}

// Numbers and words on the screen.

TEST_F(SkinDirectivesTest, PlacesOfTheChartsFigures) {
  Read({"#BPMPOS 10,1,2,3,4", "#PLAYPOS 10,5,6", "#PLAY_FULLPOS 11,7,8", "#COUNTPOS 12,9,10,2",
        "#STAGEPOS 13,11,12", "#FPSPOS 14,13,14", "#COMBO 15"});
  EXPECT_EQ(BpmPos, (SkinPos{10, 1, 2, 3, 4}));  // decimal
  EXPECT_EQ(PlayPos1, (SkinPos{16, 5, 6, 0, 0}));
  EXPECT_EQ(PlayFullPos, (SkinPos{17, 7, 8, 0, 0}));
  EXPECT_EQ(CountPos, (SkinPos{18, 9, 10, 2, 0}));
  EXPECT_EQ(StagePos, (SkinPos{19, 11, 12, 0, 0}));
  EXPECT_EQ(FpsPos, (SkinPos{20, 13, 14, 0, 0}));
  EXPECT_EQ(ComboNumber, 15);  // decimal
}

TEST_F(SkinDirectivesTest, PlayTimesMustStandInCapitals) {
  Read({"#playpos 10,5,6", "#PLAY_fullpos 11,7,8", "#PLAYPOSX 11,7,8"});
  EXPECT_EQ(PlayPos1, SkinPos{});
  EXPECT_EQ(PlayFullPos, SkinPos{});
}

TEST_F(SkinDirectivesTest, MessagesAndTitleTakeFourNumbers) {
  Read({"#MSGPOS_ 1,2,3,4", "#SONGTITLE 5,6,7,8"});
  EXPECT_EQ(MessageRect, (Rect{1, 2, 3, 4}));
  EXPECT_EQ(TitleRect, (Rect{5, 6, 7, 8}));
}

TEST_F(SkinDirectivesTest, FiguresOfASide) {
  Read({"#SCORE_1P 01,1,1", "#SCORE_2P 02,2,2", "#J-POINT_1P 03,3,3", "#MAXCOMBO_2P 04,4,4",
        "#GAUGE_1P 05,5,5", "#SCORE_3P 09,9,9"});
  EXPECT_EQ(ScorePos[0], (SkinPos{1, 1, 1, 0, 0}));
  EXPECT_EQ(ScorePos[1], (SkinPos{2, 2, 2, 0, 0}));
  EXPECT_EQ(JPointPos[0], (SkinPos{3, 3, 3, 0, 0}));
  EXPECT_EQ(MaxPos[1], (SkinPos{4, 4, 4, 0, 0}));
  EXPECT_EQ(GaugeNumPos[0], (SkinPos{5, 5, 5, 0, 0}));
}

TEST_F(SkinDirectivesTest, CountsTakeTheirWordInAnyCase) {
  Read({"#sc_Perfect_1p 01,1,1,4", "#SC_POOR_2P 02,2,2,4", "#SC_GREAT 03,3,3,4"});
  EXPECT_EQ(ScoreCountPos[0][4], (SkinPos{1, 1, 1, 4, 0}));
  EXPECT_EQ(ScoreCountPos[1][0], (SkinPos{2, 2, 2, 4, 0}));
  EXPECT_EQ(ScoreCountPos[0][3], SkinPos{});
}

TEST_F(SkinDirectivesTest, LastLetterOfASidedWordIsDropped) {
  Read({"#SC_GREAT_1 01,1,1"});
  EXPECT_EQ(ScoreCountPos[0][3], SkinPos{});
  Read({"#SC_GREAT_1P 01,1,1"});
  EXPECT_EQ(ScoreCountPos[0][3], (SkinPos{1, 1, 1, 0, 0}));
}

TEST_F(SkinDirectivesTest, ProgressBarsAreNumberedBeforeTheBlank) {
  Read({"#LEN2 01,1,2,3", "#LENGTH4 02,5,6", "#LEN 09,9,9", "#LEN5 09,9,9", "#LEN0 09,9,9"});
  EXPECT_EQ(LenPos[1], (SkinPos{1, 1, 2, 3, 0}));
  EXPECT_EQ(LenPos[3], (SkinPos{2, 5, 6, 0, 0}));
  EXPECT_EQ(LenUsed, (std::array{false, true, false, true}));
}

TEST_F(SkinDirectivesTest, ClassMarksAreSevenClipsInARow) {
  Read({"#CLASS_2P 20,7,8", "#CLASS_1P FC,1,2"});
  for (uint8_t row = 0; row < 7; ++row) {
    EXPECT_EQ(ClassPos[1][row], (SkinPos{static_cast<uint8_t>(0x20 + row), 7, 8, 0, 0}));
  }
  EXPECT_EQ(ClassPos[0][3], (SkinPos{0xFF, 1, 2, 0, 0}));
  EXPECT_EQ(ClassPos[0][4], (SkinPos{0, 1, 2, 0, 0}));  // there is no clip 100
}

// A field that is missing, no number, or above FF.
TEST_F(SkinDirectivesTest, ClassMarksWithoutAFirstClipKeepTheirClips) {
  Read({"#CLASS_2P ,7,8"});
  for (const SkinPos& pos : ClassPos[1]) EXPECT_EQ(pos, (SkinPos{0, 7, 8, 0, 0}));
  Read({"#CLASS_1P 20,1,2"});
  for (const char* line : {"#CLASS_1P", "#CLASS_1P ZZ,3,4", "#CLASS_1P 100,5,6", "#CLASS_1P -1,7,8"}) {
    Read({line});
    for (uint8_t row = 0; row < 7; ++row) EXPECT_EQ(ClassPos[0][row].id, 0x20 + row) << line;
  }
  EXPECT_EQ(ClassPos[0][6], (SkinPos{0x26, 7, 8, 0, 0}));
}

TEST_F(SkinDirectivesTest, BombsHaveThreeRows) {
  Read({"#BOMB_GOOD 01", "#BOMB_GREAT 02", "#bomb_perfect 03", "#BOMB_BAD 09"});
  EXPECT_EQ(BombPos[0].id, 1);
  EXPECT_EQ(BombPos[1].id, 2);
  EXPECT_EQ(BombPos[2].id, 3);
}

// Gauges, fan and combo box.

TEST_F(SkinDirectivesTest, GaugesAreToldApartByTheirWholeWord) {
  Read({"#GAUGESTEP 2.25", "#GAUGEPOSBG_1P 01,1,1", "#GAUGEPOS_1P 02,2,2,1", "#gauge_2p 03,3,3",
        "#EXGAUGEPOSBG_2P 04,4,4", "#EXGAUGEPOS_1P 05,5,5", "#GAUGES_1P 09,9,9", "#EXGAUGE_1P 09,9,9"});
  EXPECT_EQ(GaugeStep, 2.25F);
  EXPECT_EQ(GaugeBackPos[0], (SkinPos{1, 1, 1, 0, 0}));
  EXPECT_EQ(GaugePos[0], (SkinPos{2, 2, 2, 1, 0}));
  EXPECT_EQ(GaugeNumPos[1], (SkinPos{3, 3, 3, 0, 0}));
  EXPECT_EQ(ExGaugeBackPos[1], (SkinPos{4, 4, 4, 0, 0}));
  EXPECT_EQ(ExGaugePos[0], (SkinPos{5, 5, 5, 0, 0}));
  EXPECT_EQ(GaugeNumPos[0], SkinPos{});
}

TEST_F(SkinDirectivesTest, FanHasFourSteps) {
  Read({"#FAN0_1P 01,1,1", "#FAN20_1P 02,2,2", "#FAN80_1P 03,3,3", "#FAN99_2P 04,4,4"});
  EXPECT_EQ(FanPos[0][0].id, 1);
  EXPECT_EQ(FanPos[0][1].id, 2);
  EXPECT_EQ(FanPos[0][2].id, 3);
  EXPECT_EQ(FanPos[1][3], (SkinPos{4, 4, 4, 0, 0}));
}

TEST_F(SkinDirectivesTest, FanOfAnotherStepChangesNothing) {
  Read({"#FAN50_1P 09,9,9", "#FAN_1P 09,9,9"});
  EXPECT_EQ(FanPos, (BySide<std::array<SkinPos, 4>>{}));
}

TEST_F(SkinDirectivesTest, ComboBoxIsMadeOfFiveClips) {
  Read({"#ST_NOMISS 1A", "#st_maxcombo 1B", "#ST_PRESSURE 1C", "#ST_COMBOGRAPH 1D", "#ST_COMBOGRAPHBG 1E",
        "#ST_NONE 99"});
  EXPECT_EQ(NoMissClip, 0x1A);
  EXPECT_EQ(MaxComboClip, 0x1B);
  EXPECT_EQ(PressureClip, 0x1C);
  EXPECT_EQ(ComboGraphClip, 0x1D);
  EXPECT_EQ(ComboGraphBackClip, 0x1E);
}

// Options.

TEST_F(SkinDirectivesTest, OptionsHaveARowAWord) {
  const std::array<const char*, 17> words = {
      "HIDDEN", "SUDDEN", "HIDSUD", "stealth", "RANDOM", "SHUFFLE",  "EXRANDOM", "MIRROR",  "ACCEL",
      "QUIL",   "5KEY",   "7KEY",   "DOBULE",  "BATTLE", "AUTOPLAY", "REPLAY",   "PREESURE"};
  std::string text;
  for (size_t i = 0; i < words.size(); ++i) {
    text +=
        std::string("#OP_") + words[i] + " 0" + (i < 15 ? "A" : "B") + "," + std::to_string(i) + ",2,3,4\n";
  }
  loadSkin(WriteData(u"_qlmfiles\\options.brd", text), false);
  for (size_t row = 1; row <= 17; ++row) {
    const auto id = static_cast<uint8_t>(row <= 15 ? 10 : 11);
    EXPECT_EQ(OptionPos[0][row], (SkinPos{id, static_cast<int16_t>(row - 1), 2, 0, 0})) << row;
    EXPECT_EQ(OptionPos[1][row], (SkinPos{id, 3, 4, 0, 0})) << row;
  }
  EXPECT_EQ(OptionPos[0][0], SkinPos{});
}

TEST_F(SkinDirectivesTest, MadeUpOptionInFrontFillsRowZero) {
  Read({"#OP_NONE 01,1,2,3,4"});
  EXPECT_EQ(OptionPos[0][0], (SkinPos{1, 1, 2, 0, 0}));
  EXPECT_EQ(OptionPos[1][0], (SkinPos{1, 3, 4, 0, 0}));
}

TEST_F(SkinDirectivesTest, MadeUpOptionFallsOnTheRowOfTheLastNumber) {
  Read({"#OP_MIRROR 01,1,1,1,1", "#OP_DOUBLE 02,2,2,2,2"});
  EXPECT_EQ(OptionPos[0][8].id, 2);
  Read({"#CLIP03 1,0,0,1,1", "#NOTE15 01,01,00,1,1", "#OP_DOUBLE 03,3,3,3,3"});
  EXPECT_EQ(OptionPos[0][3].id, 3);  // a note's channel does not count
  Read({"#NUM04 1,0,0,1,1", "#OP_DOUBLE 04,4,4,4,4"});
  EXPECT_EQ(OptionPos[0][4].id, 4);
  Read({"#FILE05 none.bmp", "#OP_DOUBLE 05,5,5,5,5"});
  EXPECT_EQ(OptionPos[0][5].id, 5);
  const auto before = OptionPos;
  Read({"#CLIP12 1,0,0,1,1", "#OP_DOUBLE 06,6,6,6,6"});  // row 18 is outside
  EXPECT_EQ(OptionPos, before);
}

// BGA, layers and the font.

TEST_F(SkinDirectivesTest, BgaHasFourNumbersASide) {
  Read({"#BGA_1P 1,2,3,4", "#BGA_2P 5,6,7,8"});
  EXPECT_EQ(BgaRect[0], (Rect{1, 2, 3, 4}));
  EXPECT_EQ(BgaRect[1], (Rect{5, 6, 7, 8}));
}

TEST_F(SkinDirectivesTest, LayersAreListedInTheOrderOfTheFile) {
  Read({"#LAYER12 0A,100,200,1", "#LAYER03 0B,-5,6"});
  EXPECT_EQ(LayerClip[12], 10);
  EXPECT_EQ(LayerX[12], 100);
  EXPECT_EQ(LayerY[12], 200);
  EXPECT_TRUE(LayerWide[12]);
  EXPECT_EQ(LayerX[3], -5);
  EXPECT_FALSE(LayerWide[3]);
  EXPECT_EQ(LayerList.last, 1);
  EXPECT_EQ(LayerList.entries[0], 12);
  EXPECT_EQ(LayerList.entries[1], 3);
  Read({"#LAYER12 0A,100,200,0"});
  EXPECT_FALSE(LayerWide[12]);
}

TEST_F(SkinDirectivesTest, AnyFourthNumberButZeroMakesALayerWide) {
  Read({"#LAYER01 0A,1,2,2", "#LAYER02 0A,1,2,-1", "#LAYER03 0A,1,2,1000", "#LAYER04 0A,1,2,0"});
  EXPECT_TRUE(LayerWide[1]);
  EXPECT_TRUE(LayerWide[2]);
  EXPECT_TRUE(LayerWide[3]);
  EXPECT_FALSE(LayerWide[4]);
}

TEST_F(SkinDirectivesTest, FontCellsLieInRowsOf32) {
  Read({"#SYSFONT  8,100,8,16"});
  EXPECT_EQ(SysFontW, 8);
  EXPECT_EQ(SysFontH, 16);
  EXPECT_EQ(SysFont[1], (Rect{8, 100, 16, 116}));  // !
  EXPECT_EQ(SysFont['A' - 32], (Rect{8, 116, 16, 132}));
  EXPECT_EQ(SysFont['_' - 32], (Rect{8 + 30 * 8, 116, 16 + 30 * 8, 132}));
  EXPECT_EQ(SysFont[96], (Rect{0, 148, 8, 164}));  // code 128
}

TEST_F(SkinDirectivesTest, FirstCodeOfAFontRowLiesOneCellLeft) {
  Read({"#SYSFONT  8,100,8,16"});
  EXPECT_EQ(SysFont['@' - 32], (Rect{0, 116, 8, 132}));
  EXPECT_EQ(SysFont['`' - 32], (Rect{0, 132, 8, 148}));
}

}  // namespace
}  // namespace qlm
