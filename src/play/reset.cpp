// Putting back of all that a play changes.
#include "play/reset.h"

#include "base/log.h"
#include "chart/preparation.h"
#include "play/judgement.h"
#include "play/records.h"
#include "play/skin_choice.h"
#include "play_screen/gauge_graph.h"
#include "play_screen/option_marks.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/network.h"
#include "state/records.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/timeline.h"

namespace qlm {
namespace {

constexpr float kGaugeStart = 22;
constexpr float kHazardGaugeStart = 100;

// The record past the last one is looked at too, where the table has one.
void ClearHits() {
  for (int64_t index = 0; index <= objCount; ++index) {
    ChartObj* obj = FindObj(index);
    if (obj == nullptr) return;
    obj->hit = false;
  }
}

void ResetFigures() {
  Combo = MaxCombo = {};
  for (size_t side = 0; side < Combo.size(); ++side) SplitCombo(side);
  LastJudge = {-1, -1};
  JudgeCount = {};
  Gauge.fill(HazardGauge ? kHazardGaugeStart : kGaugeStart);
  GaugeShown = Gauge;
  Score = ScoreShown = {};
  JPts = JPtsShown = {};
  JPtsMax = {};
  PaintGraph();
  shownBPM = curBPM;
  for (auto& side : GaugeHistory) side.Clear();
  for (NetUser& user : network.NetUsers) {
    user.slot = 0;
    user.netSlot = 0;
    user.history.Clear();
  }
}

}  // namespace

// Quirk: a pause outlives its play. Who leaves a paused play has dead lanes in the next one until F12, which
// brings the old play's tempo back.
void ResetPlay() {
  LaneNote.fill(-1);
  LaneSound.fill(-1);
  LaneDown = {};
  LaneHit = LaneBeam = {};
  KeyBeam = {};
  BlinkToggle = ComboLost = ComboRound = false;
  if (UserRec) EmptyRecord();
  RecCursor = 0;
  ClearHits();
  RewindSounds();
  HistoryNext = {};
  AttackKind = kAttackNone;
  PickOptionMarks();
  if (!EndlessRun || CourseSong == 0) ResetFigures();
  if (HdrPlayer == 4) HdrPlayer = 2;
  LoadSkinChoice();
  // The chart was prepared under another skin, the first one under none, and its title would come round
  // without this skin's gap.
  FitMarquee();
}

void UnloadBMS() {
  DebugLog(u"[Unload-BMS] > faked");
  StopAndRewindSounds();
}

}  // namespace qlm
