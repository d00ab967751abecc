// The typing of a course's name.
#include "screens/course_name.h"

#include "state/keys.h"
#include "state/message.h"
#include "state/session.h"
#include "state/song_select.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class CourseName : public GameTest {
 protected:
  CourseName() {
    GameState = kStateEnterCourse;
    songSelect.courseName = u"ab";
  }
};

TEST_F(CourseName, CodesFrom32To127AreAppended) {
  for (const int32_t code : {31, 32, 65, 126, 127}) ProcessKey_EnterCourse(code);
  EXPECT_EQ(songSelect.courseName, u"ab A~\x7F");
  EXPECT_FALSE(message.up);
}

TEST_F(CourseName, CharactersThatNoFileNameHoldsAreRefusedByName) {
  for (const char16_t refused : TextView(u"*/\\\":?<>|")) {
    ProcessKey_EnterCourse(refused);
    EXPECT_EQ(message.text, Join(u"sorry, can't use ", Text(1, refused), u" for filename."));
    EXPECT_EQ(songSelect.courseName, u"ab");
  }
  EXPECT_EQ(GameState, kStateEnterCourse);
}

TEST_F(CourseName, OtherCharactersOfFileNamesAreTaken) {
  for (const char16_t taken : TextView(u"!#$%&'()+,-.;=@[]^_`{}~")) ProcessKey_EnterCourse(taken);
  EXPECT_EQ(songSelect.courseName, u"ab!#$%&'()+,-.;=@[]^_`{}~");
}

TEST_F(CourseName, LettersAbove127ArePassedOverWithAMessage) {
  for (const int32_t code : {128, 0x3042, 0x7FBD, 0xFF71, 0xD83C}) {
    message = {};
    ProcessKey_EnterCourse(code);
    EXPECT_EQ(message.text, u"sorry, only ASCII can be used for filename.") << code;
    EXPECT_EQ(songSelect.courseName, u"ab");
  }
}

TEST_F(CourseName, BackSpaceTakesTheLastOneAndStopsAtNone) {
  for (const char16_t* const left : {u"a", u"", u""}) {
    ProcessKey_EnterCourse(8);
    EXPECT_EQ(songSelect.courseName, left);
  }
}

TEST_F(CourseName, OtherControlCodesDoNothing) {
  for (const int32_t code : {-1, 0, 7, 9, 10, 26, 28}) ProcessKey_EnterCourse(code);
  EXPECT_EQ(songSelect.courseName, u"ab");
  EXPECT_EQ(GameState, kStateEnterCourse);
  EXPECT_FALSE(enterEaten);
}

TEST_F(CourseName, EnterAndEscEndTheTypingAndKeepTheName) {
  for (const int32_t code : {13, 27}) {
    GameState = kStateEnterCourse;
    enterEaten = false;
    ProcessKey_EnterCourse('c');
    ProcessKey_EnterCourse(code);
    EXPECT_EQ(GameState, kStateEditCourse);
    EXPECT_TRUE(enterEaten);
  }
  EXPECT_EQ(songSelect.courseName, u"abcc") << "Esc takes nothing back";
}

TEST_F(CourseName, TheCharacterOfTheOpeningEnterOnlyCountsAsThat) {
  for (const int32_t code : {13, 27}) {
    GameState = kStateEnterCourse;
    songSelect.nameEntry = true;
    enterEaten = false;
    ProcessKey_EnterCourse(code);
    EXPECT_EQ(GameState, kStateEnterCourse);
    EXPECT_FALSE(songSelect.nameEntry);
    EXPECT_TRUE(enterEaten);
    ProcessKey_EnterCourse(code);
    EXPECT_EQ(GameState, kStateEditCourse);
  }
}

}  // namespace
}  // namespace qlm
