// Comparison with what is stored in tests/data/golden.
#pragma once

#include <string>

namespace qlm {

// Fails the running test where `output` is not, to the letter, what the file below tests/data/golden holds,
// and keeps the output beside the build. With QLM_WRITE_GOLDEN set the file is written instead.
void CompareWithGolden(const std::string& name, const std::string& output);

}  // namespace qlm
