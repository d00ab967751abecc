// The wheel of rows: where they stand, what they say, in which colours, and how they appear.
#include "screens/list_wheel.h"

#include <utility>
#include <vector>

#include "base/text.h"
#include "platform/clock.h"
#include "screens/list_rows.h"
#include "screens/list_sprites.h"
#include "screens/list_text.h"
#include "state/chart.h"
#include "state/session.h"
#include "state/song_select.h"
#include "tests/screens/list_screen_test.h"

namespace qlm {
namespace {

constexpr Colour kOrange = 0xFF8000;  // 255 * 0.5 is 127.5, half to even 128
constexpr Colour kYellow = 0xFFFF00;

class Wheel : public ListScreen {
 protected:
  // The first pixels of a row's text, which a block of ink fills.
  static Colour RowColour(int32_t offset) {
    const Rect row = RowPlace(offset);
    return Pixel(row.left + 6, row.top + 9);
  }
};

// sin and cos of (offset * 10 + 180) degrees, with 3.1415 for half a turn.
TEST_F(Wheel, RowsLieOnAnArc) {
  EXPECT_EQ(RowPlace(0), (Rect{40, 230, 230, 246}));
  EXPECT_EQ(RowPlace(1), (Rect{41, 206, 231, 222}));
  EXPECT_EQ(RowPlace(6), (Rect{75, 84, 265, 100}));
  EXPECT_EQ(RowPlace(-6), (Rect{75, 377, 265, 393}));
  songSelect.listScroll = 0.5F;
  EXPECT_EQ(RowPlace(0), (Rect{40, 218, 230, 234}));
}

TEST_F(Wheel, RowsWrapAroundTheList) {
  Rows({u"a", u"b", u"c"});
  EXPECT_EQ(WrappedRow(0), 0);
  EXPECT_EQ(WrappedRow(-1), 2);
  EXPECT_EQ(WrappedRow(3), 0);
  EXPECT_EQ(WrappedRow(-31), 2);
  EXPECT_EQ(WrappedRow(int64_t{1} << 40), 1);  // 2^40 is 1 more than a multiple of 3
  lastSong = -1;
  EXPECT_EQ(WrappedRow(7), -1);
}

TEST_F(Wheel, RowsBeforeTheCursorStandAboveIt) {
  Rows({u"■", u"", u"■■■■", u"", u"", u"", u"", u"", u"", u"", u"", u"", u"", u""});
  listCursor = 1;
  Draw();
  EXPECT_EQ(RowColour(1), kOrange);
  EXPECT_EQ(RowColour(-1), kOrange);
  const Rect above = RowPlace(1);
  EXPECT_EQ(Pixel(above.left + 30, above.top + 9), 0U);
  const Rect below = RowPlace(-1);
  EXPECT_EQ(Pixel(below.left + 30, below.top + 9), kOrange);
}

TEST_F(Wheel, ClearedRowsAreYellowOthersOrange) {
  Rows({u"■■", u"■■"});
  songCleared[1] = true;
  Draw();
  EXPECT_EQ(RowColour(1), kYellow);
  EXPECT_EQ(RowColour(2), kOrange);
  EXPECT_EQ(RowColour(-1), kYellow);
  EXPECT_EQ(Pixel(40 + 5 + 8, 239), kOrange);  // the row in hand, pushed by 5
}

TEST_F(Wheel, RowsAreGreyInCourseMode) {
  Rows({u"■■", u"■■"});
  GameState = kStateCourses;
  CourseMode = true;
  songCleared[1] = true;
  songSelect.listFadeIn = 1000;
  Draw();
  // Row 1 stands behind its level; row 0 of the courses is its title alone.
  EXPECT_EQ(RowColour(2), 0x808080U);
  EXPECT_EQ(Around(0xC0C0C0, RowPlace(1)).Height() > 6, true);
}

// v is ((offset + 6) * 50 - listFadeIn) * 255 / 200 within 1 and 255.
TEST_F(Wheel, RowsFadeOutTowardsTheLowerEnd) {
  Rows({u"■■"});
  songCleared[0] = true;
  Draw();
  const std::vector<std::pair<int32_t, Colour>> expected = {{6, 0xFFFF00},  {-2, 0xFFFF00}, {-3, 0xBFBF00},
                                                            {-4, 0x808000}, {-5, 0x404000}, {-6, 0x010100}};
  for (const auto& [offset, colour] : expected) EXPECT_EQ(RowColour(offset), colour) << offset;
}

TEST_F(Wheel, RowsAppearFromTheTopDownInTheFirstSecond) {
  Rows({u"■■"});
  songCleared[0] = true;
  songSelect.listFadeIn = 400;
  Draw();
  EXPECT_EQ(RowColour(6), 0xFFFF00U);  // 200 * 255 / 200
  EXPECT_EQ(RowColour(5), 0xBFBF00U);  // 150 * 1.275 is 191.25
  EXPECT_EQ(RowColour(3), 0x404000U);  // 50 * 1.275 is 63.75
  EXPECT_EQ(RowColour(2), 0x010100U);
  EXPECT_EQ(RowColour(-6), 0x010100U);
}

TEST_F(Wheel, TheFadeRunsWithTheClockAndEndsAtZero) {
  Rows({u"a"});
  songSelect.listFadeIn = 1000;
  platform::UseVirtualClock(kNow + 40);
  Draw();
  EXPECT_EQ(songSelect.listFadeIn, 960);
  platform::UseVirtualClock(kNow + 900);
  Draw();
  EXPECT_EQ(songSelect.listFadeIn, 100);
  platform::UseVirtualClock(kNow + 1500);
  Draw();
  EXPECT_EQ(songSelect.listFadeIn, 0);
}

TEST_F(Wheel, APlaceIsSeenOnceItsRowHasAppeared) {
  Rows({u"a"});
  songSelect.listFadeIn = 120;
  Draw();
  EXPECT_FALSE(songSelect.rowSeen[16 - 1]);
  EXPECT_TRUE(songSelect.rowSeen[16 - 2]);  // -120 + 120
  EXPECT_FALSE(songSelect.rowSeen[16]);
  songSelect.listFadeIn = 0;
  Draw();
  EXPECT_TRUE(songSelect.rowSeen[16]);
  EXPECT_FALSE(songSelect.rowSeen[16 + 1]);  // 60 ms to come, for ever
  // Far turned, places lie outside the table.
  songSelect.listScroll = 40;
  Draw();
  songSelect.listScroll = -40;
  Draw();
}

TEST_F(Wheel, TheRowInHandTwitchesAndKeepsItsWidth) {
  Rows({u"a"});
  PaintSprite(SlipSprite(kSlipLevels - 1));
  const auto leftAt = [](uint32_t ms) {
    SetTime(kNow + ms);
    Draw();
    EXPECT_EQ(Around(kSpriteRed).Width(), 208) << ms;
    return Around(kSpriteRed).left;
  };
  EXPECT_EQ(leftAt(0), 31 + 5);
  EXPECT_EQ(leftAt(30), 31 + 4);   // 5 * 0.81
  EXPECT_EQ(leftAt(150), 31 + 1);  // 5 * 0.25
  EXPECT_EQ(leftAt(299), 31);
  EXPECT_EQ(leftAt(300), 31 + 5);
}

TEST_F(Wheel, TheNibPointsAtTheRowInHand) {
  Rows({u"a"});
  PaintSprite(kNibSprite);
  SetTime(kNow + 299);
  Draw();
  EXPECT_EQ(Around(kSpriteRed), (Rect{0, 227, 34, 249}));
}

TEST_F(Wheel, TheLampShinesOnTheMiddleWhereverTheRowsAre) {
  Rows({u"a"});
  PaintSprite(SlipSprite(kSlipLevels - 1));
  songSelect.listScroll = -2;
  SetTime(kNow + 299);
  Draw();
  // The row two before the one in hand passes under it.
  EXPECT_EQ(Around(kSpriteRed).top, 230 - 3);
}

TEST_F(Wheel, RowsOfSongsHaveTheirRecordMarkAndLevel) {
  Rows({u"quill", u"quill"});
  GameState = kStateSongSelect;
  songList[0].playLevel = songList[1].playLevel = 12;
  songHasRecord[1] = true;
  Draw();
  const Rect above = RowPlace(1);
  EXPECT_TRUE(ShowsText(above, above.left, above.top + 2, u"★12 quill", kRowFont, kOrange));
  const Rect second = RowPlace(2);
  EXPECT_TRUE(ShowsText(second, second.left, second.top + 2, u"☆12 quill", kRowFont, kOrange));
}

TEST_F(Wheel, RowsOfCoursesHaveTheirLevelButForTheFirst) {
  Rows({u"[MAKE NEW COURSE]", u"night"});
  songList[1].playLevel = 5;
  GameState = kStateCourses;
  CourseMode = true;
  Draw();
  const Rect above = RowPlace(1);
  EXPECT_TRUE(ShowsText(above, above.left, above.top + 2, u"★5 night", kRowFont, 0x808080));
  const Rect second = RowPlace(2);
  EXPECT_TRUE(ShowsText(second, second.left, second.top + 2, u"[MAKE NEW COURSE]", kRowFont, 0x808080));
}

TEST_F(Wheel, LongTextIsCutAtItsRow) {
  Rows({Text(300, u'W')});
  Draw();
  const auto ink = [](const Rect& part) { return int64_t{part.Width()} * part.Height() - Count(0, part); };
  EXPECT_GT(ink({RowPlace(6).right - 5, 84, RowPlace(6).right, 100}), 0);
  EXPECT_EQ(ink({RowPlace(6).right, 84, 300, 100}), 0);
  EXPECT_GT(ink({230, 230, 235, 246}), 0);  // pushed by 5
  EXPECT_EQ(ink({235, 230, 300, 246}), 0);
}

TEST_F(Wheel, TheRowInHandHasAFontOfItsOwn) {
  Rows({u"quill", u"", u"", u"", u"", u"", u"", u"", u"", u"", u"", u"", u"", u""});
  Draw();
  EXPECT_TRUE(ShowsText({45, 230, 235, 246}, 45, 230, u"quill", kHeldRowFont, kOrange));
}

// (t \ 3) mod 256 is 128 and so c is 0, then 0 with c 128.
TEST_F(Wheel, TheHeadNamesTheListInAMovingColour) {
  constexpr Rect kHead = {100, 40, 283, 59};
  GameState = kStateSongSelect;
  songSelect.jukeName = Text(u"■");
  const auto colourAt = [](uint32_t ms) {
    SetTime(1'310'208 + ms);  // 436736 * 3, of which 436736 is 1706 * 256
    Draw();
    return Pixel(191, 49);
  };
  EXPECT_EQ(colourAt(0), 0xFFE080U);
  EXPECT_EQ(colourAt(3 * 128), 0x7F6000U);
  EXPECT_EQ(colourAt(3 * 64), 0xBFA040U);
  const auto expectHead = [&](int32_t state, TextView words) {
    GameState = state;
    SetTime(1'310'208);
    Draw();
    const int32_t left = 100 + (183 - LineWidth(words, kHeldRowFont)) / 2;
    EXPECT_TRUE(ShowsText(kHead, left, 41, words, kHeldRowFont, 0xFFE080)) << Utf8(words);
  };
  songSelect.jukeName = u"favourites.qbl";
  expectHead(kStateSongSelect, u"favourites.qbl");
  expectHead(kStateLists, u"SELECT JUKEBOX");
  expectHead(kStateCourses, u"SELECT COURSE");
}

TEST_F(Wheel, AnEmptyListSaysSo) {
  lastSong = -1;
  Draw();
  EXPECT_GT(Count(kOrange, {45, 230, 235, 246}), 100);
  EXPECT_EQ(Count(kOrange, {0, 70, 300, 225}), 0);
}

TEST_F(Wheel, AListOfOneRowFillsTheWheel) {
  Rows({u"■■"});
  Draw();
  EXPECT_EQ(RowColour(6), kOrange);
  EXPECT_EQ(RowColour(1), kOrange);
}

TEST_F(Wheel, AFrameOfTheWheelLaysOutNoText) {
  songList.clear();
  for (int32_t i = 0; i < 10'000; ++i) {
    SongEntry row;
    row.title = Join(u"row ", i);
    songList.push_back(row);
  }
  lastSong = 9'999;
  songCleared.assign(10'000, false);
  songHasRecord.assign(10'000, false);
  listCursor = 5'000;
  songSelect.listScroll = 3;
  Draw();
  const int64_t before = LinesLaidOut();
  for (const float scroll : {2.9F, 2.8F, 2.7F, 2.6F}) {
    songSelect.listScroll = scroll;
    Draw();
  }
  EXPECT_EQ(LinesLaidOut(), before);
  songSelect.listFadeIn = 500;  // other colours, the same shapes
  Draw();
  EXPECT_EQ(LinesLaidOut(), before);
}

TEST_F(Wheel, AHugeTurnIsDrawn) {
  Rows({u"a", u"b"});
  for (const float scroll : {1e30F, -1e30F, 2e9F}) {
    songSelect.listScroll = scroll;
    Draw();
  }
  EXPECT_EQ(Count(kOrange, {0, 70, 300, 225}), 0);
}

}  // namespace
}  // namespace qlm
