// ./play, ./check and the scripts below tools/ around a build: the real scripts in a tree of their own, where
// programs of the same names stand in for the package manager, the build and the game.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "tests/support/process.h"
#include "tests/support/whole_file.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

void Write(const fs::path& file, const std::string& text) {
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << text;
}

bool Holds(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

// Each program that stands in writes its name and its words to a file, each in "<>".
constexpr const char* kToldWords =
    "{ printf '%s' \"${0##*/}\"; printf ' <%s>' \"$@\"; echo; } >> \"$CALLS\"\n";
// Configuring and building leave what the scripts look at.
constexpr const char* kCmake =
    "preset=$2\n"
    "if [ \"$1\" = --build ]; then\n"
    "  [ \"$BREAKS\" != build ] || exit 1\n"
    "  mkdir -p build/release && cp \"$STAND_INS/game\" build/release/quillmarch\n"
    "  exit\n"
    "fi\n"
    "if [ \"$BREAKS\" = configure ]; then echo 'no such compiler'; exit 1; fi\n"
    "mkdir -p \"build/$preset\" && : > \"build/$preset/build.ninja\"\n"
    "shift 2; for option; do echo \"${option#-D}\"; done > \"build/$preset/CMakeCache.txt\"\n";
constexpr const char* kGame = "pwd >> \"$CALLS\"\nexit ${GAME_STATUS:-0}\n";

class ScriptsTest : public testing::Test {
 protected:
  ScriptsTest() : folder_(fs::temp_directory_path() / ("scripts test-" + std::to_string(getpid()))) {
    const fs::path source = QLM_SOURCE_DIR;
    fs::create_directories(Tree() / "tools");
    fs::copy(source / "tools/setup", Tree() / "tools/setup");
    fs::copy(source / "tools/campaign", Tree() / "tools/campaign");
    for (const char* const script : {"play", "check"}) fs::copy_file(source / script, Tree() / script);
    // Short lists in place of the real ones.
    Write(Tree() / "tools/setup/packages-play.txt", "# for playing\nalpha\nbeta  # of two architectures\n");
    Write(Tree() / "tools/setup/packages-check.txt", "gamma\n");
    Write(Tree() / "tools/setup/packages-package.txt", "delta\n");
    StandIn("cmake", kCmake);
    StandIn("ctest", "[ \"$BREAKS\" != tests ]\n");
    StandIn("game", kGame);
    StandIn("dpkg-query",
            "case \" $MISSING \" in *\" $4 \"*) exit 1 ;; *) echo installed; echo installed ;; esac\n", "");
    StandIn("apt-get", "[ \"$BREAKS\" != network ] || exit 100\n");
    StandIn("sudo", "[ \"$BREAKS\" != sudo ] || exit 1\n\"$@\"\n");
    StandIn("id", "echo \"$USER_ID\"\n", "");
  }
  ~ScriptsTest() override { fs::remove_all(folder_); }

  fs::path Tree() const { return folder_ / "tree"; }
  fs::path Game() const { return Tree() / "build/release"; }
  void StandIn(const std::string& name, const std::string& body,
               const std::string& tells = kToldWords) const {
    const fs::path file = folder_ / "bin" / name;
    Write(file, "#!/bin/sh\n" + tells + body);
    fs::permissions(file, fs::perms::owner_all);
  }

  // Runs a script of the tree from the folder above it. What the stand-ins were called with is in `calls_`.
  ProcessResult Run(const std::string& script, const std::vector<std::string>& words = {}) {
    std::map<std::string, std::string> environment = environment_;
    environment.insert({{"PATH", (folder_ / "bin").string() + ":/usr/bin:/bin"},
                        {"CALLS", folder_ / "calls"},
                        {"STAND_INS", folder_ / "bin"},
                        {"DISPLAY", ":1"},
                        {"WAYLAND_DISPLAY", ""},
                        {"USER_ID", "0"},
                        {"MISSING", ""},
                        {"BREAKS", ""}});
    std::vector<std::string> command = {"bash", "-c", "cd \"$0\" && exec \"$@\"", folder_,
                                        "./tree/" + script};
    command.insert(command.end(), words.begin(), words.end());
    fs::remove(folder_ / "calls");
    ProcessResult result = qlm::Run(command, environment);
    calls_ = WholeFile(folder_ / "calls");
    return result;
  }
  ProcessResult Play(const std::vector<std::string>& words = {}) { return Run("play", words); }

  // The words that the game was started with, as its stand-in told them.
  std::string GameWords() const {
    const size_t begin = calls_.find("\nquillmarch");
    if (begin == std::string::npos) return "not started";
    return calls_.substr(begin + 1, calls_.find('\n', begin + 1) - begin - 1);
  }

  const std::string configured_ =
      "cmake <--preset> <release> <-DQLM_TESTS:BOOL=OFF> <-DQLM_BENCH:BOOL=OFF>\n";
  const std::string built_ =
      "cmake <--build> <--preset> <release> <--target> <quillmarch> <qlmprobe> <stock_data>\n";

  fs::path folder_;
  std::map<std::string, std::string> environment_;
  std::string calls_;
};

// ./play

TEST_F(ScriptsTest, TheFirstPlayConfiguresBuildsAndOpensTheStockSongs) {
  const ProcessResult play = Play();
  EXPECT_EQ(play.exitStatus, 0) << play.errors;
  EXPECT_EQ(play.errors, "");
  EXPECT_EQ(calls_,
            configured_ + built_ + "quillmarch <--open> <songs> <--window>\n" + folder_.string() + "\n");
  EXPECT_TRUE(Holds(play.output, "Press Enter in the startup menu"));
}

TEST_F(ScriptsTest, TheSecondPlayBuildsWhatChangedAndStarts) {
  Play();
  Write(Game() / "_qlmfiles/jukelist/songs.qbl", "");
  EXPECT_EQ(Play().exitStatus, 0);
  EXPECT_EQ(calls_, built_ + "quillmarch <--open> <songs> <--window>\n" + folder_.string() + "\n");
}

TEST_F(ScriptsTest, WhoHasOtherListsFindsTheListAsItWasLeft) {
  Play();
  Write(Game() / "_qlmfiles/jukelist/mine.qbl", "");
  Play();
  EXPECT_EQ(GameWords(), "quillmarch <--window>");
}

TEST_F(ScriptsTest, ABuildFolderWithTheTestsServes) {
  Write(Game() / "build.ninja", "");
  Write(Game() / "CMakeCache.txt", "QLM_TESTS:BOOL=ON\nQLM_BENCH:BOOL=ON\n");
  Play();
  EXPECT_TRUE(calls_.starts_with(built_)) << calls_;
}

TEST_F(ScriptsTest, WordsAreGivenToTheGame) {
  Play({"--set", "Hidden=True", "--open", "my list"});
  EXPECT_EQ(GameWords(), "quillmarch <--window> <--set> <Hidden=True> <--open> <my list>");
  Play({"--once", "my charts/a b.bms"});
  EXPECT_EQ(GameWords(), "quillmarch <--window> <--once> <my charts/a b.bms>");
  Play({"--connect", "host:1234", "-P"});
  EXPECT_EQ(GameWords(), "quillmarch <--open> <songs> <--window> <--connect> <host:1234> <-P>");
  Play({"--set", "Windowed=False"});
  EXPECT_EQ(GameWords(), "quillmarch <--open> <songs> <--set> <Windowed=False>");
}

TEST_F(ScriptsTest, WithoutADisplayTheMachinePlaysTheStockSongOrTheChart) {
  environment_["DISPLAY"] = "";
  const ProcessResult play = Play();
  EXPECT_TRUE(Holds(play.output, "There is no display here"));
  EXPECT_EQ(GameWords(),
            "quillmarch <--demo> <" + (fs::canonical(Game()) / "songs/march/march7.bme").string() + ">");
  Play({"a.bms"});
  EXPECT_EQ(GameWords(), "quillmarch <--demo> <a.bms>");
  environment_["WAYLAND_DISPLAY"] = "wayland-0";
  Play({"a.bms"});
  EXPECT_EQ(GameWords(), "quillmarch <--window> <a.bms>");
}

TEST_F(ScriptsTest, TheExitStatusIsTheGamesOwn) {
  environment_["GAME_STATUS"] = "3";
  EXPECT_EQ(Play().exitStatus, 3);
}

TEST_F(ScriptsTest, WhatFailsIsToldAndTheGameDoesNotStart) {
  environment_["BREAKS"] = "configure";
  ProcessResult play = Play();
  EXPECT_EQ(play.exitStatus, 1);
  EXPECT_EQ(play.errors, "no such compiler\n\nplay: configuring failed (see above).\n");
  EXPECT_EQ(calls_, configured_);
  environment_["BREAKS"] = "build";
  play = Play();
  EXPECT_EQ(play.exitStatus, 1);
  EXPECT_EQ(play.errors, "\nplay: the build failed (see above).\n");
  EXPECT_EQ(GameWords(), "not started");
}

// Packages

TEST_F(ScriptsTest, RootInstallsWhatIsMissing) {
  environment_["MISSING"] = "beta";
  const ProcessResult play = Play();
  EXPECT_EQ(play.exitStatus, 0) << play.errors;
  EXPECT_TRUE(Holds(play.output, "Installing 1 packages: beta"));
  EXPECT_TRUE(
      calls_.starts_with("apt-get <update> <-q>\n"
                         "apt-get <-o> <DPkg::Lock::Timeout=300> <install> <-y> <-q> "
                         "<--no-install-recommends> <beta>\n"))
      << calls_;
}

TEST_F(ScriptsTest, OthersInstallWithSudo) {
  environment_["MISSING"] = "alpha beta";
  environment_["USER_ID"] = "1000";
  EXPECT_EQ(Play().exitStatus, 0);
  EXPECT_TRUE(calls_.starts_with("sudo <true>\nsudo <apt-get> <update> <-q>\n")) << calls_;
  EXPECT_TRUE(Holds(calls_, "<--no-install-recommends> <alpha> <beta>\n"));
  environment_["BREAKS"] = "sudo";
  const ProcessResult play = Play();
  EXPECT_EQ(play.exitStatus, 1);
  EXPECT_TRUE(Holds(play.errors, "play: sudo refused; this needs root once, to install packages."));
  EXPECT_EQ(calls_, "sudo <true>\n");
}

TEST_F(ScriptsTest, WithoutTheNetworkItSaysSo) {
  environment_["MISSING"] = "alpha";
  environment_["BREAKS"] = "network";
  const ProcessResult play = Play();
  EXPECT_EQ(play.exitStatus, 1);
  EXPECT_EQ(play.errors, "\nplay: the package lists could not be read; is the network there?\n");
  EXPECT_EQ(GameWords(), "not started");
}

// ./check

TEST_F(ScriptsTest, CheckRunsTheTestsOfBothBuilds) {
  Play();
  const ProcessResult check = Run("check");
  EXPECT_EQ(check.exitStatus, 0) << check.errors;
  EXPECT_EQ(calls_,
            "cmake <--preset> <release> <-DQLM_TESTS:BOOL=ON> <-DQLM_BENCH:BOOL=ON>\n"
            "cmake <--build> <--preset> <release>\n"
            "ctest <--preset> <release> <--progress>\n"
            "cmake <--preset> <fuzz>\n"
            "cmake <--build> <--preset> <fuzz>\n"
            "ctest <--preset> <fuzz> <--progress>\n");
  EXPECT_TRUE(check.output.ends_with("All tests passed.\n"));
}

TEST_F(ScriptsTest, CheckSanitizeRunsTheTestsUnderTheSanitizers) {
  EXPECT_EQ(Run("check", {"sanitize"}).exitStatus, 0);
  EXPECT_TRUE(calls_.starts_with("cmake <--preset> <sanitize>\n")) << calls_;
  EXPECT_FALSE(Holds(calls_, "release"));
}

TEST_F(ScriptsTest, CheckSaysThatTestsFailed) {
  environment_["BREAKS"] = "tests";
  const ProcessResult check = Run("check");
  EXPECT_EQ(check.exitStatus, 1);
  EXPECT_EQ(check.errors, "\ncheck: tests failed; their output stands above.\n");
  EXPECT_FALSE(Holds(check.output, "passed"));
}

// Before anything is installed or built.
TEST_F(ScriptsTest, CheckRefusesWordsThatItDoesNotKnow) {
  environment_["MISSING"] = "gamma";
  ProcessResult check = Run("check", {"sanitise"});
  EXPECT_EQ(check.exitStatus, 1);
  EXPECT_EQ(check.errors, "\ncheck: \"sanitise\" is not understood; it is ./check or ./check sanitize.\n");
  EXPECT_EQ(calls_, "");
  check = Run("check", {"sanitize", "battle"});
  EXPECT_EQ(check.exitStatus, 1);
  EXPECT_EQ(check.errors,
            "\ncheck: \"sanitize battle\" is not understood; it is ./check or ./check sanitize.\n");
  EXPECT_EQ(calls_, "");
}

// tools/setup/fuzz

// The target leaves two inputs that were slow. Tried again by itself the first is quick, as behind a pause of
// the campaign; the second where asked to.
TEST_F(ScriptsTest, FuzzForgivesWhatIsSlowOnlyOnce) {
  Write(Tree() / "fuzz/a_fuzz.cpp", "");
  const fs::path target = Tree() / "build/fuzz/a_fuzz";
  Write(target,
        "#!/bin/sh\n"
        "for word; do case $word in -artifact_prefix=*) broken=${word#*=} ;; esac; done\n"
        "case $word in\n"
        "  */slow-unit-1) exit 0 ;;\n"
        "  */timeout-2) exit $SLOW_STATUS ;;\n"
        "esac\n"
        ": > \"${broken}slow-unit-1\"; : > \"${broken}timeout-2\"\n"
        "echo stat::number_of_executed_units: 7\n");
  fs::permissions(target, fs::perms::owner_all);
  environment_["SLOW_STATUS"] = "0";
  ProcessResult fuzz = Run("tools/setup/fuzz", {"1"});
  EXPECT_EQ(fuzz.exitStatus, 0) << fuzz.errors;
  EXPECT_TRUE(Holds(fuzz.output, "a_fuzz                          7        0        0\n")) << fuzz.output;
  environment_["SLOW_STATUS"] = "70";
  fuzz = Run("tools/setup/fuzz", {"1"});
  EXPECT_EQ(fuzz.exitStatus, 1);
  EXPECT_TRUE(Holds(fuzz.output, "a_fuzz                          7        0        1\n")) << fuzz.output;
  EXPECT_TRUE(fs::exists(Tree() / "build/fuzz/campaign/a_fuzz/broken/timeout-2"));
}

// tools/campaign

TEST_F(ScriptsTest, CampaignsSayWhatMustBeBuiltFirst) {
  const std::map<std::string, std::string> programs = {{"battle", "qlmprobe"},
                                                       {"jukebox", "quillmarch stock_data"},
                                                       {"kills", "kill_test"},
                                                       {"session", "session_members_test"}};
  for (const auto& [campaign, program] : programs) {
    const ProcessResult result = Run("tools/campaign/" + campaign, {"1"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_TRUE(result.errors.starts_with("\n" + campaign + ": there is no ")) << result.errors;
    EXPECT_TRUE(Holds(result.errors, "--target " + program + "\n")) << result.errors;
    EXPECT_EQ(result.output, "");
  }
}

}  // namespace
}  // namespace qlm
