// Registration of the play's routines.
#include "play/hooks.h"

#include "base/hooks.h"
#include "graphics/present.h"
#include "graphics/screens.h"
#include "play/input.h"
#include "play/session.h"
#include "state/session.h"

namespace qlm {
namespace {

void PauseForLostDisplay() {
  if (PlayAlive && !Paused) BMSPause();
}

void ResumeForRegainedDisplay() {
  if ((GameState == kStatePlay || GameState == kStateResults) && PlayAlive) BMSResume();
}

}  // namespace

void RegisterPlayHooks() {
  hooks::displayLost = PauseForLostDisplay;
  hooks::displayRegained = ResumeForRegainedDisplay;
  hooks::loadingFrame = Loading;
  hooks::loadPump = DoEvents;
  hooks::keyDown = ButtonDown;
  hooks::keyUp = ButtonUp;
}

}  // namespace qlm
