// Start values of judgement.
#include "state/judgement.h"

namespace qlm {

void ResetJudgement() {
  JudgeWindow = {};
  LastJudge = {-1, -1};
  LastJudgeTime = {};
  HitColour = 0;
  ChordDelta = {};
  LaneHit = {};
  LaneHitTime = {};
  PoorShow = false;
  PoorShowPos = 0;
  ComboLost = ComboRound = false;
  ComboLostTime = ComboRoundTime = 0;
  ComboLostValue = ComboRoundValue = 0;
  ComboDigit = {};
  ComboDigitCount = {-1, -1};
  BlinkToggle = false;
}

}  // namespace qlm
