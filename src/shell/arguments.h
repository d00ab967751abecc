// What the system hands over at program start, made into the one command text that the game parses.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "base/text.h"

namespace qlm {

struct Launch {
  Text command;                // charts and options of the game
  std::vector<Text> settings;  // each NAME=VALUE of a --set, in their order
  bool demo = false;           // --demo: the machine plays, whatever the settings say
  bool helpAsked = false;      // --help
  bool versionAsked = false;   // --version
  std::string unknown;         // the first "--" word that means nothing or lacks its value, empty otherwise
};

// `arguments` are those behind the program's name. Words that begin "--" are taken out, a
// --set with the word behind it. An option of the game
// stays as it is; every other word is a path, is made absolute and brought to the game's form. Words that
// hold a blank are quoted, and all are joined with blanks between.
Launch ReadArguments(std::span<const std::string> arguments);

// The answer to --help, ending in a line end.
std::string HelpText();

}  // namespace qlm
