// The real program from its start to its end, without a display or a sound card.
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "base/paths.h"
#include "files/key_table.h"
#include "platform/files.h"
#include "platform/text.h"
#include "shell/version.h"
#include "state/keys.h"
#include "tests/support/game_test.h"
#include "tests/support/process.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

// Half a second of chart, so that a play takes little more than its pre-roll.
constexpr TextView kChart =
    u"\r\n#PLAYER 1\r\n#TITLE boot\r\n#ARTIST us\r\n#GENRE test\r\n#BPM 480\r\n#BMP01 p.bmp\r\n"
    u"#00004:01\r\n#00011:01\r\n";

class BootTest : public GameTest {
 protected:
  // A copy of the program, with a chart for its lists.
  BootTest() {
    fs::copy_file(QLM_BINARY_DIR "/quillmarch", SystemFolder() + "/quillmarch");
    WriteText(u"songs\\stock.bms", u"\r\n#TITLE stock\r\n");
  }

  ProcessResult Start(std::vector<std::string> arguments, int seconds = 60) const {
    arguments.insert(arguments.begin(), SystemFolder() + "/quillmarch");
    return qlm::Run(arguments,
                    {{"DISPLAY", ""},
                     {"WAYLAND_DISPLAY", ""},
                     {"SDL_VIDEODRIVER", "dummy"},
                     {"SDL_AUDIODRIVER", "dummy"}},
                    seconds);
  }
  // With files of at most that many KiB, as on a full disk.
  ProcessResult StartOnFullDisk(const std::string& kib, const std::string& arguments) const {
    return qlm::Run(
        {"bash", "-c",
         "trap '' XFSZ; ulimit -f " + kib + "; exec " + SystemFolder() + "/quillmarch " + arguments},
        {{"DISPLAY", ""},
         {"WAYLAND_DISPLAY", ""},
         {"SDL_VIDEODRIVER", "dummy"},
         {"SDL_AUDIODRIVER", "dummy"}},
        60);
  }
  // How often the words stand in the text.
  static int Count(const std::string& text, const std::string& words) {
    int count = 0;
    for (size_t at = text.find(words); at != std::string::npos; at = text.find(words, at + 1)) ++count;
    return count;
  }
  std::string Chart(TextView name) const { return platform::SystemPath(WriteText(name, kChart)); }

  // The log without its times.
  std::vector<std::string> LogLines() const {
    std::vector<std::string> lines;
    for (const Text& line : Split(platform::DecodeCp932(ReadBytes(DataPath(u"debug.txt"))), kCrLf)) {
      if (line.size() > 10) lines.push_back(Utf8(line.substr(10)));
    }
    return lines;
  }
  bool LogHolds(const std::string& words) const {
    const std::vector<std::string> lines = LogLines();
    return std::any_of(lines.begin(), lines.end(),
                       [&](const std::string& line) { return line.find(words) != std::string::npos; });
  }
  // Each of the lines stands in the log, to the letter, and in this order.
  void ExpectInOrder(const std::vector<std::string>& expected) const {
    const std::vector<std::string> lines = LogLines();
    auto from = lines.begin();
    for (const std::string& line : expected) {
      const auto at = std::find(from, lines.end(), line);
      ASSERT_NE(at, lines.end()) << "missing: " << line;
      from = at + 1;
    }
  }
  std::string Settings() const { return ReadBytes(DataPath(u"qlm_conf.ini")); }
};

TEST_F(BootTest, LogsEachStepWordForWord) {
  EXPECT_EQ(Start({"-P"}).exitStatus, 0);
  ExpectInOrder({std::string(67, '-'),
                 "    [InitDX]",
                 "    [InitDI_Keyboard]",
                 "    DirectInput [Keyboard] Initialized",
                 "    # Key-config file wasn't detected. Load default setting.",
                 "    [InitDD]",
                 "    [InitDS]",
                 "    [Start] preparing...",
                 "    Updating list contents",
                 "        [UpdateCourseList]",
                 "        0 course(s) has detected.",
                 "        [UpdateSkinList]",
                 "        0 skins(s) has detected.",
                 "        [UpdateJukeList]",
                 "        -1 juke(s) has detected.",
                 "        Done",
                 "        # BMS-list(s) not found. Make now.",
                 "        [MakeBMSListFile] depth limit:True",
                 "        founds: 0",
                 "        [UpdateJukeList]",
                 "        0 juke(s) has detected.",
                 "        complete.",
                 "        Opening MixerHandle...",
                 "        Loading ConvDict...",
                 "        [ExitApp]",
                 "        saving settings...",
                 "        Kill timers...",
                 "        complete."});
  const std::vector<std::string> lines = LogLines();
  ASSERT_GT(lines.size(), 2U);
  EXPECT_EQ(lines.back(), "        complete.");
  // "yyyy/mm/dd hh:nn:ss" behind it.
  const std::string banner = "[Main] quillmarch " + Utf8(VersionText()) + " start on ";
  EXPECT_TRUE(lines[1].starts_with(banner)) << lines[1];
  EXPECT_EQ(lines[1].size(), banner.size() + 19);
}

TEST_F(BootTest, ReadsTheDictionaryOfTitles) {
  WriteText(u"_qlmfiles\\cnvdict.txt", u"ギター\tGuitar\r\n");
  EXPECT_EQ(Start({"-P"}).exitStatus, 0);
  ExpectInOrder({"        Loading ConvDict...", "        convdict: 1 words are avilable."});
}

TEST_F(BootTest, ListsThatStandAreNotMadeAnew) {
  Start({"-P"});
  Start({"-P"});
  EXPECT_TRUE(LogHolds("0 juke(s) has detected."));
  EXPECT_FALSE(LogHolds("Make now."));
  EXPECT_FALSE(LogHolds("[MakeBMSListFile]"));
}

TEST_F(BootTest, ListsAreMadeAnewWhereAPersonWantsItSo) {
  Start({"-P"});
  WriteText(u"more\\b.bms", kChart);
  WriteData(u"_qlmfiles\\qlm_searchdir.txt", SystemFolder() + "/more\r\n<CURRENTDIR>\\songs\r\n");
  Start({"-P"});
  EXPECT_FALSE(FileExists(DataPath(u"jukelist\\more.qbl")));
  EXPECT_EQ(Start({"--scan", "-P"}).exitStatus, 0);
  EXPECT_TRUE(FileExists(DataPath(u"jukelist\\more.qbl")));
  EXPECT_TRUE(LogHolds("1 juke(s) has detected."));
}

TEST_F(BootTest, WithoutAnyChartToListTheStartEnds) {
  fs::remove_all(SystemFolder() + "/songs");
  const ProcessResult result = Start({Chart(u"s\\a.bms")});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_NE(
      result.errors.find("No BMSs: BMSファイルが見つかりません。「BMS再検索」で検索フォルダを追加してBMS検"
                         "索をしてください。"),
      std::string::npos)
      << result.errors;
  EXPECT_FALSE(LogHolds("Opening MixerHandle..."));
  EXPECT_FALSE(LogHolds("[PlayLoop]"));
  EXPECT_TRUE(LogHolds("[ExitApp]"));
}

TEST_F(BootTest, MakesItsFolders) {
  Start({"-P"});
  for (const TextView folder : {u"jukelist", u"courselist", u"wav"}) {
    EXPECT_TRUE(platform::IsFolder(DataPath(folder))) << Utf8(folder);
  }
}

TEST_F(BootTest, LogHoldsOnlyTheLastRun) {
  Start({"-P"});
  Start({"-P"});
  const size_t lines = LogLines().size();
  Start({"-P"});
  EXPECT_EQ(LogLines().size(), lines);
}

TEST_F(BootTest, MissingDataFolderIsToldAndNothingElseHappens) {
  fs::remove_all(SystemFolder() + "/_qlmfiles");
  const ProcessResult result = Start({"-P"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_NE(result.errors.find(
                "critical error: _qlmfilesフォルダが存在しません。フルセットをダウンロードして展開してく"
                "ださい。\nエクスプローラでcabファイルを展開した場合は、フォルダが正常に展開されないため"
                "このエラーが発生している場合があります。\n同梱されているmake.batを実行してください。"),
            std::string::npos)
      << result.errors;
  EXPECT_FALSE(fs::exists(SystemFolder() + "/_qlmfiles"));
}

TEST_F(BootTest, FileInPlaceOfTheDataFolderIsNoFolder) {
  fs::remove_all(SystemFolder() + "/_qlmfiles");
  WriteData(u"_qlmfiles", "x");
  EXPECT_EQ(Start({"-P"}).exitStatus, 1);
}

TEST_F(BootTest, OptionsAloneRunNoPlay) {
  const ProcessResult result = Start({"-B", "/W", "-q"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_FALSE(LogHolds("[PlayLoop]"));
  EXPECT_FALSE(LogHolds("[BMSLoad]"));
  EXPECT_NE(result.errors.find("no chart was named"), std::string::npos) << result.errors;
}

TEST_F(BootTest, PathWithBlanksPlaysWithPicturesInSpiteOfMinusB) {
  WriteText(u"_qlmfiles\\qlm_conf.ini", u"[Setting]\r\nNoBGA=True\r\nRealHiSpeed=1\r\nHiSpeed=1\r\n");
  const ProcessResult result = Start({Chart(u"my songs\\a b.bms"), "-B-"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(LogHolds("[BMSLoad] a b.bms"));
  EXPECT_TRUE(LogHolds("[LoadBitmap]")) << "its picture is asked for";
  EXPECT_TRUE(LogHolds("playloop end"));
  EXPECT_NE(Settings().find("NoBGA=False\r\n"), std::string::npos);
}

TEST_F(BootTest, PlayTakesTheSkinThatTheSettingsName) {
  WriteText(u"_qlmfiles\\qlm_conf.ini",
            u"[Setting]\r\nRealHiSpeed=1\r\nHiSpeed=1\r\n[Skin]\r\n1P=\\skins\\mine.brd\r\n");
  Start({Chart(u"s\\a.bms")});
  ExpectInOrder({"        Load SkinMap(0) :\\skins\\mine.brd", "        [loadSkin] : mine.brd",
                 "        SKIN NOT EXIST!", "        [loadSkin] : mine.brd", "        SKIN NOT EXIST!"});
  EXPECT_NE(Settings().find("1P=\\skins\\mine.brd\r\n"), std::string::npos);
}

TEST_F(BootTest, FirstOfTwoChartsIsPlayed) {
  const ProcessResult result = Start({Chart(u"s\\a.bms"), Chart(u"s\\b.bms")});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(LogHolds("[BMSLoad] a.bms"));
  EXPECT_FALSE(LogHolds("[BMSLoad] b.bms"));
  EXPECT_NE(result.output.find("Played \"boot\" by us"), std::string::npos) << result.output;
}

TEST_F(BootTest, LoadIsFollowedByTheLoopAndTheEnd) {
  Start({Chart(u"s\\a.bms")});
  const std::vector<std::string> lines = LogLines();
  const auto place = [&](const std::string& words) {
    return std::find_if(lines.begin(), lines.end(),
                        [&](const std::string& line) { return line.find(words) != std::string::npos; }) -
           lines.begin();
  };
  EXPECT_LT(place("[BMSLoad] a.bms"), place("loaded."));
  EXPECT_LT(place("loaded."), place("[PlayLoop]"));
  EXPECT_LT(place("[PlayLoop]"), place("playloop end"));
  EXPECT_LT(place("playloop end"), place("[ExitApp]"));
}

TEST_F(BootTest, MissingChartIsToldAndTheLoopStillRuns) {
  const ProcessResult result = Start({SystemFolder() + "/none.bms"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_NE(result.errors.find("none.bms: there is no such chart file"), std::string::npos) << result.errors;
  EXPECT_TRUE(LogHolds("file not exist."));
  EXPECT_TRUE(LogHolds("[PlayLoop]"));
  EXPECT_TRUE(LogHolds("playloop end"));
  EXPECT_TRUE(LogHolds("error: "));
  EXPECT_TRUE(LogHolds("[ExitApp]"));
}

TEST_F(BootTest, TooSmallAnObjectTableEndsTheProgram) {
  WriteText(u"_qlmfiles\\qlm_conf.ini", u"[Core]\r\nnumObjs=1\r\n[Setting]\r\nOwn=1\r\n");
  const ProcessResult result = Start({Chart(u"s\\a.bms")});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_NE(result.errors.find(
                "too few numObjs!: this time, I need at least 2 objs. but current numObjs value is 1.\n"
                "please check \"numObjs\" value in \"qlm_conf.ini\" file.\n\n"
                "I'm sorry, I can't continue, but this error is fatal."),
            std::string::npos)
      << result.errors;
  EXPECT_FALSE(LogHolds("[PlayLoop]"));
  EXPECT_TRUE(LogHolds("[ExitApp]"));
  EXPECT_NE(Settings().find("numObjs=1\r\n"), std::string::npos) << "the settings are saved";
  EXPECT_EQ(Settings().find("Width=0\r\n"), std::string::npos) << "with the place of the window that is gone";
}

TEST_F(BootTest, SettingsFileIsKeptByteForByte) {
  Start({"-P"});
  std::string settings = "; mine\r\n" + Settings() + "[Own]\r\nkey = 1\r\n";
  WriteData(u"_qlmfiles\\qlm_conf.ini", settings);
  Start({"-P"});
  EXPECT_EQ(Settings(), settings);
}

TEST_F(BootTest, FirstStartWritesTheDefaultKeysAtItsEnd) {
  Start({"-P"});
  SetDefaultKeyMap();
  EXPECT_EQ(ReadBytes(DataPath(u"qlm_keycnf.dat")), KeyTableBytes());
}

TEST_F(BootTest, KeysAreReadAtTheStartAndKept) {
  KeyMap[30] = 11;
  const std::string bytes = KeyTableBytes();
  WriteData(u"_qlmfiles\\qlm_keycnf.dat", bytes);
  Start({"-P"});
  EXPECT_TRUE(LogHolds("Key-config loaded."));
  EXPECT_EQ(ReadBytes(DataPath(u"qlm_keycnf.dat")), bytes);
}

TEST_F(BootTest, KeysThatCannotBeReadAreResetAndTold) {
  fs::create_directory(SystemFolder() + "/_qlmfiles/qlm_keycnf.dat");
  const ProcessResult run = Start({"--once"});
  EXPECT_NE(run.errors.find("information: キーコンフィグをリセットしました。\n"), std::string::npos)
      << run.errors;
  EXPECT_TRUE(LogHolds("Key-config loaded."));
}

TEST_F(BootTest, MixerIsAlwaysFound) {
  Start({"-P"});
  EXPECT_FALSE(LogHolds("Can't Detect MixerHandle!"));
}

TEST_F(BootTest, TranscriptIsWrittenBehindThePlay) {
  const std::string file = SystemFolder() + "/played.txt";
  setenv("QUILLMARCH_TRANSCRIPT", file.c_str(), 1);
  const ProcessResult result = Start({"--demo", Chart(u"s\\a.bms")});
  unsetenv("QUILLMARCH_TRANSCRIPT");
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  const std::string report = ReadBytes(platform::InnerPath(file));
  const size_t last = report.rfind("{\"counts\": [[");
  ASSERT_NE(last, std::string::npos) << report;
  EXPECT_TRUE(report.ends_with("\"playFailed\": false, \"playCleared\": true}\n")) << report;
}

TEST_F(BootTest, TranscriptThatCannotBeWrittenIsTold) {
  setenv("QUILLMARCH_TRANSCRIPT", (SystemFolder() + "/none/played.txt").c_str(), 1);
  const ProcessResult result = Start({"-P"});
  unsetenv("QUILLMARCH_TRANSCRIPT");
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_NE(result.errors.find("played.txt: the transcript cannot be written"), std::string::npos)
      << result.errors;
}

TEST_F(BootTest, PreviewDelayOfNothingBecomesOne) {
  WriteText(u"_qlmfiles\\qlm_conf.ini", u"[Setting]\r\nPreviewDelay=0\r\n");
  Start({"-P"});
  EXPECT_NE(Settings().find("PreviewDelay=1\r\n"), std::string::npos);
}

TEST_F(BootTest, StartHasThePlayerPlayAndTheGaugeShown) {
  WriteText(u"_qlmfiles\\qlm_conf.ini", u"[Setting]\r\nUserPlay=False\r\nShowGauge=False\r\n");
  Start({"-P"});
  EXPECT_NE(Settings().find("UserPlay=True\r\nShowGauge=True\r\n"), std::string::npos) << Settings();
}

TEST_F(BootTest, EnormousRestHoldsUpNoBootAndIsKept) {
  WriteText(u"_qlmfiles\\qlm_conf.ini", u"[Setting]\r\nSleep=2147483647\r\n");
  const ProcessResult result = Start({"-P"}, 10);
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_NE(Settings().find("Sleep=2147483647\r\n"), std::string::npos) << Settings();
}

TEST_F(BootTest, DemoIsNotSaved) {
  const ProcessResult result = Start({"--demo", Chart(u"s\\a.bms")});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_NE(Settings().find("DEMOMode=False\r\n"), std::string::npos);
}

TEST_F(BootTest, SetChangesSettingsAndIsSaved) {
  EXPECT_EQ(Start({"--set", "HiSpeed=2.5", "--set", "hidden=True", "-P"}).exitStatus, 0);
  EXPECT_NE(Settings().find("HiSpeed=2.5\r\n"), std::string::npos) << Settings();
  EXPECT_NE(Settings().find("Hidden=True\r\n"), std::string::npos) << Settings();
}

TEST_F(BootTest, SetOfWhatDoesNotExistIsRefusedBeforeTheGameStarts) {
  const ProcessResult result = Start({"--set", "Warp=9", "-P"});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.errors,
            "quillmarch: --set Warp=9: there is no setting and no play option by the name Warp\n");
  EXPECT_EQ(Start({"--set", "HiSpeed", "-P"}).exitStatus, 2);
}

TEST_F(BootTest, AChartOfMoreThan256MiBIsRefused) {
  const std::string chart = Chart(u"s\\a.bms");
  fs::resize_file(chart, (256U << 20) + 1);
  const ProcessResult result = Start({"--set", "RealHiSpeed=1", chart});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_NE(result.errors.find("quillmarch: " + chart + ": a chart of more than 256 MiB is refused\n"),
            std::string::npos)
      << result.errors;
  EXPECT_TRUE(LogHolds("chart of more than 256 MiB refused: a.bms"));
}

TEST_F(BootTest, ATableTooLargeForTheMemoryEndsTheProgram) {
  WriteText(u"_qlmfiles\\qlm_conf.ini", u"[Core]\r\nnumObjs=2000000000\r\n[Setting]\r\nRealHiSpeed=1\r\n");
  const ProcessResult result = Start({Chart(u"s\\a.bms")});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_NE(result.errors.find("too many numObjs!: a table of 2000000000 objs does not fit into the memory."),
            std::string::npos)
      << result.errors;
  EXPECT_FALSE(LogHolds("[PlayLoop]"));
}

TEST_F(BootTest, ASecondProgramPlaysWithoutWriting) {
  WriteText(u"_qlmfiles\\qlm_conf.ini", u"[Setting]\r\nRealHiSpeed=1\r\nHiSpeed=1\r\n");
  const std::string settings = Settings();
  // A play of a minute and more.
  const std::string longChart = platform::SystemPath(
      WriteText(u"s\\long.bms", u"\r\n#PLAYER 1\r\n#TITLE long\r\n#BPM 60\r\n#02011:01\r\n"));
  Process first(
      {SystemFolder() + "/quillmarch", longChart},
      {{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}, {"SDL_VIDEODRIVER", "dummy"}, {"SDL_AUDIODRIVER", "dummy"}});
  for (int i = 0; i < 3000 && !LogHolds("playloop start"); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  ASSERT_TRUE(LogHolds("playloop start"));

  const ProcessResult second = Start({"--set", "HiSpeed=3", Chart(u"s\\a.bms")});
  EXPECT_EQ(second.exitStatus, 0) << second.errors;
  EXPECT_EQ(Count(second.errors,
                  "another one runs from " + SystemFolder() + "; this one keeps no log and saves nothing\n"),
            1)
      << second.errors;
  EXPECT_NE(second.output.find("Played \"boot\" by us"), std::string::npos) << second.output;
  EXPECT_TRUE(first.Running());
  EXPECT_TRUE(LogHolds("[BMSLoad] long.bms"));
  EXPECT_FALSE(LogHolds("[BMSLoad] a.bms"));
  EXPECT_EQ(Settings(), settings);
  EXPECT_FALSE(FileExists(DataPath(u"qlm_keycnf.dat")));

  // A program that was killed leaves no lock behind.
  first.Kill();
  EXPECT_EQ(Start({"-P"}).errors.find("another one"), std::string::npos);
  EXPECT_FALSE(LogHolds("[BMSLoad] long.bms"));
}

TEST_F(BootTest, SettingsThatCannotBeSavedAreToldAndMakeTheExitStatusOne) {
  fs::create_directories(SystemFolder() + "/_qlmfiles/qlm_conf.ini/in its place");
  const ProcessResult result = Start({"--set", "RealHiSpeed=1", Chart(u"s\\a.bms")});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(Count(result.errors, "/_qlmfiles/qlm_conf.ini cannot be written;"), 1) << result.errors;
  EXPECT_TRUE(LogHolds("playloop end"));
}

TEST_F(BootTest, ALogThatCannotBeWrittenIsToldOnceAndThePlayGoesOn) {
  fs::create_directories(SystemFolder() + "/_qlmfiles/debug.txt/in its place");
  const ProcessResult result = Start({"--set", "RealHiSpeed=1", Chart(u"s\\a.bms")});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_EQ(Count(result.errors, "/_qlmfiles/debug.txt cannot be written;"), 1) << result.errors;
  EXPECT_NE(result.output.find("Played \"boot\" by us"), std::string::npos) << result.output;
}

TEST_F(BootTest, OnAFullDiskTheOldSettingsStay) {
  const std::string settings = "[Setting]\r\nRealHiSpeed=1\r\nHiSpeed=1\r\n";
  WriteData(u"_qlmfiles\\qlm_conf.ini", settings);
  // The log and the settings are both longer than that, what is said at the terminal is not.
  const ProcessResult result = StartOnFullDisk("1", Chart(u"s\\a.bms"));
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(Count(result.errors, "/_qlmfiles/debug.txt cannot be written;"), 1) << result.errors;
  EXPECT_EQ(Count(result.errors, "/_qlmfiles/qlm_conf.ini cannot be written;"), 1) << result.errors;
  EXPECT_EQ(Settings(), settings);
  EXPECT_NE(result.output.find("Played \"boot\" by us"), std::string::npos) << result.output;
}

TEST_F(BootTest, HelpAndVersionAreAnsweredBeforeAnythingHappens) {
  const ProcessResult help = Start({"--help"});
  EXPECT_EQ(help.exitStatus, 0);
  EXPECT_TRUE(help.output.starts_with("quillmarch - a keysounded rhythm game\n")) << help.output;
  const ProcessResult version = Start({"--version", "x.bms"});
  EXPECT_EQ(version.exitStatus, 0);
  EXPECT_EQ(version.output, "quillmarch " + Utf8(FullVersion()) + "\n");
  const ProcessResult unknown = Start({"--wat", "x.bms"});
  EXPECT_EQ(unknown.exitStatus, 2);
  EXPECT_NE(unknown.errors.find("--wat"), std::string::npos);
  EXPECT_FALSE(FileExists(DataPath(u"debug.txt")));
}

}  // namespace
}  // namespace qlm
