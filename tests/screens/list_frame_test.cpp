// The frame of the list screens as a whole: its grounds, its fades, its help, and what moves by itself.
#include "screens/list_frame.h"

#include "screens/list_text.h"
#include "state/chart.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "tests/screens/list_screen_test.h"

namespace qlm {
namespace {

constexpr Colour kSongs = 0x102030;
constexpr Colour kCourses = 0x404040;
constexpr Colour kHelp = 0xC4BEB0;

class ListFrame : public ListScreen {
 protected:
  ListFrame() {
    SSBack = Solid(640, 480, 0x0000FF);
    SSBack->Fill({0, 0, 160, 120}, kSongs);
    SSBackDim = Solid(640, 480, kCourses);
  }
};

TEST_F(ListFrame, TheGroundDriftsOutsideTheCourses) {
  Draw();
  EXPECT_EQ(Pixel(420, 476), kSongs);  // of the tile alone
  DRAWLIMIT = 3;
  Draw();
  EXPECT_EQ(Pixel(420, 476), 0x0000FFU);
  EXPECT_EQ(Pixel(10, 10), kSongs);
}

TEST_F(ListFrame, CoursesHaveTheGreyGroundWhichStands) {
  CourseMode = true;
  GameState = kStateCourses;
  for (const uint8_t limit : {uint8_t{1}, uint8_t{3}}) {
    DRAWLIMIT = limit;
    Draw();
    EXPECT_EQ(Pixel(420, 476), kCourses);
  }
}

// After 50 ms the level is 75: 480 pixels from the left in the rows 0 and 1 of four, from the right in 2
// and 3.
TEST_F(ListFrame, TheGroundOfTheSongsGivesWayInTwoCombs) {
  GameState = kStateCourses;
  CourseMode = true;
  FadeState = kFadeToCourses;
  FadeStart = kNow - 50;
  Draw();
  EXPECT_EQ(Pixel(479, 476), kSongs);
  EXPECT_EQ(Pixel(480, 477), kCourses);
  EXPECT_EQ(Pixel(159, 478), kCourses);
  EXPECT_EQ(Pixel(160, 479), kSongs);
  EXPECT_EQ(FadeState, kFadeToCourses);
}

TEST_F(ListFrame, TheGroundOfTheCoursesGivesWayInTurn) {
  FadeState = kFadeFromCourses;
  FadeStart = kNow - 50;
  Draw();
  EXPECT_EQ(Pixel(479, 476), kCourses);
  EXPECT_EQ(Pixel(480, 477), kSongs);
  EXPECT_EQ(Pixel(159, 478), kSongs);
  EXPECT_EQ(Pixel(160, 479), kCourses);
}

TEST_F(ListFrame, TheCrossingBeginsWithTheOldGroundAndEndsPast200Ms) {
  GameState = kStateCourses;
  CourseMode = true;
  FadeState = kFadeToCourses;
  FadeStart = kNow;
  Draw();
  EXPECT_EQ(Count(kCourses, {0, 470, 300, 480}), 0);
  SetTime(kNow + 200);
  Draw();
  EXPECT_EQ(FadeState, kFadeToCourses);
  EXPECT_EQ(Count(kSongs, {0, 470, 300, 480}), 0);
  SetTime(kNow + 201);
  Draw();
  EXPECT_EQ(FadeState, kFadeNone);
  EXPECT_FALSE(PlayEnd);
}

TEST_F(ListFrame, TheListComesBackFromBlackBehindAPlay) {
  FadeState = kFadeIn;
  FadeStart = kNow - 50;  // level 75
  Draw();
  EXPECT_EQ(Pixel(479, 476), 0U);
  EXPECT_EQ(Pixel(480, 477), kSongs);
  FadeStart = kNow - 201;
  Draw();
  EXPECT_EQ(FadeState, kFadeNone);
}

TEST_F(ListFrame, TheSettlingLosesAFifthEachFrame) {
  songSelect.listSettle = 3;
  Draw();
  EXPECT_FLOAT_EQ(songSelect.listSettle, 2.6F);
  Draw();
  EXPECT_FLOAT_EQ(songSelect.listSettle, 2.28F);
  int32_t frames = 2;
  for (; songSelect.listSettle != 1 && frames < 100; ++frames) Draw();
  EXPECT_EQ(frames, 24);  // 2 * 0.8^24 is 0.0094, the first below 0.01
}

class ListHelp : public ListScreen {
 protected:
  ListHelp() { Rows({u"a"}); }
  // Whether the two lines stand at their leftmost place.
  static void ExpectLines(int32_t state, TextView first, TextView second) {
    GameState = state;
    Draw();
    EXPECT_TRUE(ShowsText({300, 381, 640, 397}, 300, 383, first, kRowFont, kHelp)) << state;
    EXPECT_TRUE(ShowsText({300, 399, 640, 415}, 300, 401, second, kRowFont, kHelp)) << state;
  }
};

TEST_F(ListHelp, EachListHasItsKeys) {
  SetTime(kNow / 1000 * 1000);
  ExpectLines(0, u"[ESC]:終了 [TAB]:モード切替 [←]:JukeBox選択", u"[↑/↓/PageUP/PageDN]:選択 [Enter]:決定");
  ExpectLines(1, u"他のプレイヤーが曲を決定するまでしばらくお待ち下さい。", u"");
  ExpectLines(2, u"他のプレイヤーの曲読み込み完了を待っています…", u"");
  ExpectLines(6, u"[ESC]:終了 [TAB]:モード切替", u"[↑/↓/PageUP/PageDN]:選択 [→/Enter]:開く");
  ExpectLines(7, u"[ESC]:終了 [TAB]:モード切替 [スペース]:コース編集",
              u"[↑/↓/PageUP/PageDN]:選択 [Enter]:コース決定");
  ExpectLines(8, u"", u"");
  ExpectLines(9, u"[ESC]:終了 [Enter]:決定 [文字]:入力", u"");
}

TEST_F(ListHelp, TheLinesSwayByTwelvePixelsOnceASecond) {
  const auto leftAt = [](uint32_t ms) {
    SetTime(kNow / 1000 * 1000 + ms);
    Draw();
    for (int32_t x = 290; x < 400; ++x) {
      for (int32_t y = 399; y < 415; ++y) {
        if (Pixel(x, y) != 0) return x;
      }
    }
    return 0;
  };
  const int32_t still = leftAt(0);
  EXPECT_EQ(leftAt(250), still + 6);
  EXPECT_EQ(leftAt(500), still + 12);
  EXPECT_EQ(leftAt(750), still + 6);
  EXPECT_EQ(leftAt(1000), still);
}

TEST_F(ListHelp, EveryLineEndsOnTheScreen) {
  SetTime(kNow / 1000 * 1000 + 500);
  for (int32_t state = 0; state <= 9; ++state) {
    GameState = state;
    Draw();
    EXPECT_EQ(Count(kHelp, {636, 380, 640, 416}), 0) << state;
  }
}

}  // namespace
}  // namespace qlm
