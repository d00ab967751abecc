// The real program from its startup menu on, on a display that only memory sees: the first start, the ends of
// the menu, and the game behind it in the same process.
#include <csignal>
#include <filesystem>
#include <memory>

#include "base/paths.h"
#include "platform/files.h"
#include "platform/surface.h"
#include "tests/run/installed_game.h"
#include "tests/support/process.h"
#include "tests/support/x_display.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

class MenuRunTest : public InstalledGameTest {
 protected:
  // With a song in the stock songs' folder.
  MenuRunTest() {
    WriteText(u"songs\\one\\a.bms", u"\r\n#PLAYER 1\r\n#TITLE a song\r\n#BPM 240\r\n#00111:01\r\n");
  }

  void StartDisplay(const std::string& size = "1024x768") {
    display_ = std::make_unique<XDisplay>(size);
    ASSERT_FALSE(display_->Name().empty());
  }
  void Start(std::vector<std::string> words = {}, const std::string& driver = "") {
    words.insert(words.begin(), Program());
    program_ = std::make_unique<Process>(
        words, std::map<std::string, std::string>{{"DISPLAY", display_ ? display_->Name() : ""},
                                                  {"WAYLAND_DISPLAY", ""},
                                                  {"XDG_SESSION_TYPE", ""},
                                                  {"QT_QPA_PLATFORM", driver},
                                                  {"LANG", ""},
                                                  {"LC_ALL", ""},
                                                  {"SDL_VIDEODRIVER", ""},
                                                  {"SDL_AUDIODRIVER", "dummy"}});
  }
  void StartMenu() {
    StartDisplay();
    Start();
    display_->WaitForFocus("quillmarch startup menu");
  }
  // The key goes to the window under the pointer, once the screen behind the start takes keys.
  void LeaveByEsc() {
    for (int i = 0; i < 100 && program_->Running(); ++i) {
      display_->Do({"mousemove", "320", "240", "key", "Escape"});
      Rest(200);
    }
    ExpectEnd(0);
  }
  void ExpectEnd(int status) {
    const ProcessResult result = program_->Wait(60);
    EXPECT_FALSE(result.timedOut) << DebugText();
    EXPECT_EQ(result.exitStatus, status) << result.errors;
    EXPECT_TRUE(DebugText().ends_with("complete.\r\n")) << DebugText();
  }
  std::string Settings() const { return ReadBytes(DataPath(u"qlm_conf.ini")); }
  bool SettingIs(const std::string& line) const {
    return Settings().find("\r\n" + line + "\r\n") != std::string::npos;
  }

  std::unique_ptr<XDisplay> display_;
  std::unique_ptr<Process> program_;
};

TEST_F(MenuRunTest, FirstStartLeadsFromTheMenuToTheStockSongs) {
  StartMenu();
  EXPECT_FALSE(LogHolds("[InitDD]")) << "the game waits";
  const platform::SurfacePtr menu = display_->Screenshot();
  ASSERT_NE(menu, nullptr);
  display_->Do({"key", "Return"});
  WaitForLine("Loading default skin...");
  EXPECT_TRUE(LogHolds("# BMS-list(s) aren't found. Make now."));
  EXPECT_TRUE(FileExists(DataPath(u"jukelist\\songs.qbl")));
  Rest(1500);
  const platform::SurfacePtr list = display_->Screenshot();
  ASSERT_NE(list, nullptr);
  int64_t differing = 0;
  for (int32_t y = 0; y < 768; ++y) {
    for (int32_t x = 0; x < 1024; ++x) differing += menu->Pixel(x, y) != list->Pixel(x, y) ? 1 : 0;
  }
  EXPECT_GT(differing, 100'000) << "the game stands where the menu stood";
  LeaveByEsc();  // the keyboard is the game's
}

TEST_F(MenuRunTest, WhatIsSetInTheMenuHoldsInTheGame) {
  StartMenu();
  // The second panel, and in it, behind "Debug" and half size, the window.
  display_->Do({"key", "ctrl+Tab"});
  display_->Do({"key", "Tab", "Tab", "Tab", "Tab", "space"});
  display_->Do({"key", "Return"});
  WaitForLine("Loading default skin...");
  Rest(500);
  const platform::SurfacePtr list = display_->Screenshot();
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list->Pixel(20, 20), 0U) << "a window in the middle leaves the edge of the screen free";
  LeaveByEsc();
  EXPECT_TRUE(SettingIs("Windowed=True")) << Settings();
  EXPECT_TRUE(SettingIs("DirectBlt=True")) << Settings();
}

TEST_F(MenuRunTest, CloseButtonOfTheMenuSavesAndEnds) {
  StartMenu();
  ASSERT_TRUE(display_->PressCloseButton());
  ExpectEnd(0);
  EXPECT_FALSE(LogHolds("[InitDD]"));
  EXPECT_NE(Settings().find("[MainForm]"), std::string::npos);
}

TEST_F(MenuRunTest, SignalsEndTheMenuInGoodOrder) {
  StartMenu();
  for (const int signal : {SIGTERM, SIGHUP}) {
    if (signal == SIGHUP) {
      Start();
      display_->WaitForWindow("quillmarch startup menu");
    }
    program_->Signal(signal);
    ExpectEnd(0);
    EXPECT_FALSE(LogHolds("[InitDD]"));
  }
}

TEST_F(MenuRunTest, DisplayThatGoesAwayUnderTheMenuOrBehindItEndsTheProgramAndSaves) {
  for (const bool inGame : {false, true}) {
    StartMenu();
    if (inGame) {
      display_->Do({"key", "Return"});
      WaitForLine("Loading default skin...");
    }
    display_->Kill();
    ExpectEnd(1);
    EXPECT_TRUE(LogHolds("# The display went away.")) << inGame;
    EXPECT_NE(Settings().find("[MainForm]"), std::string::npos) << inGame;
    fs::remove(SystemFolder() + "/_qlmfiles/qlm_conf.ini");
  }
}

TEST_F(MenuRunTest, DriverThatTheToolkitLacksIsLeftOut) {
  StartDisplay();
  Start({}, "nowhere:x;moon");
  display_->WaitForWindow("quillmarch startup menu");
  ASSERT_TRUE(display_->PressCloseButton());
  ExpectEnd(0);
}

TEST_F(MenuRunTest, NoMenuLeadsStraightToTheList) {
  StartDisplay();
  Start({"--no-menu"});
  WaitForLine("Loading default skin...");
  EXPECT_FALSE(LogHolds("aren't found"));
  LeaveByEsc();
}

TEST_F(MenuRunTest, WithoutADisplayThereIsNoMenu) {
  Start();
  ExpectEnd(0);
  EXPECT_FALSE(LogHolds("aren't found"));
}

TEST_F(MenuRunTest, SmallScreenShowsTheMenuWithinIt) {
  StartDisplay("640x480");
  Start();
  display_->WaitForFocus("quillmarch startup menu");
  // The banner's line ends before the right edge, and the start button stands above the lower one: where it
  // has the focus it is pressed by its key.
  display_->Do({"key", "Return"});
  WaitForLine("Loading default skin...");
  LeaveByEsc();
}

}  // namespace
}  // namespace qlm
