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
// As in "0.1.0+430.g9f3027c": the commits since that version was tagged, and the last of them; only "0.1.0"
// for the tagged one, and where the source came without its history.
Text FullVersion();

}  // namespace qlm
