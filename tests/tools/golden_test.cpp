// The stock charts against transcripts in tests/data/golden. With QLM_WRITE_GOLDEN set the transcripts are
// written anew, after a change that is meant.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "base/text.h"
#include "platform/files.h"
#include "platform/text.h"
#include "tests/support/process.h"

namespace qlm {
namespace {

struct Case {
  const char* command;
  const char* chart;
};

std::string ReadAll(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

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
  const std::string golden = QLM_SOURCE_DIR "/tests/data/golden/" + chart + "." + command + ".json";
  const std::string output = WithoutBuildFolder(result.output);
  if (std::getenv("QLM_WRITE_GOLDEN") != nullptr) std::ofstream(golden, std::ios::binary) << output;
  const std::string expected = ReadAll(golden);
  if (output == expected) return;
  const auto differing = std::mismatch(output.begin(), output.end(), expected.begin(), expected.end());
  const auto line = 1 + std::count(output.begin(), differing.first, '\n');
  const std::string kept = QLM_BINARY_DIR "/" + chart + "." + command + ".json";
  std::ofstream(kept, std::ios::binary) << output;
  FAIL() << "line " << line << " differs; compare " << kept << " with " << golden;
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
