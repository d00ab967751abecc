// A whole evening at the real program, on a display that only memory sees: the first start, browsing, a
// failed play, a play that ranks, a name, and all of it found again by the next start. Another evening with a
// course.
#include <filesystem>
#include <memory>

#include "base/paths.h"
#include "files/course_files.h"
#include "files/scores.h"
#include "platform/files.h"
#include "platform/surface.h"
#include "state/courses.h"
#include "state/scores.h"
#include "tests/run/installed_game.h"
#include "tests/support/process.h"
#include "tests/support/x_display.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

class EveningTest : public InstalledGameTest {
 protected:
  // With two songs in the stock songs' folder.
  EveningTest() : display_("640x480") {
    // One note at 4 s under the key Z, with a second to either side of it that still counts as GOOD.
    WriteText(u"songs\\b\\one.bms",
              u"\r\n#PLAYER 1\r\n#TITLE 羽 [ONE]\r\n#ARTIST us\r\n#GENRE test\r\n#BPM 30\r\n#RANK 3\r\n"
              u"#PLAYLEVEL 1\r\n#TOTAL 400\r\n#00011:0001\r\n");
    WriteText(u"songs\\a.bms",
              u"\r\n#PLAYER 1\r\n#TITLE a song\r\n#ARTIST us\r\n#GENRE test\r\n#BPM 240\r\n#PLAYLEVEL 7\r\n"
              u"#00111:01\r\n#00511:01\r\n");
    WriteText(
        u"_qlmfiles\\qlm_conf.ini",
        u"[Core]\r\nWindowed=True\r\n[Setting]\r\nDirectBlt=True\r\nUserPlay=True\r\nHiSpeed=1\r\n"
        u"RealHiSpeed=1\r\nBMSPreview=1\r\nPreviewDelay=300\r\nDrawLimit=3\r\nShowClearedOnList=True\r\n");
  }

  void Start() {
    platform::DeleteFile(DataPath(u"debug.txt"));
    program_ = std::make_unique<Process>(
        std::vector<std::string>{Program(), "--no-menu"},
        std::map<std::string, std::string>{{"DISPLAY", display_.Name()},
                                           {"WAYLAND_DISPLAY", ""},
                                           {"XDG_SESSION_TYPE", ""},
                                           {"XDG_DATA_HOME", SystemFolder() + "/home"},
                                           {"SDL_VIDEODRIVER", ""},
                                           {"SDL_AUDIODRIVER", "dummy"}});
    // The lists are up when their skin is.
    WaitForLine("Loading default skin...");
    Rest(1200);  // the rows have all appeared
    display_.Do({"mousemove", "320", "240"});
  }

  void Press(const std::string& key) const { display_.Do({"key", key}); }
  // Holds the key for some frames, again and again, until the words stand in the log so many times.
  void HoldUntilLine(const std::string& key, const std::string& words, int times) {
    for (int i = 0; i < 100 && CountLines(words) < times; ++i) {
      display_.Do({"keydown", key, "sleep", "0.1", "keyup", key, "sleep", "0.2"});
    }
    EXPECT_GE(CountLines(words), times) << words;
  }
  // How many pixels of a part of the screen differ between two moments.
  static int64_t Differing(const platform::Surface& a, const platform::Surface& b,
                           const platform::Rect& part) {
    int64_t pixels = 0;
    for (int32_t y = part.top; y < part.bottom; ++y) {
      for (int32_t x = part.left; x < part.right; ++x) pixels += a.Pixel(x, y) != b.Pixel(x, y) ? 1 : 0;
    }
    return pixels;
  }

  void Quit() {
    for (int i = 0; i < 100 && program_->Running(); ++i) {
      Press("Escape");
      Rest(200);
    }
    const ProcessResult result = program_->Wait(60);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
  }

  XDisplay display_;
  std::unique_ptr<Process> program_;
};

// Where the score of the first place and the count of plays stand.
constexpr platform::Rect kBestScore = {464, 38, 636, 66};

TEST_F(EveningTest, FromTheFirstStartToTheNextOne) {
  ASSERT_FALSE(display_.Name().empty());
  Start();
  WaitForLine("0 juke(s) has detected.");
  EXPECT_TRUE(FileExists(DataPath(u"jukelist\\songs.qbl")));

  // Open the only list and sort it by level: the song of one note comes first, and its preview is loaded.
  Press("Return");
  Press("KP_End");
  WaitForLine("[BMSRead]");
  const platform::SurfacePtr before = display_.Screenshot();
  ASSERT_NE(before, nullptr);

  // Down to the other song, and fail it: with PRESSURE on, its first miss ends it.
  Press("Down");
  WaitForLine("[BMSRead] a.bms");
  Press("F12");
  Press("Return");
  WaitForLine("playloop end");
  HoldUntilLine("z", "Restore SkinMap(0)", 1);
  // Back on the list, its preview is loaded again.
  WaitForLine("[BMSRead] a.bms", 3);
  EXPECT_EQ(ReadBytes(Join(AppPath, u"\\songs\\a.qsd")).substr(0, 4), std::string("\1\0\0\0", 4));
  Press("F12");

  // Back up, and play the one note: 1 s of pre-roll and 4 s of the chart.
  Press("Up");
  Rest(500);
  Press("Return");
  WaitForLine("playloop start", 2);
  display_.Do({"sleep", "4.9", "keydown", "z", "sleep", "0.1", "keyup", "z"});
  WaitForLine("playloop end", 2);
  HoldUntilLine("z", "Restore SkinMap(0)", 2);
  Rest(500);
  display_.Do({"key", "--repeat", "20", "BackSpace", "type", "Quill"});
  Press("Return");
  // The boot, and the two returns to the list.
  WaitForLine("[loadSkin] : qlm_scr.brd", 3);
  Rest(500);

  TakeScores(ReadBytes(Join(AppPath, u"\\songs\\b\\one.qsd")));
  EXPECT_EQ(scores.playCount, 1);
  const ScoreEntry& best = scores.ScoreTable[0];
  EXPECT_EQ(std::string(best.name.begin(), best.name.end()), "Quill   ");
  EXPECT_GT(best.score, 0);
  EXPECT_EQ(best.maxCombo, 1);
  EXPECT_EQ(best.hiSpeed, 1);
  Quit();

  // The next start finds the list without a search, and the score in it.
  Start();
  EXPECT_FALSE(LogHolds("[MakeBMSListFile]"));
  Press("Return");
  Press("KP_End");
  Press("Down");
  Press("Up");
  Rest(1500);
  const platform::SurfacePtr after = display_.Screenshot();
  ASSERT_NE(after, nullptr);
  EXPECT_GT(Differing(*before, *after, kBestScore), 50) << "name, score and one play";
  Quit();
  EXPECT_NE(ReadBytes(DataPath(u"qlm_conf.ini")).find("PreviewDelay=300"), std::string::npos);
}

// What the frame of the course editor shows behind "STARS : ".
constexpr platform::Rect kStars = {134, 45, 634, 60};

TEST_F(EveningTest, ACourseIsMadePlayedFoundChangedAndDeleted) {
  ASSERT_FALSE(display_.Name().empty());
  fs::remove_all(SystemFolder() + "/_qlmfiles/courselist");
  // Two short songs with a note after a second.
  for (const TextView name : {u"a.bms", u"b\\one.bms"}) {
    WriteText(Join(u"songs\\", name),
              Join(u"\r\n#PLAYER 1\r\n#TITLE 羽 ", name, u"\r\n#BPM 240\r\n#PLAYLEVEL 1\r\n#00111:01\r\n"));
  }
  const Text course = DataPath(u"courselist\\Evening.qcl");
  Start();

  // A new course, named, with a star more than it begins with.
  Press("Tab");
  Press("Return");
  Rest(300);
  const platform::SurfacePtr threeStars = display_.Screenshot();
  Press("Return");
  display_.Do({"key", "--repeat", "10", "BackSpace", "type", "Evening?"});
  Press("Return");
  display_.Do({"key", "Down", "Right"});
  Rest(300);
  const platform::SurfacePtr fourStars = display_.Screenshot();
  ASSERT_NE(threeStars, nullptr);
  ASSERT_NE(fourStars, nullptr);
  EXPECT_GT(Differing(*threeStars, *fourStars, kStars), 5);

  // Three songs: the first, the second and the first of the only jukebox.
  display_.Do({"key", "Down", "Return", "Return", "Return"});
  display_.Do({"key", "Down", "Return", "Return", "Down", "Return"});
  display_.Do({"key", "Down", "Return", "Return", "Return"});
  Press("F10");
  WaitForLine("Saved.");
  CourseLoad(course, false);
  EXPECT_EQ(courseStars, 4);
  ASSERT_EQ(numsongs, 3);
  EXPECT_EQ(CourseSongs[0].path, CourseSongs[2].path);
  EXPECT_NE(CourseSongs[0].path, CourseSongs[1].path);
  for (size_t song = 0; song < 3; ++song) EXPECT_TRUE(FileExists(CourseSongs[song].path)) << song;

  // The cursor stands on it. The machine plays it to its results.
  Press("F8");
  Press("Return");
  WaitForLine("playloop start");
  WaitForLine("playloop end");
  HoldUntilLine("z", "Restore SkinMap(0)", 1);
  Rest(500);
  Quit();

  // The next evening its second song goes, and then the course itself.
  Start();
  display_.Do({"key", "Tab", "Down", "space"});
  WaitForLine("course loaded.");
  display_.Do({"key", "Down", "Down", "Down", "Delete", "F10"});
  WaitForLine("Saved.");
  CourseLoad(course, false);
  ASSERT_EQ(numsongs, 2);
  EXPECT_EQ(CourseSongs[0].path, CourseSongs[1].path);
  // The list is busy for a moment behind the save, and takes no key.
  for (int i = 0; i < 50 && FileExists(course); ++i) {
    Press("Delete");
    Rest(100);
  }
  EXPECT_FALSE(FileExists(course));
  Quit();
}

}  // namespace
}  // namespace qlm
