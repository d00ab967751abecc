// Start values of a session.
#include "state/session.h"

namespace qlm {

void ResetSession() {
  GameState = kStateSongSelect;
  FadeState = kFadeNone;
  FadeStart = 0;
  FadeLeaving = 0;
  PlayEnd = PlayAlive = PlayFailed = PlayCleared = RankLocked = Paused = BreakActive = false;
  PlayFailedTime = BreakStart = EscStart = AttackStart = 0;
  savedBPM = 0;
  EscHeld = EndlessRun = EchoEnabled = false;
  PreviewActive = previewRunning = previewLoading = previewStop = false;
  previewAsksIn = 0;
  AttackKind = kAttackNone;
  ReturnState = 0;
  formRunning = WindowActive = true;
  playedEchoes = 0;
  LanesState = 0;
}

}  // namespace qlm
