// Keys of the game.
#include "play/input.h"

#include "base/hooks.h"
#include "platform/clock.h"
#include "play/session.h"
#include "state/keys.h"
#include "state/session.h"

namespace qlm {
namespace {

// The lane that Esc stands for on release.
constexpr size_t kEscLane = 5;

bool ShiftHeld() { return KeyHeld[kKeyLeftShift] || KeyHeld[kKeyRightShift]; }

void HoldEsc() {
  EscHeld = true;
  EscStart = platform::Now();
  AbortLoad();
}

}  // namespace

void ButtonDown(int32_t key) {
  if (!WindowActive || key != kKeyEsc) return;
  if (ShiftHeld()) {
    if (hooks::closeRequested != nullptr) hooks::closeRequested();
    return;
  }
  if (GameState == kStatePlay) HoldEsc();
}

void ButtonUp(int32_t key) {
  if (key != kKeyEsc) return;
  LaneDown[kEscLane] = false;
  EscHeld = false;
}

}  // namespace qlm
