// Progress of a search.
#include "library/progress.h"

#include "base/hooks.h"
#include "base/log.h"
#include "platform/clock.h"
#include "state/lists.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

Text HoursMinutesSeconds(int64_t ms) {
  const int64_t seconds = ms / 1000;
  return Join(Padded(seconds / 3600, 2), u":", Padded(seconds / 60 % 60, 2), u":", Padded(seconds % 60, 2));
}

}  // namespace

void ShowProgress(TextView text) {
  if (!DDBack && hooks.setCaption != nullptr) hooks.setCaption(text);
}

void ShowListProgress() {
  if (DDBack || hooks.setCaption == nullptr) return;
  ShowProgress(Join(u"Adding...", library.foundCount, u" files of ", int64_t{lastSong} + 1, u"files / ",
                    HoursMinutesSeconds(listTotalTime)));
}

void ShowSearchProgress(TextView folder) {
  // Quirk: the word is spelled so.
  const Text line = Join(u"Seaching ", library.foundCount, u"... ", folder);
  ShowProgress(line);
  if (hooks.folderSearched != nullptr) hooks.folderSearched(line);
}

void ReportUnreadable(TextView path, TextView why) {
  DebugLog(Join(u"# cannot be read: ", path, u": ", why));
  if (hooks.unreadable != nullptr) hooks.unreadable(path, why);
}

void PumpSearch() {
  constexpr int32_t kInterval = 50;  // ms
  const uint32_t now = platform::Now();
  if (library.lastPump && platform::Elapsed(now, *library.lastPump) < kInterval) return;
  library.lastPump = now;
  if (hooks.loadPump != nullptr) hooks.loadPump();
}

}  // namespace qlm
