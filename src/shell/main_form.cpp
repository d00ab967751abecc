// What the window's events do.
#include "shell/main_form.h"

#include "base/hooks.h"
#include "base/log.h"
#include "graphics/present.h"
#include "graphics/screens.h"
#include "platform/clock.h"
#include "play/session.h"
#include "shell/exit.h"
#include "state/chart.h"
#include "state/keys.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

constexpr size_t kEscLane = 5;  // the turntable's

void KeyDown(int32_t key) {
  KeyHeld.Put(key, true);
  ButtonDown(key);
}

void KeyUp(int32_t key) {
  KeyHeld.Put(key, false);
  ButtonUp(key);
}

bool ShiftHeld() { return KeyHeld[kKeyLeftShift] || KeyHeld[kKeyRightShift]; }

// Esc only asks: the turn ends the play once it has been held for 500 ms.
void ProcessKey_Play(int32_t key) {
  if (key != kKeyEsc) return;
  EscHeld = true;
  EscStart = platform::Now();
  // Behind the loading screen no play is alive yet.
  if (!PlayAlive) LoadAbort = true;
}

}  // namespace

void PrepareForm() {
  FullRect = kScreen;
  ScreenRect = kScreen;
  SetCaption(u"quillmarch");
}

void ConnectHooks() {
  hooks::fatalError = EndOnFatalError;
  hooks::loadingFrame = Loading;
  hooks::loadPump = DoEvents;
  hooks::closeRequested = Form_Unload;
  hooks::windowActivated = [](bool active) { WindowActive = active; };
  hooks::displayLost = BMSPause;
  hooks::displayRegained = BMSResume;
}

void InitDI_Keyboard() {
  DebugLog(u"[InitDI_Keyboard]");
  hooks::keyDown = KeyDown;
  hooks::keyUp = KeyUp;
  DebugLog(u"DirectInput [Keyboard] Initialized");
}

void ButtonDown(int32_t key) {
  if (!WindowActive) return;
  if (key == kKeyEsc && ShiftHeld()) {
    if (hooks::closeRequested != nullptr) hooks::closeRequested();
    return;
  }
  // A chart from the command line waits for its first turn in state 0.
  const bool inPlay = GameState == kStatePlay || (PlayAlive && !PreviewActive);
  if (inPlay) ProcessKey_Play(key);
}

void ButtonUp(int32_t key) {
  if (key != kKeyEsc) return;
  LaneDown[kEscLane] = false;
  EscHeld = false;
}

void Form_Unload() { ExitApp(); }

}  // namespace qlm
