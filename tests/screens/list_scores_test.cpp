// The score table of the row in hand: how it slides in and runs as a ticker.
#include "screens/list_scores.h"

#include <algorithm>
#include <string_view>

#include "state/scores.h"
#include "state/session.h"
#include "tests/screens/list_screen_test.h"

namespace qlm {
namespace {

class ScoreTicker : public ListScreen {
 protected:
  ScoreTicker() {
    Rows({u"a"});
    GameState = kStateSongSelect;
    for (int32_t i = 0; i < 10; ++i) {
      ScoreEntry& row = scores.ScoreTable[i];
      constexpr std::string_view kName = "GOOSE   ";
      std::ranges::copy(kName, row.name.begin());
      row.score = static_cast<float>(100'000 - i);
      row.jpts = static_cast<float>(5'000 - i);
      row.classIndex = 2;
    }
  }
  // The frame so many ms after the cursor came to the row.
  static void DrawAt(uint32_t ms) {
    SetTime(kNow + ms);
    Draw();
  }
  // The upper edge of the row with this ordinal, or 0. Its score stands alone from 16 pixels below that on.
  static int32_t TopOf(int32_t place) {
    const std::string score = std::to_string(100'001 - place);
    for (int32_t y = 40; y < 230; ++y) {
      if (SystemText(524, y) == score && SystemText(524, y - 1) != score) return y + 8 - 16;
    }
    return 0;
  }
};

TEST_F(ScoreTicker, TheBestRowStandsAboveWithTheNumberOfPlays) {
  scores.playCount = 7;
  scores.ScoreTable[0].jpts = -120.5F;  // half to even
  DrawAt(3200);
  EXPECT_EQ(SystemText(468, 40), "1st");
  EXPECT_EQ(SystemText(468 + 32, 40), "GOOSE");
  EXPECT_EQ(SystemText(468 + 130, 40), "007");
  EXPECT_EQ(SystemText(468 + 20, 52), "100000");
  EXPECT_EQ(SystemText(468 + 120, 52), "A");
  scores.cleared = -1;
  scores.playCount = 1234;
  DrawAt(3200);
  EXPECT_EQ(SystemText(468 + 130, 40), "1234!");
}

TEST_F(ScoreTicker, ARowThatWasNeverFilledHasNoNameAndNoClass) {
  scores.ScoreTable[0] = {};
  DrawAt(3200);
  EXPECT_EQ(SystemText(468, 40), "1st");
  EXPECT_EQ(SystemText(468 + 32, 40), "");
  EXPECT_EQ(SystemText(468 + 20, 52), "0");
  EXPECT_EQ(SystemText(468 + 120, 52), "");
}

TEST_F(ScoreTicker, OrdinalsFollowTheLastDigit) {
  DrawAt(3200);
  EXPECT_EQ(SystemText(516, 104), "2nd");
  EXPECT_EQ(SystemText(516, 144), "3rd");
  EXPECT_EQ(SystemText(516, 184), "4th");
  EXPECT_EQ(SystemText(516 + 68, 104 + 12), "4999");
}

TEST_F(ScoreTicker, RowsSlideInFromTheRight) {
  const auto firstLetter = [](uint32_t ms, int32_t y) {
    DrawAt(ms);
    for (int32_t x = 440; x < 640; ++x) {
      if (Pixel(x, y + 8) != 0) return x;
    }
    return 640;
  };
  EXPECT_EQ(firstLetter(0, 40), 640);  // 180 pixels off
  EXPECT_LT(firstLetter(800, 40), 640);
  EXPECT_GT(firstLetter(800, 40), 468);
  EXPECT_EQ(firstLetter(3199, 40), 468);
  EXPECT_EQ(firstLetter(3200, 40), 468);
  EXPECT_GT(firstLetter(800, 184), firstLetter(800, 104));  // each a little later than the one above
}

TEST_F(ScoreTicker, TheTickerMovesUpAPixelEachTwentyMs) {
  DrawAt(3199);
  EXPECT_EQ(TopOf(2), 104);
  DrawAt(3219);
  EXPECT_EQ(TopOf(2), 104);
  DrawAt(3220);
  EXPECT_EQ(TopOf(2), 103);
  EXPECT_EQ(TopOf(4), 183);
  DrawAt(3200 + 40 * 20);
  EXPECT_EQ(TopOf(3), 104);
}

TEST_F(ScoreTicker, RowsAreDrawnFromTop36To219) {
  scores.ScoreTable[1].name.fill('|');
  // In row 5, at 224, nothing is seen yet; a pixel later its head is.
  DrawAt(3200 + 4 * 20);
  EXPECT_EQ(SystemText(516, 220), "");
  DrawAt(3200 + 5 * 20);
  EXPECT_EQ(Pixel(516 + 4, 219) >> 16, static_cast<Colour>('5'));
  EXPECT_EQ(Pixel(516 + 4, 220), 0U);  // the clip rectangle
  // Row 2 is at 36 after 68 pixels: its second line, at 48, is cut at 64, and with it its J-PTS.
  DrawAt(3200 + 67 * 20);
  EXPECT_EQ(Pixel(604, 64) >> 16, static_cast<Colour>('9'));
  DrawAt(3200 + 68 * 20);
  EXPECT_EQ(Pixel(604, 64), 0U);
}

TEST_F(ScoreTicker, TheTickerBeginsAnewAfter10400Ms) {
  DrawAt(3200 + 10'399);
  EXPECT_EQ(TopOf(2), 105);
  DrawAt(3200 + 10'400);
  EXPECT_EQ(TopOf(2), 104);
  // Row 2 comes in at 219 again after 404 pixels, 36 behind row 10.
  DrawAt(3200 + 404 * 20);
  EXPECT_EQ(Pixel(516 + 4, 219), 0U);
  DrawAt(3200 + 405 * 20);
  EXPECT_EQ(Pixel(516 + 4, 219) >> 16, static_cast<Colour>('2'));
}

TEST_F(ScoreTicker, JukeboxesHaveNone) {
  GameState = kStateLists;
  DrawAt(3200);
  EXPECT_EQ(SystemText(468, 40), "");
  EXPECT_EQ(TopOf(2), 0);
}

TEST_F(ScoreTicker, HostileRowsAreDrawn) {
  for (int32_t i = 0; i < 10; ++i) {
    ScoreEntry& row = scores.ScoreTable[i];
    row.name.fill('\xFF');
    row.score = i % 2 == 0 ? 3e38F : -3e38F;
    row.jpts = std::numeric_limits<float>::quiet_NaN();
    row.classIndex = 255;
  }
  scores.playCount = INT32_MIN;
  for (const uint32_t ms : {0U, 3200U, 9000U, 0x80000000U}) DrawAt(ms);
  EXPECT_EQ(SystemText(468 + 120, 52), "");
}

}  // namespace
}  // namespace qlm
