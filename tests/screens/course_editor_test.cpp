// The keys of the course editor, and the ways into it and out of it.
#include "screens/course_editor.h"

#include <cstdint>
#include <vector>

#include "base/paths.h"
#include "files/course_files.h"
#include "library/lists.h"
#include "library/song_list.h"
#include "screens/song_select.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "state/sounds.h"
#include "tests/screens/list_ground.h"

namespace qlm {
namespace {

SongEntry Song(TextView title, int32_t lengthMs = 0) {
  SongEntry song;
  song.title = title;
  song.path = Join(u"\\songs\\", title, u".bms");
  song.lengthMs = lengthMs;
  return song;
}

// What SaveCourse of another evening left.
Text CourseFile(TextView name) { return DataPath(Join(u"courselist\\", name, u".qcl")); }

class CourseEditor : public ListTest {
 protected:
  // The course list with the courses "A", of 4 stars and the songs one and two, and "B", of no songs.
  CourseEditor() {
    MakeFolders(DataPath(u"courselist"));
    Store(u"A", 4, {Song(u"one", 60'000), Song(u"two", 5'000)});
    Store(u"B", 0, {});
    UpdateCourseList();
    GameState = kStateCourses;
    CourseMode = true;
    for (const SE sound : {SE::kCursor, SE::kDecide, SE::kFade}) FillSound(sound);
  }

  static void Store(TextView name, uint8_t stars, std::vector<SongEntry> songs) {
    courseStars = stars;
    numsongs = static_cast<uint8_t>(songs.size());
    courseLength = LengthOfSongs(songs);
    CourseSongs = std::move(songs);
    ASSERT_TRUE(CourseSave(CourseFile(name)));
    ResetCourses();
  }

  // A course of so many songs, "0", "1" and so on, in the editor.
  static void Edit(int32_t songs) {
    Press(kKeyEnter);
    songSelect.courseNumSongs = static_cast<uint8_t>(songs);
    for (int32_t i = 0; i < songs; ++i) CourseSongs.push_back(Song(ToText(i)));
    Silence();
  }

  static void Silence() {
    for (const SE sound : {SE::kCursor, SE::kDecide, SE::kFade}) {
      SystemSound[static_cast<int32_t>(sound)]->Stop();
    }
  }

  // The titles of the course's songs, a point for one without a chart.
  static std::string Songs() {
    std::string titles;
    for (size_t i = 0; i < songSelect.courseNumSongs; ++i) {
      if (i > 0) titles += ' ';
      titles += CourseSongs[i].path.empty() ? "." : Utf8(CourseSongs[i].title);
    }
    return titles;
  }
};

// The ways in.

TEST_F(CourseEditor, EnterOnRowZeroMakesANewCourse) {
  CourseSongs.resize(3);
  songSelect.courseCursor = 1;
  Press(kKeyEnter);
  EXPECT_EQ(GameState, kStateEditCourse);
  EXPECT_TRUE(songSelect.courseMaking);
  EXPECT_EQ(songSelect.courseName, u"NEW COURSE");
  EXPECT_EQ(songSelect.courseLevel, 3);
  EXPECT_EQ(songSelect.courseNumSongs, 0);
  EXPECT_EQ(songSelect.courseCursor, -2);
  EXPECT_TRUE(CourseSongs.empty());
}

TEST_F(CourseEditor, SpaceOpensTheCourseInHand) {
  listCursor = 1;
  songSelect.courseName = u"of another row";
  songSelect.courseSlot = 7;
  songSelect.courseCursor = 1;
  Press(kKeySpace);
  EXPECT_EQ(GameState, kStateEditCourse);
  EXPECT_TRUE(songSelect.courseMaking);
  EXPECT_EQ(songSelect.courseName, u"A");
  EXPECT_EQ(songSelect.courseLevel, 4);
  EXPECT_EQ(Songs(), "one two");
  EXPECT_EQ(songSelect.courseSlot, 0);
  EXPECT_EQ(songSelect.courseCursor, -2);
  EXPECT_EQ(songSelect.courseCursorSaved, 1);
  EXPECT_EQ(message.up, false);
}

TEST_F(CourseEditor, SpaceDoesNothingOnRowZeroAndOnOtherLists) {
  Press(kKeySpace);
  EXPECT_EQ(GameState, kStateCourses);
  EXPECT_FALSE(songSelect.courseMaking);
  ShowCharts({u"x", u"y"});
  listCursor = 1;
  Press(kKeySpace);
  EXPECT_EQ(GameState, kStateSongSelect);
  GameState = kStateLists;
  Press(kKeySpace);
  EXPECT_EQ(GameState, kStateLists);
  EXPECT_FALSE(songSelect.courseMaking);
}

TEST_F(CourseEditor, NoPreviewBeginsBehindTheEditor) {
  BMSPreview = 1;
  PreviewDelay = 1;
  Press(kKeyDown);
  Press(kKeySpace);
  PreviewActive = false;
  RunTimers();
  EXPECT_FALSE(PreviewActive);
}

// The lines.

TEST_F(CourseEditor, UpAndDownMoveTheCursorWithASoundAndNoWrap) {
  Edit(1);
  struct Row {
    int32_t key;
    int32_t cursor;
  };
  for (const Row& row : {Row{kKeyDown, -1}, Row{kKeyDown, 0}, Row{kKeyDown, 1}, Row{kKeyUp, 0}}) {
    Silence();
    Press(row.key);
    EXPECT_EQ(songSelect.courseCursor, row.cursor);
    EXPECT_TRUE(Sounding(SE::kCursor));
    EXPECT_FALSE(Sounding(SE::kFade));
  }
}

TEST_F(CourseEditor, RightAndLeftChangeTheStarsOnTheirLine) {
  Edit(1);
  songSelect.courseCursor = -1;
  Press(kKeyRight);
  EXPECT_EQ(songSelect.courseLevel, 4);
  EXPECT_TRUE(Sounding(SE::kFade));
  Silence();
  for (const int32_t left : {3, 2, 1, 0, 0}) {
    Press(kKeyLeft);
    EXPECT_EQ(songSelect.courseLevel, left);
  }
  EXPECT_TRUE(Sounding(SE::kFade));
  songSelect.courseLevel = 254;
  Press(kKeyRight);
  EXPECT_EQ(songSelect.courseLevel, 255);
  Press(kKeyRight);
  EXPECT_EQ(songSelect.courseLevel, 255) << "no more fit into the file's byte";
}

TEST_F(CourseEditor, OnOtherLinesRightAndLeftOnlySound) {
  Edit(1);
  for (const int32_t line : {-2, 0, 1}) {
    for (const int32_t key : {kKeyRight, kKeyLeft}) {
      songSelect.courseCursor = line;
      Silence();
      Press(key);
      EXPECT_EQ(songSelect.courseLevel, 3) << line;
      EXPECT_TRUE(Sounding(SE::kFade)) << line;
    }
  }
}

TEST_F(CourseEditor, EnterOnTheStarsOnlySounds) {
  Edit(1);
  songSelect.courseCursor = -1;
  Press(kKeyEnter);
  EXPECT_EQ(GameState, kStateEditCourse);
  EXPECT_TRUE(Sounding(SE::kFade));
}

TEST_F(CourseEditor, EnterOnTheNameBeginsTheTyping) {
  Edit(0);
  Press(kKeyEnter);
  EXPECT_EQ(GameState, kStateEnterCourse);
  EXPECT_TRUE(songSelect.nameEntry);
  EXPECT_TRUE(Sounding(SE::kFade));
}

TEST_F(CourseEditor, EnterWaitsForTheCharacterOfTheOneBefore) {
  Edit(0);
  songSelect.nameEntry = true;
  Press(kKeyEnter);
  EXPECT_EQ(GameState, kStateEditCourse);
  EXPECT_TRUE(Sounding(SE::kFade));
}

TEST_F(CourseEditor, AnEatenEnterDoesNothingElse) {
  Edit(0);
  enterEaten = true;
  Press(kKeyEnter);
  EXPECT_FALSE(enterEaten);
  EXPECT_EQ(GameState, kStateEditCourse);
  EXPECT_FALSE(Sounding(SE::kFade));
}

TEST_F(CourseEditor, KeysWithoutAMeaningDoNothing) {
  Edit(1);
  for (const int32_t key : {kKeyTab, kKeySpace, kKeyF1, kKeyPageUp, kKeyPageDown, kKeyPad1, kKeyZ, 0, 400}) {
    Press(key);
  }
  EXPECT_EQ(GameState, kStateEditCourse);
  EXPECT_EQ(songSelect.courseCursor, -2);
  EXPECT_EQ(Songs(), "0");
}

// Songs.

TEST_F(CourseEditor, EnterOnTheAddLineMakesASlotAndShowsTheJukeboxes) {
  Edit(2);
  songSelect.courseCursor = 2;
  Press(kKeyEnter);
  EXPECT_EQ(GameState, kStateLists) << "8 for a moment";
  EXPECT_TRUE(Logged(u"[Load JukeList]"));
  EXPECT_TRUE(songSelect.courseMaking);
  EXPECT_EQ(songSelect.courseSlot, 2);
  EXPECT_EQ(Songs(), "0 1 .");
  EXPECT_TRUE(Sounding(SE::kFade));
}

TEST_F(CourseEditor, EnterOnASongPicksAnotherInItsPlace) {
  Edit(3);
  songSelect.courseCursor = 1;
  Press(kKeyEnter);
  EXPECT_EQ(GameState, kStateLists);
  EXPECT_EQ(songSelect.courseSlot, 1);
  EXPECT_EQ(Songs(), "0 1 2");
}

TEST_F(CourseEditor, With255SongsTheCountStays) {
  Edit(255);
  for (int32_t time = 0; time < 2; ++time) {
    songSelect.courseCursor = 255;
    Press(kKeyEnter);
    EXPECT_EQ(songSelect.courseNumSongs, 255);
    EXPECT_EQ(songSelect.courseSlot, 255);
    EXPECT_EQ(CourseSongs.size(), 256U) << "a slot that is not counted";
    Press(kKeyEsc);
  }
  EXPECT_EQ(GameState, kStateEditCourse);
  EXPECT_EQ(Utf8(CourseSongs[254].title), "254");
}

TEST_F(CourseEditor, ASongThatDidNotFitDoesNotComeBack) {
  Edit(255);
  CourseSongs.push_back(Song(u"picked too often"));
  CourseRemove(0);
  EXPECT_EQ(songSelect.courseNumSongs, 254);
  EXPECT_EQ(CourseSongs.size(), 254U);
  songSelect.courseCursor = 254;
  Press(kKeyEnter);
  EXPECT_TRUE(CourseSongs[254].path.empty());
}

TEST_F(CourseEditor, DeleteTakesTheSongInHand) {
  Edit(3);
  songSelect.courseCursor = 1;
  Press(kKeyDelete);
  EXPECT_EQ(Songs(), "0 2");
  EXPECT_EQ(CourseSongs.size(), 2U);
  EXPECT_TRUE(Sounding(SE::kFade));
  Press(kKeyDelete);
  EXPECT_EQ(Songs(), "0");
  Silence();
  Press(kKeyDelete);
  EXPECT_EQ(Songs(), "0") << "the cursor stands on the add line now";
  EXPECT_TRUE(Sounding(SE::kFade));
}

TEST_F(CourseEditor, DeleteOnTheNameAndTheStarsOnlySounds) {
  Edit(2);
  for (const int32_t line : {-2, -1}) {
    songSelect.courseCursor = line;
    Silence();
    Press(kKeyDelete);
    EXPECT_EQ(Songs(), "0 1");
    EXPECT_TRUE(Sounding(SE::kFade));
  }
}

TEST_F(CourseEditor, RemovalKeepsTheOrderAndKnowsItsBounds) {
  Edit(4);
  CourseRemove(0);
  EXPECT_EQ(Songs(), "1 2 3");
  CourseRemove(2);
  EXPECT_EQ(Songs(), "1 2");
  for (const int32_t index : {-1, -2, 2, 255}) CourseRemove(index);
  EXPECT_EQ(Songs(), "1 2");
}

TEST_F(CourseEditor, OverAnEmptyListNoSongIsTakenOut) {
  Edit(2);
  ClearList();
  CourseRemove(0);
  EXPECT_EQ(Songs(), "0 1");
}

// Saving.

TEST_F(CourseEditor, F10WritesTheCourseAndGoesBackToTheList) {
  Edit(0);
  CourseSongs = {Song(u"x", 61'000), Song(u"y", 2'000), Song(u"z", 300)};
  songSelect.courseNumSongs = 3;
  songSelect.courseName = u"MINE";
  songSelect.courseLevel = 9;
  courseTitle = u"of a course that was read before";
  songSelect.clearCheckRow = 5;
  log.clear();
  Press(kKeyF10);
  EXPECT_TRUE(Sounding(SE::kDecide));
  EXPECT_EQ(GameState, kStateCourses);
  EXPECT_FALSE(songSelect.courseMaking);
  EXPECT_EQ(songSelect.courseNumSongs, 0);
  EXPECT_EQ(numsongs, 0);
  EXPECT_TRUE(CourseSongs.empty());
  EXPECT_EQ(songSelect.clearCheckRow, 0);
  EXPECT_EQ(log, (std::vector<Text>{u"[CreateCourse]", u"Saved.", u"[UpdateCourseList]",
                                    u"3 course(s) has detected.", u"ListUpdate", u"OK"}));
  EXPECT_EQ(Titles(), "[MAKE NEW COURSE] A B MINE");
  EXPECT_EQ(listCursor, 3) << "the course that was saved";
  EXPECT_EQ(songList[3].playLevel, 9);
  EXPECT_EQ(songList[3].lengthMs, 63'300);
  // The file: 24 bytes of magic, 9 stars, 3 songs, no title, 63300 ms.
  EXPECT_EQ(ReadBytes(CourseFile(u"MINE")).substr(0, 32),
            std::string("qlmcourse2              \x09\x03\x00\x00\x44\xF7\x00\x00", 32));
  CourseLoad(CourseFile(u"MINE"), false);
  ASSERT_EQ(CourseSongs.size(), 4U);
  EXPECT_EQ(CourseSongs[1], Song(u"y", 2'000));
}

TEST_F(CourseEditor, F10TakesEmptySongsOutAndAsksForAnotherPress) {
  Edit(4);
  CourseSongs[1] = CourseSongs[3] = {};
  Press(kKeyF10);
  EXPECT_EQ(Songs(), "0 2");
  EXPECT_EQ(message.text, u"Null items has removed. please re-press F10 key");
  EXPECT_EQ(GameState, kStateEditCourse);
  EXPECT_FALSE(Sounding(SE::kDecide));
  EXPECT_FALSE(FileExists(CourseFile(u"NEW COURSE")));
  Press(kKeyF10);
  EXPECT_EQ(GameState, kStateCourses);
  EXPECT_TRUE(FileExists(CourseFile(u"NEW COURSE")));
}

TEST_F(CourseEditor, ASlotThatWasLeftEmptyIsTakenOut) {
  SaveAsJukebox(u"none");
  UpdateJukeList();
  UpdateCourseList();
  Edit(0);
  songSelect.courseCursor = 0;
  Press(kKeyEnter);
  Press(kKeyEsc);
  EXPECT_EQ(GameState, kStateEditCourse);
  EXPECT_EQ(Songs(), ".");
  Press(kKeyF10);
  EXPECT_EQ(Songs(), "");
  EXPECT_EQ(message.text, u"Null items has removed. please re-press F10 key");
  EXPECT_FALSE(FileExists(CourseFile(u"NEW COURSE")));
}

TEST_F(CourseEditor, ACourseWithoutSongsCanBeSaved) {
  Edit(0);
  Press(kKeyF10);
  EXPECT_EQ(ReadBytes(CourseFile(u"NEW COURSE")),
            std::string("qlmcourse2              \x03\x00\x00\x00\x00\x00\x00\x00", 32));
}

TEST_F(CourseEditor, RenamingMakesASecondFileAndTheOldOneStays) {
  listCursor = 1;
  const std::string before = ReadBytes(CourseFile(u"A"));
  Press(kKeySpace);
  songSelect.courseName = u"A2";
  Press(kKeyF10);
  EXPECT_EQ(Titles(), "[MAKE NEW COURSE] A A2 B");
  EXPECT_EQ(ReadBytes(CourseFile(u"A")), before);
  EXPECT_EQ(ReadBytes(CourseFile(u"A2")), before);
}

TEST_F(CourseEditor, AFileOfTheSameNameIsOverwrittenWithoutAQuestion) {
  Edit(0);
  songSelect.courseName = u"A";
  Press(kKeyF10);
  CourseLoad(CourseFile(u"A"), true);
  EXPECT_EQ(numsongs, 0);
  EXPECT_EQ(courseStars, 3);
}

TEST_F(CourseEditor, AnEmptyNameIsTheFileQcl) {
  Edit(1);
  songSelect.courseName = u"";
  Press(kKeyF10);
  EXPECT_TRUE(FileExists(CourseFile(u"")));
  EXPECT_EQ(GameState, kStateCourses);
}

TEST_F(CourseEditor, ACourseThatCannotBeWrittenStaysInTheEditor) {
  Edit(2);
  songSelect.courseName = Text(300, u'n');  // longer than any file system takes
  Press(kKeyF10);
  EXPECT_EQ(GameState, kStateEditCourse);
  EXPECT_TRUE(songSelect.courseMaking);
  EXPECT_EQ(message.text, Join(songSelect.courseName, u".qcl cannot be written"));
  EXPECT_EQ(Songs(), "0 1");
  EXPECT_FALSE(Logged(u"Saved."));
}

// The ways out.

TEST_F(CourseEditor, EscLeavesAndSavesNothing) {
  listCursor = 1;
  const std::string before = ReadBytes(CourseFile(u"A"));
  Press(kKeySpace);
  songSelect.courseLevel = 200;
  songSelect.courseCursor = 0;
  Press(kKeyDelete);
  SetNow(kStart + 50);
  Press(kKeyEsc);
  EXPECT_EQ(GameState, kStateCourses);
  EXPECT_FALSE(songSelect.courseMaking);
  EXPECT_TRUE(CourseMode);
  EXPECT_EQ(Titles(), "[MAKE NEW COURSE] A B");
  EXPECT_EQ(listCursor, 1);
  EXPECT_EQ(songSelect.courseName, u"A");
  EXPECT_EQ(songSelect.titleMain, u"A");
  EXPECT_EQ(songSelect.rowCursorTime, kStart + 50);
  EXPECT_EQ(ReadBytes(CourseFile(u"A")), before);
  EXPECT_EQ(closeWishes, 0);
}

TEST_F(CourseEditor, EscFromANewCourseLeadsToItsRow) {
  songSelect.courseCursorSaved = 2;
  Edit(1);
  Press(kKeyEsc);
  EXPECT_EQ(listCursor, 0);
  EXPECT_EQ(Titles(), "[MAKE NEW COURSE] A B");
}

// Picking, on the lists.

class CoursePick : public CourseEditor {
 protected:
  // The jukebox "box" with the songs X and Y; the editor's slot 0 waits for one.
  CoursePick() {
    ShowCharts({u"X", u"Y"});
    SaveAsJukebox(u"box");
    UpdateJukeList();
    UpdateCourseList();
    GameState = kStateCourses;
    Edit(0);
    songSelect.courseCursor = 0;
    Press(kKeyEnter);
  }
};

TEST_F(CoursePick, ASongOfAJukeboxIsCopiedWhole) {
  ASSERT_EQ(Titles(), "box");
  Press(kKeyEnter);
  ASSERT_EQ(GameState, kStateSongSelect);
  ASSERT_EQ(Titles(), "X Y");
  Press(kKeyDown);
  const SongEntry picked = songList[1];
  PreviewActive = true;
  Silence();
  Press(kKeyEnter);
  EXPECT_EQ(GameState, kStateEditCourse);
  EXPECT_EQ(CourseSongs[0], picked);
  EXPECT_EQ(Songs(), "Y");
  EXPECT_FALSE(PreviewActive);
  EXPECT_TRUE(Sounding(SE::kFade));
  EXPECT_EQ(songSelect.deciding, 0);
  EXPECT_EQ(songSelect.courseName, u"NEW COURSE") << "moves on the lists leave it alone";
}

TEST_F(CoursePick, AChartThatIsGoneIsTakenAllTheSame) {
  Press(kKeyEnter);
  songList[0].path = u"\\gone.bms";
  Press(kKeyEnter);
  EXPECT_EQ(CourseSongs[0].path, u"\\gone.bms");
}

TEST_F(CoursePick, EscLeadsBackFromTheJukeboxesAndFromTheSongs) {
  for (const bool inSongs : {false, true}) {
    if (inSongs) {
      GameState = kStateLists;
      Press(kKeyRight);
      ASSERT_EQ(GameState, kStateSongSelect);
    }
    Press(kKeyEsc);
    EXPECT_EQ(GameState, kStateEditCourse);
    EXPECT_EQ(Songs(), ".");
  }
  EXPECT_EQ(closeWishes, 0);
  BMSPreview = 1;
  RunTimers();
  EXPECT_FALSE(PreviewActive);
}

TEST_F(CoursePick, LeftLeadsFromTheSongsBackToTheJukeboxes) {
  Press(kKeyEnter);
  Press(kKeyLeft);
  EXPECT_EQ(GameState, kStateLists);
  EXPECT_TRUE(songSelect.courseMaking);
}

TEST_F(CoursePick, TabDoesNothing) {
  Press(kKeyTab);
  EXPECT_EQ(GameState, kStateLists);
  EXPECT_TRUE(CourseMode);
}

TEST_F(CoursePick, ShiftAndEnterOpenAJukeboxInsteadOfPlayingIt) {
  KeyHeld[kKeyLeftShift] = true;
  Press(kKeyEnter);
  KeyHeld[kKeyLeftShift] = false;
  EXPECT_EQ(GameState, kStateSongSelect);
  EXPECT_FALSE(EndlessRun);
  EXPECT_EQ(songSelect.deciding, 0);
}

// The frame's turn.

TEST_F(CourseEditor, AHeldArrowRepeatsInTheEditor) {
  Edit(3);
  KeyHeld[kKeyDown] = true;
  ListTurn();
  SetNow(kStart + 300);
  ListTurn();
  EXPECT_EQ(songSelect.courseCursor, -1) << "after 300 ms the first step";
  SetNow(kStart + 349);
  ListTurn();
  EXPECT_EQ(songSelect.courseCursor, -1);
  SetNow(kStart + 350);
  ListTurn();
  EXPECT_EQ(songSelect.courseCursor, 0) << "then one every 50 ms";
  for (uint32_t ms = 400; ms <= 800; ms += 50) {
    SetNow(kStart + ms);
    ListTurn();
  }
  EXPECT_EQ(songSelect.courseCursor, 3) << "each frame keeps the cursor on a line";
  GameState = kStateEnterCourse;
  songSelect.courseCursor = -2;
  SetNow(kStart + 900);
  ListTurn();
  EXPECT_EQ(songSelect.courseCursor, -2) << "not while the name is typed";
}

}  // namespace
}  // namespace qlm
