// The row that a play comes to.
#include "play/score_entry.h"

#include "state/gauge.h"
#include "state/options.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class ScoreEntryTest : public GameTest {
 protected:
  static ScoreEntry Filled() {
    ScoreEntry entry;
    FillEntry(entry);
    return entry;
  }
};

std::string NameOf(const ScoreEntry& entry) { return {entry.name.data(), entry.name.size()}; }

TEST_F(ScoreEntryTest, HoldsTheFiguresOfSideZero) {
  Score = {1234.56, 9};
  JPts = {342, 9};
  JPtsMax = {360, 9};
  MaxCombo = {17, 9};
  JudgeCount[0] = {5, 4, 3, 2, 1};
  JudgeCount[1] = {9, 9, 9, 9, 9};
  HiSpeed = 1.25F;
  RealHiSpeed = 0.95F;
  const ScoreEntry entry = Filled();
  EXPECT_FLOAT_EQ(entry.score, 1234.56F);
  EXPECT_FLOAT_EQ(entry.jpts, 342);
  EXPECT_EQ(entry.classIndex, 0) << "342 of 360 is 95 in 100: SS";
  EXPECT_EQ(entry.maxCombo, 17);
  EXPECT_EQ(entry.counts, (std::array<int16_t, 5>{5, 4, 3, 2, 1}));
  EXPECT_FLOAT_EQ(entry.hiSpeed, 1.25F);
  EXPECT_FLOAT_EQ(entry.realHiSpeed, 0.95F);
  EXPECT_EQ(entry.reserved, 0);
}

TEST_F(ScoreEntryTest, IsClearedFromEightyOn) {
  Gauge = {79.99F, 100};
  EXPECT_EQ(Filled().clear, 0);
  Gauge[0] = 80;
  EXPECT_EQ(Filled().clear, -1);
}

TEST_F(ScoreEntryTest, NothingJudgedIsTheLastClass) { EXPECT_EQ(Filled().classIndex, 6); }

TEST_F(ScoreEntryTest, TellsHowTheScrollFactorWasSet) {
  HiSpeed = 3;
  RandomHiSpeed = true;
  EXPECT_FLOAT_EQ(Filled().hiSpeed, 0);
  ComboHiSpeed = true;
  EXPECT_FLOAT_EQ(Filled().hiSpeed, -1) << "with both, the combo counts";
  RandomHiSpeed = false;
  EXPECT_FLOAT_EQ(Filled().hiSpeed, -1);
}

TEST_F(ScoreEntryTest, EachOptionHasItsBit) {
  struct Option {
    bool* on;
    int32_t byte;
    int32_t bit;
  };
  for (const Option& option :
       {Option{&Hidden, 1, 1}, Option{&Sudden, 1, 2}, Option{&Stealth, 1, 4}, Option{&Random, 2, 1},
        Option{&ExRandom, 2, 2}, Option{&Accel, 3, 1}, Option{&Quil, 3, 2}, Option{&Pressure, 3, 4}}) {
    *option.on = true;
    const ScoreEntry entry = Filled();
    EXPECT_EQ(entry.options1, option.byte == 1 ? option.bit : 0);
    EXPECT_EQ(entry.options2, option.byte == 2 ? option.bit : 0);
    EXPECT_EQ(entry.options3, option.byte == 3 ? option.bit : 0);
    *option.on = false;
  }
}

TEST_F(ScoreEntryTest, FiguresTooGreatForTheirFieldsLeaveWhatStood) {
  ScoreEntry entry;
  entry.maxCombo = 5;
  entry.counts = {1, 1, 1, 1, 1};
  MaxCombo[0] = 32768;
  JudgeCount[0] = {32767, 32768, 0, 0, 0};
  FillEntry(entry);
  EXPECT_EQ(entry.maxCombo, 5);
  EXPECT_EQ(entry.counts, (std::array<int16_t, 5>{32767, 1, 0, 0, 0}));
}

TEST_F(ScoreEntryTest, NamesAreEightBytesOfTheCodePage) {
  EXPECT_EQ(NameOf(Filled()), "QuIl :- ");
  scores.PlayerName = u"A";
  EXPECT_EQ(NameOf(Filled()), "A       ");
  scores.PlayerName = u"123456789";
  EXPECT_EQ(NameOf(Filled()), "12345678");
  scores.PlayerName = u"羽";
  EXPECT_EQ(NameOf(Filled()), "\x89\x48      ");
}

}  // namespace
}  // namespace qlm
