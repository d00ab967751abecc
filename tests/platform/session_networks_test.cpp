// Sessions on a local network that exists inside this test alone.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/process.h"

namespace platform {
namespace {

const std::vector<std::string> kApart = {"unshare", "--user", "--map-root-user", "--net", "--mount"};

TEST(LocalNetwork, SessionsAreFoundByBroadcastAndJoinedFromEachMachine) {
  std::vector<std::string> command = kApart;
  command.emplace_back("true");
  if (qlm::Run(command).exitStatus != 0)
    GTEST_SKIP() << "this machine lets a test make no network of its own";
  std::string folder = (std::filesystem::temp_directory_path() / "session-networks-XXXXXX").string();
  ASSERT_NE(mkdtemp(folder.data()), nullptr);
  command.back() = "sh";
  command.insert(command.end(),
                 {QLM_SOURCE_DIR "/tests/platform/session_networks.sh", QLM_SESSION_PLAYER, folder});
  const qlm::ProcessResult result = qlm::Run(command);
  std::filesystem::remove_all(folder);
  if (result.exitStatus == 77) GTEST_SKIP() << result.output << result.errors;
  EXPECT_EQ(result.exitStatus, 0) << result.output << result.errors;
  EXPECT_EQ(result.output, "ok\n") << result.errors;
}

}  // namespace
}  // namespace platform
