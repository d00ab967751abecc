// Tests of what a play's start puts back, and of its skin.
#include "play/reset.h"
#include "play/pause.h"
#include "play/skin_choice.h"
#include "sound/play.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/network.h"
#include "state/records.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

class ResetTest : public PlayTest {
 protected:
  // What a play may have left.
  void Dirty() {
    LaneNote.fill(3);
    LaneSound.fill(3);
    LaneDown.fill(true);
    LaneBeam.fill(1);
    KeyBeam.fill(0.5F);
    LaneHit.fill(3);
    BlinkToggle = ComboLost = ComboRound = true;
    RecCount = RecCursor = 5;
    HistoryNext = {7, 7};
    AttackKind = 2;
    Combo = MaxCombo = {9, 9};
    ComboDigitCount = {1, 1};
    LastJudge = {2, 2};
    Gauge = GaugeShown = {60, 60};
    Score = ScoreShown = {1000, 1000};
    JPts = JPtsShown = {-5, -5};
    JPtsMax = {36, 36};
    JudgeCount[0] = {1, 2, 3, 4, 5};
    GaugeHistory[0].Fill(70);
    network.NetUsers[1].slot = 9;
    network.NetUsers[1].history.Fill(70);
  }
};

TEST_F(ResetTest, LanesRecordAndHistoryAreAlwaysPutBack) {
  Dirty();
  EndlessRun = true;
  CourseSong = 1;
  ResetPlay();
  for (size_t lane = 0; lane < LaneNote.size(); ++lane) {
    EXPECT_EQ(LaneNote[lane], -1);
    EXPECT_EQ(LaneSound[lane], -1);
    EXPECT_FALSE(LaneDown[lane]);
    EXPECT_EQ(LaneBeam[lane], 0);
    EXPECT_FLOAT_EQ(KeyBeam[lane], 0);
    EXPECT_EQ(LaneHit[lane], 0);
  }
  EXPECT_EQ(RecCursor, 0);
  EXPECT_EQ(RecCount, 5);  // nothing is being recorded
  EXPECT_FLOAT_EQ(HistoryNext[0], 0);
  EXPECT_FLOAT_EQ(HistoryNext[1], 0);
  EXPECT_EQ(AttackKind, kAttackNone);
  EXPECT_FALSE(BlinkToggle);
  EXPECT_FALSE(ComboLost);
  EXPECT_FALSE(ComboRound);
  EXPECT_EQ(ComboDigitCount[0], 1);  // the combo goes on
}

TEST_F(ResetTest, PauseOutlivesItsPlay) {
  Paused = true;
  savedBPM = 90;
  ResetPlay();
  EXPECT_TRUE(Paused);
  BMSResume();
  EXPECT_FLOAT_EQ(curBPM, 90);
}

TEST_F(ResetTest, NewRecordBeginsEmpty) {
  RecCount = 5;
  UserRec = true;
  ResetPlay();
  EXPECT_EQ(RecCount, 0);
}

TEST_F(ResetTest, HitsAreClearedUpToTheRecordBehindTheLast) {
  Lay(11, 10).hit = true;
  Lay(11, 20).hit = true;
  objs[2].hit = true;
  objs[3].hit = true;
  ResetPlay();
  EXPECT_FALSE(objs[0].hit);
  EXPECT_FALSE(objs[1].hit);
  EXPECT_FALSE(objs[2].hit);
  EXPECT_TRUE(objs[3].hit);
}

TEST_F(ResetTest, FullTableIsClearedToItsEnd) {
  objs.resize(2);
  Lay(11, 10).hit = true;
  Lay(11, 20).hit = true;
  AddObj();
  ResetPlay();
  EXPECT_FALSE(objs[1].hit);
}

TEST_F(ResetTest, ChartSoundsAreRewoundAndStopped) {
  FillSlot(1);
  PlayWav(1, 0, 0);
  ResetPlay();
  EXPECT_FALSE(WavBuffer[1]->Playing());
}

TEST_F(ResetTest, FreshChartStartsWithFreshFigures) {
  Dirty();
  ResetPlay();
  for (size_t side = 0; side < 2; ++side) {
    EXPECT_EQ(Combo[side], 0);
    EXPECT_EQ(MaxCombo[side], 0);
    EXPECT_EQ(LastJudge[side], -1);
    EXPECT_EQ(ComboDigitCount[side], -1);
    EXPECT_FLOAT_EQ(Gauge[side], 22);
    EXPECT_FLOAT_EQ(GaugeShown[side], 22);
    EXPECT_DOUBLE_EQ(Score[side], 0);
    EXPECT_DOUBLE_EQ(ScoreShown[side], 0);
    EXPECT_FLOAT_EQ(JPts[side], 0);
    EXPECT_FLOAT_EQ(JPtsShown[side], 0);
    EXPECT_EQ(JPtsMax[side], 0);
  }
  EXPECT_EQ(JudgeCount[0][4], 0);
  EXPECT_EQ(GaugeHistory[0][10], 0);
  EXPECT_EQ(network.NetUsers[1].slot, 0);
  EXPECT_EQ(network.NetUsers[1].history[10], 0);
}

TEST_F(ResetTest, HazardGaugeStartsFull) {
  HazardGauge = true;
  ResetPlay();
  EXPECT_FLOAT_EQ(Gauge[0], 100);
  EXPECT_FLOAT_EQ(GaugeShown[1], 100);
}

TEST_F(ResetTest, EndlessRunKeepsFiguresBehindItsFirstChart) {
  Dirty();
  EndlessRun = true;
  CourseSong = 0;
  ResetPlay();
  EXPECT_EQ(Combo[0], 0);
  Dirty();
  CourseSong = 1;
  ResetPlay();
  EXPECT_EQ(Combo[0], 9);
  EXPECT_FLOAT_EQ(Gauge[0], 60);
  EXPECT_DOUBLE_EQ(Score[0], 1000);
  EXPECT_EQ(GaugeHistory[0][10], 70);
}

TEST_F(ResetTest, GraphIsPainted) {
  ResetPlay();
  EXPECT_NE(DDGraph->Pixel(15, 10), 0U);
  EXPECT_NE(DDGraph->Pixel(15, 10), DDGraph->Pixel(15, 110));
}

TEST_F(ResetTest, PlayModeFourBecomesTwo) {
  HdrPlayer = 4;
  SkinMapPath = {u"\\a.brd", u"\\b.brd", u"\\c.brd"};
  ResetPlay();
  EXPECT_EQ(HdrPlayer, 2);
  EXPECT_TRUE(Logged(u"Load SkinMap(1) :\\b.brd"));
}

TEST_F(ResetTest, EachModeHasItsSkin) {
  SkinMapPath = {u"\\a.brd", u"\\b.brd", u"\\c.brd"};
  HdrPlayer = 1;
  LoadSkinChoice();
  EXPECT_TRUE(Logged(u"Load SkinMap(0) :\\a.brd"));
  HdrPlayer = 3;
  LoadSkinChoice();
  EXPECT_TRUE(Logged(u"Load SkinMap(2) :\\c.brd"));
}

// Quirk: the skin is read twice.
TEST_F(ResetTest, SkinIsLoadedTwiceInARow) {
  SkinMapPath[0] = u"\\a.brd";
  LoadSkinChoice();
  EXPECT_EQ(LinesBeginning(u"[loadSkin] : a.brd"), 2);
}

TEST_F(ResetTest, ModeWithoutASkinLoadsNone) {
  HdrPlayer = -1;
  LoadSkinChoice();
  HdrPlayer = 5;
  LoadSkinChoice();
  StoreSkinChoice();
  EXPECT_TRUE(log.empty());
}

TEST_F(ResetTest, NoPlayerCountsAsOneAndFourAsTwo) {
  SkinMapPath = {u"\\a.brd", u"\\b.brd", u"\\c.brd"};
  HdrPlayer = 0;
  LoadSkinChoice();
  EXPECT_TRUE(Logged(u"Load SkinMap(0) :\\a.brd"));
  HdrPlayer = 4;
  LoadSkinChoice();
  EXPECT_TRUE(Logged(u"Load SkinMap(1) :\\b.brd"));
}

TEST_F(ResetTest, WhereNoSkinWasLoadedTheMapStays) {
  SkinMapPath[0] = u"\\a.brd";
  LoadSkinChoice();  // there is no such file
  StoreSkinChoice();
  EXPECT_EQ(SkinMapPath[0], u"\\a.brd");
  EXPECT_TRUE(Logged(u"Restore SkinMap(0) :"));
}

TEST_F(ResetTest, SkinChangedInPlayStays) {
  HdrPlayer = 3;
  SkinPath = u"\\new.brd";
  SkinIndex = 4;
  SkinMapIndex = {1, 2, 3};
  StoreSkinChoice();
  EXPECT_EQ(SkinMapPath[2], u"\\new.brd");
  EXPECT_EQ(SkinMapIndex, (std::array<int16_t, 3>{1, 2, 4}));
  EXPECT_TRUE(Logged(u"Restore SkinMap(2) :\\new.brd"));
}

// The first chart is prepared before any skin is there.
TEST_F(ResetTest, MarqueeGetsTheGapOfThePlaysSkin) {
  SkinMapPath[0] = WriteText(u"_qlmfiles\\gap.brd", u"#SYSFONT 0,0,8,8\r\n#SONGTITLE0,0,24,8\r\n");
  HdrTitle = u"Song";
  HdrArtist = u"Me";
  MarqueeText = u"Song / Me";
  ResetPlay();
  EXPECT_EQ(TitleChars, 3);
  EXPECT_EQ(MarqueeText, u"Song / Me   ");
  MarqueeText = u"COURSE MODE! ";
  MarqueeGap = 1;
  ResetPlay();
  EXPECT_EQ(MarqueeText, u"COURSE MODE!   ");
}

// A chart from the command line is prepared outside a play, one from the lists inside; both are converted
// once.
TEST_F(ResetTest, MarqueeIsInLettersOfTheFont) {
  MarqueeText = u"ギター / Me";
  ResetPlay();
  EXPECT_EQ(MarqueeText, u"GITA- / Me");
  EXPECT_TRUE(Logged(u"[Cvt2ASCII]: ギター / Me"));
  log.clear();
  ResetPlay();
  EXPECT_EQ(MarqueeText, u"GITA- / Me");
  for (const Text& line : log) EXPECT_FALSE(line.starts_with(u"[Cvt2ASCII]"));
}

TEST_F(ResetTest, WithoutAChartThereIsNoMarquee) {
  TitleChars = 3;
  ResetPlay();
  EXPECT_EQ(MarqueeText, u"");
}

}  // namespace
}  // namespace qlm
