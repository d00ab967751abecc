// The version numbers come from the build.
#include "shell/version.h"

#include "full_version.h"

namespace qlm {

Version ProgramVersion() { return {QLM_MAJOR, QLM_MINOR, QLM_REVISION}; }

Text VersionText() {
  const Version version = ProgramVersion();
  return Join(version.major, u".", version.minor, u"(", version.revision, u")");
}

Text FullVersion() { return kFullVersion; }

}  // namespace qlm
