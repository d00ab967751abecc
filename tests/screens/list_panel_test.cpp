// The panel beside the wheel, the picture box and the row's number.
#include "screens/list_panel.h"

#include "base/rnd.h"
#include "graphics/display.h"
#include "screens/list_sprites.h"
#include "screens/list_text.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/session.h"
#include "state/song_select.h"
#include "state/timeline.h"
#include "tests/screens/list_screen_test.h"

namespace qlm {
namespace {

constexpr Colour kWhite = 0xFFFFFF;
constexpr Colour kPaper = 0xF3EAD3;
constexpr Colour kTeal = 0x4CC9BF;

class Panel : public ListScreen {
 protected:
  Panel() {
    Rows({u"March [HARD]"});
    GameState = kStateSongSelect;
  }
  static SongEntry& Song() { return songList[0]; }
};

TEST_F(Panel, TitlesStandInTheirPlaces) {
  Song().genre = u"MARCH";
  Song().artist = u"goose";
  songSelect.titleMain = u"March";
  Draw();
  EXPECT_TRUE(ShowsText({308, 235, 600, 248}, 308, 236, u"MARCH", kRowFont, kTeal));
  EXPECT_TRUE(ShowsText({308, 249, 608, 272}, 308, 247, u"March", kLargeFont, kWhite));
  const int32_t artist = 608 - LineWidth(u"goose", kRowFont);
  EXPECT_TRUE(ShowsText({376, 281, 608, 295}, artist, 282, u"goose", kRowFont, kPaper));
}

TEST_F(Panel, TheSubTitleEndsAtTheRightOverADarkShadow) {
  songSelect.titleMain = u"A";
  songSelect.titleSub = u"[HARD]";
  Draw();
  const int32_t left = 608 - LineWidth(u"[HARD]", kSmallFont);
  Surface expected(640, 480);
  const platform::TextMask mask = platform::RenderText(u"[HARD]", kSmallFont);
  platform::DrawMask(expected, kScreen, left + 1, 271, mask, 0x000008);
  platform::DrawMask(expected, kScreen, left, 270, mask, kPaper);
  for (int32_t y = 270; y < 282; ++y) {
    for (int32_t x = left; x < 608; ++x) ASSERT_EQ(Pixel(x, y), expected.Pixel(x, y)) << x << ',' << y;
  }
}

TEST_F(Panel, LongTitlesAreCutAtTheSheet) {
  songSelect.titleMain = Text(100, u'■');
  Song().genre = Text(100, u'■');
  Song().artist = Text(100, u'■');
  Draw();
  for (const Colour colour : {kWhite, kTeal, kPaper}) {
    const int32_t right = Around(colour, {301, 230, 640, 300}).right;
    EXPECT_LE(right, 608);
    EXPECT_GT(right, 600);
  }
  EXPECT_GE(Around(kPaper, {301, 230, 640, 300}).left, 376);
}

TEST_F(Panel, TempoIsTheRowsUntilAChartIsLoaded) {
  Song().bpm = 132.5F;
  Draw();
  EXPECT_EQ(SystemText(540, 300), "132.5");
  curBPM = 168;
  Draw();
  EXPECT_EQ(SystemText(540, 300), "168");
}

TEST_F(Panel, TheLengthStandsInMinutesAndSeconds) {
  Song().lengthMs = 125'999;
  Draw();
  EXPECT_EQ(SystemText(540, 320), "02:05");
  Song().lengthMs = -5;
  Draw();
  EXPECT_EQ(SystemText(540, 320), "00:00");
  Song().lengthMs = INT32_MAX;
  Draw();
  EXPECT_EQ(SystemText(540, 320), "35791:23");
}

TEST_F(Panel, AnUnknownNoteCountFlickersThroughRandomNumbers) {
  Draw();
  const std::string first = SystemText(360, 340);
  EXPECT_LT(std::stoi(first), 1000);
  int32_t changes = 0;
  for (int32_t frame = 0; frame < 20; ++frame) {
    Draw();
    changes += SystemText(360, 340) != first ? 1 : 0;
  }
  EXPECT_GT(changes, 15);
}

TEST_F(Panel, TheFlickerDoesNotDisturbTheNumbersOfAPlay) {
  SeedRnd(7);
  const float expected = Rnd();
  SeedRnd(7);
  Draw();
  EXPECT_EQ(Rnd(), expected);
}

TEST_F(Panel, NotesAreCountedForEachPlayer) {
  TotalNotes = {1234, 987};
  Song().player = 1;
  Draw();
  EXPECT_EQ(SystemText(360, 340), "1234");
  EXPECT_EQ(SystemText(360 + 5 * 8, 340), "");
  Song().player = 2;
  Draw();
  EXPECT_EQ(SystemText(360, 340), "1234");
  EXPECT_EQ(SystemText(360 + 7 * 8, 340), "987");
  Song().player = 3;  // two sides that one player plays
  Draw();
  EXPECT_EQ(SystemText(360 + 5 * 8, 340), "");
}

TEST_F(Panel, OneDropForEachLevel) {
  PaintSprite(kStarSprite);
  Song().playLevel = 3;
  Draw();
  // The clock is a multiple of 360: sines of 0, -30 and -60 degrees, times 2.5.
  EXPECT_EQ(Around(kSpriteRed, {308, 290, 321, 330}), (Rect{308, 300, 320, 314}));
  EXPECT_EQ(Around(kSpriteRed, {321, 290, 334, 330}), (Rect{321, 299, 333, 313}));  // -1.25
  EXPECT_EQ(Around(kSpriteRed, {334, 290, 347, 330}), (Rect{334, 298, 346, 312}));  // -2.17
  EXPECT_EQ(Count(kSpriteRed), 3 * 12 * 14);
  SetTime(kNow + 90);
  Draw();
  EXPECT_EQ(Around(kSpriteRed, {308, 290, 321, 330}).top, 302);  // 2.5, half to even
}

TEST_F(Panel, ManyDropsStandCloserAndNoneLeavesTheSheet) {
  PaintSprite(kStarSprite);
  for (const int32_t level : {0, -3}) {
    Song().playLevel = level;
    Draw();
    EXPECT_EQ(Count(kSpriteRed), 0) << level;
  }
  Song().playLevel = 40;  // 4 pixels apart
  Draw();
  EXPECT_EQ(Around(kSpriteRed).right, 308 + 39 * 4 + 12);
  Song().playLevel = INT32_MAX;
  Draw();
  EXPECT_EQ(Around(kSpriteRed).right, 308 + 175 + 12);
}

TEST_F(Panel, RankAndPlayersHaveTheirSprites) {
  for (int32_t rank = 0; rank < 4; ++rank) {
    PaintSprite(RankSprite(rank));
    Song().rank = rank;
    Draw();
    EXPECT_EQ(Around(kSpriteRed), (Rect{360, 320, 456, 336})) << rank;
  }
  for (const int32_t rank : {-1, 4}) {
    Song().rank = rank;
    PaintSprite({320, 250, 416, 250 + 18 * 4});
    Draw();
    EXPECT_EQ(Count(kSpriteRed), 0) << rank;
  }
  for (int32_t player = 1; player <= 3; ++player) {
    PaintSprite(PlayerSprite(player - 1));
    Song().player = player;
    Draw();
    EXPECT_EQ(Around(kSpriteRed), (Rect{308, 281, 372, 295})) << player;
  }
  for (const int32_t player : {INT32_MIN, 0, 4}) {
    Song().player = player;
    Draw();
    EXPECT_EQ(Count(kSpriteRed), 0) << player;
  }
}

TEST_F(Panel, JukeboxesShowTheirTitleAndHowToAddCharts) {
  Rows({u"stock"});
  GameState = kStateLists;
  Draw();
  EXPECT_TRUE(ShowsText({308, 235, 600, 248}, 308, 236, u"SELECT JUKEBOX", kRowFont, kTeal));
  EXPECT_TRUE(ShowsText({308, 249, 608, 272}, 308, 247, u"stock", kLargeFont, kWhite));
  EXPECT_GT(Count(0x8B93AE, {308, 316, 608, 356}), 20);
}

TEST_F(Panel, AnEmptyListOfSongsSaysHowToAddChartsToo) {
  Draw();
  EXPECT_EQ(Count(0x8B93AE, {308, 316, 608, 336}), 0);
  lastSong = -1;
  songList.clear();
  Draw();
  EXPECT_GT(Count(0x8B93AE, {308, 316, 608, 356}), 20);
}

class CoursePanel : public Panel {
 protected:
  CoursePanel() {
    Rows({u"[MAKE NEW COURSE]", u"Night"});
    listCursor = 1;
    GameState = kStateCourses;
    CourseMode = true;
    songSelect.courseName = u"Night";
    SetSongs(3);
  }
  static void SetSongs(uint8_t count) {
    CourseSongs.assign(count, {});
    for (SongEntry& song : CourseSongs) {
      song.title = Text(u"■■");
      song.artist = u"goose";
    }
    numsongs = count;
  }
  // Course lines in which there is ink, from the top.
  static std::string Lines() {
    std::string lines;
    for (int32_t line = 0; line < 5; ++line) {
      lines += Count(kPaper, {310, 301 + 12 * line, 609, 311 + 12 * line}) > 0 ? 'x' : '.';
    }
    return lines;
  }
};

TEST_F(CoursePanel, NamesTheCourse) {
  songList[1].lengthMs = 543'000;
  Draw();
  EXPECT_TRUE(ShowsText({310, 240, 600, 252}, 310, 241, u"[COURSE MODE]", kSmallFont, kTeal));
  EXPECT_TRUE(ShowsText({355, 255, 600, 268}, 355, 256, u"Night", kRowFont, kWhite));
  EXPECT_EQ(SystemText(540, 282), "09:03");
}

TEST_F(CoursePanel, HasTheStarsOfItsLevel) {
  PaintSprite(kStarSprite);
  songList[1].playLevel = 1;
  Draw();
  EXPECT_EQ(Around(kSpriteRed), (Rect{308, 282, 320, 296}));
}

TEST_F(CoursePanel, TheNameShakesWhileTheWheelTurns) {
  songSelect.courseName = Text(u"■■");
  const auto leftOf = [] {
    Draw();
    return Around(kWhite, {350, 255, 608, 269}).left;
  };
  const int32_t still = leftOf();
  songSelect.listScroll = 1;
  int32_t moved = 0;
  for (int32_t frame = 0; frame < 20; ++frame) {
    const int32_t left = leftOf();
    EXPECT_GE(left, still);
    EXPECT_LT(left, still + 100);
    moved += left != still ? 1 : 0;
  }
  EXPECT_GT(moved, 10);
  songSelect.courseMaking = true;
  EXPECT_EQ(leftOf(), still);
}

TEST_F(CoursePanel, SongsStandTwelvePixelsApart) {
  Draw();
  EXPECT_EQ(Lines(), "xxx..");
  EXPECT_TRUE(ShowsText({310, 300, 609, 311}, 310, 301, u"[1] ■■ / goose", kRowFont, kPaper));
  EXPECT_TRUE(ShowsText({310, 325, 609, 336}, 310, 325, u"[3] ■■ / goose", kRowFont, kPaper));
}

// 6 songs are 6 \ 5 + 1 pages of a second each.
TEST_F(CoursePanel, MoreThanFiveSongsTurnTheirPages) {
  SetSongs(6);
  Draw();
  EXPECT_EQ(Lines(), "xxxxx");
  SetTime(kNow + 1000);
  Draw();
  EXPECT_EQ(Lines(), "x....");
  SetTime(kNow + 2000);
  Draw();
  EXPECT_EQ(Lines(), "xxxxx");
}

TEST_F(CoursePanel, BehindAMultipleOfFiveSongsComesAnEmptyPage) {
  SetSongs(10);
  SetTime(kNow + 2999);
  Draw();
  EXPECT_EQ(Lines(), ".....");
  SetTime(kNow + 3000);
  Draw();
  EXPECT_EQ(Lines(), "xxxxx");
}

TEST_F(CoursePanel, FiveSongsStandStill) {
  SetSongs(5);
  SetTime(kNow + 1500);
  Draw();
  EXPECT_EQ(Lines(), "xxxxx");
}

TEST_F(CoursePanel, TheSongThatIsBeingPickedBlinks) {
  songSelect.courseMaking = true;
  songSelect.courseNumSongs = 3;
  songSelect.courseSlot = 1;
  numsongs = 0;  // as a move on the lists leaves it
  SetTime(kNow + 99);
  Draw();
  EXPECT_EQ(Lines(), "xxx..");
  SetTime(kNow + 100);
  Draw();
  EXPECT_EQ(Lines(), "x.x..");
}

TEST_F(CoursePanel, ACountThatTheSongsDoNotReachIsCut) {
  CourseSongs.resize(1);
  Draw();
  EXPECT_EQ(Lines(), "x....");
}

TEST_F(CoursePanel, SongListsShowNoCourse) {
  GameState = kStateSongSelect;
  Draw();
  EXPECT_EQ(Count(kTeal, {308, 235, 600, 256}), 0);
}

TEST_F(Panel, TheTitlePictureFillsItsBox) {
  DDStage = Solid(640, 480, 0x203040);
  Draw();
  EXPECT_EQ(Around(0x203040), (Rect{304, 78, 496, 222}));
  EXPECT_EQ(Count(0x203040), 192 * 144);
}

TEST_F(Panel, ATitlePictureOfAnySizeIsBroughtToTheBox) {
  for (const auto& [width, height] : {std::pair{1, 1}, {100, 700}, {193, 145}, {1280, 960}}) {
    DDStage = Solid(width, height, 0x203040);
    Draw();
    EXPECT_EQ(Count(0x203040, {304, 78, 496, 222}), 192 * 144) << width;
  }
}

// 384 by 288: each pixel of the box is the mean of four.
TEST_F(Panel, ShrunkPixelsAreMeans) {
  DDStage = Solid(384, 288, 0);
  DDStage->Fill({0, 0, 1, 2}, 0x804020);
  Draw();
  EXPECT_EQ(Pixel(304, 78), 0x402010U);
  EXPECT_EQ(Pixel(305, 78), 0U);
}

TEST_F(Panel, ANewTitlePictureTakesThePlaceOfTheOldOne) {
  DDStage = Solid(640, 480, 0x203040);
  Draw();
  DDStage = Solid(640, 480, 0x506070);
  Draw();
  EXPECT_EQ(Count(0x506070), 192 * 144);
  CreateSurfaces();  // as when the display comes back
  Draw();
  EXPECT_EQ(Count(0x506070), 192 * 144);
}

TEST_F(Panel, WithoutATitlePictureTheDemoRuns) {
  SSNoStage = Solid(1152, 576, 0x203040);
  SSNoStage->Fill(DemoSprite(7), 0x506070);
  SetTime(kNow / 3600 * 3600 + 7 * 150);  // 24 frames of 150 ms
  Draw();
  EXPECT_EQ(Around(0x506070), (Rect{304, 78, 496, 222}));
  SetTime(kNow / 3600 * 3600 + 8 * 150);
  Draw();
  EXPECT_EQ(Around(0x203040), (Rect{304, 78, 496, 222}));
}

TEST_F(Panel, TheRowsNumberStandsAtTheTopRight) {
  Rows({u"a", u"b", u"c"});
  listCursor = 1;
  Draw();
  const int32_t left = 632 - LineWidth(u"1 / 2", kRowFont);
  EXPECT_TRUE(ShowsText({440, 12, 640, 28}, left, 14, u"1 / 2", kRowFont, 0xA8ACC0));
}

}  // namespace
}  // namespace qlm
