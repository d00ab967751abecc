// Tests of the keys of the list screens.
#include "screens/song_select_keys.h"

#include "base/hooks.h"
#include "base/paths.h"
#include "library/lists.h"
#include "library/song_list.h"
#include "platform/files.h"
#include "platform/timers.h"
#include "screens/list_rows.h"
#include "screens/song_select.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/gauge.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "state/surfaces.h"
#include "tests/screens/list_ground.h"

namespace qlm {
namespace {

using SongSelectKeys = ListTest;

// The options that are on, by a letter each.
std::string OptionsOn() {
  std::string letters;
  const auto add = [&](bool on, char letter) {
    if (on) letters += letter;
  };
  add(Hidden, 'h');
  add(Sudden, 's');
  add(Stealth, 't');
  add(Random, 'r');
  add(ExRandom, 'x');
  add(Accel, 'a');
  add(Quil, 'q');
  add(HalfField, 'f');
  add(FourDMode, '4');
  add(ShowRec, 'v');
  add(UserRec, 'w');
  add(Pressure, 'p');
  return letters;
}

TEST_F(SongSelectKeys, OptionsGoThroughTheirCycles) {
  struct Cycle {
    int32_t key;
    std::vector<std::string> states;
  };
  const Cycle cycles[] = {
      {kKeyF1, {"h", "s", "hs", "t", "", "h"}},
      {kKeyF2, {"r", "x", "", "r"}},
      {kKeyF3, {"a", "", "a"}},
      {kKeyF4, {"q", "f", "", "q"}},
      {kKeyF5, {"4", "", "4"}},
      {kKeyF6, {"v", "w", "", "v"}},
      {kKeyF12, {"p", "", "p"}},
  };
  ShowCharts({u"A"});
  FillSound(SE::kTick);
  for (const Cycle& cycle : cycles) {
    ResetOptions();
    ShowRec = UserRec = false;
    for (const std::string& state : cycle.states) {
      SystemSound[static_cast<int32_t>(SE::kTick)]->Stop();
      Press(cycle.key);
      EXPECT_EQ(OptionsOn(), state) << cycle.key;
      EXPECT_TRUE(Sounding(SE::kTick)) << cycle.key;
    }
  }
}

TEST_F(SongSelectKeys, FourDModeIsToldInWords) {
  ShowCharts({u"A"});
  Press(kKeyF5);
  EXPECT_EQ(message.text, u"4DMODE: True");
  Press(kKeyF5);
  EXPECT_EQ(message.text, u"4DMODE: False");
}

TEST_F(SongSelectKeys, ForcedPlayerGoesThroughFourStatesInSilence) {
  ShowCharts({u"A"});
  FillSound(SE::kTick);
  for (const int32_t force : {1, 2, 3, 0}) {
    Press(kKeyF10);
    EXPECT_EQ(PlayerForce, force);
  }
  EXPECT_FALSE(Sounding(SE::kTick));
}

TEST_F(SongSelectKeys, ArrowsAndPagesMoveTheCursorAndTheWheelBehindIt) {
  ShowCharts({u"A", u"B", u"C", u"D", u"E", u"F", u"G"});
  struct Step {
    int32_t key;
    int32_t cursor;
    float scroll;
  };
  for (const Step& step : {Step{kKeyDown, 1, -1}, Step{kKeyPageDown, 6, -6}, Step{kKeyDown, 0, -7},
                           Step{kKeyUp, 6, -6}, Step{kKeyPageUp, 1, -1}, Step{kKeyPageUp, 3, 4}}) {
    Press(step.key);
    EXPECT_EQ(listCursor, step.cursor);
    EXPECT_EQ(songSelect.listScroll, step.scroll);
  }
}

TEST_F(SongSelectKeys, SortsMoveTheRowsUnderTheCursor) {
  ShowCharts({u"b", u"C", u"a"});
  listCursor = 2;
  songSelect.titleMain = u"a";
  Press(kKeyPad3);
  EXPECT_EQ(Titles(), "a b C");
  EXPECT_EQ(message.text, u"Sorted by TITLE");
  EXPECT_EQ(listCursor, 2);
  EXPECT_EQ(songSelect.titleMain, u"a") << "the panel shows the row before, until the next move";
  EXPECT_EQ(PanelRow()->playLevel, 2);
  Press(kKeyPad1);
  EXPECT_EQ(Titles(), "b C a") << "levels 0, 1, 2";
  EXPECT_EQ(message.text, u"Sorted by LEVEL");
  songList[0].genre = u"z";
  songList[1].genre = u"y";
  songList[2].genre = u"x";
  Press(kKeyPad2);
  EXPECT_EQ(Titles(), "a C b");
  EXPECT_EQ(message.text, u"Sorted by GENRE");
  songList[0].artist = u"3";
  songList[1].artist = u"1";
  songList[2].artist = u"2";
  Press(kKeyPad4);
  EXPECT_EQ(Titles(), "C b a");
  EXPECT_EQ(message.text, u"Sorted by ARTIST");
  EXPECT_EQ(PanelRow()->playLevel, 2) << "the third sort later, still the row that was in hand";
  Press(kKeyDown);
  EXPECT_EQ(PanelRow(), HeldRow());
  Press(kKeyPad1);
  Press(kKeyTab);
  EXPECT_EQ(PanelRow(), HeldRow());
}

TEST_F(SongSelectKeys, LockedListTakesEscAndNothingElse) {
  ShowCharts({u"A", u"B"});
  selectLocked = true;
  for (const int32_t key : {kKeyDown, kKeyF1, kKeyF10, kKeyTab, kKeyEnter, kKeyLeft, kKeyPad1}) Press(key);
  EXPECT_EQ(listCursor, 0);
  EXPECT_EQ(OptionsOn(), "");
  EXPECT_EQ(PlayerForce, 0);
  EXPECT_EQ(GameState, kStateSongSelect);
  EXPECT_EQ(songSelect.deciding, 0);
  EXPECT_EQ(closeWishes, 0);
  Press(kKeyEsc);
  EXPECT_EQ(closeWishes, 1);
}

TEST_F(SongSelectKeys, EscLeadsBackToTheEditorWhileItsSongIsPicked) {
  ShowCharts({u"A"});
  songSelect.courseMaking = true;
  Press(kKeyEsc);
  EXPECT_EQ(GameState, kStateEditCourse);
  EXPECT_EQ(closeWishes, 0);
}

TEST_F(SongSelectKeys, LeftLeadsFromTheSongsToTheJukeboxesAndNowhereElse) {
  ShowCharts({u"A", u"B"});
  SaveAsJukebox(u"x");
  UpdateJukeList();
  ShowCharts({u"A", u"B"});
  Press(kKeyLeft);
  EXPECT_EQ(GameState, kStateLists);
  EXPECT_EQ(Titles(), "x");
  EXPECT_TRUE(Logged(u"[Load JukeList]"));
  Press(kKeyLeft);
  EXPECT_EQ(GameState, kStateLists);
  EXPECT_EQ(Titles(), "x");
}

TEST_F(SongSelectKeys, TabGoesToTheCoursesAndBackToTheJukeboxes) {
  WriteData(u"_qlmfiles\\courselist\\mine.qcl", "");
  UpdateCourseList();
  ShowCharts({u"A"});
  FillSound(SE::kFade);
  previewStop = false;
  songSelect.clearCheckRow = 5;
  SetNow(5000);
  Press(kKeyTab);
  EXPECT_EQ(GameState, kStateCourses);
  EXPECT_TRUE(CourseMode);
  EXPECT_EQ(Titles(), "[MAKE NEW COURSE] mine");
  EXPECT_EQ(songCleared.size(), 2U);
  EXPECT_EQ(songHasRecord.size(), 2U);
  EXPECT_TRUE(Logged(u">TAB Pressed - COURSE MODE"));
  EXPECT_TRUE(Logged(u"CourseList Loaded"));
  EXPECT_EQ(FadeState, kFadeToCourses);
  EXPECT_EQ(FadeStart, 5000U);
  EXPECT_EQ(songSelect.listSettle, 3.0F);
  EXPECT_EQ(songSelect.listFadeIn, 1000.0F);
  EXPECT_EQ(songSelect.clearCheckRow, 0);
  EXPECT_TRUE(previewStop);
  EXPECT_TRUE(Sounding(SE::kFade));
  SetNow(7000);
  Press(kKeyTab);
  EXPECT_EQ(GameState, kStateLists);
  EXPECT_FALSE(CourseMode);
  EXPECT_EQ(FadeState, kFadeFromCourses);
  EXPECT_EQ(FadeStart, 7000U);
}

TEST_F(SongSelectKeys, TabDoesNothingWhileACoursesSongIsPicked) {
  ShowCharts({u"A"});
  songSelect.courseMaking = true;
  Press(kKeyTab);
  EXPECT_EQ(GameState, kStateSongSelect);
  EXPECT_FALSE(CourseMode);
}

TEST_F(SongSelectKeys, DeleteHurtsNoChart) {
  ShowCharts({u"A"});
  Press(kKeyDelete);
  EXPECT_TRUE(FileExists(songList[0].path));
}

class OpenedJukebox : public ListTest {
 protected:
  // Two jukeboxes, the second of which is in hand.
  OpenedJukebox() {
    ShowCharts({u"A"});
    SaveAsJukebox(u"first");
    ShowCharts({u"A", u"B [X]", u"C"});
    SaveAsJukebox(u"second");
    UpdateJukeList();
    GameState = kStateLists;
    listCursor = 1;
  }
};

TEST_F(OpenedJukebox, ShowsItsChartsFromTheFirst) {
  FillSound(SE::kFade);
  songSelect.clearCheckRow = 7;
  for (const int32_t key : {kKeyEnter, kKeyRight}) {
    GameState = kStateLists;
    ClearList();
    TakeRows(library.jukeList);
    listCursor = 1;
    Press(key);
    EXPECT_EQ(GameState, kStateSongSelect);
    EXPECT_EQ(Titles(), "A B [X] C");
    EXPECT_EQ(listCursor, 0);
    EXPECT_EQ(songSelect.jukeCursorSaved, 1);
    EXPECT_EQ(songSelect.jukeName, u"second.qbl");
    EXPECT_EQ(songSelect.titleMain, u"A");
    EXPECT_EQ(songSelect.clearCheckRow, 0);
    EXPECT_TRUE(Sounding(SE::kFade));
    EXPECT_TRUE(platform::TimerArmed(platform::kTimerPlayCurSong));
  }
}

TEST_F(OpenedJukebox, OpensByItsNameWithTheEasiestChartInHand) {
  std::vector<SongEntry> rows(4);
  const std::array<int32_t, 4> levels = {7, 2, 9, 2};
  for (size_t i = 0; i < rows.size(); ++i) {
    rows[i].title = Text(1, static_cast<char16_t>(u'K' + i));
    rows[i].playLevel = levels[i];
  }
  TakeRows(rows);
  SaveAsJukebox(u"levels");
  UpdateJukeList();
  JukeReady();
  OpenOnEasiest(u"levels");
  EXPECT_EQ(GameState, kStateSongSelect);
  EXPECT_EQ(songSelect.jukeName, u"levels.qbl");
  EXPECT_EQ(listCursor, 1);  // of two that are as easy the first
  EXPECT_EQ(songSelect.titleMain, u"L");
  EXPECT_TRUE(platform::TimerArmed(platform::kTimerPlayCurSong));
}

TEST_F(OpenedJukebox, StaysShutUnderANameThatIsNone) {
  OpenOnEasiest(u"third");
  EXPECT_EQ(GameState, kStateLists);
  EXPECT_EQ(listCursor, 1);
}

TEST_F(OpenedJukebox, LeadsBackToWhereItWasOpened) {
  Press(kKeyEnter);
  Press(kKeyLeft);
  EXPECT_EQ(GameState, kStateLists);
  EXPECT_EQ(listCursor, 1);
}

TEST_F(OpenedJukebox, EnterWithShiftStartsARunAndRightNeverDoes) {
  FillSound(SE::kSelectMusic);
  SystemSound[static_cast<int32_t>(SE::kSelectMusic)]->Play(true);
  KeyHeld[kKeyRightShift] = true;
  Press(kKeyRight);
  EXPECT_FALSE(EndlessRun);
  EXPECT_EQ(GameState, kStateSongSelect);
  JukeReady();
  Press(kKeyEnter);
  EXPECT_TRUE(EndlessRun);
  EXPECT_TRUE(HazardGauge);
  EXPECT_EQ(GameState, kStateLists);
  EXPECT_EQ(songSelect.deciding, 1);
  EXPECT_FALSE(Sounding(SE::kSelectMusic));
  EXPECT_FALSE(platform::TimerArmed(platform::kTimerPlayCurSong));
  EXPECT_TRUE(platform::TimerArmed(platform::kTimerRunFESub));
}

TEST_F(OpenedJukebox, RunEndsThePreviewThatTheSongListLeftBehind) {
  previewRunning = true;
  platform::SetTimer(platform::kTimerPreview, 20, [] {});
  KeyHeld[kKeyLeftShift] = true;
  Press(kKeyEnter);
  EXPECT_FALSE(previewRunning);
  EXPECT_FALSE(platform::TimerArmed(platform::kTimerPreview));
}

TEST_F(OpenedJukebox, ControllersLane12CountsAsShift) {
  KeyMap[300] = 12;
  KeyHeld[300] = true;
  Press(kKeyEnter);
  EXPECT_TRUE(EndlessRun);
}

TEST_F(OpenedJukebox, OneWhoseFileHasGoneEndsTheProgramToo) {
  platform::DeleteFile(songList[1].path);
  Press(kKeyEnter);
  EXPECT_EQ(lastSong, -1);
  EXPECT_EQ(closeWishes, 1);
  EXPECT_EQ(GameState, kStateLists);
}

TEST_F(OpenedJukebox, EmptyOneEndsTheProgram) {
  platform::DeleteFile(songList[1].path);
  ClearList();
  TakeRows(library.jukeList);
  listCursor = 1;
  // A list file that names no chart.
  WriteData(u"_qlmfiles\\jukelist\\second.qbl", std::string(20, '\0') + std::string(4, '\xFF'));
  testing::internal::CaptureStderr();
  Press(kKeyEnter);
  EXPECT_EQ(closeWishes, 1);
  EXPECT_NE(testing::internal::GetCapturedStderr().find("second.qbl holds no chart"), std::string::npos);
}

class DecidedSong : public ListTest {};

TEST_F(DecidedSong, StopsTheMusicAndHandsOnToTheNextPump) {
  ShowCharts({u"A"});
  FillSound(SE::kSelectMusic);
  FillSound(SE::kDecide);
  SystemSound[static_cast<int32_t>(SE::kSelectMusic)]->Play(true);
  DDBack->Fill(kScreen, 0x123456);
  Press(kKeyEnter);
  EXPECT_EQ(songSelect.deciding, 1);
  EXPECT_FALSE(Sounding(SE::kSelectMusic));
  EXPECT_TRUE(Sounding(SE::kDecide));
  EXPECT_EQ(DDSnapshot->Pixel(320, 240), 0x123456U);
  EXPECT_FALSE(HazardGauge);
  EXPECT_EQ(LinesBeginning(u"[Ready BMS]"), 0);
  // Nothing else can be chosen meanwhile.
  Press(kKeyDown);
  EXPECT_EQ(listCursor, 0);
}

TEST_F(DecidedSong, WithShiftItIsPlayedOnTheHazardGauge) {
  for (const int32_t shift : {kKeyLeftShift, kKeyRightShift}) {
    ShowCharts({u"A"});
    HazardGauge = false;
    songSelect.deciding = 0;
    KeyHeld[shift] = true;
    Press(kKeyEnter);
    EXPECT_TRUE(HazardGauge) << shift;
    KeyHeld[shift] = false;
  }
}

TEST_F(DecidedSong, MissingChartIsToldAndNothingHappens) {
  ShowCharts({u"A"});
  platform::DeleteFile(songList[0].path);
  Press(kKeyEnter);
  EXPECT_EQ(songSelect.deciding, 0);
  EXPECT_EQ(message.text, u"file not exist: 0.bms");
}

TEST_F(DecidedSong, ReplayWithoutARecordIsRefused) {
  ShowCharts({u"A"});
  ShowRec = true;
  Press(kKeyEnter);
  EXPECT_EQ(songSelect.deciding, 0);
  EXPECT_EQ(message.text, u"RECORD NOT EXISTS. CAN'T START PLAYING!");
  EXPECT_EQ(GameState, kStateSongSelect);
  WriteData(u"song\\0.qpd", "");
  Press(kKeyEnter);
  EXPECT_EQ(songSelect.deciding, 1);
}

TEST_F(DecidedSong, BecomesTheCoursesSongWhileOneIsPicked) {
  ShowCharts({u"A", u"B"});
  listCursor = 1;
  songSelect.courseMaking = true;
  songSelect.courseSlot = 2;
  CourseSongs.resize(3);
  Press(kKeyEnter);
  EXPECT_EQ(CourseSongs[2], songList[1]);
  EXPECT_EQ(GameState, kStateEditCourse);
  EXPECT_EQ(songSelect.deciding, 0);
}

TEST_F(DecidedSong, EmptyListTakesEveryKey) {
  GameState = kStateSongSelect;
  for (int32_t key = 2; key < 256; ++key) {
    if (key != kKeyLeft && key != kKeyTab) Press(key);
  }
  EXPECT_EQ(songSelect.deciding, 0);
  EXPECT_EQ(lastSong, -1);
  EXPECT_EQ(listCursor, 0);
}

}  // namespace
}  // namespace qlm
