// Parts of a chart that a random number chooses.

#include "base/log.h"
#include "base/rnd.h"
#include "state/chart.h"
#include "tests/chart/chart_test.h"

namespace qlm {
namespace {

// Each test writes background sounds 01, 02, … and looks which of them were read.
class RandomBlocksTest : public ChartTest {
 protected:
  std::string ReadSounds(const std::vector<Text>& lines) {
    Read(lines);
    Text read;
    for (int32_t i = 0; i < objCount; ++i) read += Join(i > 0 ? u" " : u"", FindObj(i)->value);
    return Utf8(read);
  }
};

const std::vector<Text> kTwoOfTwo = {u"#RANDOM 2", u"#IF 1",     u"#00101:01", u"#ENDIF",
                                     u"#IF 2",     u"#00101:02", u"#ENDIF",    u"#00101:03"};

// Rnd 0 and 0.5 choose 1 and 2.
TEST_F(RandomBlocksTest, ExactlyOneOfTwoBlocksIsRead) {
  SetRndList({0});
  EXPECT_EQ(ReadSounds(kTwoOfTwo), "1 3");
  EXPECT_TRUE(Logged(u"    RANDOM: 1/2"));
  SetRndList({0.5F});
  EXPECT_EQ(ReadSounds(kTwoOfTwo), "2 3");
}

TEST_F(RandomBlocksTest, EndOfTheChosenBlockIsLoggedWithoutTheHash) {
  SetRndList({0});
  Read(kTwoOfTwo);
  EXPECT_EQ(CountLogged(u"RANDOM END: ENDIF"), 1);
  EXPECT_EQ(CountLogged(u"RANDOM END: #ENDIF"), 0);
}

TEST_F(RandomBlocksTest, FewerBlocksThanNamedSkipTheRestBehindTheChosenOne) {
  const std::vector<Text> chart = {u"#RANDOM 3", u"#IF 1",  u"#00101:01", u"#ENDIF",  u"#IF 2",
                                   u"#00101:02", u"#ENDIF", u"#00101:03", u"#TITLE x"};
  HdrTitle = u"before";
  SetRndList({0});
  EXPECT_EQ(ReadSounds(chart), "1");
  SetRndList({0.4F});
  EXPECT_EQ(ReadSounds(chart), "2");
  SetRndList({0.9F});
  EXPECT_EQ(ReadSounds(chart), "");
  EXPECT_EQ(HdrTitle, u"before");
}

TEST_F(RandomBlocksTest, NextIfEndsABlockWithoutEndif) {
  const std::vector<Text> chart = {u"#RANDOM 2", u"#IF 1",  u"#00101:01", u"#IF 2",
                                   u"#00101:02", u"#ENDIF", u"#00101:03"};
  SetRndList({0});
  EXPECT_EQ(ReadSounds(chart), "1 3");
  EXPECT_EQ(CountLogged(u"RANDOM END: IF 2"), 1);
  SetRndList({0.5F});
  EXPECT_EQ(ReadSounds(chart), "2 3");
}

// With the level's count reached by the first #IF, the second one ends the level and its block is read as
// plain text.
TEST_F(RandomBlocksTest, IfBeyondTheCountEndsTheLevel) {
  SetRndList({0});
  EXPECT_EQ(ReadSounds({u"#RANDOM 1", u"#IF 1", u"#00101:01", u"#IF 9", u"#00101:02"}), "1 2");
}

TEST_F(RandomBlocksTest, NestedRandomInAnOpenBlockHasALevelOfItsOwn) {
  const std::vector<Text> chart = {u"#RANDOM 2", u"#IF 1", u"#RANDOM 2", u"#IF 1",  u"#00101:01",
                                   u"#ENDIF",    u"#IF 2", u"#00101:02", u"#ENDIF", u"#00101:03",
                                   u"#ENDIF",    u"#IF 2", u"#00101:04", u"#ENDIF", u"#00101:05"};
  SetRndList({0, 0.5F});
  EXPECT_EQ(ReadSounds(chart), "2 3 5");
}

// Both #IF are counted against the one level that is seen, and the inner #ENDIF then ends it.
TEST_F(RandomBlocksTest, NestedRandomInASkippedBlockIsCountedAgainstTheOuterLevel) {
  const std::vector<Text> chart = {u"#RANDOM 2", u"#IF 9",  u"#RANDOM 2", u"#IF 8",
                                   u"#00101:01", u"#ENDIF", u"#00101:02"};
  SetRndList({0});
  EXPECT_EQ(ReadSounds(chart), "2");
  EXPECT_EQ(CountLogged(u"RANDOM: 1/2"), 1);
}

// #ENDRANDOM takes the level from 0 to -1, so that the second #RANDOM works on level 0 and the third one
// below.
TEST_F(RandomBlocksTest, EndrandomTakesTheLevelOneFurtherDown) {
  const std::vector<Text> block = {u"#RANDOM 2", u"#IF 1",     u"#00101:01", u"#ENDIF",
                                   u"#IF 2",     u"#00101:02", u"#ENDIF",    u"#ENDRANDOM"};
  std::vector<Text> chart = block;
  chart.insert(chart.end(), block.begin(), block.end());
  SetRndList({0, 0.5F, 0.75F});
  EXPECT_EQ(ReadSounds(chart), "1 2");
  EXPECT_EQ(CountLogged(u"RANDOM: 1/2"), 1);
  EXPECT_EQ(CountLogged(u"RANDOM: 2/2"), 1);
  EXPECT_EQ(CountLogged(u"RANDOM END: ENDRANDOM"), 2);
  EXPECT_EQ(Rnd(), 0.75F);
}

// Level 0 ends at its last #ENDIF and goes to -1, #ENDRANDOM takes it to -2, and the next #RANDOM works on
// -1.
TEST_F(RandomBlocksTest, BelowLevelZeroEveryIfOpensAndNothingIsDrawn) {
  SetRndList({0, 0, 0.75F});
  EXPECT_EQ(ReadSounds({u"#RANDOM 1", u"#IF 1", u"#ENDIF", u"#ENDRANDOM",                             //
                        u"#RANDOM 1", u"#IF 1", u"#ENDIF", u"#ENDRANDOM",                             //
                        u"#RANDOM 5", u"#00101:01", u"#IF 4", u"#00101:02", u"#ENDIF", u"#00101:03",  //
                        u"#RANDOM 5", u"#00101:04", u"#ENDIF", u"#00101:05"}),
            "2 3 5");
  EXPECT_EQ(CountLogged(u"RANDOM: 1/1"), 2);
  EXPECT_EQ(CountLogged(u"RANDOM: 1/5"), 0);
  EXPECT_EQ(Rnd(), 0.75F);
}

TEST_F(RandomBlocksTest, AboveLevelHundredEveryIfOpens) {
  std::vector<Text> chart;
  for (int level = 1; level <= 100; ++level) {
    chart.push_back(u"#RANDOM 1");
    chart.push_back(u"#IF 1");
  }
  const std::vector<Text> beyond = {u"#RANDOM 1", u"#00101:01", u"#IF 9", u"#00101:02"};
  chart.insert(chart.end(), beyond.begin(), beyond.end());
  SetRndList({0});
  EXPECT_EQ(ReadSounds(chart), "2");
  EXPECT_EQ(CountLogged(u"RANDOM: 1/1"), 100);
}

TEST_F(RandomBlocksTest, NothingCarriesOverToTheNextRead) {
  SetRndList({0.9F});
  EXPECT_EQ(ReadSounds({u"#RANDOM 3", u"#00101:01"}), "");
  EXPECT_EQ(ReadSounds({u"#00101:01"}), "1");
}

TEST_F(RandomBlocksTest, WordsAreReadInAnyCaseAndByTheirFirstLetters) {
  SetRndList({0});
  EXPECT_EQ(ReadSounds({u"#RandomX2", u"#ifx1", u"#00101:01", u"#endIFs", u"#If 2", u"#00101:02", u"#EndIf",
                        u"#00101:03"}),
            "1 3");
  EXPECT_EQ(ReadSounds({u"#random 2", u"#if 1", u"#00101:01", u"#end", u"#00101:02"}), "1");
}

// "IF" needs a blank behind it to end an open block, but not to be counted in a skipped one.
TEST_F(RandomBlocksTest, IfWithoutBlankDoesNothingInAnOpenBlock) {
  SetRndList({0});
  EXPECT_EQ(ReadSounds({u"#RANDOM 2", u"#IF 1", u"#IFX2", u"#00101:01"}), "1");
}

TEST_F(RandomBlocksTest, NumbersRoundHalfToEvenAndAreSixteenBits) {
  SetRndList({0.5F});
  Read({u"#RANDOM 2.5"});
  EXPECT_TRUE(Logged(u"    RANDOM: 2/2"));
  // Out of range: the level keeps its 0, and Int(0.5 * 0) + 1 is 1.
  Read({u"#RANDOM 40000"});
  EXPECT_TRUE(Logged(u"        RANDOM: 1/0"));
}

// Int(0.5 * -3) is -2.
TEST_F(RandomBlocksTest, NegativeNumberChoosesBelowOne) {
  SetRndList({0.5F});
  EXPECT_EQ(ReadSounds({u"#RANDOM -3", u"#IF -1", u"#00101:01"}), "1");
  EXPECT_TRUE(Logged(u"    RANDOM: -1/-3"));
}

TEST_F(RandomBlocksTest, RandomWithoutNumberSkipsToTheFirstEndif) {
  SetRndList({0.5F});
  EXPECT_EQ(ReadSounds({u"#RANDOM", u"#00101:01", u"#ENDIF", u"#00101:02"}), "2");
}

}  // namespace
}  // namespace qlm
