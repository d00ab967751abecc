// The version numbers come from the build, and so does the whole of FullVersion().
#include "shell/version.h"

namespace qlm {

Version ProgramVersion() { return {QLM_MAJOR, QLM_MINOR, QLM_REVISION}; }

Text VersionText() {
  const Version version = ProgramVersion();
  return Join(version.major, u".", version.minor, u"(", version.revision, u")");
}

}  // namespace qlm
