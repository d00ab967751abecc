// What the window's events do.
#include "shell/main_form.h"

#include "base/hooks.h"
#include "base/log.h"
#include "graphics/present.h"
#include "play/hooks.h"
#include "play/input.h"
#include "shell/exit.h"
#include "state/keys.h"
#include "state/session.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

void KeyDown(int32_t key) {
  KeyHeld.Put(key, true);
  ButtonDown(key);
}

void KeyUp(int32_t key) {
  KeyHeld.Put(key, false);
  ButtonUp(key);
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
  hooks::closeRequested = Form_Unload;
  hooks::windowActivated = [](bool active) { WindowActive = active; };
}

void InitDI_Keyboard() {
  DebugLog(u"[InitDI_Keyboard]");
  hooks::keyDown = KeyDown;
  hooks::keyUp = KeyUp;
  DebugLog(u"DirectInput [Keyboard] Initialized");
}

void Form_Unload() { ExitApp(); }

}  // namespace qlm
