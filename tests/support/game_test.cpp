// The ground of a test.
#include "tests/support/game_test.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "base/hooks.h"
#include "base/log.h"
#include "base/paths.h"
#include "base/rnd.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/text.h"
#include "platform/timers.h"
#include "state/reset.h"

namespace qlm {
namespace {

std::string NewFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "quillmarch-test-XXXXXX").string();
  return mkdtemp(name.data()) == nullptr ? std::string() : name;
}

}  // namespace

std::vector<GameTest::Fatal> GameTest::fatals;

GameTest::GameTest() : folder_(NewFolder()) {
  ResetState();
  platform::UseVirtualClock(1'000'000);
  SetRndList({});
  SeedRnd(1);
  SeedDrawRnd(1);
  AppPath = platform::InnerPath(folder_);
  platform::MakeFolder(DataPath(u""));
  LogIndent = 0;
  logOutput = {};
  logOutput.lines = &log;
  fatals.clear();
  hooks.fatalError = [](TextView title, TextView message) { fatals.push_back({Text(title), Text(message)}); };
}

GameTest::~GameTest() {
  ResetState();
  for (const int timer : {platform::kTimerPlay, platform::kTimerPreview, platform::kTimerNetwork,
                          platform::kTimerPlayCurSong, platform::kTimerRunFESub}) {
    platform::KillTimer(timer);
  }
  hooks = {};
  logOutput = {};
  platform::UseRealClock();
  std::error_code error;
  std::filesystem::remove_all(folder_, error);
}

Text GameTest::WriteData(TextView name, std::string_view bytes) const {
  Text path = Join(AppPath, u"\\", name);
  MakeFolders(GetFolder(path));
  EXPECT_TRUE(platform::WriteFile(path, bytes)) << Utf8(path);
  return path;
}

Text GameTest::WriteText(TextView name, TextView text) const {
  return WriteData(name, platform::EncodeCp932(text));
}

std::string GameTest::ReadBytes(TextView path) const { return platform::ReadFile(path).value_or(""); }

bool GameTest::Logged(TextView line) const { return std::find(log.begin(), log.end(), line) != log.end(); }

std::string Utf8(TextView text) { return platform::EncodeUtf8(text); }

}  // namespace qlm

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
