// Start values of judgement.
#include "state/judgement.h"

namespace qlm {

void ResetJudgement() {
  JudgeWindow = {};
  LastJudge = {-1, -1};
  ChordDelta = {};
  LaneHit = {};
  LaneHitTime = {};
  PoorShow = false;
  PoorShowPos = 0;
}

}  // namespace qlm
