// Leaving the program in good order, from wherever it stands.
#include "shell/exit.h"

#include <cstdio>
#include <cstdlib>
#include <optional>

#include "base/log.h"
#include "files/key_table.h"
#include "files/settings_file.h"
#include "graphics/display.h"
#include "input/input.h"
#include "net/session.h"
#include "platform/message_box.h"
#include "platform/timers.h"
#include "shell/unwritten.h"
#include "sound/play.h"
#include "state/settings.h"

namespace qlm {
namespace {

std::optional<bool> savedDemoMode;

struct Saved {
  bool keys = false;
  bool settings = false;
};

// What every end does first, with or without a window system.
Saved SaveAndStop() {
  Saved saved;
  DebugLog(u"[ExitApp]");
  DebugLog(u"saving settings...");
  saved.keys = SaveKeyTable();
  if (savedDemoMode) DEMOMode = *savedDemoMode;
  saved.settings = SaveSettings();
  DebugLog(u"Kill timers...");
  for (const int timer :
       {platform::kTimerPlay, platform::kTimerNetwork, platform::kTimerNetwork99, platform::kTimerPreview}) {
    platform::KillTimer(timer);
  }
  LeaveBattle();
  DebugLog(u"complete.");
  return saved;
}

}  // namespace

void DemonstrateThisRun() {
  if (!savedDemoMode) savedDemoMode = DEMOMode;
  DEMOMode = true;
}

void ExitApp(int status) {
  const Saved saved = SaveAndStop();
  ReleaseDD();
  ReleaseDS();
  ReleaseDI();
  ShowUnsaved(saved.keys, saved.settings);
  std::fflush(nullptr);
  std::exit(status == 0 && !(saved.keys && saved.settings) ? 1 : status);
}

void SaveWithoutDisplay() {
  DebugLog(u"# The display went away.");
  SaveAndStop();
}

void EndOnFatalError(TextView title, TextView message) {
  ReleaseDD();
  ReleaseDS();
  platform::MessageBox(platform::BoxIcon::kCritical, title,
                       Join(message, kCrLf, kCrLf, u"I'm sorry, I can't continue, but this error is fatal."));
  ExitApp(1);
}

}  // namespace qlm
