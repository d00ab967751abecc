// What the window's events do.
#include "shell/main_form.h"

#include "base/hooks.h"
#include "base/log.h"
#include "graphics/present.h"
#include "graphics/screens.h"
#include "platform/clock.h"
#include "play/session.h"
#include "shell/exit.h"
#include "state/keys.h"
#include "state/session.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

// The lane that Esc stands for on screens that any lane ends.
constexpr size_t kEscLane = 5;

bool ShiftHeld() { return KeyHeld[kKeyLeftShift] || KeyHeld[kKeyRightShift]; }

// A chart from the command line waits for its first turn with the song select's state.
bool InPlay() { return GameState == kStatePlay || (PlayAlive && !PreviewActive); }

void ProcessKey_Play(int32_t key) {
  if (key != kKeyEsc) return;
  // Held long enough, it ends the play in one of the next turns.
  EscHeld = true;
  EscStart = platform::Now();
  AbortLoad();
}

}  // namespace

void PrepareForm() {
  FullRect = kScreen;
  ScreenRect = kScreen;
  SetCaption(u"quillmarch");
}

void ConnectHooks() {
  RegisterPlayHooks();
  hooks::fatalError = EndOnFatalError;
  hooks::setCaption = SetCaption;
  hooks::loadingFrame = Loading;
  hooks::loadPump = DoEvents;
  hooks::closeRequested = Form_Unload;
}

void InitDI_Keyboard() {
  DebugLog(u"[InitDI_Keyboard]");
  hooks::keyDown = ButtonDown;
  hooks::keyUp = ButtonUp;
  DebugLog(u"DirectInput [Keyboard] Initialized");
}

void ButtonDown(int32_t key) {
  if (!WindowActive) return;
  if (key == kKeyEsc && ShiftHeld()) {
    if (hooks::closeRequested != nullptr) hooks::closeRequested();
    return;
  }
  if (InPlay()) ProcessKey_Play(key);
}

void ButtonUp(int32_t key) {
  if (key != kKeyEsc) return;
  LaneDown[kEscLane] = false;
  EscHeld = false;
}

void Form_Unload() { ExitApp(); }

}  // namespace qlm
