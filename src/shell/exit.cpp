// Leaving the program in good order, from wherever it stands.
#include "shell/exit.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "base/log.h"
#include "files/key_table.h"
#include "files/late_blocks.h"
#include "files/settings_file.h"
#include "graphics/display.h"
#include "input/input.h"
#include "net/session.h"
#include "platform/message_box.h"
#include "platform/timers.h"
#include "shell/last_words.h"
#include "shell/unwritten.h"
#include "sound/play.h"
#include "state/settings.h"

namespace qlm {
namespace {

// A setting that this run uses otherwise.
struct Borrowed {
  bool* setting;
  bool before;
};
std::vector<Borrowed> borrowed;

struct Saved {
  bool keys = false;
  bool settings = false;
};

// A tick that the player has changed meanwhile is back at its old value, and stays there.
void GiveBackSettings() {
  for (const Borrowed& one : borrowed) *one.setting = one.before;
  borrowed.clear();
}

// What every end does first, with or without a window system.
Saved SaveAndStop() {
  Saved saved;
  DebugLog(u"[ExitApp]");
  DebugLog(u"saving settings...");
  saved.keys = SaveKeyTable();
  GiveBackSettings();
  saved.settings = SaveSettings();
  SaveLateBlocks();
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

void UseThisRun(bool& setting, bool value) {
  if (setting == value) return;
  borrowed.push_back({&setting, setting});
  setting = value;
}

void ExitApp(int status) {
  const Saved saved = SaveAndStop();
  ReleaseDD();
  ReleaseDS();
  ReleaseDI();
  ShowUnsaved(saved.keys, saved.settings);
  SayLastWords();
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
