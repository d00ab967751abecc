// The ranking of a play, and the entry of its name.
#include "screens/name_entry.h"

#include <cmath>
#include <memory>
#include <string_view>
#include <vector>

#include "base/hooks.h"
#include "platform/clock.h"
#include "screens/result_pieces.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/options.h"
#include "state/scores.h"
#include "state/session.h"
#include "state/surfaces.h"
#include "tests/play/play_test.h"
#include "tests/screens/letters.h"

namespace qlm {
namespace {

std::string_view typed;  // what the next frames' pumps type, a character a frame
int32_t asked = 0;       // frames in which a name was asked for

class NameEntry : public PlayTest {
 protected:
  NameEntry() {
    for (int32_t row = 0; row <= 9; ++row)
      scores.ScoreTable[row].score = static_cast<float>(1000 - 100 * row);
    DDPrimary = std::make_shared<Surface>(640, 480);
    GiveReadableLetters();
    typed = "\r";
    asked = 0;
    hooks.pumped = [] {
      if (GameState != kStateEnterName) return;
      if (++asked > 100) typed = "\r";  // nobody waits for ever
      if (typed.empty()) return;
      ProcessKey_EnterName(typed[0]);
      typed.remove_prefix(1);
    };
    hooks.framePresented = nullptr;
  }

  static std::vector<float> Table() {
    std::vector<float> table;
    for (const ScoreEntry& entry : scores.ScoreTable) table.push_back(entry.score);
    return table;
  }
  static std::string Name(int32_t row) { return {scores.ScoreTable[row].name.data(), 8}; }
};

TEST_F(NameEntry, APlayRanksBelowRowsThatItDoesNotExceed) {
  Score[0] = 700;
  EXPECT_EQ(AddScoreDat(), 5) << "a tie goes below the row that stands";
  EXPECT_EQ(Table(), (std::vector<float>{1000, 900, 800, 700, 700, 600, 500, 400, 300, 200}));
  EXPECT_EQ(Name(4), "QuIl :- ");
  EXPECT_EQ(Name(3), std::string(8, '\0'));
}

TEST_F(NameEntry, TheBestIsFirst) {
  Score[0] = 1000.5;
  EXPECT_EQ(AddScoreDat(), 1);
  EXPECT_EQ(Table(), (std::vector<float>{1000.5, 1000, 900, 800, 700, 600, 500, 400, 300, 200}));
}

TEST_F(NameEntry, ATieWithTheTenthRowGivesNoRank) {
  Score[0] = 100;
  const std::vector<float> before = Table();
  EXPECT_EQ(AddScoreDat(), 0);
  EXPECT_EQ(Table(), before);
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(GameState, kStateSongSelect);
}

TEST_F(NameEntry, AScoreOf0OnAnEmptyTableGivesNoRank) {
  scores.ScoreTable.Clear();
  EXPECT_EQ(AddScoreDat(), 0);
  Score[0] = 0.5;
  EXPECT_EQ(AddScoreDat(), 1);
}

// 0.1 is more than the 32-bit number next to it is not: 0.1 as a float is greater, 0.3 as one is 0.30000001.
TEST_F(NameEntry, TheWholeScoreIsComparedWithTheStoredOne) {
  scores.ScoreTable.Clear();
  const double score = 200000.0 / 3;  // 66666.666..., stored as 66666.664
  ASSERT_GT(score, double{static_cast<float>(score)});
  Score[0] = score;
  EXPECT_EQ(AddScoreDat(), 1);
  GameState = kStateSongSelect;
  typed = "\r";
  EXPECT_EQ(AddScoreDat(), 1) << "an equal score is above its own row";
  scores.ScoreTable[1].score = std::nextafter(static_cast<float>(score), 1e9F);
  scores.ScoreTable[0] = scores.ScoreTable[1];
  typed = "\r";
  EXPECT_EQ(AddScoreDat(), 3);
}

TEST_F(NameEntry, ALockedPlayMovesTheRowsAndAsksNothing) {
  RankLocked = true;
  Score[0] = 850;
  EXPECT_EQ(AddScoreDat(), 0);
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(Table(), (std::vector<float>{1000, 900, 800, 800, 700, 600, 500, 400, 300, 200}));
  RankLocked = true;
  Score[0] = 150;
  AddScoreDat();
  EXPECT_EQ(Table(), (std::vector<float>{1000, 900, 800, 800, 700, 600, 500, 400, 300, 200}));
  Score[0] = 250;
  AddScoreDat();
  EXPECT_EQ(Table(), (std::vector<float>{1000, 900, 800, 800, 700, 600, 500, 400, 300, 200}))
      << "the last row has none below it";
}

TEST_F(NameEntry, ACourseRanksByItsSmallFigures) {
  scores.ScoreTable.Clear();
  scores.ScoreTable[0].score = 80;
  Score[0] = 79;  // a score unit of 1: 39 PERFECTs and a GREAT
  EXPECT_EQ(AddScoreDat(), 2);
}

TEST_F(NameEntry, AClearIsMarkedInTheFileAndInTheListWhateverTheRank) {
  songCleared = {false, false};
  listCursor = 1;
  Gauge[0] = 79.9F;
  AddScoreDat();
  EXPECT_EQ(scores.cleared, 0);
  Gauge[0] = 80;
  RankLocked = true;
  AddScoreDat();
  EXPECT_EQ(scores.cleared, -1);
  EXPECT_EQ(songCleared, (std::vector<bool>{false, true}));
  for (const int32_t cursor : {-1, 2}) {
    listCursor = cursor;
    AddScoreDat();
  }
  EXPECT_EQ(songCleared, (std::vector<bool>{false, true}));
}

TEST_F(NameEntry, TheRowIsFilledWithThePlay) {
  Score[0] = 5000;
  Gauge[0] = 90;
  MaxCombo[0] = 12;
  JPts[0] = 171;
  JPtsMax[0] = 180;
  HiSpeed = 2;
  Hidden = true;
  typed = "\b\b\b\b\b\b\bMe\r";
  EXPECT_EQ(AddScoreDat(), 1);
  const ScoreEntry& entry = scores.ScoreTable[0];
  EXPECT_EQ(Name(0), "Me      ");
  EXPECT_EQ(entry.clear, -1);
  EXPECT_EQ(entry.maxCombo, 12);
  EXPECT_EQ(entry.classIndex, 0);
  EXPECT_FLOAT_EQ(entry.hiSpeed, 2);
  EXPECT_EQ(entry.options1, 1);
  EXPECT_EQ(scores.PlayerName, u"Me") << "is offered the next time";
}

TEST_F(NameEntry, CharactersFrom32To127AreTaken) {
  scores.PlayerName.clear();
  for (const int32_t character : {31, 32, 65, 127, 128, 0, -1, 0x3042}) ProcessKey_EnterName(character);
  EXPECT_EQ(scores.PlayerName, u" A\x7F");
  for (int i = 0; i < 5; ++i) ProcessKey_EnterName(8);
  EXPECT_EQ(scores.PlayerName, u"");
}

TEST_F(NameEntry, EnterAndEscEndItAndNobodyIsNobody) {
  for (const int32_t character : {13, 27}) {
    GameState = kStateEnterName;
    enterEaten = false;
    scores.PlayerName.clear();
    ProcessKey_EnterName(character);
    EXPECT_EQ(GameState, kStateSongSelect);
    EXPECT_TRUE(enterEaten);
    EXPECT_EQ(scores.PlayerName, u"QuIl :-");
  }
  scores.PlayerName = u" ";
  ProcessKey_EnterName(13);
  EXPECT_EQ(scores.PlayerName, u" ");
}

TEST_F(NameEntry, TheNameIsCutToEightCharactersInEachFrame) {
  Score[0] = 5000;
  scores.PlayerName = u"123456789";
  typed = "x\r";
  AddScoreDat();
  EXPECT_EQ(Name(0), "12345678");
}

// The frame of a moment within a second, with the new row third.
class NameFrame : public NameEntry {
 protected:
  NameFrame() {
    ScoreEntry& first = scores.ScoreTable[0];
    first.name = {'A', 'n', 'n', 'a', ' ', ' ', ' ', ' '};
    first.jpts = 34.5F;
    first.maxCombo = 7;
    first.hiSpeed = -1;
    first.realHiSpeed = 1.25F;
    first.classIndex = 3;
    scores.ScoreTable[1].jpts = -12;
    Score[0] = 850;
    scores.PlayerName = u"Me";
  }
  static SurfacePtr FrameAt(uint32_t ms) {
    static SurfacePtr frame;
    frame = std::make_shared<Surface>(640, 480);
    SetNow(kStart + ms);
    hooks.framePresented = [] { frame->Copy(0, 0, *DDBack, kScreen); };
    typed = "\r";
    const auto table = scores.ScoreTable;
    AddScoreDat();
    scores.ScoreTable = table;
    return frame;
  }
};

TEST_F(NameFrame, TellsTheRankAndTheTable) {
  const SurfacePtr frame = FrameAt(0);
  EXPECT_EQ(TextAt(*frame, 10, 30), "YOU RANKED IN 3rd !");
  EXPECT_EQ(TextAt(*frame, 20, 60, 2), "NO");
  EXPECT_EQ(TextAt(*frame, 40, 60, 4), "NAME");
  EXPECT_EQ(TextAt(*frame, 160, 60, 5), "SCORE");
  EXPECT_EQ(TextAt(*frame, 240, 60, 5), "J-PTS");
  EXPECT_EQ(TextAt(*frame, 290, 60, 5), "COMBO");
  EXPECT_EQ(TextAt(*frame, 340, 60, 2), "HS");
  EXPECT_EQ(TextAt(*frame, 370, 60, 3), "RHS");
  EXPECT_EQ(TextAt(*frame, 420, 60, 5), "CLASS");
  EXPECT_EQ(TextAt(*frame, 20, 80, 1), "1");
  EXPECT_EQ(TextAt(*frame, 20, 350, 2), "10");
  EXPECT_EQ(TextAt(*frame, 40, 80, 8), "Anna");
  EXPECT_EQ(TextAt(*frame, 160, 80, 8), "1000");
  EXPECT_EQ(TextAt(*frame, 240, 80, 6), "00034");
  EXPECT_EQ(TextAt(*frame, 290, 80, 5), "007");
  // Five letters of 8 pixels do not fit into the 30 of their column: they stand 6 apart.
  EXPECT_EQ(TextAt(*frame, 340, 80, 5, 6), "-1.0x");
  EXPECT_EQ(TextAt(*frame, 370, 80, 4), "1.2x");
  EXPECT_EQ(TextAt(*frame, 420, 80, 2), "B");
  // Six letters leave 2 pixels to the next column; 7 apart, they leave 7.
  EXPECT_EQ(TextAt(*frame, 240, 110, 6, 7), "-00012");
  EXPECT_EQ(TextAt(*frame, 420, 110, 2), "") << "of a row never filled";
  // The row that was third is fourth.
  EXPECT_EQ(TextAt(*frame, 160, 170, 8), "800");
}

TEST_F(NameFrame, TheNewRowShowsTheNameBeingTypedAndABlinkingMark) {
  EXPECT_EQ(TextAt(*FrameAt(500), 40, 140, 8), "Me");
  EXPECT_EQ(TextAt(*FrameAt(501), 40, 140, 8), "Me_");
  EXPECT_EQ(TextAt(*FrameAt(999), 40, 140, 8), "Me_");
  EXPECT_EQ(TextAt(*FrameAt(1000), 40, 140, 8), "Me");
  EXPECT_EQ(TextAt(*FrameAt(0), 340, 140, 20), "ENTER YOUR NAME");
  // The clock begins at a multiple of 200: 1,000,000 is 400 ms into a turn of the wobble, 200 ms later it is
  // in the middle.
  EXPECT_EQ(TextAt(*FrameAt(200), 300, 140, 3), "<<<");
  EXPECT_EQ(TextAt(*FrameAt(350), 306, 140, 3), "<<<");
}

// The nib is 48 wide and 64 high. Its point is at 112, behind eight letters and a blank from 40, and at the
// foot of the first row's letters: its feather would reach from there to 32, past the ledger's top at 52.
TEST_F(NameFrame, TheNibHidesNoNameAndStaysInTheLedger) {
  constexpr platform::Colour kNib = 0xABCDEF;
  ResultObj = std::make_shared<Surface>(304, 128);
  ResultObj->Fill(kNibPiece, kNib);
  Score[0] = 2000;
  scores.PlayerName = u"";
  const SurfacePtr frame = FrameAt(0);
  EXPECT_NE(frame->Pixel(112, 51), kNib);
  EXPECT_EQ(frame->Pixel(112, 52), kNib);
  EXPECT_EQ(frame->Pixel(159, 95), kNib);
  EXPECT_NE(frame->Pixel(111, 95), kNib);
  EXPECT_NE(frame->Pixel(160, 95), kNib);
  EXPECT_NE(frame->Pixel(112, 80 + kLetterHeight), kNib);
}

TEST_F(NameFrame, RanksHaveTheirEndings) {
  struct Rank {
    double score;
    const char* text;
  };
  for (const Rank& rank :
       {Rank{2000, "YOU RANKED IN 1st !"}, Rank{950, "YOU RANKED IN 2nd !"}, Rank{850, "YOU RANKED IN 3rd !"},
        Rank{750, "YOU RANKED IN 4th !"}, Rank{150, "YOU RANKED IN 10th !"}}) {
    Score[0] = rank.score;
    EXPECT_EQ(TextAt(*FrameAt(0), 10, 30), rank.text);
  }
}

TEST_F(NameFrame, WildNumbersOfAFileAreShownAsFarAsTheyGo) {
  for (const float wild : {INFINITY, -INFINITY, NAN, 1e38F, -9.3e18F}) {
    ScoreEntry& entry = scores.ScoreTable[9];
    entry.score = -1;  // keeps the rank
    entry.jpts = entry.hiSpeed = entry.realHiSpeed = wild;
    entry.classIndex = 255;
    entry.name.fill('\xFF');
    FrameAt(0);
  }
}

}  // namespace
}  // namespace qlm
