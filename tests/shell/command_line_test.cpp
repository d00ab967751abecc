// From the system's arguments to the command text, to words, to what they do.
#include "shell/command_line.h"

#include <unistd.h>

#include <filesystem>

#include "platform/files.h"
#include "shell/arguments.h"
#include "shell/version.h"
#include "state/lists.h"
#include "state/session.h"
#include "state/settings.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class CommandLineTest : public GameTest {
 protected:
  static std::string Command(const std::vector<std::string>& arguments) {
    return Utf8(ReadArguments(arguments).command);
  }
  static std::string Here() { return Utf8(platform::InnerPath(std::filesystem::current_path().string())); }
};

TEST_F(CommandLineTest, PathsBecomeAbsoluteAndTakeTheInnerForm) {
  EXPECT_EQ(Command({"a.bms"}), Here() + "\\a.bms");
  EXPECT_EQ(Command({"./x/../a.bms"}), Here() + "\\a.bms");
  EXPECT_EQ(Command({"/songs/a.bms"}), "\\songs\\a.bms");
  EXPECT_EQ(Command({"\\songs\\a.bms"}), "\\songs\\a.bms");
}

TEST_F(CommandLineTest, WordsWithBlanksAreQuoted) {
  EXPECT_EQ(Command({"/my songs/a.bms", "/b.bms"}), "\"\\my songs\\a.bms\" \\b.bms");
}

TEST_F(CommandLineTest, SlashOptionsStayWhenTheyAreWholeWords) {
  EXPECT_EQ(Command({"/b", "/W-", "/Q+", "/p", "/S"}), "/b /W- /Q+ /p /S");
  EXPECT_EQ(Command({"/base/a.bms", "/p+", "/B2"}), "\\base\\a.bms \\p+ \\B2");
}

TEST_F(CommandLineTest, MinusOptionsStayByTheirFirstTwoCharacters) {
  EXPECT_EQ(Command({"-B-", "-w+", "-sx"}), "-B- -w+ -sx");
  EXPECT_EQ(Command({"-x.bms"}), Here() + "\\-x.bms");
}

TEST_F(CommandLineTest, DoubleDashWordsAreTakenOut) {
  const Launch launch =
      ReadArguments(std::vector<std::string>{"-P", "--demo", "/a.bms", "--once", "--scan", "--wide", "-x"});
  EXPECT_EQ(Utf8(launch.command), "-P \\a.bms " + Here() + "\\-x");
  EXPECT_TRUE(launch.demo);
  EXPECT_TRUE(launch.once);
  EXPECT_TRUE(launch.wide);
  EXPECT_TRUE(launch.scan);
  EXPECT_FALSE(launch.noMenu);
  EXPECT_FALSE(launch.window);
  EXPECT_EQ(launch.open, u"");
  EXPECT_TRUE(ReadArguments(std::vector<std::string>{"--no-menu"}).noMenu);
  EXPECT_TRUE(ReadArguments(std::vector<std::string>{"--window"}).window);
  EXPECT_FALSE(launch.watch);
  EXPECT_TRUE(ReadArguments(std::vector<std::string>{"--watch"}).watch);
  EXPECT_EQ(ReadArguments(std::vector<std::string>{"--open", "曲"}).open, u"曲");
  EXPECT_EQ(launch.answer, "");
  EXPECT_EQ(launch.wrong, "");
}

TEST_F(CommandLineTest, OnlyAChartPassesTheMenuBy) {
  EXPECT_FALSE(NamesChart(u""));
  EXPECT_FALSE(NamesChart(u"-B /W+ -PS"));
  EXPECT_FALSE(NamesChart(u"\\lists\\mine.QPL"));
  EXPECT_TRUE(NamesChart(u"\\a.bms"));
  EXPECT_TRUE(NamesChart(u"-B \"\\a b.bme\""));
}

TEST_F(CommandLineTest, HelpAndVersionAreAnswered) {
  const Launch help = ReadArguments(std::vector<std::string>{"/a.bms", "--help"});
  EXPECT_TRUE(help.answer.starts_with("quillmarch - a keysounded rhythm game\n")) << help.answer;
  for (const char* const part :
       {"\nUsage: quillmarch [OPTION]... [CHART]...\n", "\n  --demo  ", "\n  --no-menu  ", "\n  --wide  ",
        "\n  --set NAME=VALUE  ", "\nKeys of the lanes", "\n  F12  ", "debug.txt"}) {
    EXPECT_NE(help.answer.find(part), std::string::npos) << part;
  }
  const Launch version = ReadArguments(std::vector<std::string>{"--version"});
  EXPECT_EQ(version.answer, "quillmarch " + Utf8(FullVersion()) + "\n");
  EXPECT_EQ(version.wrong, "");
}

TEST_F(CommandLineTest, DoubleDashWordsThatMeanNothingAreWrong) {
  EXPECT_EQ(ReadArguments(std::vector<std::string>{"/a.bms", "--x", "/b"}).wrong,
            "The following argument was not expected: --x");
  EXPECT_EQ(ReadArguments(std::vector<std::string>{"--demo=no"}).wrong,
            "demo was given a disallowed flag override");
}

TEST_F(CommandLineTest, SetTakesTheWordBehindIt) {
  const Launch launch = ReadArguments(
      std::vector<std::string>{"--set", "HiSpeed=2", "/a.bms", "--set=Random=True", "--set", "-B"});
  EXPECT_EQ(launch.settings, (std::vector<Text>{u"HiSpeed=2", u"Random=True", u"-B"}));
  EXPECT_EQ(launch.command, u"\\a.bms");
  EXPECT_EQ(ReadArguments(std::vector<std::string>{"/a.bms", "--set"}).wrong,
            "--set: 1 required NAME=VALUE missing");
}

TEST_F(CommandLineTest, ABattleIsOpenedOrJoined) {
  EXPECT_TRUE(ReadArguments(std::vector<std::string>{"--host"}).host);
  EXPECT_EQ(ReadArguments(std::vector<std::string>{"--connect", "there:99"}).connect, "there:99");
  EXPECT_EQ(ReadArguments(std::vector<std::string>{"--host", "--connect", "there"}).wrong,
            "--host and --connect exclude each other");
  EXPECT_EQ(ReadArguments(std::vector<std::string>{"--host", "/a.bms"}).wrong,
            "a battle chooses its songs in the list: name no CHART");
  EXPECT_EQ(ReadArguments(std::vector<std::string>{"--host", "-B"}).wrong, "");
  EXPECT_EQ(ReadArguments(std::vector<std::string>{"--connect"}).wrong,
            "--connect: 1 required HOST[:PORT] missing");
}

TEST_F(CommandLineTest, EmptyArgumentsArePassedOver) { EXPECT_EQ(Command({"", "/a", ""}), "\\a"); }

TEST_F(CommandLineTest, NamesInShiftJisBytesAreRead) {
  // 83 5C holds the byte of a "\".
  EXPECT_EQ(Command({"/s/\x83\x5C.bms"}), "\\s\\ソ.bms");
}

TEST_F(CommandLineTest, WordsPartAtBlanks) {
  EXPECT_EQ(CommandWords(u"a b  c "), (std::vector<Text>{u"a", u"b", u"c"}));
  EXPECT_EQ(CommandWords(u""), std::vector<Text>{});
}

TEST_F(CommandLineTest, QuotesKeepBlanksAndVanish) {
  EXPECT_EQ(CommandWords(u"\"a b\" c"), (std::vector<Text>{u"a b", u"c"}));
  EXPECT_EQ(CommandWords(u"x\"a b\"y"), (std::vector<Text>{u"xa by"}));
  EXPECT_EQ(CommandWords(u"\"\" a"), (std::vector<Text>{u"a"}));
  EXPECT_EQ(CommandWords(u"a \"b c"), (std::vector<Text>{u"a", u"b c"}));
}

TEST_F(CommandLineTest, OptionsAreKnownByTheirFirstTwoCharacters) {
  for (const TextView word : {u"-P", u"/p", u"-s", u"-B", u"-B+", u"-B-", u"-bass.bms", u"/W-", u"-Q"}) {
    EXPECT_TRUE(IsOption(word)) << Utf8(word);
  }
  for (const TextView word : {u"-X", u"P", u"-", u"", u"\\B", u"--B"})
    EXPECT_FALSE(IsOption(word)) << Utf8(word);
}

TEST_F(CommandLineTest, OptionsAloneStartNoPlay) {
  NoBGA = NoWAV = true;
  EXPECT_EQ(RunCommandLine(u"-P /S -B -W -Q"), std::nullopt);
  EXPECT_TRUE(PlayEnd);
  EXPECT_FALSE(NoBGA);
  EXPECT_FALSE(NoWAV);
  EXPECT_EQ(lastSong, -1);
  EXPECT_FALSE(Logged(u"[PlayLoop]"));
}

TEST_F(CommandLineTest, MinusFormsSwitchOnLikeTheOthers) {
  NoBGA = NoWAV = true;
  RunCommandLine(u"-B- /W-");
  EXPECT_FALSE(NoBGA);
  EXPECT_FALSE(NoWAV);
}

TEST_F(CommandLineTest, ListFileAloneStartsNoPlay) {
  lastSong = 3;
  EXPECT_EQ(RunCommandLine(u"\\x\\some.qpl"), std::nullopt);
  EXPECT_EQ(lastSong, 3);
  EXPECT_FALSE(Logged(u"[PlayLoop]"));
}

}  // namespace
}  // namespace qlm
