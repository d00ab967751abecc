// The ground of a benchmark.
#include "bench/support/bench_game.h"

#include <cstdlib>
#include <filesystem>

#include "base/log.h"
#include "base/paths.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "state/reset.h"

namespace qlm {

BenchGame::BenchGame()
    : folder_((std::filesystem::temp_directory_path() / "quillmarch-bench-XXXXXX").string()) {
  if (mkdtemp(folder_.data()) == nullptr) std::abort();
  ResetState();
  platform::UseVirtualClock(1'000'000);
  AppPath = platform::InnerPath(folder_);
  platform::MakeFolder(DataPath(u""));
  LogIndent = 0;
  logOutput = {};
  logOutput.file = false;
}

BenchGame::~BenchGame() {
  ResetState();
  logOutput = {};
  platform::UseRealClock();
  std::error_code error;
  std::filesystem::remove_all(folder_, error);
}

Text BenchGame::WriteData(TextView name, std::string_view bytes) const {
  Text path = Join(AppPath, u"\\", name);
  MakeFolders(GetFolder(path));
  platform::WriteFile(path, bytes);
  return path;
}

}  // namespace qlm
