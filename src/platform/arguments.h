// The words that a program is started with: its "--" options with their values, commands and files, and the
// help text that lists them.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

struct WholeRange {
  int64_t least;
  int64_t most;
};

// All help texts may have several lines.
struct Option {
  std::string name = {};   // with its dashes
  std::string value = {};  // what help calls its value; empty when it takes none
  std::string help = {};
  std::string group = {};  // the heading below which help lists it, where it is not "Options"
  bool required = false;
  bool repeatable = false;
  std::optional<WholeRange> range = {};  // of a value that is a whole number
};

struct Command {
  std::string name;
  std::string help;   // its first line stands in the list of the commands
  std::string usage;  // what stands behind its name, as in "FILE [OPTION]..."
  size_t mostFiles;   // at least one is wanted
  std::vector<Option> options;
};

struct Program {
  std::string name;
  std::string version;  // the answer to --version
  std::string help;     // stands above the options of --help
  std::string usage;    // what stands behind its name
  std::string footer;   // stands below the options
  std::vector<Option> options;
  std::vector<Command> commands;
};

struct Arguments {
  std::string command;
  std::map<std::string, std::vector<std::string>, std::less<>>
      values;  // of each option that was given, by its name
  std::vector<std::string>
      rest;            // the files of a command; of a program without commands all words but the "--" ones
  std::string answer;  // what --help or --version prints, with its line end; empty when none was asked for
  std::string wrong;   // the first thing that is wrong, in one line without its end; empty when all is well
};

// Reads the words behind the program's name. Only one of `answer` and `wrong` is ever set. A program without
// commands has its "--" words looked at only, with the value behind each that takes one.
Arguments ReadArguments(const Program& program, std::span<const std::string> words);

// A whole number that fills the word.
std::optional<int64_t> ToNumber(std::string_view word);

}  // namespace platform
