// The probe's program: its commands with their options, and the running of one.
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "platform/arguments.h"
#include "platform/text.h"
#include "shell/version.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"

namespace {

using Options = std::vector<platform::Option>;

Options LoadOptions() {
  const std::string group = "Options of a chart's load";
  return {
      {.name = "--player-force",
       .value = "N",
       .help = "0 as the chart says, 1 to 1P, 2 to 2P, 3 to double play",
       .group = group,
       .range = platform::WholeRange{0, 3}},
      {.name = "--random", .help = "lanes permuted while reading", .group = group},
      {.name = "--4d", .help = "a speed of its own for each note", .group = group},
      {.name = "--no-bga", .help = "as the setting of this name", .group = group},
      {.name = "--no-wav", .help = "as the setting of this name", .group = group},
      {.name = "--num-objs",
       .value = "N",
       .help = "highest index of the object table (65535)",
       .group = group,
       .range = platform::WholeRange{0, 16'777'215}},
      {.name = "--hazard", .help = "the gauge that starts full", .group = group},
      {.name = "--preview", .help = "loads as for a preview", .group = group},
      {.name = "--real-hispeed", .value = "X", .help = "tempo factor (1)", .group = group},
      {.name = "--before",
       .value = "FILE",
       .help = "loads this chart first, in the same run; may be repeated",
       .group = group,
       .repeatable = true},
  };
}

Options PlayOptions() {
  const std::string group = "Options of a play";
  return {
      {.name = "--events",
       .value = "FILE",
       .help = "keys from this file: lines \"MS down KEY\" or \"MS up KEY\"; without it\n"
               "the machine plays",
       .group = group},
      {.name = "--set",
       .value = "NAME=VALUE",
       .help = "a setting or a play option, as in --set HiSpeed=2; may be repeated",
       .group = group,
       .repeatable = true},
      {.name = "--skin",
       .value = "FILE.brd",
       .help = "plays with this skin; without it frame takes the stock skins, the others\n"
               "none",
       .group = group},
      {.name = "--fps",
       .value = "N",
       .help = "turns a second (60)",
       .group = group,
       .range = platform::WholeRange{1, 1000}},
      {.name = "--limit",
       .value = "MS",
       .help = "stops the play at this time of the chart",
       .group = group,
       .range = platform::WholeRange{0, INT32_MAX}},
  };
}

constexpr const char* kRecordGroup = "Options of a play's record and its score";

platform::Option ReplayOption() {
  return {.name = "--replay",
          .value = "FILE.qpd",
          .help = "plays a record again, which takes the place of hands and machine",
          .group = kRecordGroup};
}

Options RecordOptions() {
  const std::string group = kRecordGroup;
  return {
      {.name = "--record", .value = "FILE.qpd", .help = "records the play and writes it", .group = group},
      ReplayOption(),
      {.name = "--scores",
       .value = "FILE.qsd",
       .help = "ranks the play in this score table as the game does, and writes it; a new\n"
               "table when there is no such file",
       .group = group},
      {.name = "--name",
       .value = "NAME",
       .help = "what is typed for a play that ranks (QuIl :-)",
       .group = group},
  };
}

Options CommonOptions() {
  const std::string group = "Options of every command";
  return {
      {.name = "--data",
       .value = "DIR",
       .help = "the folder that holds _qlmfiles (the program's own)",
       .group = group},
      {.name = "--log",
       .value = "FILE",
       .help = "writes the log lines of the run to this file",
       .group = group},
      {.name = "--wide", .help = "reads charts as they are written today", .group = group},
      {.name = "--rnd",
       .value = "0.1,0.9,...",
       .help = "these numbers in place of random ones, again and again",
       .group = group},
  };
}

struct Command {
  platform::Command words;
  int (*run)(probe::Arguments& arguments);
};

// The options of a command: its own and those that others have too.
Options Joined(const std::vector<Options>& parts) {
  Options joined;
  for (const Options& part : parts) joined.insert(joined.end(), part.begin(), part.end());
  return joined;
}

// Of a command whose engines are many: their lines would stand between each other's.
Options WithoutLog(Options options) {
  std::erase_if(options, [](const platform::Option& option) { return option.name == "--log"; });
  return options;
}

std::vector<Command> Commands() {
  const Options load = LoadOptions(), play = PlayOptions(), common = CommonOptions();
  const auto flag = [](const char* name, const char* help) {
    return platform::Option{.name = name, .help = help};
  };
  const auto needed = [](const char* name, const char* value, const char* help) {
    return platform::Option{.name = name, .value = value, .help = help, .required = true};
  };
  const auto number = [](const char* name, const char* help, int64_t least, int64_t most) {
    return platform::Option{
        .name = name, .value = "N", .help = help, .range = platform::WholeRange{least, most}};
  };
  constexpr size_t kMostSongs = 255;  // of a course: their number is a byte
  return {
      {{"chart", "What one chart load leaves in memory, and the log of the load.", "FILE [OPTION]...", 1,
        Joined({{flag("--raw", "stops behind the reader")}, load, common})},
       probe::ChartCommand},
      {{"course", "The same for charts joined as a course, or for the songs of a course file (.qcl).",
        "FILE... [OPTION]...", kMostSongs,
        Joined({{flag("--raw", "stops behind the last song's read")}, load, common})},
       probe::CourseCommand},
      {{"header", "The list entry that the library's header read makes.", "FILE [OPTION]...", 1, common},
       probe::HeaderCommand},
      {{"title",
        "What becomes of a title where only ASCII can be shown, stage by stage.\n"
        "Also its two lines in the song select.",
        "TEXT [OPTION]...", 1,
        Joined({Options{{.name = "--dict", .value = "FILE", .help = "puts in the words of this dictionary"}},
                common})},
       probe::TitleCommand},
      {{"play",
        "A whole play of a chart or a course (.qcl) on the virtual clock.\n"
        "Its figures, starts of sounds and tempo changes.",
        "FILE [OPTION]...", 1, Joined({play, RecordOptions(), load, common})},
       probe::PlayCommand},
      {{"frame", "Pictures of a play: for each moment the frame as presented.",
        "FILE --at MS[,MS...] --out PREFIX [OPTION]...", 1,
        Joined({{needed("--at", "MS[,MS...]", "the moments, on the chart's clock"),
                 needed("--out", "PREFIX", "writes PREFIX-MS.png for each")},
                play,
                load,
                common})},
       probe::FrameCommand},
      {{"audio", "The sound of a play as 16-bit stereo at 44100 Hz.", "FILE --out OUT.wav [OPTION]...", 1,
        Joined({{needed("--out", "OUT.wav", "the file to write"),
                 number("--seconds", "at most this much", 1, probe::kLongestSeconds)},
                play,
                load,
                common})},
       probe::AudioCommand},
      {{"video",
        "Pictures and sound of a play or a record as one video file (MP4).\n"
        "The program ffmpeg makes it. It begins with the second in front of the chart.",
        "FILE --out OUT.mp4 [OPTION]...", 1,
        Joined({{needed("--out", "OUT.mp4", "the file to write")}, {ReplayOption()}, play, load, common})},
       probe::VideoCommand},
      {{"battle",
        "Players of the real game on this machine, who play what a script has them decide.\n"
        "Each is a process of its own. Gives each one's log lines on the battle, and its table of the "
        "players\n"
        "at the end.",
        "SCRIPT [OPTION]... | --ping HOST[:PORT]", 1,
        Joined({Options{{.name = "--ping",
                         .help = "plays nothing, but asks the battle at HOST, ten times, and tells who\n"
                                 "hosts it and how long the answers took"}},
                common})},
       probe::BattleCommand},
      {{"check",
        "What in a chart the game will not play as its author means it, with line numbers.\n"
        "Exit status 0 when nothing was found but what the wide reading makes otherwise, else 1.",
        "FILE... [OPTION]...", SIZE_MAX, common},
       probe::CheckCommand},
      {{"library",
        "Checks all charts below folders, on all cores.\n"
        "For each a line, an object with its state and how many findings of each kind there are, and a last\n"
        "one with their numbers.\n"
        "Exit status 0 when nothing was found, 1 otherwise.",
        "FOLDER... [OPTION]...", SIZE_MAX, WithoutLog(common)},
       probe::LibraryCommand},
      {{"skin", "All tables that a skin fills, and what its author would want to know, with line numbers.",
        "FILE.brd [OPTION]...", 1,
        Joined({{number("--scratch1p", "1 with the first side's turntable on the right", 0, 1),
                 number("--scratch2p", "1 with the second side's turntable on the right", 0, 1),
                 number("--side-count", "for 1 or 2 sides (1)", 1, 2)},
                common})},
       probe::SkinCommand},
      {{"keys", "A key file by what its keys do, and the making of one.", "FILE [--set INPUT=CODE]...", 1,
        Joined({Options{{.name = "--set",
                         .value = "INPUT=CODE",
                         .help = "first has an input do something else, and writes the file; a new\n"
                                 "file starts from the default keys. May be repeated",
                         .repeatable = true}},
                common})},
       probe::KeysCommand},
      {{"scan",
        "What the library finds below folders, each chart as the game's scan takes it.\n"
        "Also what could not be read.",
        "FOLDER... [OPTION]...", SIZE_MAX,
        Joined({{flag("--no-limit", "goes down to any depth; without it to the folders' own folders"),
                 {.name = "--sort",
                  .value = "KEY",
                  .help = "as the song list sorts: level, genre, title or artist"},
                 {.name = "--out", .value = "FILE.qbl", .help = "writes the list file"}},
                common})},
       probe::ScanCommand},
      {{"dump",
        "A file of the game in plain words.\n"
        "That is qlm_conf.ini, qlm_keycnf.dat, a list (.qbl), a course (.qcl), a score table (.qsd) or a "
        "play\n"
        "record (.qpd).\n"
        "The settings that the game takes from a settings file, and what it does not take; a key file by\n"
        "what its keys do; the rows of a list or a table; the songs of a course; the events of a record.",
        "FILE [OPTION]...", 1, common},
       probe::DumpCommand},
  };
}

platform::Program ProbeProgram(const std::vector<Command>& commands) {
  platform::Program program;
  program.name = "qlmprobe";
  program.version = "qlmprobe " + platform::EncodeUtf8(qlm::FullVersion());
  program.help =
      "qlmprobe - the engine of quillmarch from the command line: one JSON object on standard output";
  program.usage = "COMMAND FILE [OPTION]...";
  program.footer =
      "qlmprobe COMMAND --help tells the options of a command.\n"
      "Exit status: 0 done, 1 the file cannot be read or is refused, or the output cannot be\n"
      "written, 2 wrong usage.";
  for (const Command& command : commands) program.commands.push_back(command.words);
  return program;
}

// The streams of a program may be closed when it starts. The next file to be opened would then get such a
// stream's number, and what is printed would go into that file.
void HoldStandardStreams() {
  int stream = 0;
  do {
    stream = open("/dev/null", O_RDWR);
  } while (stream >= 0 && stream <= STDERR_FILENO);
  close(stream);
}

}  // namespace

int main(int argc, char** argv) {
  const bool closed = fcntl(STDOUT_FILENO, F_GETFD) < 0;
  HoldStandardStreams();
  if (closed) {
    std::fputs("qlmprobe: the output cannot be written: it is closed\n", stderr);
    return probe::kRefused;
  }
  const std::vector<std::string> words(argv + (argc > 0 ? 1 : 0), argv + argc);
  const std::vector<Command> commands = Commands();
  platform::Arguments read = platform::ReadArguments(ProbeProgram(commands), words);
  if (!read.answer.empty()) return probe::WriteOutput(read.answer) ? probe::kDone : probe::kRefused;
  probe::Arguments arguments(std::move(read));
  if (!arguments.Good()) return probe::kWrongUsage;
  for (const Command& command : commands) {
    if (command.words.name == arguments.Command()) return probe::FinishLog(command.run(arguments));
  }
  return probe::kWrongUsage;
}
