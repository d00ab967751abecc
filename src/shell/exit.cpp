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
#include "platform/message_box.h"
#include "platform/timers.h"
#include "sound/play.h"
#include "state/settings.h"

namespace qlm {
namespace {

std::optional<bool> savedDemoMode;

// What every end does first, with or without a window system.
void SaveAndStop() {
  DebugLog(u"[ExitApp]");
  DebugLog(u"saving settings...");
  SaveKeyTable();
  if (savedDemoMode) DEMOMode = *savedDemoMode;
  SaveSettings();
  DebugLog(u"Kill timers...");
  for (const int timer :
       {platform::kTimerPlay, platform::kTimerNetwork, platform::kTimerNetwork99, platform::kTimerPreview}) {
    platform::KillTimer(timer);
  }
  DebugLog(u"complete.");
}

}  // namespace

void DemonstrateThisRun() {
  if (!savedDemoMode) savedDemoMode = DEMOMode;
  DEMOMode = true;
}

void ExitApp(int status) {
  SaveAndStop();
  ReleaseDD();
  ReleaseDS();
  ReleaseDI();
  std::fflush(nullptr);
  std::exit(status);
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
