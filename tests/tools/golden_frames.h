// Comparison of pictures with those stored in tests/data/golden/frames.
#pragma once

#include <string>

namespace qlm {

// Fails the running test where the picture file `made` is not, pixel for pixel, what NAME.png holds, and
// keeps both beside the build: the picture, and one in which the differing pixels are white on a dimmed
// ground. With QLM_WRITE_GOLDEN set the stored picture is written instead.
void CompareWithGoldenFrame(const std::string& name, const std::string& made);

}  // namespace qlm
