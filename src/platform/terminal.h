// Commands as a person types them into a terminal.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// "PROGRAM COMMAND FILE" for a program that lies in the folder of this one: by its name where a terminal
// finds it by that, else by its path. Paths are the system's own bytes, quoted so that a shell takes each for
// one word, whatever it holds.
std::string TerminalCommand(std::string_view program, std::string_view command, std::string_view file);

}  // namespace platform
