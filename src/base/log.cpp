// Writing of the debug log.
#include "base/log.h"

#include <algorithm>

#include "base/hooks.h"
#include "base/paths.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/text.h"

namespace qlm {

Text LogPath() { return DataPath(u"debug.txt"); }

void DebugLog(TextView message, int32_t indentDelta) {
  const TextView words = message.empty() ? TextView(u"Ready.") : Trim(message);
  Text line(static_cast<size_t>(LogIndent) * 4, u' ');
  line += words;
  // A chart without objects leaves its level behind: bounded, however many are loaded in one run.
  LogIndent = static_cast<int32_t>(std::clamp<int64_t>(int64_t{LogIndent} + indentDelta, 0, 65535));
  if (logOutput.file) {
    const platform::WallTime now = platform::WallClock();
    const Text stamped = Join(Padded(now.hour, 2), u":", Padded(now.minute, 2), u":", Padded(now.second, 2),
                              u"> ", line, kCrLf);
    if (!platform::AppendFile(LogPath(), platform::EncodeCp932(stamped)) && hooks.unwritten != nullptr) {
      hooks.unwritten(LogPath());
    }
  }
  if (logOutput.lines != nullptr) logOutput.lines->push_back(std::move(line));
  if (logOutput.afterLine != nullptr) logOutput.afterLine();
}

}  // namespace qlm
