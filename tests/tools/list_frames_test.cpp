// The list screens under the stock pictures, against stored frames.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "base/hooks.h"
#include "base/log.h"
#include "base/paths.h"
#include "graphics/bga.h"
#include "graphics/display.h"
#include "graphics/skin.h"
#include "graphics/skin_watch.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/font.h"
#include "platform/picture.h"
#include "screens/boot_screen.h"
#include "screens/course_editor_frame.h"
#include "screens/lane_choice.h"
#include "screens/list_frame.h"
#include "screens/list_text.h"
#include "screens/song_find.h"
#include "screens/stills.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/options.h"
#include "state/scores.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_find.h"
#include "state/song_select.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tests/support/game_test.h"
#include "tests/tools/golden_frames.h"

namespace qlm {
namespace {

constexpr uint32_t kNow = 1'000'120;

platform::Surface* shown = nullptr;  // the last frame

SongEntry Song(TextView title, TextView artist, TextView genre, float bpm, int32_t level,
               int32_t player = 1) {
  SongEntry song;
  song.title = title;
  song.artist = artist;
  song.genre = genre;
  song.bpm = bpm;
  song.playLevel = level;
  song.player = player;
  song.rank = 2;
  song.lengthMs = 93'000;
  return song;
}

class ListFramesTest : public GameTest {
 protected:
  ListFramesTest() {
    shown = &frame_;
    hooks.framePresented = [] { shown->Copy(0, 0, *DDBack, kScreen); };
    logOutput.file = false;
    AppPath = platform::InnerPath(QLM_BINARY_DIR);
    InitDD(DisplayOutput::kUnseen);
    CreateSurfaces();
    loadSkin(DataPath(u"qlm_scr.brd"), false);
    LoadSS();
    NOVSync = true;
    DRAWLIMIT = 1;
    HiSpeed = 1.5F;
    Fps = 60;
    FpsTime = kNow;
    SetTime(kNow);
    songSelect.listSettle = 1;
    songSelect.listFadeIn = 0;
    songSelect.rowCursorTime = kNow - 1500;
  }
  ~ListFramesTest() override {
    ReleaseDD();
    ForgetLines();
  }

  static void SetTime(uint32_t now) {
    platform::UseVirtualClock(now);
    songSelect.listFadeTime = now;
  }

  void Rows(std::vector<SongEntry> rows) {
    songList = std::move(rows);
    lastSong = static_cast<int32_t>(songList.size()) - 1;
    songCleared.assign(songList.size(), false);
    songHasRecord.assign(songList.size(), false);
  }

  void Songs() {
    Rows({Song(u"羽ペンの行進 [5KEYS]", u"quillmarch", u"MARCH", 132, 3),
          Song(u"羽ペンの行進 [7KEYS]", u"quillmarch", u"MARCH", 132, 7),
          Song(u"羽ペンの行進 [DOUBLE]", u"quillmarch", u"MARCH", 132, 9, 3),
          Song(u"インク瓶の底", u"quillmarch", u"WALTZ", 92, 5),
          Song(u"青写真", u"quillmarch", u"DRAFT", 168, 11),
          Song(u"夜明け前の机に向かって長い手紙を書いていた頃のこと -Extended Mix-",
               u"どこかの誰か feat. 鵞鳥", u"BALLADE", 174.5F, 12, 2),
          Song(u"Nightfall over the Old Library and Everything in It (Second Movement)", u"Nobody",
               u"ORCHESTRA", 140, 6),
          Song(u"乾いたインク", u"鵞鳥", u"ELECTRO", 150, 8)});
    GameState = kStateSongSelect;
    songSelect.jukeName = u"stock songs.qbl";
    songCleared[0] = songCleared[2] = songCleared[4] = true;
    songHasRecord[1] = songHasRecord[4] = true;
    Hold(4, u"青写真", u"");
  }

  void Hold(int32_t row, TextView main, TextView sub) {
    listCursor = row;
    songSelect.titleMain = main;
    songSelect.titleSub = sub;
  }

  void Scores(int32_t places) {
    static constexpr std::string_view kNames[] = {"QuIl :-", "goose", "inkpot", "NIB", "PAPER"};
    for (int32_t i = 0; i < places; ++i) {
      ScoreEntry& row = scores.ScoreTable[i];
      row.name.fill(' ');
      std::ranges::copy(kNames[i % 5], row.name.begin());
      row.score = static_cast<float>(198'765 - 9'876 * i);
      row.jpts = static_cast<float>(12'345 - 678 * i);
      row.classIndex = static_cast<uint8_t>(i / 2);
    }
    scores.playCount = 42;
    scores.cleared = -1;
  }

  void Jukeboxes() {
    Rows({Song(u"stock songs", u"", u"", 0, 0), Song(u"お気に入り", u"", u"", 0, 0),
          Song(u"BMS 2024", u"", u"", 0, 0), Song(u"zip で届いた曲", u"", u"", 0, 0)});
    GameState = kStateLists;
    Hold(1, u"お気に入り", u"");
  }

  void Courses() {
    Rows({Song(u"[MAKE NEW COURSE]", u"", u"", 0, 0), Song(u"初めての夜", u"", u"", 0, 3),
          Song(u"THE LONG LETTER", u"", u"", 0, 9)});
    GameState = kStateCourses;
    CourseMode = true;
    Hold(2, u"THE LONG LETTER", u"");
    songList[2].lengthMs = 543'000;
    songSelect.courseName = u"THE LONG LETTER";
    for (const TextView title :
         {u"羽ペンの行進", u"インク瓶の底", u"青写真", u"乾いたインク", u"夜明け前", u"終章"})
      CourseSongs.push_back(Song(title, u"quillmarch", u"", 130, 5));
    numsongs = 6;
    songSelect.rowCursorTime = kNow - 1500;
  }

  void Expect(const std::string& name) {
    const std::string file = SystemFolder() + "/" + name + ".png";
    ASSERT_TRUE(platform::SavePng(frame_, file));
    CompareWithGoldenFrame(name, file);
  }

  platform::Surface frame_{640, 480};
};

TEST_F(ListFramesTest, TheListOfJukeboxes) {
  Jukeboxes();
  DrawList();
  Expect("select-jukeboxes");
}

TEST_F(ListFramesTest, SongsAtRestWithoutATitlePicture) {
  Songs();
  Scores(10);
  TotalNotes = {574, 0};
  curBPM = 168;
  DrawList();
  Expect("select-songs");
}

TEST_F(ListFramesTest, SongsWithATitlePictureAndEveryOption) {
  Songs();
  Scores(3);
  Hold(5, u"夜明け前の机に向かって長い手紙を書いていた頃のこと", u"-Extended Mix-");
  TotalNotes = {1234, 1187};
  Hidden = Sudden = ExRandom = Accel = HalfField = Pressure = DEMOMode = FourDMode = UserRec = true;
  PlayerForce = 3;
  DRAWLIMIT = 3;
  LoadStage(Join(AppPath, u"\\songs\\march\\stage.png"));
  songSelect.rowCursorTime = kNow - 9000;
  ShowMessage(u"clear check... 5");
  DrawList();
  Expect("select-options");
}

TEST_F(ListFramesTest, TheWheelInMotion) {
  Songs();
  songSelect.rowCursorTime = kNow - 250;
  songSelect.listScroll = 1.5F;
  TotalNotes = {574, 0};
  DrawList();
  Expect("select-motion");
}

TEST_F(ListFramesTest, RowsAppearInTheFirstSecond) {
  Songs();
  songSelect.listFadeIn = 350;
  DrawList();
  Expect("select-fade-in");
}

TEST_F(ListFramesTest, CoursesHalfWayThroughTheCrossing) {
  Courses();
  DRAWLIMIT = 3;
  FadeState = kFadeToCourses;
  FadeStart = kNow - 100;
  DrawList();
  Expect("select-crossing");
}

TEST_F(ListFramesTest, TheListOfCourses) {
  Courses();
  DrawList();
  Expect("select-courses");
}

// Types into the line of the search.
void Find(TextView words) {
  OpenFindLine();
  for (const char16_t letter : words) TypeInFindLine(letter);
}

TEST_F(ListFramesTest, TheOpenLineOfTheSearch) {
  Songs();
  TotalNotes = {574, 0};
  Find(u"");
  DrawList();
  Expect("select-find-open");
}

TEST_F(ListFramesTest, RowsThatHoldWhatIsTyped) {
  Songs();
  Find(u"pen ");
  songSelect.listScroll = 0;
  songFind.composing = u"ｍあrch";
  SetTime(kNow);
  TotalNotes = {574, 0};
  DrawList();
  Expect("select-find-typing");
}

TEST_F(ListFramesTest, NothingIsFound) {
  Songs();
  MenuLanguage = u"en";
  Find(u"a word so long that its end alone is seen");
  DrawList();
  Expect("select-find-nothing");
}

TEST_F(ListFramesTest, FoundRowsInUse) {
  Songs();
  Find(u"ペン");
  TypeInFindLine(13);
  songSelect.listScroll = 0;
  TotalNotes = {574, 0};
  DrawList();
  Expect("select-find-used");
}

TEST_F(ListFramesTest, FoundCourses) {
  Courses();
  Find(u"Letter");
  songSelect.listScroll = 0;
  DrawList();
  Expect("select-find-courses");
}

// Its author has just saved a line with a mistake, and one that names a picture that is not there.
TEST_F(ListFramesTest, ASkinThatIsNotTaken) {
  WatchSkins = true;
  Jukeboxes();
  const std::string skin = SystemFolder() + "/mine.brd";
  std::filesystem::copy_file(QLM_BINARY_DIR "/_qlmfiles/qlm_scr.brd", skin);
  loadSkin(platform::InnerPath(skin), false);
  DrawList();
  std::ofstream(skin, std::ios::app) << "\r\n#CLIP99 1,0,wide,8,8\r\n#FILE09 nowhere.png\r\n";
  for (const uint32_t ms : {0U, 100U, 200U}) {
    SetTime(kNow + ms);
    DrawList();
  }
  Expect("skin-not-taken");
  ForgetWatchedSkin();
}

TEST_F(ListFramesTest, AnEmptyList) {
  GameState = kStateLists;
  lastSong = -1;
  DrawList();
  Expect("select-empty");
}

// Songs of the stock lists and of others in the course editor.
void EditCourse() {
  GameState = kStateEditCourse;
  CourseMode = songSelect.courseMaking = true;
  songSelect.courseName = u"THE LONG LETTER";
  songSelect.courseLevel = 9;
  CourseSongs = {Song(u"羽ペンの行進 [7KEYS]", u"quillmarch", u"", 132, 7),
                 Song(u"インク瓶の底", u"quillmarch", u"", 92, 5),
                 Song(u"ﾊﾝｶｸｶﾅ no uta", u"ガチョウ feat. Nib & co.", u"", 150, 6),
                 Song(u"Nightfall over the Old Library and Everything in It", u"Nobody", u"", 140, 106),
                 Song(u"夜明け前の机に向かって長い手紙を書いていた頃のこと -Extended Mix-",
                      u"どこかの誰か feat. 鵞鳥 と仲間たち (編曲: もっと長い名前の人)", u"", 174.5F, 12),
                 Song(u"乾いたインク", u"鵞鳥", u"", 150, 8)};
  songSelect.courseNumSongs = 6;
}

TEST_F(ListFramesTest, TheCourseEditor) {
  EditCourse();
  songSelect.courseCursor = 1;
  mEditCourse();
  Expect("course-editor");
}

TEST_F(ListFramesTest, TheNameOfACourseIsTyped) {
  EditCourse();
  GameState = kStateEnterCourse;
  songSelect.courseCursor = kCourseNameLine;
  SetTime(kNow + 500);
  ShowMessage(u"sorry, can't use ? for filename.");
  mEditCourse();
  Expect("course-name");
}

TEST_F(ListFramesTest, ANewCourseWithItsOneLineLeftOut) {
  GameState = kStateEditCourse;
  songSelect.courseName = u"NEW COURSE";
  songSelect.courseLevel = 3;
  songSelect.courseCursor = 0;
  SetTime(kNow - 40);
  mEditCourse();
  Expect("course-new");
}

TEST_F(ListFramesTest, TheStartOfTheProgram) {
  LoadDesk();
  for (const TextView line :
       {u"", u"", u"quillmarch 0 booting... ", u"Seaching 1204... \\home\\me\\charts\\1999\\"}) {
    PrintBoot(line);
  }
  SetTime(kNow + 100);
  DrawBootScreen();
  Expect("boot");
}

TEST_F(ListFramesTest, TheChoiceOfTheMachinesLanes) {
  GameState = kStateAutoLanes;
  AutoLane[0] = AutoLane[5] = true;
  RealHiSpeed = 1;
  ShowBGA = true;
  SetTime(kNow + 200);
  DrawLaneChoice();
  Expect("lane-choice");
}

}  // namespace
}  // namespace qlm
