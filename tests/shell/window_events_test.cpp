// The window's events reach the game: mouse, typed letters, dropped folders.
#include <cstdlib>
#include <filesystem>

#include "base/hooks.h"
#include "base/paths.h"
#include "graphics/display.h"
#include "graphics/present.h"
#include "input/input.h"
#include "library/song_list.h"
#include "platform/window.h"
#include "shell/main_form.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/options.h"
#include "state/scores.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_find.h"
#include "state/song_select.h"
#include "state/surfaces.h"
#include "tests/support/game_test.h"
#include "tests/support/virtual_desktop.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

int32_t closeWishes = 0;

// A full screen of 1024 by 768 that nobody sees, with the frame in its middle at (192, 144), and a list of
// four charts.
class WindowEvents : public GameTest {
 protected:
  WindowEvents() {
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    closeWishes = 0;
    ConnectHooks();
    hooks.closeRequested = [] { ++closeWishes; };
    NOVSync = true;
    Scaling = 1;  // by a whole number
    InitDD();
    CreateSurfaces();
    PresentFrame();
    for (const TextView name : {u"a", u"b", u"c", u"d"}) {
      AddSong(WriteText(Join(u"song\\", name, u".bms"), Join(u"\r\n#TITLE ", name, u"\r\n")));
    }
    PreviewDelay = 100000;
  }
  ~WindowEvents() override { ReleaseDD(); }

  // To a pixel of the frame.
  static void MoveTo(int x, int y) {
    MoveVirtualMouse(192 + x, 144 + y);
    DoEvents();
  }
};

TEST_F(WindowEvents, MouseInFullScreenTravelsFromTheCentre) {
  MoveTo(321, 250);
  EXPECT_EQ(songSelect.mouseDX, 1);
  EXPECT_EQ(songSelect.mouseDY, 10);
  // The pointer is not yet put back, so that its way counts again.
  MoveTo(323, 246);
  EXPECT_EQ(songSelect.mouseDX, 4);
  EXPECT_EQ(songSelect.mouseDY, 16);
  EXPECT_EQ(listCursor, 0) << "exactly 16";
  MoveTo(320, 241);
  EXPECT_EQ(songSelect.mouseDY, 0);
  EXPECT_EQ(listCursor, 3) << "17: a row up, from the first to the last";
  EXPECT_EQ(WhereThePointerIs(), (PointerPlace{192 + 320, 144 + 240}));
}

TEST_F(WindowEvents, DragUpwardMovesTheCursorForward) {
  MoveTo(320, 240 - 33);
  EXPECT_EQ(listCursor, 2);
  EXPECT_EQ(songSelect.listScroll, -2);
}

TEST_F(WindowEvents, TravelIsKeptWithinItsWidth) {
  songSelect.mouseDX = 32767;
  MoveTo(330, 240);
  EXPECT_EQ(songSelect.mouseDX, 32767) << "what does not fit is left out";
}

TEST_F(WindowEvents, MouseMovesNoRowElsewhere) {
  for (const int32_t state : {kStatePlay, kStateResults, kStateAutoLanes, kStateCourseSongs}) {
    GameState = state;
    songSelect.mouseDY = 0;
    MoveTo(320, 340);
    EXPECT_EQ(songSelect.mouseDY, 100);
    EXPECT_EQ(listCursor, 0);
  }
}

TEST_F(WindowEvents, MouseInAWindowIsLeftAlone) {
  Windowed = true;
  MoveTo(320, 340);
  EXPECT_EQ(songSelect.mouseDY, 0);
  EXPECT_EQ(listCursor, 0);
}

TEST_F(WindowEvents, WheelOfTheMouseTurnsTheList) {
  TurnMouseWheel(-1);
  DoEvents();
  EXPECT_EQ(listCursor, 1);
  TurnMouseWheel(2);
  DoEvents();
  EXPECT_EQ(listCursor, 3);
  GameState = kStatePlay;
  TurnMouseWheel(1);
  DoEvents();
  EXPECT_EQ(listCursor, 3);
}

// A key goes down and up again, with nothing typed.
void PressKey(int32_t key) {
  DispatchKey(key, true);
  DispatchKey(key, false);
}

TEST_F(WindowEvents, WordsOfAnInputMethodFindRows) {
  songList[2].title = u"はねぺん";
  TypeText("x");
  DoEvents();
  PressKey(kKeySlash);
  ASSERT_TRUE(songFind.typing);
  DoEvents();  // characters are taken from here on
  ComposeText("はね");
  DoEvents();
  EXPECT_EQ(songFind.composing, u"はね");
  EXPECT_EQ(lastSong, 3) << "not before it is done";
  TypeText("ハネ");
  DoEvents();
  EXPECT_EQ(songFind.words, u"ハネ");
  EXPECT_EQ(songFind.composing, u"");
  ASSERT_EQ(lastSong, 0);
  EXPECT_EQ(songList[0].title, u"はねぺん");
  PressControlKey(27);
  DoEvents();
  EXPECT_EQ(lastSong, 3);
  EXPECT_EQ(listCursor, 2);
  ComposeText("はね");
  TypeText("x");
  DoEvents();
  EXPECT_EQ(songFind.composing + songFind.words, u"");
}

// Among them those that end the program, step through options, sort and play.
TEST_F(WindowEvents, NoKeyButEscAndEnterActsWhileWordsAreTyped) {
  PressKey(kKeySlash);
  const Text shown = message.text;
  KeyHeld[kKeyLeftShift] = true;
  for (int32_t key = 1; key <= KeyHeld.kLast; ++key) {
    if (key != kKeyLeftShift) PressKey(key);
  }
  EXPECT_TRUE(songFind.typing);
  EXPECT_EQ(closeWishes, 0);
  EXPECT_EQ(GameState, kStateSongSelect);
  EXPECT_EQ(listCursor, 0);
  EXPECT_EQ(songSelect.deciding, 0);
  EXPECT_EQ(message.text, shown);
  EXPECT_FALSE(DEMOMode || Hidden || Accel || ShowRec);
  EXPECT_EQ(PlayerForce, 0);
}

// A controller has keys and no characters.
TEST_F(WindowEvents, AControllersEnterLeavesTheLine) {
  KeyMap[300] = 3;
  PressKey(kKeySlash);
  PressKey(300);
  EXPECT_FALSE(songFind.typing);
  EXPECT_EQ(songSelect.deciding, 0);
}

TEST_F(WindowEvents, LeftButtonIsEnterAndRightButtonIsLeft) {
  PressMouse(2);
  DoEvents();
  EXPECT_EQ(songSelect.deciding, 0);
  PressMouse(3);
  DoEvents();
  EXPECT_EQ(GameState, kStateLists);
  GameState = kStateSongSelect;
  ClearList();
  AddSong(Join(AppPath, u"\\song\\a.bms"));
  PressMouse(1);
  DoEvents();
  EXPECT_EQ(songSelect.deciding, 1);
  EXPECT_FALSE(KeyHeld[kKeyEnter]) << "nothing is held, and nothing let go";
}

TEST_F(WindowEvents, ClickInAPlayIsTheKeyEnterThere) {
  KeyMap[kKeyEnter] = 26;
  GameState = kStatePlay;
  PressMouse(1);
  DoEvents();
  EXPECT_TRUE(LaneDown[26 - 11]);
}

TEST_F(WindowEvents, LettersGoToTheNameThatIsEnteredAndNowhereElse) {
  scores.PlayerName = u"";
  TypeText("x");
  PressControlKey(8);
  DoEvents();
  EXPECT_EQ(scores.PlayerName, u"");
  GameState = kStateEnterName;
  // The pump that sees the state takes letters from there on.
  DoEvents();
  TypeText("aB1");
  PressControlKey(8);
  PressControlKey(8, true);
  TypeText("羽 z");
  DoEvents();
  EXPECT_EQ(scores.PlayerName, u"a z") << "no letter beyond 127";
  PressControlKey(13);
  DoEvents();
  EXPECT_NE(GameState, kStateEnterName);
  EXPECT_TRUE(enterEaten);
}

TEST_F(WindowEvents, TheEnterThatBeginsACoursesNameBringsItsCharacterToo) {
  GameState = kStateEditCourse;
  songSelect.courseName = Text(u"A");
  DoEvents();  // letters are taken from here on
  TypeText("x");
  DoEvents();
  EXPECT_EQ(songSelect.courseName, u"A") << "nothing is typed yet";
  // Both in one pump; a click is the key here.
  PressMouse(1);
  PressControlKey(13);
  DoEvents();
  EXPECT_FALSE(songSelect.nameEntry);
  EXPECT_EQ(GameState, kStateEnterCourse);
  // Held, it begins and does not end.
  for (int32_t time = 0; time < 5; ++time) PressControlKey(13, true);
  TypeText("b羽");
  PressControlKey(8, true);
  TypeText("c");
  DoEvents();
  EXPECT_EQ(GameState, kStateEnterCourse);
  EXPECT_EQ(songSelect.courseName, u"Ac");
  EXPECT_EQ(message.text, u"sorry, only ASCII can be used for filename.");
  PressControlKey(27);
  DoEvents();
  EXPECT_EQ(GameState, kStateEditCourse);
}

TEST_F(WindowEvents, DroppedFolderOfAnyLettersBecomesTheList) {
  for (const char* const folder : {"plain", "with blank %20 &", "羽ペン", "\x83\x5C\x83\x5C"}) {
    const std::string path = SystemFolder() + "/" + folder;
    fs::create_directory(path);
    fs::copy(SystemFolder() + "/song/a.bms", path + "/\x95\x5C.bms");
    fs::copy(SystemFolder() + "/song/b.bms", path + "/か\u3099.bms");
    GameState = kStateLists;
    DropOnWindow({path, SystemFolder() + "/song"});
    DoEvents();
    EXPECT_EQ(GameState, kStateSongSelect) << folder;
    EXPECT_EQ(lastSong, 1) << "the first item's: " << folder;
    for (const SongEntry& song : songList) EXPECT_TRUE(FileExists(song.path)) << Utf8(song.path);
  }
}

TEST_F(WindowEvents, DropOfWhatDoesNotExistChangesNothing) {
  DropOnWindow({SystemFolder() + "/none"});
  DoEvents();
  EXPECT_EQ(lastSong, 3);
}

TEST_F(WindowEvents, DropInAPlayOrOnABusyListIsRefused) {
  GameState = kStatePlay;
  DropOnWindow({SystemFolder() + "/song"});
  DoEvents();
  EXPECT_EQ(GameState, kStatePlay);
  EXPECT_EQ(message.text, u"DROP FOLDERS ON THE LIST");
  GameState = kStateSongSelect;
  songSelect.deciding = 1;
  message = {};
  DropOnWindow({SystemFolder() + "/song"});
  DoEvents();
  EXPECT_EQ(message.text, u"DROP FOLDERS ON THE LIST");
  EXPECT_EQ(listCursor, 0);
}

TEST_F(WindowEvents, ControllerThatIsLetGoEndsItsRepeat) {
  for (const int16_t code : {int16_t{16}, int16_t{17}, int16_t{26}, int16_t{27}}) {
    KeyMap[300] = code;
    songSelect.repeatKey = kKeyUp;
    ButtonUp(300);
    EXPECT_EQ(songSelect.repeatKey, 0) << code;
  }
  KeyMap[300] = 11;
  songSelect.repeatKey = kKeyUp;
  ButtonUp(300);
  EXPECT_EQ(songSelect.repeatKey, kKeyUp);
}

}  // namespace
}  // namespace qlm
