// Tests of the course list: its rows, their keys, and a course's way from there to its results.
#include <cstdlib>

#include "base/hooks.h"
#include "base/log.h"
#include "base/paths.h"
#include "chart/loading.h"
#include "files/course_files.h"
#include "library/lists.h"
#include "platform/files.h"
#include "platform/timers.h"
#include "screens/list_cursor.h"
#include "screens/loading_screen.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/scores.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "state/timeline.h"
#include "tests/screens/list_ground.h"

namespace qlm {
namespace {

class CourseList : public ListTest {
 protected:
  CourseList() {
    BMSPreview = 0;
    setenv("XDG_DATA_HOME", (SystemFolder() + "/home").c_str(), 1);
  }
  ~CourseList() override { unsetenv("XDG_DATA_HOME"); }

  // A song of one measure at 125 BPM, 10 ms a unit, with a note on its first and its third beat; slot 1 and
  // slot 2.
  SongEntry Song(TextView name) const {
    SongEntry song;
    song.title = name;
    song.lengthMs = 1000;
    song.bpm = 125;
    song.player = 1;
    song.path = WriteText(Join(u"song\\", name, u".bms"),
                          Join(u"\r\n#TITLE ", name, u"\r\n#PLAYER 1\r\n#BPM 125\r\n#RANK 3\r\n#WAV01 ", name,
                               u"1.wav\r\n#WAV02 ", name, u"2.wav\r\n#00011:01000200\r\n"));
    for (const TextView behind : {u"1.wav", u"2.wav"}) WriteData(Join(u"song\\", name, behind), WavBytes(20));
    return song;
  }
  // Makes a course file of these songs.
  Text Write(TextView name, const std::vector<SongEntry>& songs, uint8_t stars = 3) const {
    Text path = WriteData(Join(u"_qlmfiles\\courselist\\", name, u".qcl"), "");
    ResetCourses();
    CourseSongs = songs;
    numsongs = static_cast<uint8_t>(songs.size());
    courseStars = stars;
    courseLength = LengthOfSongs(songs);
    CourseSave(path);
    ResetCourses();
    return path;
  }
  // Shows the course list with the cursor on a row.
  void Show(int32_t row) {
    UpdateCourseList();
    GameState = kStateLists;
    Press(kKeyTab);
    listCursor = row;
    chexec();
    FadeState = kFadeNone;
  }
};

TEST_F(CourseList, RowsHaveTheStarsAndTheLengthOfTheirCourses) {
  Write(u"day", {Song(u"a"), Song(u"b")}, 4);
  WriteData(u"_qlmfiles\\courselist\\night.qcl", "");
  songSelect.courseNumSongs = 7;
  UpdateCourseList();
  ASSERT_EQ(Titles(), "[MAKE NEW COURSE] day night");
  EXPECT_EQ(songList[1].playLevel, 4);
  EXPECT_EQ(songList[1].lengthMs, 2000);
  EXPECT_EQ(songList[2].playLevel, 0);
  EXPECT_EQ(songList[2].lengthMs, 0);
  EXPECT_EQ(library.courseList, songList);
  EXPECT_EQ(songSelect.courseNumSongs, 0) << "no course is left in hand";
  EXPECT_EQ(numsongs, 0);
}

TEST_F(CourseList, AFileThatIsRenamedRenamesItsCourse) {
  const Text path = Write(u"day", {Song(u"a")});
  WriteData(u"_qlmfiles\\courselist\\dusk.qcl", ReadBytes(path));
  platform::DeleteFile(path);
  UpdateCourseList();
  EXPECT_EQ(Titles(), "[MAKE NEW COURSE] dusk");
}

TEST_F(CourseList, ThePreviewReadsTheSongsOfTheCourseInHand) {
  Write(u"day", {Song(u"a"), Song(u"b")});
  BMSPreview = 1;
  Show(1);
  EXPECT_EQ(numsongs, 0);
  SetNow(kStart + 1000);  // the delay
  platform::RunDueTimers();
  EXPECT_TRUE(Logged(u"[CourseLoad] day.qcl"));
  EXPECT_EQ(numsongs, 2);
  ASSERT_EQ(CourseSongs.size(), 3U);
  EXPECT_EQ(CourseSongs[1].title, u"b");
  EXPECT_EQ(songSelect.courseName, u"day");
  EXPECT_EQ(LinesBeginning(u"[BMSLoad]"), 0) << "nothing is heard";
  // The row that makes a new course has none.
  listCursor = 0;
  CourseSongs.resize(3);
  platform::SetTimer(platform::kTimerPlayCurSong, 1, nullptr);
  RestartPreviewTimer();
  SetNow(kStart + 2000);
  platform::RunDueTimers();
  EXPECT_TRUE(CourseSongs.empty());
}

TEST_F(CourseList, WithoutPreviewsNoCourseIsRead) {
  Write(u"day", {Song(u"a")});
  Show(1);
  SetNow(kStart + 1000);
  platform::RunDueTimers();
  EXPECT_EQ(numsongs, 0);
  EXPECT_EQ(LinesBeginning(u"[CourseLoad]"), 0);
}

TEST_F(CourseList, EnterDecidesACourseAndRightDoesNot) {
  Write(u"day", {Song(u"a")});
  Show(1);
  Press(kKeyRight);
  EXPECT_EQ(songSelect.deciding, 0);
  ShowRec = true;  // which asks for no record here
  Press(kKeyEnter);
  EXPECT_EQ(songSelect.deciding, 1);
  EXPECT_FALSE(HazardGauge) << "not before it is loaded";
}

TEST_F(CourseList, WithShiftACourseIsDecidedAsASong) {
  Write(u"day", {Song(u"a")});
  Show(1);
  KeyHeld[kKeyLeftShift] = true;
  Press(kKeyEnter);
  KeyHeld[kKeyLeftShift] = false;
  EXPECT_TRUE(HazardGauge);
}

TEST_F(CourseList, ACourseThatIsGoneIsToldAndNothingHappens) {
  platform::DeleteFile(Write(u"day", {}));
  const Text path = Write(u"day", {Song(u"a")});
  Show(1);
  platform::DeleteFile(path);
  Press(kKeyEnter);
  EXPECT_EQ(songSelect.deciding, 0);
  EXPECT_EQ(message.text, u"file not exist: day.qcl");
}

TEST_F(CourseList, DeleteMovesTheCourseToTheTrash) {
  Write(u"day", {Song(u"a")});
  const Text night = Write(u"night", {Song(u"a")});
  Show(2);
  log.clear();
  Press(kKeyDelete);
  EXPECT_FALSE(FileExists(night));
  EXPECT_TRUE(platform::FileLength(Join(AppPath, u"\\home\\Trash\\files\\night.qcl")));
  EXPECT_TRUE(Logged(u"moved to the trash: night.qcl"));
  EXPECT_EQ(Titles(), "[MAKE NEW COURSE] day");
  EXPECT_EQ(listCursor, 0);
  EXPECT_EQ(songSelect.courseName, u"[MAKE NEW COURSE]") << "the panel tells of the row in hand";
}

TEST_F(CourseList, DeleteOnRowZeroOnlyMakesTheListAnew) {
  Write(u"day", {Song(u"a")});
  Show(0);
  message = {};
  log.clear();
  Press(kKeyDelete);
  EXPECT_EQ(LinesBeginning(u"[UpdateCourseList]"), 1);
  EXPECT_EQ(Titles(), "[MAKE NEW COURSE] day");
  EXPECT_FALSE(message.up);
}

// From the list to the results, played by the machine unless a hand says otherwise.
class CourseRun : public CourseList {
 protected:
  CourseRun() {
    DEMOMode = true;
    hooks.loadingFrame = Loading;
    HandsOff([](int32_t) {});
  }

  // Lets the frames run; a lane's key ends the results.
  static void HandsOff(std::function<void(int32_t)> hand) {
    RunFrames(10, [hand = std::move(hand)](int32_t ms) {
      if (GameState == kStateResults) LaneDown[0] = true;
      hand(ms);
    });
  }
  void Decide(int32_t row) {
    Show(row);
    Press(kKeyEnter);
    RunTimers();
  }
};

TEST_F(CourseRun, ListsItsExPtsAndComesBackWithEveryLoadMode) {
  Write(u"day", {Song(u"a"), Song(u"b"), Song(u"c")});
  for (CourseLoadMode = 0; CourseLoadMode <= 2; ++CourseLoadMode) {
    played = {};
    playClock = 0;
    std::vector<Text> songs;
    HandsOff([&](int32_t) {
      const bool plays = GameState == kStatePlay && playClock > 0;
      if (plays && (songs.empty() || songs.back() != HdrTitle)) songs.push_back(HdrTitle);
    });
    Decide(1);
    // The last song's header stands until the first song begins.
    EXPECT_EQ(songs, (std::vector<Text>{u"c", u"a", u"b", u"c"}));
    EXPECT_TRUE(PlayCleared);
    // Before each song lie a measure and a tenth of one, 192 and 19 units: of silence before the first one,
    // of the song before and of the gap for the others. The second note comes 96 units later.
    EXPECT_EQ(Starts(), "1@2110 2@3070 1@4220 2@5180 1@6330 2@7290") << CourseLoadMode;
    // Two PERFECTs a song.
    EXPECT_EQ(CourseExPts[0], 4);
    EXPECT_EQ(CourseExPts[1], 4);
    EXPECT_EQ(CourseExPts[2], 4);
    EXPECT_EQ(GameState, kStateCourses);
    EXPECT_TRUE(CourseMode);
    EXPECT_EQ(listCursor, 1);
    EXPECT_FALSE(HazardGauge);
    EXPECT_EQ(Titles(), "[MAKE NEW COURSE] day");
  }
}

TEST_F(CourseRun, IsPlayedOnTheHazardGauge) {
  Write(u"day", {Song(u"a"), Song(u"b")});
  float first = -1;
  HandsOff([&](int32_t) {
    if (message.text == u"R E A D Y ?") first = Gauge[0];
  });
  Decide(1);
  EXPECT_EQ(first, 100.0F);
}

TEST_F(CourseRun, PutsItsScoresBesideItsFile) {
  const Text path = Write(u"day", {Song(u"a"), Song(u"b")});
  DEMOMode = false;
  int32_t shown = 0;
  HandsOff([&](int32_t) {
    if (GameState == kStateResults) ++shown;
  });
  Decide(1);
  EXPECT_GT(shown, 0);
  EXPECT_TRUE(FileExists(Join(path.substr(0, path.size() - 4), u".qsd")));
  EXPECT_EQ(scores.playCount, 1);
}

TEST_F(CourseRun, GivenUpWhileItLoadsGoesBackToTheListUnplayed) {
  Write(u"day", {Song(u"a"), Song(u"b"), Song(u"c")});
  WAVLoadmode = 0;
  HandsOff([](int32_t) {
    // The frame between two songs.
    if (CourseSong == 1) AbortLoad();
  });
  Decide(1);
  EXPECT_EQ(LinesBeginning(u"[BMSRead]"), 2) << "the third song is not read any more";
  EXPECT_EQ(LinesBeginning(u"[PlayLoop]"), 0);
  EXPECT_EQ(message.text, u"LOAD ABORTED");
  EXPECT_EQ(GameState, kStateCourses);
  EXPECT_TRUE(CourseMode);
  EXPECT_EQ(WAVLoadmode, 0);
  EXPECT_FALSE(HazardGauge);
  EXPECT_EQ(songSelect.deciding, 0);
  // The next one plays as if nothing had been.
  HandsOff([](int32_t) {});
  Press(kKeyEnter);
  RunTimers();
  EXPECT_EQ(LinesBeginning(u"[PlayLoop]"), 1);
  EXPECT_TRUE(PlayCleared);
}

TEST_F(CourseRun, SongsWhoseFilesAreGoneAreToldByNameAndPassedThrough) {
  std::vector<SongEntry> songs = {Song(u"a"), Song(u"b"), Song(u"c"), SongEntry()};
  platform::DeleteFile(songs[1].path);
  Write(u"day", songs);
  bool told = false;
  HandsOff([&](int32_t) { told = told || message.text == u"file not exist: [2] b.bms [4] "; });
  Decide(1);
  EXPECT_TRUE(told);
  EXPECT_TRUE(PlayCleared);
  EXPECT_EQ(played.starts.size(), 4U);
  EXPECT_EQ(GameState, kStateCourses);
}

TEST_F(CourseRun, OfNoSongsEndsAtOnce) {
  Write(u"day", {});
  Decide(1);
  EXPECT_EQ(LinesBeginning(u"playloop end"), 1);
  EXPECT_EQ(GameState, kStateCourses);
  EXPECT_TRUE(played.starts.empty());
}

}  // namespace
}  // namespace qlm
