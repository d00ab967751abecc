// Any bytes as the words that the game is started with, each ended by a zero byte, and the look-up of every
// path that they name.
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "shell/arguments.h"
#include "shell/command_line.h"

namespace {

namespace fs = std::filesystem;

void Check(bool holds) {
  if (!holds) std::abort();
}

// A folder with names that can be found only by looking closely. It goes away with the program.
struct Folder {
  Folder() {
    fs::create_directories(path / "Sub");
    for (const char* const name : {"Song.bms", "Sub/Kick.WAV", "\x83\x5C.bms", "か\u3099.bms", "a b.bms"}) {
      std::ofstream(path / name) << "x";
    }
  }
  ~Folder() { fs::remove_all(path); }

  const fs::path path = fs::temp_directory_path() / ("command_line_fuzz-" + std::to_string(getpid()));
};

// Stands in the folder while one input is looked at.
struct Standing {
  explicit Standing(const Folder& folder) { fs::current_path(folder.path); }
  ~Standing() { fs::current_path(before); }

  const fs::path before = fs::current_path();
};

std::vector<std::string> WordsOf(std::string_view bytes) {
  std::vector<std::string> words;
  while (!bytes.empty()) {
    const size_t end = std::min(bytes.find('\0'), bytes.size());
    words.emplace_back(bytes.substr(0, end));
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
  return words;
}

void LookUp(qlm::TextView word) {
  const std::optional<std::string> found = platform::FindPath(word);
  if (!found) {
    Check(!platform::FileLength(word));
    return;
  }
  std::error_code error;
  Check(fs::exists(*found, error) || error);
  Check(platform::SystemPath(word) == *found);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const Folder folder;
  const Standing standing(folder);
  const qlm::Launch launch = qlm::ReadArguments(WordsOf({reinterpret_cast<const char*>(data), size}));
  Check(launch.answer.empty() || launch.wrong.empty());
  Check(launch.wrong.find('\n') == std::string::npos);
  for (const qlm::Text& word : qlm::CommandWords(launch.command)) {
    if (!qlm::IsOption(word)) LookUp(word);
  }
  return 0;
}
