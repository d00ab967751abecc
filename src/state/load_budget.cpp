// What stands against the budget, and what is said when it is used up.
#include "state/load_budget.h"

#include <cstdint>

#include "base/log.h"
#include "base/paths.h"
#include "platform/files.h"
#include "platform/sound_device.h"
#include "platform/surface.h"
#include "state/message.h"
#include "state/settings.h"

namespace qlm {
namespace {

constexpr int64_t kMiB = int64_t{1} << 20;

bool told = false;

// In MiB. A machine that does not tell its memory sets no bound.
int64_t Budget() {
  if (LoadBudget > 0) return LoadBudget;
  const double total = platform::PhysicalMemory().total;
  return total > 0 ? static_cast<int64_t>(total / 2 / 1024) : INT64_MAX / kMiB;
}

int64_t Held() { return platform::SoundBytesHeld() + static_cast<int64_t>(platform::Surface::BytesHeld()); }

}  // namespace

int64_t LoadBudgetLeft() { return Budget() * kMiB - Held(); }

bool OverLoadBudget(TextView path) {
  const int64_t budget = Budget();
  if (Held() <= budget * kMiB) return false;
  const Text words = Join(u"over the load budget of ", budget, u" MiB: ", GetFileName(path));
  DebugLog(Join(u"# ", words));
  if (!told) {
    told = true;
    AddLoadNotice(words);
    ShowMessage(words);
  }
  return true;
}

void ResetBudgetNotice() {
  told = false;
  loadNotice.clear();
}

}  // namespace qlm
