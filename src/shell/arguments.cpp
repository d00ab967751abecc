// Reading of the system's arguments.
#include "shell/arguments.h"

#include <algorithm>
#include <array>

#include "platform/files.h"
#include "platform/text.h"
#include "shell/command_line.h"

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

}  // namespace

Launch ReadArguments(std::span<const std::string> arguments) {
  Launch launch;
  for (size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument.starts_with("--")) {
      if (argument == "--demo") {
        launch.demo = true;
      } else if (argument == "--set" && i + 1 < arguments.size()) {
        launch.settings.push_back(platform::DecodeUtf8(arguments[++i]));
      } else if (argument == "--help") {
        launch.helpAsked = true;
      } else if (argument == "--version") {
        launch.versionAsked = true;
      } else if (launch.unknown.empty()) {
        launch.unknown = argument;
      }
      continue;
    }
    if (argument.empty()) continue;
    const Text word = GameWord(argument);
    const TextView quote = word.find(u' ') == Text::npos ? u"" : u"\"";
    launch.command += Join(launch.command.empty() ? u"" : u" ", quote, word, quote);
  }
  return launch;
}

std::string HelpText() {
  return "quillmarch - a keysounded rhythm game\n"
         "\n"
         "Usage: quillmarch [OPTION]... CHART [CHART]...\n"
         "\n"
         "Plays the first CHART, a .bms or .bme file with its sounds and pictures beside it.\n"
         "\n"
         "  --demo            the machine plays, and the setting is left as it was\n"
         "  --set NAME=VALUE  a setting by its name in qlm_conf.ini, or a play option: Hidden, Sudden,\n"
         "                    Stealth, Accel, Quil, HalfField, Random, ExRandom, FourDMode, Pressure,\n"
         "                    HazardGauge, HiSpeed and more; VALUE is True or False, or a number\n"
         "  --help            shows this text\n"
         "  --version         shows the version\n"
         "  -B, /B            background pictures on, whatever the settings say\n"
         "  -W, /W            chart sounds on, whatever the settings say\n"
         "  -P, -S, -Q and their \"/\" forms are accepted and change nothing in a play\n"
         "\n"
         "Keys of the lanes, by their place on a US keyboard:\n"
         "  first side     left Shift or Space for the turntable, Z S X D C F V\n"
         "  second side    L for the turntable, N J M K , . and Enter or right Shift\n"
         "  Controllers and other keys: qlmprobe keys _qlmfiles/qlm_keycnf.dat --set INPUT=CODE\n"
         "\n"
         "Keys in a play:\n"
         "  Esc, held for half a second   ends the play\n"
         "  Shift and Esc                 leaves the program at once\n"
         "  4 held, with 1 or 2           scroll speed; both: it follows the combo\n"
         "  3 held, with 1 or 2           tempo and pitch; the play is then not ranked\n"
         "  1, 2                          rest in each frame\n"
         "  5                             pictures of the chart on and off\n"
         "  7, 8                          volume\n"
         "  F1, F2                        side of the turntable, first and second side\n"
         "  F7                            preview of the lists on and off; ends the play\n"
         "  F8                            the machine plays\n"
         "  F9                            next skin\n"
         "  F10                           echo\n"
         "  F11                           draw limit\n"
         "  F12                           pause\n"
         "\n"
         "Files, all in the folder _qlmfiles beside the program:\n"
         "  qlm_conf.ini   settings, written when the program ends; Windowed=True together with\n"
         "                 DirectBlt=True gives a window in place of the full screen\n"
         "  qlm_keycnf.dat keys, written likewise\n"
         "  debug.txt      the log of the last run: look here when a sound or a picture is missing\n"
         "\n"
         "To begin with:\n"
         "  quillmarch songs/march/march5.bms\n"
         "What the game makes of a chart, and what is wrong with it: qlmprobe check CHART\n";
}

}  // namespace qlm
