// The words that the program is started with, made into the one command text that the game parses.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "base/text.h"

namespace qlm {

struct Launch {
  Text command;                // charts and options of the game
  std::vector<Text> settings;  // each NAME=VALUE of a --set, in their order
  bool once = false;           // --once: the program ends behind the charts of the command line
  bool scan = false;           // --scan: charts are searched for anew
  bool window = false;         // --window: in a window of twice the size, where the desktop has room
  bool watch = false;          // --watch: skins are read anew when their files change
  Text open;                   // --open: the list opens on this jukebox; empty for the list of jukeboxes
  bool noMenu = false;         // --no-menu: the game starts without its startup menu
  bool host = false;           // --host: a battle's session is opened
  std::string connect;         // --connect: HOST or HOST:PORT of the session to join
  bool demo = false;           // --demo: the machine plays, whatever the settings say
  bool wide = false;           // --wide: charts are read as they are written today, likewise
  std::string answer;          // what --help or --version prints; the game then does nothing else
  std::string wrong;           // what is wrong with the "--" words, in one line; empty when nothing is
};

// `arguments` are those behind the program's name. The "--" words are taken out, a --set with the word behind
// it. An option of the game stays as it is; every other word is a path, is made absolute and brought to the
// game's form. Words that hold a blank are quoted, and all are joined with blanks between.
Launch ReadArguments(std::span<const std::string> arguments);

}  // namespace qlm
