// What tools/package makes, put where players put it: nothing is missing, and both programs run.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "tests/support/process.h"
#include "tests/support/whole_file.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

void Write(const fs::path& file, const std::string& text) { std::ofstream(file, std::ios::binary) << text; }

// The one file in a folder whose name ends so.
fs::path Only(const fs::path& folder, const std::string& ending) {
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.path().string().ends_with(ending)) return entry.path();
  }
  return {};
}

std::vector<std::string> Matches(const std::string& text, const std::string& pattern) {
  const std::regex regex(pattern);
  std::vector<std::string> found;
  for (std::sregex_iterator at(text.begin(), text.end(), regex), end; at != end; ++at)
    found.push_back((*at)[1]);
  return found;
}

// Files below a folder, by their paths from there. What a play has left beside the stock does not count.
std::set<std::string> StockBelow(const fs::path& folder) {
  const std::regex own(R"(.*\.(qsd|qpd|qbl|ini|dat|lock)|_qlmfiles/(debug|stock)\.txt|lastplay\.txt)");
  std::set<std::string> files;
  for (const char* const part : {"_qlmfiles", "songs"}) {
    for (const auto& entry : fs::recursive_directory_iterator(folder / part)) {
      const std::string name = entry.path().lexically_relative(folder);
      if (entry.is_regular_file() && !std::regex_match(name, own)) files.insert(name);
    }
  }
  return files;
}

// The package is made and unpacked once for all tests.
class PackageTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder = fs::temp_directory_path() / ("package_test-" + std::to_string(getpid()));
    fs::create_directories(folder / "root");
    const std::string tool = QLM_SOURCE_DIR "/tools/package";
    made = qlm::Run({tool, "--build", QLM_BINARY_DIR, "--out", folder}, {}, 600);
    if (made.exitStatus != 0) return;
    qlm::Run({"dpkg-deb", "-x", Only(folder, ".deb"), folder / "root"});
    qlm::Run({"tar", "-C", folder, "-xf", Only(folder, ".tar.zst")});
    unpacked = Only(folder, "-linux-x86_64");
  }
  static void TearDownTestSuite() { fs::remove_all(folder); }

  PackageTest() {
    EXPECT_EQ(made.exitStatus, 0) << made.output << made.errors;
    fs::remove_all(Home());
  }

  static fs::path Installed() { return folder / "root/usr"; }
  static fs::path Home() { return folder / "home"; }
  static std::string SearchPath() { return (Installed() / "bin").string() + ":/usr/bin:/bin"; }
  static fs::path Data() { return Home() / "quillmarch"; }
  static std::string Field(const std::string& name) {
    return qlm::Run({"dpkg-deb", "-f", Only(folder, ".deb"), name}).output;
  }
  static ProcessResult Start(const fs::path& program, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), program);
    return qlm::Run(arguments,
                    {{"DISPLAY", ""},
                     {"WAYLAND_DISPLAY", ""},
                     {"SDL_VIDEODRIVER", "dummy"},
                     {"SDL_AUDIODRIVER", "dummy"},
                     {"XDG_DATA_HOME", Home()}},
                    60);
  }

  static inline fs::path folder;
  static inline fs::path unpacked;
  static inline ProcessResult made;
};

TEST_F(PackageTest, HoldsTheWholeStockAndNothingElse) {
  const std::set<std::string> installed = StockBelow(Installed() / "share/quillmarch");
  EXPECT_EQ(StockBelow(unpacked), installed);
  // A player may have added skins and songs there.
  const std::set<std::string> built = StockBelow(QLM_BINARY_DIR);
  EXPECT_TRUE(std::ranges::includes(built, installed));
  const auto count = [&](const std::string& pattern) {
    return std::ranges::count_if(
        installed, [&](const std::string& file) { return std::regex_match(file, std::regex(pattern)); });
  };
  EXPECT_EQ(count("_qlmfiles/(cnvdict.txt|resobj.bmp|ss(bg|obj|nostg).bmp)"), 5);
  EXPECT_EQ(count("_qlmfiles/wav/.*"), 16);
  EXPECT_EQ(count("_qlmfiles/courselist/.*\\.qcl"), 2);
  EXPECT_EQ(count("songs/[^/]*/stage.png"), 3);
  for (const char* const own :
       {"_qlmfiles/debug.txt", "_qlmfiles/qlm_conf.ini", "_qlmfiles/jukelist/songs.qbl"}) {
    EXPECT_FALSE(fs::exists(Installed() / "share/quillmarch" / own)) << own;
    EXPECT_FALSE(fs::exists(unpacked / own)) << own;
  }
}

TEST_F(PackageTest, HoldsWhatADesktopAndAShellLookFor) {
  for (const char* const file :
       {"share/applications/quillmarch.desktop", "share/icons/hicolor/scalable/apps/quillmarch.svg",
        "share/icons/hicolor/48x48/apps/quillmarch.png", "share/mime/packages/quillmarch.xml",
        "share/man/man6/quillmarch.6.gz", "share/man/man1/qlmprobe.1.gz",
        "share/bash-completion/completions/quillmarch", "share/bash-completion/completions/qlmprobe",
        "share/zsh/vendor-completions/_quillmarch", "share/fish/vendor_completions.d/quillmarch.fish",
        "share/fish/vendor_completions.d/qlmprobe.fish", "share/doc/quillmarch/copyright",
        "share/doc/quillmarch/changelog.gz", "share/doc/quillmarch/PLAYING.md"}) {
    EXPECT_TRUE(fs::exists(Installed() / file)) << file;
  }
  const std::string copyright = WholeFile(Installed() / "share/doc/quillmarch/copyright");
  EXPECT_NE(copyright.find(WholeFile(QLM_SOURCE_DIR "/LICENSE")), std::string::npos);
}

TEST_F(PackageTest, TheDocumentsOfTheFolderAreWhole) {
  int links = 0;
  for (const auto& entry : fs::recursive_directory_iterator(unpacked / "docs")) {
    if (entry.path().extension() != ".md") continue;
    for (const std::string& link : Matches(WholeFile(entry.path()), R"(\]\(([^#)][^#)]*))")) {
      EXPECT_TRUE(fs::exists(entry.path().parent_path() / link)) << entry.path() << ": " << link;
      ++links;
    }
  }
  EXPECT_GE(links, 20);
  // It says that no other package is inside.
  EXPECT_FALSE(fs::exists(unpacked / "docs/copyright"));
}

// The charts name every sound and picture, the skins every file of theirs.
TEST_F(PackageTest, NoChartAndNoSkinMissesAFile) {
  const fs::path stock = Installed() / "share/quillmarch";
  std::vector<std::string> check{"check"};
  int skins = 0;
  for (const std::string& file : StockBelow(stock)) {
    if (file.ends_with(".bms") || file.ends_with(".bme")) check.push_back(stock / file);
    if (!file.ends_with(".brd")) continue;
    ++skins;
    const ProcessResult skin = Start(Installed() / "bin/qlmprobe", {"skin", stock / file});
    EXPECT_EQ(skin.exitStatus, 0);
    EXPECT_NE(skin.output.find("\"warnings\": []"), std::string::npos) << file << skin.output;
  }
  EXPECT_EQ(skins, 4);
  EXPECT_EQ(check.size(), 1U + 9);
  const ProcessResult checked = Start(Installed() / "bin/qlmprobe", check);
  EXPECT_EQ(Matches(checked.output, R"(("file"))").size(), 9U);
  // What the wide reading would change is no fault of a chart.
  for (const std::string& kind : Matches(checked.output, R"_("kind": "([a-z-]+)")_"))
    EXPECT_EQ(kind, "wide") << checked.output;
}

TEST_F(PackageTest, NeedsThePackagesOfTheLibrariesThatItCallsAndTheFonts) {
  const std::string depends = Field("Depends");
  for (const char* const package : {"libc6 (>= ", "libsdl2-2.0-0 (>= ", "libqt6widgets6 (>= ", "libicu",
                                    "libenet7", "libmecab2", "fonts-monapo", "fonts-ipafont-gothic"}) {
    EXPECT_NE(depends.find(package), std::string::npos) << package << " in " << depends;
  }
}

TEST_F(PackageTest, HasTheVersionOfTheSource) {
  const std::string version = Field("Version");
  EXPECT_EQ(Start(Installed() / "bin/quillmarch", {"--version"}).output, "quillmarch " + version);
  EXPECT_EQ(Start(Installed() / "bin/qlmprobe", {"--version"}).output, "qlmprobe " + version);
  EXPECT_TRUE(std::regex_match(version, std::regex(R"(\d+\.\d+\.\d+(\+\d+\.g[0-9a-f]{7})?\n)"))) << version;
}

TEST_F(PackageTest, FillsTheFolderOfAPersonAndPlaysFromThere) {
  const fs::path program = Installed() / "bin/quillmarch";
  ProcessResult start = Start(program, {"--once", "-P"});
  EXPECT_EQ(start.exitStatus, 0) << start.errors;
  EXPECT_NE(start.errors.find("the stock songs, skins and sounds go to " + Data().string()),
            std::string::npos);
  const fs::path stock = Installed() / "share/quillmarch";
  EXPECT_EQ(StockBelow(Data()), StockBelow(stock));
  for (const std::string& file : StockBelow(stock))
    EXPECT_EQ(WholeFile(Data() / file), WholeFile(stock / file)) << file;
  EXPECT_TRUE(fs::exists(Data() / "_qlmfiles/qlm_conf.ini"));

  // Half a second of chart, in the person's own folder.
  const fs::path chart = Home() / "short.bms";
  Write(chart, "\r\n#PLAYER 1\r\n#TITLE short\r\n#ARTIST us\r\n#GENRE test\r\n#BPM 480\r\n#00011:01\r\n");
  start = Start(program, {"--demo", "--once", chart});
  EXPECT_EQ(start.exitStatus, 0) << start.errors;
  EXPECT_EQ(start.errors, "");
  EXPECT_NE(start.output.find("Played \"short\""), std::string::npos) << start.output;
  const std::string log = WholeFile(Data() / "_qlmfiles/debug.txt");
  EXPECT_NE(log.find("[loadSkin] : default.brd"), std::string::npos);
  EXPECT_EQ(log.find("NOT EXIST"), std::string::npos);
}

TEST_F(PackageTest, ALaterVersionLeavesWhatThePersonChanged) {
  const fs::path program = Installed() / "bin/quillmarch";
  Start(program, {"--once", "-P"});
  const fs::path list = Data() / "_qlmfiles/stock.txt";
  const std::string brought = WholeFile(list);
  Write(list, "0.0.1" + brought.substr(brought.find('\n')));
  Write(Data() / "_qlmfiles/cnvdict.txt", "mine");
  fs::remove(Data() / "_qlmfiles/draft.brd");
  EXPECT_NE(Start(program, {"--once", "-P"}).errors.find("go to"), std::string::npos);
  EXPECT_EQ(WholeFile(Data() / "_qlmfiles/cnvdict.txt"), "mine");
  EXPECT_FALSE(fs::exists(Data() / "_qlmfiles/draft.brd"));
  EXPECT_EQ(WholeFile(list), brought);
}

// Files of at most 64 KiB, as on a full disk: pictures and sounds are longer.
TEST_F(PackageTest, SaysWhatCouldNotBeWrittenAndTriesAgain) {
  const fs::path program = Installed() / "bin/quillmarch";
  const std::string limited = "trap '' XFSZ; ulimit -f 64; exec " + program.string() + " --once -P";
  ProcessResult start = Start("/bin/bash", {"-c", limited});
  EXPECT_NE(start.errors.find("not all of them could be written"), std::string::npos) << start.errors;
  EXPECT_TRUE(fs::exists(Data() / "songs/march/march5.bms"));
  EXPECT_FALSE(fs::exists(Data() / "_qlmfiles/stock.txt"));
  start = Start(program, {"--once", "-P"});
  EXPECT_EQ(start.errors.find("not all of them"), std::string::npos) << start.errors;
  EXPECT_EQ(StockBelow(Data()), StockBelow(Installed() / "share/quillmarch"));
}

TEST_F(PackageTest, TheProbeReadsTheStockAndWritesNothing) {
  const fs::path song = Installed() / "share/quillmarch/songs/march/march5.bms";
  const ProcessResult play = Start(Installed() / "bin/qlmprobe", {"play", song});
  EXPECT_EQ(play.exitStatus, 0) << play.errors;
  EXPECT_NE(play.output.find("\"playCleared\": true"), std::string::npos);
  const std::string course = Installed() / "share/quillmarch/_qlmfiles/courselist/First Week.qcl";
  const ProcessResult joined = Start(Installed() / "bin/qlmprobe", {"course", course});
  EXPECT_EQ(joined.exitStatus, 0) << joined.errors;
  EXPECT_EQ(Matches(joined.output, R"("playLevel": (\d), "bpm")"), (std::vector<std::string>{"1", "2", "3"}));
  EXPECT_FALSE(fs::exists(Home()));
}

TEST_F(PackageTest, TheFolderPlaysWithItsOwnLibrariesAndMayBeMoved) {
  const fs::path moved = folder / "moved folder";
  Start(unpacked / "quillmarch", {"--once", "-P"});
  fs::rename(unpacked, moved);
  const ProcessResult libraries = qlm::Run({"ldd", moved / "quillmarch"});
  for (const char* const library :
       {"libSDL2-2.0.so.0", "libQt6Widgets.so.6", "libicuuc.so.72", "libmecab.so.2"}) {
    const std::string line = std::string(library) + " => " + (moved / "lib" / library).string();
    EXPECT_NE(libraries.output.find(line), std::string::npos) << line;
    EXPECT_FALSE(fs::is_empty(moved / "licences"));
  }
  Write(folder / "short.bms", "\r\n#PLAYER 1\r\n#TITLE short\r\n#BPM 480\r\n#00011:01\r\n");
  const ProcessResult play = Start(moved / "quillmarch", {"--demo", "--once", folder / "short.bms"});
  EXPECT_EQ(play.exitStatus, 0) << play.errors;
  EXPECT_FALSE(fs::exists(Home()));
  EXPECT_EQ(WholeFile(moved / "_qlmfiles/debug.txt").find("NOT EXIST"), std::string::npos);
  fs::rename(moved, unpacked);
}

TEST_F(PackageTest, ThePagesOfManTellEveryOptionAndCommand) {
  const auto page = [](const std::string& name) {
    const ProcessResult text = qlm::Run({"gzip", "-dc", Installed() / "share/man" / name});
    return std::regex_replace(text.output, std::regex(R"(\\-)"), "-");
  };
  const std::string game = page("man6/quillmarch.6.gz"), probe = page("man1/qlmprobe.1.gz");
  const auto options =
      Matches(Start(Installed() / "bin/quillmarch", {"--help"}).output, R"(\n +(--[a-z-]+))");
  EXPECT_GE(options.size(), 9U);
  for (const std::string& option : options)
    EXPECT_NE(game.find("\n.B " + option), std::string::npos) << option;
  EXPECT_NE(game.find("\n.B --connect HOST[:PORT]\njoins the battle"), std::string::npos) << game;
  const std::string help = Start(Installed() / "bin/qlmprobe", {"--help"}).output;
  const auto commands = Matches(help.substr(help.find("Commands:")), R"(\n  ([a-z]+) )");
  EXPECT_GE(commands.size(), 13U);
  for (const std::string& command : commands)
    EXPECT_NE(probe.find("\n.B " + command + "\n"), std::string::npos) << command;
  const std::string own = Start(Installed() / "bin/qlmprobe", {"check", "--help"}).output;
  const auto common = Matches(own.substr(own.find("Options of every command:")), R"(\n +(--[a-z-]+))");
  EXPECT_GE(common.size(), 4U);
  for (const std::string& option : common)
    EXPECT_TRUE(std::regex_search(probe, std::regex("\n\\.BI? " + option + "\\b"))) << option;
  for (const std::string& text : {game, probe}) EXPECT_EQ(text.find("@version@"), std::string::npos);
}

TEST_F(PackageTest, AShellCompletesOptionsCommandsAndFiles) {
  const auto complete = [](const std::string& words, int at) {
    const std::string bin = Installed() / "bin";
    const std::string script =
        "PATH=" + bin + ":$PATH; . " + (Installed() / "share/bash-completion").string() +
        "/completions/quillmarch; COMP_WORDS=(" + words + "); COMP_CWORD=" + std::to_string(at) +
        "; _quillmarch; printf '%s\\n' \"${COMPREPLY[@]}\"";
    return qlm::Run({"bash", "-c", script}).output;
  };
  EXPECT_EQ(complete("quillmarch --no", 1), "--no-menu\n");
  EXPECT_EQ(complete("qlmprobe he", 1), "header\n");
  EXPECT_EQ(complete("qlmprobe check --da", 2), "--data\n");
  EXPECT_EQ(complete("qlmprobe scan --sort ti", 3), "title\n");
  EXPECT_EQ(complete("quillmarch " + std::string(QLM_SOURCE_DIR "/READM"), 1), QLM_SOURCE_DIR "/README.md\n");
}

// The same in the two other shells.
const std::string kReadme = QLM_SOURCE_DIR "/READM";

TEST_F(PackageTest, ZshCompletesOptionsCommandsAndFiles) {
  const std::string asks = QLM_SOURCE_DIR "/tests/run/complete.zsh";
  const ProcessResult zsh =
      qlm::Run({"zsh", "-f", asks, Installed() / "share/zsh/vendor-completions", "quillmarch --no",
                "qlmprobe he", "qlmprobe check --da", "quillmarch " + kReadme},
               {{"PATH", SearchPath()}});
  EXPECT_EQ(zsh.output, "quillmarch --no-menu \nqlmprobe header \nqlmprobe check --data \nquillmarch " +
                            kReadme + "E.md \n")
      << zsh.errors;
}

TEST_F(PackageTest, FishCompletesOptionsCommandsAndFiles) {
  const std::string files = (Installed() / "share/fish/vendor_completions.d").string();
  std::string script = "source " + files + "/quillmarch.fish; source " + files + "/qlmprobe.fish";
  for (const std::string line : {"quillmarch --no", "qlmprobe he", "qlmprobe check --da"})
    script.append("; complete -C '").append(line).append("'");
  script.append("; complete -C 'qlmprobe check ").append(kReadme).append("'");
  const ProcessResult fish =
      qlm::Run({"fish", "--no-config", "-c", script}, {{"PATH", SearchPath()}, {"HOME", folder}});
  EXPECT_EQ(fish.output, "--no-menu\nheader\n--data\n" + kReadme + "E.md\n") << fish.errors;
}

TEST_F(PackageTest, ADesktopTakesTheEntryAndTheFileTypes) {
  const fs::path share = Installed() / "share";
  const ProcessResult entry = qlm::Run({"desktop-file-validate", share / "applications/quillmarch.desktop"});
  EXPECT_EQ(entry.exitStatus, 0);
  EXPECT_EQ(entry.output + entry.errors, "");
  fs::copy(share / "mime", folder / "mime", fs::copy_options::recursive);
  EXPECT_EQ(qlm::Run({"update-mime-database", folder / "mime"}).exitStatus, 0);
  const std::string globs = WholeFile(folder / "mime/globs2");
  for (const char* const glob : {":text/x-bms:*.bms", ":text/x-bms:*.bme", ":text/x-bms:*.bml"}) {
    EXPECT_NE(globs.find(glob), std::string::npos) << globs;
  }
  EXPECT_NE(WholeFile(share / "applications/quillmarch.desktop").find("\nMimeType=text/x-bms;\n"),
            std::string::npos);
}

// A source of its own, from the first commit to the one behind a tag.
TEST(FullVersion, CountsTheCommitsSinceTheVersionWasTagged) {
  const fs::path source = fs::temp_directory_path() / ("full_version-" + std::to_string(getpid()));
  fs::create_directories(source);
  const std::string script = QLM_SOURCE_DIR "/cmake/full_version.cmake";
  const auto version = [&] {
    return qlm::Run({"cmake", "-DSOURCE=" + source.string(), "-DVERSION=0.1.0", "-P", script}).output;
  };
  const auto git = [&](std::vector<std::string> words) {
    words.insert(words.begin(), {"git", "-C", source, "-c", "user.name=a", "-c", "user.email=a@b"});
    return qlm::Run(words).output;
  };
  EXPECT_EQ(version(), "0.1.0\n");
  git({"init", "-q"});
  EXPECT_EQ(version(), "0.1.0\n");
  git({"commit", "-q", "--allow-empty", "-m", "one"});
  git({"commit", "-q", "--allow-empty", "-m", "two"});
  EXPECT_EQ(version(), "0.1.0+2.g" + git({"rev-parse", "--short=7", "HEAD"}));
  git({"tag", "v0.1.0"});
  EXPECT_EQ(version(), "0.1.0\n");
  git({"commit", "-q", "--allow-empty", "-m", "three"});
  EXPECT_EQ(version(), "0.1.0+1.g" + git({"rev-parse", "--short=7", "HEAD"}));
  fs::remove_all(source);
}

}  // namespace
}  // namespace qlm
