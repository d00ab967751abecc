// The stock charts against transcripts in tests/data/golden. With QLM_WRITE_GOLDEN set the transcripts are
// written anew, after a change that is meant.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "base/text.h"
#include "platform/files.h"
#include "platform/text.h"
#include "tests/support/process.h"
#include "tests/tools/golden.h"

namespace qlm {
namespace {

struct Case {
  const char* command;
  const char* chart;
};

// The log names the folder of the build.
std::string WithoutBuildFolder(const std::string& output) {
  const Text folder = Replace(platform::InnerPath(QLM_BINARY_DIR), u"\\", u"\\\\");
  return platform::EncodeUtf8(Replace(platform::DecodeUtf8(output), folder, u""));
}

class GoldenTest : public testing::TestWithParam<Case> {};

TEST_P(GoldenTest, IsTheSameToTheLetter) {
  const std::string command = GetParam().command;
  const std::string chart = GetParam().chart;
  const ProcessResult result =
      qlm::Run({QLM_BINARY_DIR "/qlmprobe", command, QLM_BINARY_DIR "/songs/march/" + chart});
  ASSERT_EQ(result.exitStatus, 0) << result.errors;
  CompareWithGolden(chart + "." + command + ".json", WithoutBuildFolder(result.output));
}

INSTANTIATE_TEST_SUITE_P(StockSong, GoldenTest,
                         testing::Values(Case{"header", "march5.bms"}, Case{"header", "march7.bme"},
                                         Case{"header", "marchdp.bme"}, Case{"chart", "march5.bms"},
                                         Case{"chart", "march7.bme"}, Case{"chart", "marchdp.bme"},
                                         Case{"play", "march5.bms"}, Case{"play", "march7.bme"},
                                         Case{"play", "marchdp.bme"}),
                         [](const auto& info) {
                           std::string name = std::string(info.param.command) + "Of" + info.param.chart;
                           std::replace(name.begin(), name.end(), '.', '_');
                           return name;
                         });

}  // namespace
}  // namespace qlm
