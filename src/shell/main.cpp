// The game's program.
#include <cstdio>
#include <string>
#include <vector>

#include "shell/arguments.h"
#include "shell/boot.h"

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  const qlm::Launch launch = qlm::ReadArguments(arguments);
  if (!launch.wrong.empty()) {
    std::fprintf(stderr, "quillmarch: %s; see quillmarch --help\n", launch.wrong.c_str());
    return 2;
  }
  if (!launch.answer.empty()) {
    std::fputs(launch.answer.c_str(), stdout);
    return 0;
  }
  return qlm::Main(launch);
}
