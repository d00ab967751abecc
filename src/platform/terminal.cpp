// Quoting for a shell, and the folders in which a terminal looks for programs.
#include "platform/terminal.h"

#include <cstdlib>
#include <sstream>

#include "platform/files.h"

namespace platform {
namespace {

std::string Quoted(std::string_view word) {
  std::string quoted = "'";
  for (const char letter : word) quoted += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
  return quoted + '\'';
}

bool LooksForProgramsIn(const std::string& folder) {
  const char* const folders = std::getenv("PATH");
  if (folders == nullptr) return false;
  std::istringstream list(folders);
  for (std::string each; std::getline(list, each, ':');) {
    if (each == folder) return true;
  }
  return false;
}

}  // namespace

std::string TerminalCommand(std::string_view program, std::string_view command, std::string_view file) {
  const std::string folder = SystemPath(ProgramFolder());
  const std::string name(program);
  const std::string found = LooksForProgramsIn(folder) ? name : Quoted(folder + '/' + name);
  return found + ' ' + std::string(command) + ' ' + Quoted(file);
}

}  // namespace platform
