// A course is made, named, filled, saved, found again and changed, with the keys and characters that the
// window sends.
#include <string_view>

#include "base/paths.h"
#include "files/course_files.h"
#include "input/input.h"
#include "library/lists.h"
#include "shell/main_form.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "tests/screens/list_ground.h"

namespace qlm {
namespace {

// The jukebox "box" with the songs X, Y and Z, and no course; the list of jukeboxes is up.
class CourseFlow : public ListTest {
 protected:
  CourseFlow() {
    ConnectHooks();
    MakeFolders(DataPath(u"courselist"));
    ShowCharts({u"X", u"Y", u"Z"});
    SaveAsJukebox(u"box");
    UpdateCourseList();
    UpdateJukeList();
    GameState = kStateLists;
  }

  // One press: the key, behind it its character, and the release.
  static void Key(int32_t key, char16_t character = 0) {
    DispatchKey(key, true);
    if (character != 0) Form_KeyPress(character);
    DispatchKey(key, false);
  }
  static void Enter() { Key(kKeyEnter, 13); }
  static void Esc() { Key(kKeyEsc, 27); }
  static void Type(std::string_view letters) {
    for (const char letter : letters) Key(kKeyZ, static_cast<char16_t>(letter));
  }
  static void Down(int32_t times) {
    for (int32_t i = 0; i < times; ++i) Key(kKeyDown);
  }

  // From the editor's line for one more song.
  static void Add(int32_t song) {
    Enter();
    Enter();
    Down(song);
    Enter();
    ASSERT_EQ(GameState, kStateEditCourse);
  }
};

TEST_F(CourseFlow, MadeNamedFilledSavedFoundAndChanged) {
  Key(kKeyTab);
  ASSERT_EQ(GameState, kStateCourses);
  Enter();
  ASSERT_EQ(GameState, kStateEditCourse);

  // "NEW COURSE" becomes "NEW DAY".
  Enter();
  ASSERT_EQ(GameState, kStateEnterCourse);
  for (int32_t letter = 0; letter < 6; ++letter) Key(14, 8);
  Type("DA?Y");
  EXPECT_EQ(message.text, u"sorry, can't use ? for filename.");
  Enter();
  ASSERT_EQ(GameState, kStateEditCourse) << "the Enter that ends the typing does not begin it again";
  EXPECT_EQ(songSelect.courseName, u"NEW DAY");

  Down(1);
  Key(kKeyRight);
  Down(1);
  Add(2);
  Down(1);
  Add(0);
  Down(1);
  Add(1);
  Key(kKeyF10);
  ASSERT_EQ(GameState, kStateCourses);
  EXPECT_EQ(Titles(), "[MAKE NEW COURSE] NEW DAY");
  EXPECT_EQ(listCursor, 1);
  CourseLoad(DataPath(u"courselist\\NEW DAY.qcl"), false);
  EXPECT_EQ(courseStars, 4);
  ASSERT_EQ(numsongs, 3);
  EXPECT_EQ(CourseSongs[0].title, u"Z");
  EXPECT_EQ(CourseSongs[1].title, u"X");
  EXPECT_EQ(CourseSongs[2].title, u"Y");
  EXPECT_TRUE(FileExists(CourseSongs[0].path));

  // Away and back; it is found, its second song goes, and its first becomes another.
  Key(kKeyTab);
  Key(kKeyTab);
  Down(1);
  Key(kKeySpace, u' ');
  ASSERT_EQ(GameState, kStateEditCourse);
  EXPECT_EQ(songSelect.courseName, u"NEW DAY");
  Down(3);
  Key(kKeyDelete);
  Key(kKeyUp);
  Enter();
  Enter();
  Down(1);
  Enter();
  Key(kKeyF10);
  CourseLoad(DataPath(u"courselist\\NEW DAY.qcl"), false);
  ASSERT_EQ(numsongs, 2);
  EXPECT_EQ(CourseSongs[0].title, u"Y");
  EXPECT_EQ(CourseSongs[1].title, u"Y");
  EXPECT_EQ(closeWishes, 0);
}

TEST_F(CourseFlow, EscEndsTheTypingAndAnotherEscTheEditor) {
  Key(kKeyTab);
  Enter();
  Enter();
  Type("!");
  Esc();
  EXPECT_EQ(GameState, kStateEditCourse);
  EXPECT_EQ(songSelect.courseName, u"NEW COURSE!");
  Esc();
  EXPECT_EQ(GameState, kStateCourses);
  Enter();
  Enter();
  EXPECT_EQ(GameState, kStateEnterCourse) << "at once again";
}

// The character of a key may come before its key.
TEST_F(CourseFlow, AnEnterWhoseCharacterEndedTheTypingIsDropped) {
  Key(kKeyTab);
  Enter();
  Enter();
  Form_KeyPress(13);
  ASSERT_EQ(GameState, kStateEditCourse);
  DispatchKey(kKeyEnter, true);
  EXPECT_EQ(GameState, kStateEditCourse);
  DispatchKey(kKeyEnter, false);
  Enter();
  EXPECT_EQ(GameState, kStateEnterCourse);
}

// A controller has keys and no characters.
TEST_F(CourseFlow, AControllersEnterBeginsAndEndsTheTyping) {
  KeyMap[300] = 3;
  Key(kKeyTab);
  Enter();
  Key(300);
  EXPECT_EQ(GameState, kStateEnterCourse);
  Key(300);
  EXPECT_EQ(GameState, kStateEditCourse);
  Key(300);
  EXPECT_EQ(GameState, kStateEnterCourse);
}

TEST_F(CourseFlow, EscWhileASongIsPickedLeavesAnEmptyLineThatF10TakesOut) {
  Key(kKeyTab);
  Enter();
  Down(2);
  Add(0);
  Down(1);
  Enter();
  Enter();
  Esc();
  ASSERT_EQ(GameState, kStateEditCourse);
  EXPECT_EQ(songSelect.courseNumSongs, 2);
  Key(kKeyF10);
  EXPECT_EQ(message.text, u"Null items has removed. please re-press F10 key");
  EXPECT_EQ(songSelect.courseNumSongs, 1);
  EXPECT_FALSE(FileExists(DataPath(u"courselist\\NEW COURSE.qcl")));
  Key(kKeyF10);
  EXPECT_TRUE(FileExists(DataPath(u"courselist\\NEW COURSE.qcl")));
}

}  // namespace
}  // namespace qlm
