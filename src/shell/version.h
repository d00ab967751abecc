// The version of this build.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

struct Version {
  int32_t major;
  int32_t minor;
  int32_t revision;
};
Version ProgramVersion();
// As in "0.1(0)".
Text VersionText();

}  // namespace qlm
