// The game's program.
#include <cstdio>
#include <string>
#include <vector>

#include "platform/text.h"
#include "shell/arguments.h"
#include "shell/boot.h"
#include "shell/version.h"

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  const qlm::Launch launch = qlm::ReadArguments(arguments);
  if (!launch.unknown.empty()) {
    std::fprintf(stderr, "quillmarch: %s is no option, or lacks its value; quillmarch --help shows all\n",
                 launch.unknown.c_str());
    return 2;
  }
  if (launch.helpAsked) {
    std::fputs(qlm::HelpText().c_str(), stdout);
    return 0;
  }
  if (launch.versionAsked) {
    std::printf("quillmarch %s\n", platform::EncodeUtf8(qlm::VersionText()).c_str());
    return 0;
  }
  return qlm::Main(launch);
}
