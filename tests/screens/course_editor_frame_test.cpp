// The picture of the course editor, read back letter by letter.
#include "screens/course_editor_frame.h"

#include <cstdint>
#include <string>

#include "base/hooks.h"
#include "screens/list_text.h"
#include "state/courses.h"
#include "state/session.h"
#include "state/song_select.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "tests/play/play_test.h"
#include "tests/screens/letters.h"

namespace qlm {
namespace {

Surface* shown = nullptr;  // the last frame

// A moment at which the line in hand shows: 200 ms into its half second.
constexpr uint32_t kNow = 1'000'200;

SongEntry Song(TextView title, TextView artist, int32_t level) {
  SongEntry song;
  song.title = title;
  song.artist = artist;
  song.playLevel = level;
  return song;
}

class CourseEditorFrame : public PlayTest {
 protected:
  CourseEditorFrame() {
    GiveReadableLetters();
    DDPrimary = std::make_shared<Surface>(640, 480);
    shown = &frame_;
    hooks.framePresented = [] { shown->Copy(0, 0, *DDBack, kScreen); };
    GameState = kStateEditCourse;
    songSelect.courseMaking = true;
    songSelect.courseName = u"MINE";
    songSelect.courseLevel = 3;
    Take({Song(u"March", u"us", 7), Song(u"Waltz", u"them", 12)});
  }
  ~CourseEditorFrame() override { ForgetLines(); }

  static void Take(std::vector<SongEntry> songs) {
    songSelect.courseNumSongs = static_cast<uint8_t>(songs.size());
    CourseSongs = std::move(songs);
  }

  void Draw(int32_t cursor, uint32_t now = kNow) {
    SetNow(now);
    songSelect.courseCursor = cursor;
    mEditCourse();
  }
  std::string At(int32_t x, int32_t y) const { return TextAt(frame_, x, y, 38); }
  // Pixels that the rectangle does not have in common with that of a frame without its text.
  int64_t Inked(const Rect& part, const Surface& without) const {
    int64_t pixels = 0;
    for (int32_t y = part.top; y < part.bottom; ++y) {
      for (int32_t x = part.left; x < part.right; ++x)
        pixels += frame_.Pixel(x, y) != without.Pixel(x, y) ? 1 : 0;
    }
    return pixels;
  }

  Surface frame_{640, 480};
};

TEST_F(CourseEditorFrame, EveryLineStandsAtItsPlace) {
  Draw(-2);
  EXPECT_EQ(TextAt(frame_, 0, 10, 30), "quillmarch COURSE EDITOR");
  EXPECT_EQ(TextAt(frame_, 30, 30, 13), "COURSE NAME:");
  EXPECT_EQ(At(134, 30), "MINE");
  EXPECT_EQ(TextAt(frame_, 30, 45, 13), "STARS :");
  EXPECT_EQ(At(134, 45), "***");
  EXPECT_EQ(TextAt(frame_, 30, 90, 37), "001. [7] March");
  EXPECT_EQ(At(330, 90), "/ us");
  EXPECT_EQ(TextAt(frame_, 30, 105, 37), "002. [12] Waltz");
  EXPECT_EQ(At(330, 105), "/ them");
  EXPECT_EQ(At(30, 120), "[ A D D   N E W   S O N G ]");
}

TEST_F(CourseEditorFrame, TitlesAreCutAt27LettersOfEightPixels) {
  Take({Song(u"abcdefghijklmnopqrstuvwxyz0123456789", u"us", 7)});
  Draw(-2);
  EXPECT_EQ(TextAt(frame_, 30, 90, 37), "001. [7] abcdefghijklmnopqrstuvwxyz0") << "300 \\ 8 - 10";
}

TEST_F(CourseEditorFrame, TheMarkStandsBesideItsLine) {
  struct Row {
    int32_t cursor;
    int32_t y;
  };
  for (const Row& row : {Row{-2, 30}, Row{-1, 45}, Row{0, 90}, Row{1, 105}, Row{2, 120}}) {
    Draw(row.cursor);
    for (const int32_t y : {30, 45, 90, 105, 120}) {
      EXPECT_EQ(TextAt(frame_, 10, y, 2), y == row.y ? ">>" : "") << row.cursor << " " << y;
    }
  }
}

TEST_F(CourseEditorFrame, TheCursorIsBroughtToALine) {
  Draw(-9);
  EXPECT_EQ(songSelect.courseCursor, -2);
  Draw(9);
  EXPECT_EQ(songSelect.courseCursor, 2) << "the line that adds";
}

TEST_F(CourseEditorFrame, TheLineInHandIsLeftOutForTheFirst101MsOfEachHalfSecond) {
  struct Line {
    int32_t cursor;
    int32_t y;
    std::string text;
  };
  const Line lines[] = {{-2, 30, "COURSE NAME:"},
                        {-1, 45, "STARS :"},
                        {0, 90, "001. [7] March"},
                        {1, 105, "002. [12] Waltz"},
                        {2, 120, "[ A D D   N E W   S O N G ]"}};
  for (const Line& line : lines) {
    for (const uint32_t ms : {0U, 100U, 101U, 499U, 500U, 600U, 601U}) {
      Draw(line.cursor, 1'000'000 + ms);
      const bool out = ms % 500 <= 100;
      for (const Line& other : lines) {
        const bool left = out && other.cursor == line.cursor;
        const int32_t letters = other.cursor < 0 ? 13 : 37;
        EXPECT_EQ(TextAt(frame_, 30, other.y, letters), left ? "" : other.text) << line.cursor << " " << ms;
      }
      EXPECT_EQ(At(134, 30), "MINE") << "the values never blink";
      EXPECT_EQ(At(134, 45), "***");
      EXPECT_EQ(At(330, 90), out && line.cursor == 0 ? "" : "/ us");
    }
  }
}

TEST_F(CourseEditorFrame, TheMarkBehindTheNameShowsInTheSecondHalfOfEachSecondOfTyping) {
  GameState = kStateEnterCourse;
  for (const uint32_t ms : {0U, 499U, 500U, 999U}) {
    Draw(-2, 1'000'000 + ms);
    EXPECT_EQ(At(134, 30), ms >= 500 ? "MINE_" : "MINE") << ms;
  }
  GameState = kStateEditCourse;
  Draw(-2, 1'000'700);
  EXPECT_EQ(At(134, 30), "MINE");
}

TEST_F(CourseEditorFrame, TheKeysSwayByAPixelEachTenthOfASecond) {
  for (const uint32_t tenth : {0U, 1U, 2U, 3U, 4U}) {
    Draw(-2, 1'000'000 + 100 * tenth);
    EXPECT_EQ(TextAt(frame_, 400 + static_cast<int32_t>(tenth % 4), 10, 30), "[ESC]Exit [F10]Save") << tenth;
  }
}

TEST_F(CourseEditorFrame, TheHelpTellsOfTheLineInHand) {
  // Five texts, each unlike the others.
  std::vector<std::string> seen;
  const auto look = [&](int32_t state, int32_t cursor) {
    GameState = state;
    Draw(cursor);
    std::string ink;
    for (int32_t y = 430; y < 442; ++y) {
      for (int32_t x = 0; x < 640; ++x) ink += std::to_string(frame_.Pixel(x, y)) + ' ';
    }
    for (const std::string& other : seen) EXPECT_NE(ink, other) << state << " " << cursor;
    seen.push_back(ink);
  };
  look(kStateEditCourse, -2);
  look(kStateEnterCourse, -2);
  look(kStateEditCourse, -1);
  look(kStateEditCourse, 0);
  look(kStateEditCourse, 2);
  GameState = kStateEditCourse;
}

TEST_F(CourseEditorFrame, LettersThatTheBitmapFontLacksStandInTheOutlineFont) {
  Take({Song(u"", u"", 7)});
  Draw(-2);
  Surface without(640, 480);
  without.Copy(0, 0, frame_, kScreen);
  Take({Song(u"羽A", u"鵞鳥B", 7)});
  Draw(-2);
  EXPECT_EQ(TextAt(frame_, 30, 90, 37), "001. [7]   A") << "a kanji has two cells";
  EXPECT_EQ(At(330, 90), "/     B");
  EXPECT_GT(Inked({102, 90, 118, 106}, without), 20);
  EXPECT_GT(Inked({346, 90, 378, 106}, without), 40);
  songSelect.courseName = u"羽";
  GameState = kStateEnterCourse;
  Draw(-2, 1'000'500);
  EXPECT_EQ(At(134, 30), "  _");
}

// 27 cells have room for 13 kanji, which are 15 pixels wide: from 102 to 297. 36 cells have room for 18: from
// 346 to 616.
TEST_F(CourseEditorFrame, AWideTitleIsCutAtAsManyCells) {
  Take({Song(u"", u"", 7)});
  Draw(-2);
  Surface without(640, 480);
  without.Copy(0, 0, frame_, kScreen);
  Take({Song(Text(40, u'羽'), Text(40, u'鳥'), 7)});
  Draw(-2);
  EXPECT_EQ(At(330, 90), "/");
  EXPECT_GT(Inked({283, 90, 297, 105}, without), 0);
  EXPECT_EQ(Inked({297, 90, 346, 105}, without), 0);
  EXPECT_GT(Inked({602, 90, 616, 105}, without), 0);
  EXPECT_EQ(Inked({616, 90, 640, 105}, without), 0);
}

// A screen of songs whose titles and artists are in six pieces of kana, none of them twice.
TEST_F(CourseEditorFrame, FramesLayNothingOutAgain) {
  std::vector<SongEntry> songs;
  char16_t kana = u'\u3041';
  const auto pieces = [&] {
    Text text;
    for (int32_t piece = 0; piece < 3; ++piece) text += Join(Text(1, kana++), u" ");
    return text;
  };
  for (int32_t song = 0; song < 25; ++song) songs.push_back(Song(pieces(), pieces(), 1));
  Take(songs);
  Draw(-2);
  Draw(-1);
  const int64_t before = LinesLaidOut();
  for (int32_t frame = 0; frame < 5; ++frame) Draw(-1);
  EXPECT_EQ(LinesLaidOut(), before);
}

TEST_F(CourseEditorFrame, TheSongsBehindThe25thStandBelowTheScreen) {
  std::vector<SongEntry> songs(255, Song(u"t", u"a", 1));
  Take(songs);
  Draw(254);
  EXPECT_EQ(TextAt(frame_, 30, 90 + 15 * 24, 20), "025. [1] t");
  EXPECT_EQ(songSelect.courseCursor, 254);
}

TEST_F(CourseEditorFrame, StarsAndNamesThatRunOffTheScreenAreCut) {
  songSelect.courseLevel = 255;
  songSelect.courseName = Text(500, u'N');
  Draw(-2);
  EXPECT_EQ(TextAt(frame_, 134, 45, 63), std::string(63, '*'));
  EXPECT_EQ(TextAt(frame_, 134, 30, 63), std::string(63, 'N'));
}

TEST_F(CourseEditorFrame, WithoutAFontTheSongsAreLeftOut) {
  SysFontW = 0;
  SkinFile[1] = nullptr;
  Draw(0);
  EXPECT_EQ(At(30, 90), "");
}

TEST_F(CourseEditorFrame, ThePaperIsQuiet) {
  Draw(2);
  // The two brightest of the paper's colours, apart from the margin: its ground and its squares.
  const platform::Colour ground = frame_.Pixel(200, 300);
  const platform::Colour square = frame_.Pixel(210, 300);
  for (const int shift : {0, 8, 16}) {
    const auto g = static_cast<int32_t>(ground >> shift & 255);
    const auto s = static_cast<int32_t>(square >> shift & 255);
    EXPECT_GT(s, g);
    EXPECT_LE(s - g, 20) << "8 of 100";
  }
}

TEST_F(CourseEditorFrame, TheMusicOfTheListsComesBackBy50AFrame) {
  FillSound(SE::kSelectMusic);
  SelectVolume = -1500;
  Draw(-2);
  EXPECT_EQ(SelectVolume, -1450);
  SelectVolume = -30;
  Draw(-2);
  EXPECT_EQ(SelectVolume, 0);
  Draw(-2);
  EXPECT_EQ(SelectVolume, 0);
  SelectVolume = -1500;
  previewRunning = true;
  Draw(-2);
  EXPECT_EQ(SelectVolume, -1500);
}

}  // namespace
}  // namespace qlm
