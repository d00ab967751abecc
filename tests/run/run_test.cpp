// The real program plays a chart in a window, in full screen, and without any display; what it shows is
// looked at.
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <thread>

#include "base/paths.h"
#include "platform/files.h"
#include "platform/surface.h"
#include "platform/text.h"
#include "tests/support/game_test.h"
#include "tests/support/process.h"
#include "tests/support/x_display.h"
#include "tools/media_files/bmp.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

// A 24-bit BMP of 256 by 256 whose four quarters have these colours.
std::string QuarteredBmp(const std::array<platform::Colour, 4>& colours) {
  std::vector<std::vector<uint32_t>> rows(256, std::vector<uint32_t>(256));
  for (size_t y = 0; y < 256; ++y) {
    for (size_t x = 0; x < 256; ++x) rows[y][x] = colours[y / 128 * 2 + x / 128];
  }
  return media::BmpOf(rows);
}

constexpr std::array<platform::Colour, 4> kQuarters = {0xC02020, 0x20C020, 0x2020C0, 0xC0C020};

class RunTest : public GameTest {
 protected:
  // A copy of the program with a data folder of its own, and a chart of a few seconds with a picture.
  RunTest() {
    fs::copy_file(QLM_BINARY_DIR "/quillmarch", SystemFolder() + "/quillmarch");
    fs::copy(QLM_BINARY_DIR "/_qlmfiles/wav", SystemFolder() + "/_qlmfiles/wav");
    // The start wants charts for its lists.
    WriteText(u"songs\\stock.bms", u"\r\n#TITLE stock\r\n");
    WriteData(u"song\\base.bmp", QuarteredBmp(kQuarters));
    WriteText(u"song\\test.bms",
              u"\r\n#PLAYER 1\r\n#TITLE 試験\r\n#ARTIST us\r\n#GENRE test\r\n#BPM 240\r\n#BMP01 base.bmp\r\n"
              u"#00004:01\r\n#00011:01\r\n#00311:01\r\n#00411:01\r\n");
    chart_ = SystemFolder() + "/song/test.bms";
  }

  void WriteSettings(TextView core, TextView setting) const {
    WriteText(
        u"_qlmfiles\\qlm_conf.ini",
        Join(u"[Core]\r\n", core,
             u"[Setting]\r\nShowBGA=True\r\nPlaySound=True\r\nUserPlay=True\r\nHiSpeed=1\r\nRealHiSpeed=1\r\n"
             u"DEMOMode=True\r\n",
             setting));
  }

  void StartDisplay(const std::string& size) {
    display_ = std::make_unique<XDisplay>(size);
    ASSERT_FALSE(display_->Name().empty());
  }

  // Starts the program on the display, or on none.
  void Start(const std::string& waylandDisplay = "") {
    program_ = std::make_unique<Process>(
        std::vector<std::string>{SystemFolder() + "/quillmarch", "--once", firstOption_, chart_},
        std::map<std::string, std::string>{{"DISPLAY", display_ ? display_->Name() : ""},
                                           {"WAYLAND_DISPLAY", waylandDisplay},
                                           {"XDG_SESSION_TYPE", ""},
                                           {"SDL_VIDEODRIVER", ""},
                                           {"SDL_AUDIODRIVER", "dummy"}});
  }

  // The same, up to the begin of the play.
  void StartPlay(const std::string& waylandDisplay = "") {
    Start(waylandDisplay);
    ASSERT_TRUE(WaitFor([&] { return LogHolds("playloop start"); })) << DebugText();
  }

  // The same, until the chart's picture can have been seen for a while.
  void StartProgram() {
    StartPlay();
    std::this_thread::sleep_for(std::chrono::milliseconds(2500));
  }

  // The chart's picture stands at (192, 128) of the frame, whose pixels are `scale` pixels of the screen.
  void ExpectPicture(const platform::Surface& screen, int32_t left, int32_t top, int32_t scale) const {
    for (size_t i = 0; i < kQuarters.size(); ++i) {
      const int32_t x = 192 + 64 + 128 * static_cast<int32_t>(i % 2);
      const int32_t y = 128 + 64 + 128 * static_cast<int32_t>(i / 2);
      EXPECT_EQ(screen.Pixel(left + x * scale, top + y * scale), kQuarters[i]) << "quarter " << i;
    }
    EXPECT_EQ(screen.Pixel(left + 191 * scale, top + 200 * scale), 0U);
  }

  void ReadAndCloseBox(const std::string& title) {
    display_->WaitForWindow(title);
    EXPECT_TRUE(program_->Running());
    // Its first quarter of a second does not count, nor does what comes before it has the keyboard.
    for (int i = 0; i < 200 && program_->Running(); ++i) {
      display_->Do({"key", "Return"});
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
  }

  void ExpectGoodEnd() {
    const ProcessResult result = program_->Wait(30);
    EXPECT_FALSE(result.timedOut) << DebugText();
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
  }

  // Keys and settings are written, and the log ends as it should.
  void ExpectSavedAndClosed() {
    EXPECT_TRUE(DebugText().ends_with("complete.\r\n")) << DebugText();
    EXPECT_EQ(ReadBytes(DataPath(u"qlm_keycnf.dat")).size(), 802U);
    EXPECT_NE(ReadBytes(DataPath(u"qlm_conf.ini")).find("[MainForm]"), std::string::npos);
    platform::DeleteFile(DataPath(u"qlm_keycnf.dat"));
    platform::DeleteFile(DataPath(u"debug.txt"));
  }

  std::string DebugText() const { return ReadBytes(DataPath(u"debug.txt")); }
  bool LogHolds(std::string_view words) const { return DebugText().find(words) != std::string::npos; }

  template <typename Condition>
  static bool WaitFor(Condition condition) {
    for (int i = 0; i < 600; ++i) {
      if (condition()) return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return false;
  }

  std::string chart_;
  std::string firstOption_ = "-P";  // which changes nothing
  std::unique_ptr<XDisplay> display_;
  std::unique_ptr<Process> program_;
};

TEST_F(RunTest, PlaysInAWindowAndEndsByItself) {
  WriteSettings(u"Windowed=True\r\n", u"DirectBlt=True\r\n");
  StartDisplay("640x480");
  StartProgram();
  const platform::SurfacePtr screen = display_->Screenshot();
  ASSERT_NE(screen, nullptr);
  ExpectPicture(*screen, 0, 0, 1);
  ExpectGoodEnd();
  EXPECT_TRUE(LogHolds("playloop end")) << DebugText();
  EXPECT_TRUE(DebugText().ends_with("complete.\r\n")) << DebugText();
}

// 1280 by 960 and a title bar of 40 are all that there is.
TEST_F(RunTest, ThisTimeInAWindowOfTwiceTheSize) {
  WriteSettings(u"Windowed=False\r\n", u"DirectBlt=False\r\n");
  firstOption_ = "--window";
  StartDisplay("1280x1000");
  StartProgram();
  const platform::SurfacePtr screen = display_->Screenshot();
  ASSERT_NE(screen, nullptr);
  ExpectPicture(*screen, 0, 20, 2);
  ExpectGoodEnd();
  const std::string settings = ReadBytes(DataPath(u"qlm_conf.ini"));
  EXPECT_NE(settings.find("Windowed=False\r\n"), std::string::npos);
  EXPECT_NE(settings.find("DirectBlt=False\r\n"), std::string::npos);
}

// A pixel less, and the whole desktop is taken, as the settings say.
TEST_F(RunTest, WithoutRoomForThatWindowAsTheSettingsSay) {
  WriteSettings(u"Windowed=False\r\n", u"");
  firstOption_ = "--window";
  StartDisplay("1280x999");
  StartProgram();
  const platform::SurfacePtr screen = display_->Screenshot();
  ASSERT_NE(screen, nullptr);
  ExpectPicture(*screen, 0, 19, 2);
  ExpectGoodEnd();
}

TEST_F(RunTest, HalfsizeShowsTheWholeFrameInASmallWindow) {
  WriteSettings(u"Windowed=True\r\nHalfsize=True\r\n", u"DirectBlt=True\r\n");
  StartDisplay("640x480");
  StartProgram();
  const platform::SurfacePtr screen = display_->Screenshot();
  ASSERT_NE(screen, nullptr);
  // The window of 320 by 240 stands in the middle, and the picture's 128 pixels at (96, 64) of it.
  EXPECT_EQ(screen->Pixel(160 + 96 + 32, 120 + 64 + 32), kQuarters[0]);
  EXPECT_EQ(screen->Pixel(160 + 96 + 126, 120 + 64 + 126), kQuarters[3]);
  EXPECT_EQ(screen->Pixel(160 + 96 + 130, 120 + 64 + 126), 0U);
}

TEST_F(RunTest, FillsTheScreenByWholeNumbers) {
  WriteSettings(u"Windowed=False\r\n", u"");
  StartDisplay("1400x960");
  StartProgram();
  const platform::SurfacePtr screen = display_->Screenshot();
  ASSERT_NE(screen, nullptr);
  ExpectPicture(*screen, 60, 0, 2);
  EXPECT_EQ(screen->Pixel(30, 400), 0U);  // a black border
}

TEST_F(RunTest, ShiftAndEscEndAtOnce) {
  WriteSettings(u"Windowed=True\r\n", u"DirectBlt=True\r\n");
  StartDisplay("640x480");
  StartProgram();
  display_->Do({"mousemove", "320", "240", "keydown", "Shift_L", "keydown", "Escape"});
  ExpectGoodEnd();
  EXPECT_FALSE(LogHolds("playloop end"));
  EXPECT_TRUE(LogHolds("[ExitApp]")) << DebugText();
}

TEST_F(RunTest, EscHeldEndsTheSong) {
  // By itself it would end after more than a minute.
  WriteText(u"song\\test.bms", u"\r\n#PLAYER 1\r\n#TITLE long\r\n#BPM 60\r\n#02011:01\r\n");
  WriteSettings(u"Windowed=True\r\n", u"DirectBlt=True\r\n");
  StartDisplay("640x480");
  StartProgram();
  display_->Do({"keydown", "Escape"});
  ExpectGoodEnd();
  EXPECT_TRUE(LogHolds("playloop end")) << DebugText();
}

// Lines of the transcript that tell of a judgement.
std::vector<std::string> Judgements(const std::string& report) {
  std::vector<std::string> lines;
  std::istringstream words(report);
  for (std::string line; std::getline(words, line);) {
    if (line.starts_with("{\"clock\": ")) lines.push_back(line);
  }
  return lines;
}

// The number behind a key of a judgement's line.
double NumberOf(const std::string& line, const std::string& key) {
  const size_t at = line.find("\"" + key + "\": ");
  return at == std::string::npos ? -1 : std::strtod(line.c_str() + at + key.size() + 4, nullptr);
}

TEST_F(RunTest, PressesHitNotes) {
  // 60 BPM, the widest windows, a note every two seconds from 4 s on: lane 1 by Z, lane 2 by S, lane 3 by X.
  WriteText(u"song\\hands.bms",
            u"\r\n#PLAYER 1\r\n#TITLE hands\r\n#ARTIST us\r\n#GENRE test\r\n#BPM 60\r\n#RANK 3\r\n"
            u"#00111:0100\r\n#00112:0001\r\n#00213:0100\r\n");
  chart_ = SystemFolder() + "/song/hands.bms";
  WriteSettings(u"Windowed=True\r\n", u"DirectBlt=True\r\n");
  // Hands, and no machine.
  const Text path = DataPath(u"qlm_conf.ini");
  WriteData(u"_qlmfiles\\qlm_conf.ini", platform::EncodeCp932(Replace(platform::DecodeCp932(ReadBytes(path)),
                                                                      u"DEMOMode=True", u"DEMOMode=False")));
  StartDisplay("640x480");
  const std::string report = SystemFolder() + "/played.txt";
  setenv("QUILLMARCH_TRANSCRIPT", report.c_str(), 1);
  StartPlay();
  unsetenv("QUILLMARCH_TRANSCRIPT");
  // The pre-roll lasts a second, so that the notes come 5, 7 and 9 seconds from here. One process presses all
  // three, so that its own start counts once.
  display_->Do({"mousemove", "320", "240", "sleep", "4.9", "key", "z", "sleep", "1.95", "key", "s", "sleep",
                "1.95", "key", "x"});
  ExpectGoodEnd();
  const std::vector<std::string> judged = Judgements(ReadBytes(platform::InnerPath(report)));
  ASSERT_EQ(judged.size(), 3U) << ReadBytes(platform::InnerPath(report)) << DebugText();
  for (size_t i = 0; i < judged.size(); ++i) {
    EXPECT_EQ(NumberOf(judged[i], "channel"), 11 + static_cast<double>(i)) << judged[i];
    // A miss would come 48 units behind its note; a press that hits is graded above POOR.
    EXPECT_GT(NumberOf(judged[i], "grade"), 0) << judged[i];
  }
}

TEST_F(RunTest, FatalErrorStandsInABoxUntilAKeyIsPressed) {
  for (const TextView windowed : {u"False", u"True"}) {
    WriteSettings(Join(u"numObjs=1\r\nWindowed=", windowed, u"\r\n"), u"DirectBlt=True\r\n");
    StartDisplay("640x480");
    Start();
    ReadAndCloseBox("too few numObjs!");
    const ProcessResult result = program_->Wait(30);
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.exitStatus, 1) << result.errors;
    ExpectSavedAndClosed();
  }
}

TEST_F(RunTest, MissingDataFolderStandsInABoxBeforeThereIsAWindow) {
  fs::remove_all(SystemFolder() + "/_qlmfiles");
  StartDisplay("640x480");
  Start();
  ReadAndCloseBox("critical error");
  const ProcessResult result = program_->Wait(30);
  EXPECT_FALSE(result.timedOut);
  EXPECT_EQ(result.exitStatus, 1) << result.errors;
}

TEST_F(RunTest, ChartIsNamedInTheTitleOfAWindowAndNotInFullScreen) {
  WriteText(u"song\\test.bms", u"\r\n#TITLE title\r\n#ARTIST us\r\n#GENRE test\r\n#BPM 240\r\n#00411:01\r\n");
  WriteSettings(u"Windowed=True\r\n", u"DirectBlt=True\r\n");
  StartDisplay("640x480");
  StartPlay();
  display_->WaitForWindow("\\[test\\] title / us - quillmarch");
  program_->Kill();
  WriteSettings(u"Windowed=False\r\n", u"");
  platform::DeleteFile(DataPath(u"debug.txt"));
  StartDisplay("640x480");
  StartPlay();
  display_->WaitForWindow("quillmarch");
}

TEST_F(RunTest, CloseButtonEndsInGoodOrder) {
  WriteSettings(u"Windowed=True\r\n", u"DirectBlt=True\r\n");
  StartDisplay("640x480");
  StartPlay();
  ASSERT_TRUE(display_->PressCloseButton());
  ExpectGoodEnd();
  EXPECT_FALSE(LogHolds("playloop end"));
  ExpectSavedAndClosed();
}

TEST_F(RunTest, DisplayThatGoesAwayEndsTheProgram) {
  for (const TextView windowed : {u"False", u"True"}) {
    WriteSettings(Join(u"Windowed=", windowed, u"\r\n"), u"DirectBlt=True\r\n");
    StartDisplay("640x480");
    StartPlay();
    display_->Kill();
    const ProcessResult result = program_->Wait(30);
    EXPECT_FALSE(result.timedOut);
    EXPECT_EQ(result.exitStatus, 1) << result.errors;
    EXPECT_TRUE(LogHolds("# The display went away."));
    ExpectSavedAndClosed();
  }
}

TEST_F(RunTest, SignalsEndInGoodOrder) {
  for (const int signal : {SIGTERM, SIGHUP}) {
    WriteSettings(u"", u"");
    StartPlay();
    program_->Signal(signal);
    ExpectGoodEnd();
    EXPECT_FALSE(LogHolds("playloop end")) << signal;
    ExpectSavedAndClosed();
  }
}

TEST_F(RunTest, WaylandSessionThatIsGoneCostsNoProcessor) {
  WriteSettings(u"", u"");
  StartPlay("wayland-that-is-gone");
  std::this_thread::sleep_for(std::chrono::seconds(2));
  program_->Signal(SIGTERM);
  const ProcessResult result = program_->Wait(30);
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(LogHolds("# No display: ")) << DebugText();
  EXPECT_LT(result.processorSeconds, 1);
}

TEST_F(RunTest, PlaysWithoutDisplayAndSound) {
  WriteSettings(u"", u"");
  const ProcessResult result = qlm::Run(
      {SystemFolder() + "/quillmarch", chart_},
      {{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}, {"SDL_VIDEODRIVER", ""}, {"SDL_AUDIODRIVER", "none at all"}},
      60);
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_NE(result.output.find("試験"), std::string::npos) << result.output;
  EXPECT_NE(result.output.find("debug.txt"), std::string::npos) << result.output;
  EXPECT_TRUE(LogHolds("playloop end")) << DebugText();
}

TEST_F(RunTest, WritesEverySettingAtItsEnd) {
  const ProcessResult result = qlm::Run(
      {SystemFolder() + "/quillmarch", "--demo", chart_},
      {{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}, {"SDL_VIDEODRIVER", ""}, {"SDL_AUDIODRIVER", "dummy"}}, 60);
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  const std::string settings = ReadBytes(DataPath(u"qlm_conf.ini"));
  EXPECT_NE(settings.find("RealHiSpeed=1\r\n"), std::string::npos) << settings;
  EXPECT_NE(settings.find("DEMOMode=False\r\n"), std::string::npos)
      << "a demo run is not what the player set";
}

}  // namespace
}  // namespace qlm
