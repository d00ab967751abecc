// What the window's events do.
#include "shell/main_form.h"

#include <cstddef>

#include "base/hooks.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "play/input.h"
#include "play/pause.h"
#include "screens/boot_screen.h"
#include "screens/joystick_keys.h"
#include "screens/list_cursor.h"
#include "screens/loading_screen.h"
#include "screens/screen_table.h"
#include "screens/song_select.h"
#include "screens/stills.h"
#include "shell/exit.h"
#include "shell/unwritten.h"
#include "state/keys.h"
#include "state/message.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_find.h"
#include "state/song_select.h"
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

// In the search within a list, where capitals may be held.
bool TypesWords() { return songFind.typing && IsListState(GameState); }

bool TurnsTurntable(int16_t code) { return code == 16 || code == 17 || code == 26 || code == 27; }

// The key that ends the entry of a name also comes as a character, which has done the work.
bool SwallowsKey(int32_t key) {
  if (!enterEaten) return false;
  enterEaten = false;
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
  hooks.loadPump = PumpLoad;
  hooks.keyDown = ButtonDown;
  hooks.keyUp = ButtonUp;
  hooks.character = Form_KeyPress;
  hooks.composing = [](TextView text) {
    if (TypesWords()) songFind.composing = text;
  };
  hooks.mouseDown = Form_MouseDown;
  hooks.mouseMoved = Form_MouseMove;
  hooks.wheelTurned = [](int32_t steps) {
    if (void (*const wheel)(int32_t) = ScreenOf(GameState).wheel) wheel(steps);
  };
  hooks.fileDropped = Form_OLEDragDrop;
  hooks.folderSearched = ShowScan;
  hooks.closeRequested = Form_Unload;
}

void ButtonDown(int32_t key) {
  if (!WindowActive) return;
  if (key == kKeyEsc && ShiftHeld() && !TypesWords()) {
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
  // The key that ended a name went down before its character came; the next one counts.
  enterEaten = false;
  // An Enter of a controller or of the mouse brings no character.
  songSelect.nameEntry = false;
  const int16_t code = CodeOf(key);
  if (code == kCodeSelect) {
    SelectHeld = false;
    return;
  }
  if (TurnsTurntable(code)) EndJoystickRepeat();
  if (key == kKeyEsc || code == kCodeEsc) {
    constexpr size_t kEscLane = 5;
    LaneDown[kEscLane] = false;
    EscHeld = false;
    return;
  }
  if (const int32_t channel = LaneChannel(key); channel != 0) ReleaseLane(channel);
}

void Form_KeyPress(char16_t unit) {
  if (void (*const character)(int32_t) = ScreenOf(GameState).character) character(unit);
}

void Form_MouseDown(int32_t button) { ButtonDown(button == 0 ? kKeyEnter : kKeyLeft); }

void Form_MouseMove(int32_t x, int32_t y) {
  constexpr int32_t kCentreX = kScreen.Width() / 2;
  constexpr int32_t kCentreY = kScreen.Height() / 2;
  if (Windowed) return;
  Assign(songSelect.mouseDX, RoundTo<int16_t>(songSelect.mouseDX + x - kCentreX));
  Assign(songSelect.mouseDY, RoundTo<int16_t>(songSelect.mouseDY + y - kCentreY));
  if (void (*const mouse)(int32_t, int32_t) = ScreenOf(GameState).mouse) {
    mouse(songSelect.mouseDX, songSelect.mouseDY);
  }
}

void Form_OLEDragDrop(TextView path) {
  if (!IsListState(GameState) || ListIsBusy()) {
    ShowMessage(u"DROP FOLDERS ON THE LIST");
    return;
  }
  if (FileExists(path) || platform::IsFolder(path)) ShowDroppedFolder(path);
}

void Form_Unload() {
  formRunning = false;
  ExitApp();
}

}  // namespace qlm
