// The probe's program: picks the command.
#include <cstdio>
#include <string>
#include <vector>

#include "platform/text.h"
#include "shell/version.h"
#include "tools/qlmprobe/arguments.h"
#include "tools/qlmprobe/commands.h"

namespace {

struct Command {
  std::string_view name;
  int (*run)(probe::Arguments& arguments);
  std::string_view usage;  // the lines that --help shows
};

constexpr std::string_view kLoadOptions =
    "  --player-force N    0 as the chart says, 1 to 1P, 2 to 2P, 3 to double play\n"
    "  --random            lanes permuted while reading\n"
    "  --4d                a speed of its own for each note\n"
    "  --no-bga, --no-wav  as the settings of these names\n"
    "  --num-objs N        highest index of the object table (65535)\n"
    "  --hazard            the gauge that starts full\n"
    "  --preview           loads as for a preview\n"
    "  --real-hispeed X    tempo factor (1)\n"
    "  --before FILE       loads this chart first, in the same run; may be repeated\n";

constexpr std::string_view kPlayOptions =
    "  --events FILE       keys from this file: lines \"MS down KEY\" or \"MS up KEY\"; without it the\n"
    "                      machine plays\n"
    "  --set NAME=VALUE    a setting or a play option, as in --set HiSpeed=2; may be repeated\n"
    "  --skin FILE.brd     plays with this skin; without it frame takes the stock skins, the others none\n"
    "  --fps N             turns a second (60)\n"
    "  --limit MS          stops the play at this time of the chart\n";

constexpr Command kCommands[] = {
    {"chart", probe::ChartCommand,
     "qlmprobe chart FILE [OPTION]...\n"
     "What one chart load leaves in memory, and the log of the load.\n"
     "  --raw               stops behind the reader\n"},
    {"course", probe::CourseCommand,
     "qlmprobe course FILE... [OPTION]...\n"
     "The same for charts joined as a course.\n"
     "  --raw               stops behind the last song's read\n"},
    {"header", probe::HeaderCommand,
     "qlmprobe header FILE\n"
     "The list entry that the library's header read makes.\n"},
    {"play", probe::PlayCommand,
     "qlmprobe play FILE [OPTION]...\n"
     "A whole play on the virtual clock: figures, starts of sounds, tempo changes.\n"},
    {"frame", probe::FrameCommand,
     "qlmprobe frame FILE --at MS[,MS...] --out PREFIX [OPTION]...\n"
     "Writes PREFIX-MS.png for each moment of a play: the frame as presented.\n"},
    {"audio", probe::AudioCommand,
     "qlmprobe audio FILE --out OUT.wav [OPTION]...\n"
     "The sound of a play as 16-bit stereo at 44100 Hz.\n"
     "  --seconds N         at most this much\n"},
    {"check", probe::CheckCommand,
     "qlmprobe check FILE...\n"
     "What in a chart the game will not play as its author means it, with line numbers.\n"
     "Exit status 0 when nothing was found, 1 otherwise.\n"},
    {"skin", probe::SkinCommand,
     "qlmprobe skin FILE.brd [OPTION]...\n"
     "All tables that a skin fills, and what its author would want to know, with line numbers.\n"
     "  --scratch1p 0|1, --scratch2p 0|1\n"
     "                      1 with the side's turntable on the right\n"
     "  --side-count N      for 1 or 2 sides (1)\n"},
    {"keys", probe::KeysCommand,
     "qlmprobe keys FILE [--set INPUT=CODE]...\n"
     "A key file by what its keys do.\n"
     "  --set INPUT=CODE    first has an input do something else, and writes the file; a new file\n"
     "                      starts from the default keys. May be repeated\n"},
    {"dump", probe::DumpCommand,
     "qlmprobe dump qlm_conf.ini|qlm_keycnf.dat\n"
     "The settings that the game takes from a settings file, and what it does not take; or a key\n"
     "file by what its keys do.\n"},
};

void PrintHelp(const Command* command) {
  std::puts(
      "qlmprobe - the engine of quillmarch from the command line: one JSON object on standard output\n");
  for (const Command& each : kCommands) {
    if (command != nullptr && command != &each) continue;
    std::printf("%.*s\n", static_cast<int>(each.usage.size()), each.usage.data());
  }
  const auto group = [&](std::string_view heading, std::string_view options, std::string_view names) {
    if (command != nullptr && names.find(command->name) == std::string_view::npos) return;
    std::printf("%.*s\n%.*s\n", static_cast<int>(heading.size()), heading.data(),
                static_cast<int>(options.size()), options.data());
  };
  group("Options of chart, course, play, frame and audio:", kLoadOptions, "chart course play frame audio");
  group("Options of play, frame and audio:", kPlayOptions, "play frame audio");
  std::puts(
      "Options of every command:\n"
      "  --data DIR          the folder that holds _qlmfiles (the program's own)\n"
      "  --log FILE          writes the log lines of the run to this file\n"
      "  --rnd 0.1,0.9,...   these numbers in place of random ones, again and again\n"
      "\n"
      "Exit status: 0 done, 1 the file cannot be read or is refused, 2 wrong usage.");
}

bool Asks(const std::vector<std::string>& words, std::string_view option) {
  for (const std::string& word : words) {
    if (word == option) return true;
  }
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> words(argv + (argc > 0 ? 1 : 0), argv + argc);
  const Command* command = nullptr;
  for (const Command& each : kCommands) {
    if (!words.empty() && words.front() == each.name) command = &each;
  }
  if (Asks(words, "--help")) {
    PrintHelp(command);
    return probe::kDone;
  }
  if (Asks(words, "--version")) {
    std::printf("qlmprobe %s\n", platform::EncodeUtf8(qlm::VersionText()).c_str());
    return probe::kDone;
  }
  if (command == nullptr) {
    const bool later = !words.empty() && Asks({"title"}, words.front());
    std::fprintf(stderr, "qlmprobe: %s; see qlmprobe --help\n",
                 words.empty() ? "a command is missing"
                 : later       ? ("the command " + words.front() + " does not work in this version").c_str()
                               : ("there is no command " + words.front()).c_str());
    return probe::kWrongUsage;
  }
  words.erase(words.begin());
  probe::Arguments arguments(std::move(words));
  return command->run(arguments);
}
