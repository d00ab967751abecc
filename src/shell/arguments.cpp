// Reading of the system's arguments.
#include "shell/arguments.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/arguments.h"
#include "platform/files.h"
#include "platform/text.h"
#include "shell/command_line.h"
#include "shell/version.h"

namespace qlm {
namespace {

// "/B+" and its like, to the letter: every other word that begins "/" is a path from the root.
bool IsSlashOption(TextView word) {
  constexpr std::array<TextView, 11> kOptions = {u"/P",  u"/S",  u"/B", u"/B+", u"/B-", u"/W",
                                                 u"/W+", u"/W-", u"/Q", u"/Q+", u"/Q-"};
  return std::any_of(kOptions.begin(), kOptions.end(),
                     [&](TextView option) { return EqualsAnyCase(word, option); });
}

Text PathWord(std::string argument) {
  // A "\" separates too, but in a name that is no UTF-8 it may be the second byte of a character.
  if (platform::IsUtf8(argument)) std::replace(argument.begin(), argument.end(), '\\', '/');
  return platform::InnerPath(argument);
}

Text GameWord(const std::string& argument) {
  const Text word = platform::DecodeUtf8(argument);
  const bool option = word.starts_with(u'/') ? IsSlashOption(word) : IsOption(word);
  return option ? word : PathWord(argument);
}

constexpr const char* kFooter =
    R"(Of the game since its first days:
  -B, /B                background pictures on, whatever the settings say
  -W, /W                chart sounds on, whatever the settings say
  -P, -S, -Q and their "/" forms are accepted and change nothing in a play

Keys of the lanes, by their place on a US keyboard:
  first side     left Shift or Space for the turntable, Z S X D C F V
  second side    L for the turntable, N J M K , . and Enter or right Shift
  Controllers and other keys: by the startup menu, or where there is no display by
  qlmprobe keys _qlmfiles/qlm_keycnf.dat --set INPUT=CODE

Keys in a play:
  Esc, held for half a second   ends the play
  Shift and Esc                 leaves the program at once
  4 held, with 1 or 2           scroll speed; both: it follows the combo
  3 held, with 1 or 2           tempo and pitch; the play is then not ranked
  1, 2                          rest in each frame
  5                             pictures of the chart on and off
  7, 8                          volume
  F1, F2                        side of the turntable, first and second side
  F7                            preview of the lists on and off; ends the play
  F8                            the machine plays
  F9                            next skin
  F10                           echo
  F11                           draw limit
  F12                           pause

Files, all in the folder _qlmfiles beside the program; of an installed one in
~/.local/share/quillmarch, where its first start brings the stock songs too:
  qlm_conf.ini   settings, written when the program ends; Windowed=True together with
                 DirectBlt=True gives a window in place of the full screen
  qlm_keycnf.dat keys, written likewise
  qlm_searchdir.txt  folders of charts, one a line, as the startup menu keeps them
  debug.txt      the log of the last run: look here when a sound or a picture is missing

To begin with:
  quillmarch songs/inkwell/inkwell5.bms, or in the song list the folder songs
What the game makes of a chart, and what is wrong with it: qlmprobe check CHART)";

platform::Program GameProgram() {
  platform::Program program;
  program.name = "quillmarch";
  program.version = "quillmarch " + platform::EncodeUtf8(FullVersion());
  program.help =
      "quillmarch - a keysounded rhythm game\n"
      "\n"
      "Without a CHART the startup menu opens: settings, folders of charts, battles. With one, a .bms or "
      ".bme file\n"
      "with its sounds and pictures beside it, the first CHART is played at once.";
  program.usage = "[OPTION]... [CHART]...";
  program.footer = kFooter;
  program.options.push_back(
      {.name = "--demo", .help = "the machine plays, and the setting is left as it was"});
  program.options.push_back(
      {.name = "--wide",
       .help = "reads charts as they are written today: more sounds, stops, long notes;\nthe setting "
               "WideCharts is left as it was"});
  program.options.push_back(
      {.name = "--once", .help = "ends behind the play of CHART; without it the song list follows"});
  program.options.push_back(
      {.name = "--no-menu", .help = "straight to the song list; a CHART passes the startup menu by, too"});
  program.options.push_back(
      {.name = "--scan", .help = "looks for charts anew in the folders of _qlmfiles/qlm_searchdir.txt"});
  program.options.push_back(
      {.name = "--host", .help = "opens a battle for up to five players and goes to the song list"});
  program.options.push_back({.name = "--connect",
                             .value = "HOST[:PORT]",
                             .help = "joins the battle that another one opened there"});
  program.options.push_back({.name = "--open",
                             .value = "LIST",
                             .help = "the song list opens on this one, with its easiest chart in hand"});
  program.options.push_back(
      {.name = "--window",
       .help = "this time in a window of twice the size, where the desktop has room for it"});
  program.options.push_back(
      {.name = "--watch",
       .help = "this time reads a skin anew when one of its files changes, for its author"});
  program.options.push_back({.name = "--set",
                             .value = "NAME=VALUE",
                             .help = "a setting by its name in qlm_conf.ini, or a play option: Hidden,\n"
                                     "Sudden, Stealth, Accel, Quil, HalfField, Random, ExRandom,\n"
                                     "FourDMode, Pressure, HazardGauge, HiSpeed and more; VALUE is\n"
                                     "True or False, or a number. May be repeated",
                             .repeatable = true});
  return program;
}

// Empty when the option was not given.
std::string LastValue(const platform::Arguments& read, std::string_view option) {
  const auto values = read.values.find(option);
  return values == read.values.end() || values->second.empty() ? std::string() : values->second.back();
}

}  // namespace

Launch ReadArguments(std::span<const std::string> arguments) {
  const platform::Arguments read = platform::ReadArguments(GameProgram(), arguments);
  Launch launch;
  launch.answer = read.answer;
  launch.wrong = read.wrong;
  launch.noMenu = read.values.contains("--no-menu");
  launch.scan = read.values.contains("--scan");
  launch.once = read.values.contains("--once");
  launch.demo = read.values.contains("--demo");
  launch.wide = read.values.contains("--wide");
  launch.host = read.values.contains("--host");
  launch.window = read.values.contains("--window");
  launch.watch = read.values.contains("--watch");
  launch.connect = LastValue(read, "--connect");
  launch.open = platform::DecodeUtf8(LastValue(read, "--open"));
  if (const auto settings = read.values.find("--set"); settings != read.values.end()) {
    for (const std::string& setting : settings->second)
      launch.settings.push_back(platform::DecodeUtf8(setting));
  }
  for (const std::string& argument : read.rest) {
    if (argument.empty()) continue;
    const Text word = GameWord(argument);
    const TextView quote = word.find(u' ') == Text::npos ? u"" : u"\"";
    launch.command += Join(launch.command.empty() ? u"" : u" ", quote, word, quote);
  }
  const bool battle = launch.host || !launch.connect.empty();
  if (launch.wrong.empty() && launch.answer.empty() && battle) {
    if (launch.host && !launch.connect.empty()) launch.wrong = "--host and --connect exclude each other";
    if (NamesChart(launch.command)) launch.wrong = "a battle chooses its songs in the list: name no CHART";
  }
  return launch;
}

}  // namespace qlm
