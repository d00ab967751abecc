// Reading, writing and comparing of stored transcripts.
#include "tests/tools/golden.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "tests/support/whole_file.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

void WriteAll(const fs::path& file, const std::string& bytes) {
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << bytes;
}

}  // namespace

void CompareWithGolden(const std::string& name, const std::string& output) {
  const fs::path golden = fs::path(QLM_SOURCE_DIR "/tests/data/golden") / name;
  if (std::getenv("QLM_WRITE_GOLDEN") != nullptr) WriteAll(golden, output);
  const std::string expected = WholeFile(golden);
  if (output == expected) return;
  const auto differing = std::mismatch(output.begin(), output.end(), expected.begin(), expected.end());
  const auto line = 1 + std::count(output.begin(), differing.first, '\n');
  const fs::path kept = fs::path(QLM_BINARY_DIR "/golden-output") / name;
  WriteAll(kept, output);
  ADD_FAILURE() << "line " << line << " differs; compare " << kept << " with " << golden;
}

}  // namespace qlm
