// The search within a list, with the keys and characters that a window sends.
#include "screens/song_find.h"

#include "base/hooks.h"
#include "base/paths.h"
#include "files/course_files.h"
#include "library/jukebox.h"
#include "library/lists.h"
#include "library/song_list.h"
#include "platform/clock.h"
#include "platform/kana.h"
#include "platform/timers.h"
#include "screens/list_cursor.h"
#include "screens/list_rows.h"
#include "screens/screen_table.h"
#include "screens/song_select.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/keys.h"
#include "state/message.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_find.h"
#include "state/song_select.h"
#include "tests/screens/list_ground.h"

namespace qlm {
namespace {

class SongFindTest : public ListTest {
 protected:
  SongFindTest() {
    hooks.character = [](char16_t unit) {
      if (void (*const routine)(int32_t) = ScreenOf(GameState).character) routine(unit);
    };
  }

  static void Type(TextView words) {
    for (const char16_t unit : words) hooks.character(unit);
  }
  static void Find(TextView words) {
    Press(kKeySlash);
    Type(words);
  }
  static void Enter() {
    Press(kKeyEnter);
    hooks.character(13);
  }
  static void Esc() {
    Press(kKeyEsc);
    hooks.character(27);
  }
  static std::string Held() { return HeldRow() == nullptr ? "-" : Utf8(HeldRow()->title); }
};

TEST_F(SongFindTest, RowsThatHoldTheWordsRemainAsOneTypes) {
  ShowCharts({u"apple", u"banana", u"apricot", u"grape"});
  Find(u"ap");
  EXPECT_EQ(Titles(), "apple apricot grape");
  EXPECT_EQ(lastSong, 2);
  Type(u"r");
  EXPECT_EQ(Titles(), "apricot");
  Type(u"\b");
  EXPECT_EQ(Titles(), "apple apricot grape");
  Type(u"\b\b\b");
  EXPECT_EQ(Titles(), "apple banana apricot grape");
}

TEST_F(SongFindTest, TitleArtistAndGenreAreLookedAt) {
  ShowCharts({u"a", u"b", u"c", u"d"});
  songList[1].artist = u"Goose";
  songList[2].genre = u"GOOSE STEP";
  songList[3].path += u"goose";
  Find(u"goose");
  EXPECT_EQ(Titles(), "b c");
  Type(u" step");
  EXPECT_EQ(Titles(), "c");
  Type(u"c");
  EXPECT_EQ(Titles(), "") << "no word reaches from one field into the next";
}

TEST_F(SongFindTest, KanaAndLatinLettersFindEachOther) {
  ShowCharts({u"羽ペンの行進", u"hane no uta", u"はねぺん", u"ﾊﾈ"});
  Find(u"はね");
  EXPECT_EQ(Titles(), "hane no uta はねぺん ﾊﾈ");
  Esc();
  Find(u"pen");
  EXPECT_EQ(Titles(), "羽ペンの行進 はねぺん");
}

TEST_F(SongFindTest, KanjiAreFoundByTheirReadings) {
  if (!platform::ReadKanji(u"行進")) GTEST_SKIP() << "no dictionary of readings is installed";
  ShowCharts({u"羽ペンの行進", u"青写真"});
  Find(u"koush");
  EXPECT_EQ(Titles(), "");
  ListTurn();
  EXPECT_EQ(Titles(), "羽ペンの行進");
  EXPECT_EQ(Held(), "羽ペンの行進");
  Type(u"\b\b\b\b\b");
  Type(u"aoja");
  EXPECT_EQ(Titles(), "青写真") << "a reading that is known counts at once";
}

TEST_F(SongFindTest, EscGivesTheListBackWithTheRowInHand) {
  ShowCharts({u"apple", u"banana", u"apricot", u"grape"});
  listCursor = 1;
  chexec();
  Find(u"ap");
  EXPECT_EQ(Held(), "apricot") << "the next one behind the row that was in hand";
  Esc();
  EXPECT_EQ(Titles(), "apple banana apricot grape");
  EXPECT_EQ(listCursor, 2);
  EXPECT_EQ(songSelect.titleMain, u"apricot");
  EXPECT_EQ(closeWishes, 0);
  Esc();
  EXPECT_EQ(closeWishes, 1) << "with no line it ends the program as ever";
}

TEST_F(SongFindTest, TheRowInHandStaysWhereItHoldsTheWords) {
  ShowCharts({u"apple", u"banana", u"apricot", u"grape"});
  listCursor = 3;
  chexec();
  songSelect.rowCursorTime = 5;
  Find(u"ap");
  EXPECT_EQ(Held(), "grape");
  EXPECT_EQ(listCursor, 2);
  EXPECT_EQ(songSelect.rowCursorTime, 5U) << "nothing was changed to";
  Type(u"p");
  EXPECT_EQ(Held(), "apple") << "around the end";
}

TEST_F(SongFindTest, EnterKeepsTheFoundRowsInUse) {
  ShowCharts({u"apple", u"banana", u"apricot", u"grape"});
  Find(u"ap");
  Enter();
  EXPECT_FALSE(songFind.typing);
  EXPECT_EQ(songSelect.deciding, 0) << "the Enter that ends the typing decides nothing";
  enterEaten = false;  // as the release of the key leaves it
  Press(kKeyDown);
  EXPECT_EQ(Held(), "apricot");
  Press(kKeyUp);
  Press(kKeyUp);
  EXPECT_EQ(Held(), "grape");
  Press(kKeyEsc);
  EXPECT_EQ(Titles(), "apple banana apricot grape") << "Esc gives the list back before it ends the program";
  EXPECT_EQ(Held(), "grape");
  EXPECT_EQ(closeWishes, 0);
}

TEST_F(SongFindTest, TheLineOpensAgainWithItsWords) {
  ShowCharts({u"apple", u"banana", u"apricot"});
  Find(u"ap");
  Enter();
  Find(u"r");
  EXPECT_EQ(songFind.words, u"apr");
  EXPECT_EQ(Titles(), "apricot");
}

TEST_F(SongFindTest, NoKeyOfTheListActsWhileWordsAreTyped) {
  ShowCharts({u"apple", u"banana", u"apricot"});
  Find(u"a");
  for (const int32_t state : {kStateSongSelect, kStateLists, kStateCourses}) {
    EXPECT_EQ(ScreenOf(state).key, nullptr);
    EXPECT_EQ(ScreenOf(state).mouse, nullptr);
    EXPECT_FALSE(ScreenOf(state).settingKeys);
  }
  EXPECT_NE(ScreenOf(kStatePlay).key, nullptr);
}

TEST_F(SongFindTest, TheSlashThatOpensTheLineIsNotTyped) {
  ShowCharts({u"a/b", u"c"});
  for (const int32_t key : {kKeySlash, kKeyPadSlash}) {
    KeyHeld[key] = true;
    hooks.keyDown(key);
    Type(u"//");
    EXPECT_EQ(songFind.words, u"");
    KeyHeld[key] = false;
    Type(u"/");
    EXPECT_EQ(songFind.words, u"/");
    EXPECT_EQ(Titles(), "a/b");
    Esc();
    enterEaten = false;
  }
}

TEST_F(SongFindTest, WhereNothingIsFoundEnterWaitsForOtherWords) {
  ShowCharts({u"apple", u"banana"});
  listCursor = 1;
  chexec();
  Find(u"x");
  EXPECT_EQ(lastSong, -1);
  EXPECT_EQ(HeldRow(), nullptr);
  Enter();
  EXPECT_TRUE(songFind.typing);
  ListTurn();
  Type(u"\b");
  EXPECT_EQ(Held(), "banana");
  EXPECT_EQ(songSelect.titleMain, u"banana");
  Type(u"x");
  Esc();
  EXPECT_EQ(Titles(), "apple banana");
  EXPECT_EQ(Held(), "banana");
}

TEST_F(SongFindTest, AnEmptyLineChangesNothing) {
  ShowCharts({u"apple", u"banana"});
  const std::vector<SongEntry> rows = songList;
  songSelect.rowCursorTime = 5;
  for (const char16_t end : {u'\r', u'\x1B'}) {
    Find(u"");
    EXPECT_TRUE(songFind.typing);
    hooks.character(end);
    EXPECT_FALSE(songFind.typing);
    EXPECT_FALSE(songFind.filtered);
    EXPECT_EQ(songList, rows);
  }
  EXPECT_EQ(songSelect.rowCursorTime, 5U);
}

TEST_F(SongFindTest, MarksThatChangeMeanwhileAreKept) {
  ShowCharts({u"apple", u"banana", u"apricot"});
  songCleared[1] = true;
  Find(u"apr");
  Enter();
  songCleared[0] = songHasRecord[0] = true;
  Press(kKeyEsc);
  EXPECT_EQ(songCleared, (std::vector<bool>{false, true, true}));
  EXPECT_EQ(songHasRecord, (std::vector<bool>{false, false, true}));
}

TEST_F(SongFindTest, TheClearCheckLooksAtTheFoundRowsAndGoesOnBehind) {
  ShowCharts({u"apple", u"banana", u"apricot"});
  songSelect.clearCheckRow = 2;
  Find(u"apr");
  EXPECT_EQ(songSelect.clearCheckRow, 0);
  Esc();
  EXPECT_EQ(songSelect.clearCheckRow, 2);
}

TEST_F(SongFindTest, ASortSortsAllAndKeepsWhatWasFound) {
  ShowCharts({u"cap", u"banana", u"ape", u"bap"});
  songCleared[2] = true;
  Find(u"ap");
  Enter();
  Press(kKeyPad3);
  EXPECT_EQ(Titles(), "ape bap cap");
  EXPECT_EQ(songCleared, (std::vector<bool>{true, false, false}));
  EXPECT_EQ(listCursor, 0) << "the cursor stays";
  Press(kKeyEsc);
  EXPECT_EQ(Titles(), "ape banana bap cap");
  EXPECT_EQ(listCursor, 0);
}

TEST_F(SongFindTest, AFoundJukeboxIsOpenedAndTheListOfThemComesBackAtItsRow) {
  for (const TextView name : {u"first", u"second", u"third"}) {
    ShowCharts({Join(name, u" song")});
    SaveAsJukebox(name);
  }
  UpdateJukeList();
  GameState = kStateLists;
  Find(u"third");
  EXPECT_EQ(Titles(), "third");
  Enter();
  Press(kKeyEnter);
  EXPECT_EQ(GameState, kStateSongSelect);
  EXPECT_EQ(Titles(), "third song");
  EXPECT_FALSE(songFind.filtered) << "another list has no search";
  Press(kKeyLeft);
  EXPECT_EQ(Titles(), "first second third");
  EXPECT_EQ(Held(), "third");
}

TEST_F(SongFindTest, NoListFileIsChanged) {
  ShowCharts({u"apple", u"banana"});
  const Text path = SaveAsJukebox(u"box");
  const std::string before = ReadBytes(path);
  UpdateJukeList();
  GameState = kStateLists;
  Press(kKeyEnter);
  Find(u"ban");
  Enter();
  Press(kKeyPad3);
  Press(kKeyLeft);
  EXPECT_EQ(ReadBytes(path), before);
}

TEST_F(SongFindTest, TheRowThatMakesACourseAlwaysStays) {
  MakeFolders(DataPath(u"courselist"));
  for (const TextView name : {u"one", u"two"}) {
    numsongs = 0;
    ASSERT_TRUE(CourseSave(DataPath(Join(u"courselist\\", name, u".qcl"))));
  }
  UpdateCourseList();
  GameState = kStateCourses;
  CourseMode = true;
  listCursor = 0;
  Find(u"two");
  EXPECT_EQ(Titles(), "[MAKE NEW COURSE] two");
  EXPECT_EQ(Held(), "two");
  Type(u"x");
  EXPECT_EQ(Titles(), "[MAKE NEW COURSE]");
  Type(u"\b");
  Enter();
  Press(kKeySpace);
  EXPECT_EQ(GameState, kStateEditCourse);
  EXPECT_EQ(songSelect.courseCursorSaved, 2) << "its row in the whole list";
}

TEST_F(SongFindTest, AFolderThatIsDroppedEndsTheSearch) {
  ShowCharts({u"apple", u"banana"});
  Find(u"ban");
  ShowDroppedFolder(Join(AppPath, u"\\song"));
  EXPECT_EQ(Titles(), "apple banana");
  EXPECT_FALSE(songFind.typing);
  EXPECT_FALSE(songFind.filtered);
}

TEST_F(SongFindTest, ABusyListOpensNoLine) {
  ShowCharts({u"apple", u"banana"});
  selectLocked = true;
  Press(kKeySlash);
  EXPECT_FALSE(songFind.typing);
  selectLocked = false;
  ClearList();
  Press(kKeySlash);
  EXPECT_FALSE(songFind.typing) << "an empty one neither";
}

TEST_F(SongFindTest, TheFoundRowIsPlayed) {
  DEMOMode = true;
  BMSPreview = 0;
  RunFrames(10, [](int32_t) {
    if (GameState == kStateResults) LaneDown[0] = true;
  });
  ShowCharts({u"apple", u"banana", u"apricot"});
  Find(u"apr");
  Enter();
  Press(kKeyEnter);
  RunTimers();
  EXPECT_EQ(LinesBeginning(u"[BMSLoad] 2.bms"), 1);
  EXPECT_EQ(GameState, kStateSongSelect);
  EXPECT_EQ(Titles(), "apricot") << "the part is in use behind the play, too";
}

// The row that is being loaded goes to another place of the list, where the load does not look for it.
TEST_F(SongFindTest, APreviewWhoseRowMovesBeginsAnew) {
  ShowCharts({u"apple", u"banana"});
  listCursor = 1;
  chexec();
  StopPreviewTimer();
  previewLoading = true;
  Find(u"ban");
  previewLoading = false;
  EXPECT_EQ(Held(), "banana");
  BMSPreview = 1;
  platform::UseVirtualClock(platform::Now() + 1001);
  platform::RunDueTimers();
  EXPECT_EQ(LinesBeginning(u"[BMSLoad] 1.bms"), 1);
}

TEST_F(SongFindTest, CharactersOfTwoUnitsGoAsOne) {
  ShowCharts({u"apple"});
  Find(u"a\xD83C\xDFB5\b");
  EXPECT_EQ(songFind.words, u"a");
}

TEST_F(SongFindTest, TheLineTakesSixtyUnits) {
  ShowCharts({Text(70, u'a')});
  Find(Text(70, u'a'));
  EXPECT_EQ(songFind.words, Text(60, u'a'));
}

}  // namespace
}  // namespace qlm
