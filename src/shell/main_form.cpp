// What the window's events do.
#include "shell/main_form.h"

#include <cstddef>

#include "base/hooks.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "play/input.h"
#include "play/pause.h"
#include "screens/loading_screen.h"
#include "screens/screen_table.h"
#include "screens/stills.h"
#include "shell/exit.h"
#include "shell/unwritten.h"
#include "state/keys.h"
#include "state/session.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

// Menu meanings of KeyMap; 1 to 7 stand for keys of the keyboard.
constexpr int16_t kCodeEsc = 1;
constexpr int16_t kCodeSelect = 8;

constexpr int32_t kEnterCharacter = 13;

bool ShiftHeld() { return KeyHeld[kKeyLeftShift] || KeyHeld[kKeyRightShift]; }

// 0 for a number that is no key.
int16_t CodeOf(int32_t key) {
  const int16_t* const code = KeyMap.Find(key);
  return code != nullptr ? *code : int16_t{0};
}

// The key that a menu meaning stands for; 0 for a code that stands for none.
int32_t MenuKey(int16_t code) {
  switch (code) {
    case kCodeEsc: return kKeyEsc;
    case 2: return kKeyTab;
    case 3: return kKeyEnter;
    case 4: return kKeyUp;
    // Quirk: the meaning that lists call right is a second down.
    case 5:
    case 7: return kKeyDown;
    case 6: return kKeyLeft;
    default: return 0;
  }
}

// The key that ends the entry of a name also comes as a character, which has done the work.
bool SwallowsKey(int32_t key) {
  if (!nameEntered) return false;
  nameEntered = false;
  return key == kKeyEsc || key == kKeyEnter;
}

}  // namespace

void PrepareForm() {
  FullRect = kScreen;
  ScreenRect = kScreen;
  SetCaption(u"quillmarch");
}

void ConnectHooks() {
  hooks.displayLost = BMSPause;
  hooks.displayRegained = RestorePictures;
  hooks.fatalError = EndOnFatalError;
  hooks.setCaption = SetCaption;
  hooks.unwritten = ReportUnwritten;
  hooks.loadingFrame = Loading;
  hooks.loadPump = DoEvents;
  hooks.keyDown = ButtonDown;
  hooks.keyUp = ButtonUp;
  hooks.closeRequested = Form_Unload;
}

void ButtonDown(int32_t key) {
  if (!WindowActive) return;
  if (key == kKeyEsc && ShiftHeld()) {
    if (hooks.closeRequested != nullptr) hooks.closeRequested();
    return;
  }
  if (SwallowsKey(key)) return;

  const int16_t code = CodeOf(key);
  const int32_t menuKey = MenuKey(code);
  // Quirk: in a play too. A controller's Enter is the key Enter there, which plays a lane in the default map,
  // and letting it go does not let the lane go.
  if (menuKey != 0) key = menuKey;
  if (code == kCodeSelect) {
    SelectHeld = true;
    SelectStart = platform::Now();
  }

  const Screen& screen = ScreenOf(GameState);
  if (screen.key != nullptr) {
    screen.key(key);
  } else if (screen.character != nullptr && (menuKey == kKeyEsc || menuKey == kKeyEnter)) {
    // The keyboard's own keys come as characters; a controller has none.
    screen.character(kEnterCharacter);
  }
  if (screen.settingKeys) ProcessKey_Settings(key);
}

void ButtonUp(int32_t key) {
  const int16_t code = CodeOf(key);
  if (code == kCodeSelect) {
    SelectHeld = false;
    return;
  }
  if (key == kKeyEsc || code == kCodeEsc) {
    constexpr size_t kEscLane = 5;
    LaneDown[kEscLane] = false;
    EscHeld = false;
    return;
  }
  if (const int32_t channel = LaneChannel(key); channel != 0) ReleaseLane(channel);
}

void Form_Unload() { ExitApp(); }

}  // namespace qlm
