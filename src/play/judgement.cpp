// Judgement of one note at one moment.
#include "play/judgement.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "base/numbers.h"
#include "platform/clock.h"
#include "play/effects.h"
#include "play/gauge.h"
#include "play_screen/gauge_graph.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/options.h"
#include "state/session.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "state/transcript.h"

namespace qlm {
namespace {

// A combo of this length leaves a figure behind when it is lost.
constexpr int32_t kShownLoss = 11;
// Each combo that is a multiple of this raises its figure.
constexpr int32_t kRoundCombo = 100;
// What a BAD or POOR jolts the drawn gauge down by.
constexpr double kJolt = 20;
// From it on the graph gets a figure where a combo ends.
constexpr int32_t kGraphedLoss = 10;

// By grade, POOR first.
constexpr std::array<platform::Colour, 5> kColourOfGrade = {
    platform::Rgb(255, 0, 0), platform::Rgb(255, 0, 255), platform::Rgb(0, 0, 255), platform::Rgb(0, 255, 0),
    platform::Rgb(255, 255, 0)};

// The deviation that is graded, with its sign.
// Quirk: within the GREAT window a note that lies less than one unit from where the side's note before it lay
// counts as dead on: so do the notes of a chord, struck in one frame, and a run that is late or early by the
// same amount.
float ForgiveEvenTiming(size_t objectSide, float delta) {
  float& before = ChordDelta[objectSide];
  if (std::abs(delta) >= JudgeWindow[1]) {
    before = 0;
    return delta;
  }
  const double change = std::abs(double{delta} - double{before});
  before = delta;
  return change < 1 ? 0 : delta;
}

int32_t GradeOf(float delta) {
  const auto* const window = std::ranges::find_if(JudgeWindow, [&](int32_t width) { return delta < width; });
  return kPerfect - static_cast<int32_t>(window - JudgeWindow.begin());
}

void Flash(size_t lane, uint8_t kind) {
  LaneHit[lane] = kind;
  LaneHitTime[lane] = platform::Now();
}

void TakeHit(size_t side, size_t lane, ChartObj& note, int32_t grade) {
  ++Combo[side];
  note.hit = true;
  Flash(lane, static_cast<uint8_t>(grade - kBad));
}

void LoseCombo(size_t side) {
  if (Combo[side] >= kShownLoss) {
    ComboLost = true;
    ComboLostTime = platform::Now();
    ComboLostValue = Combo[side];
  }
  Combo[side] = 0;
}

void TakeMistake(size_t side, ChartObj& note, bool tooEarly) {
  PoorShow = true;
  Assign(PoorShowPos, Round(playPos));
  Assign(GaugeShown[side], Narrow(std::max(0.0, Gauge[side] - kJolt)));
  // Quirk: a press far too early costs gauge and counts, but keeps the combo, and the note can still be hit.
  if (tooEarly) return;
  if (Pressure && FadeState != kFadeFail) BreakPlay();
  LoseCombo(side);
  note.hit = true;
}

void CountGrade(size_t side, int32_t grade) {
  ++JudgeCount[side][static_cast<size_t>(kPerfect - grade)];
  MaxCombo[side] = MaxI32(MaxCombo[side], Combo[side]);
  if (Combo[side] < 1 || Combo[side] % kRoundCombo != 0) return;
  ComboRound = true;
  ComboRoundTime = platform::Now();
  ComboRoundValue = Combo[side];
}

void DrawOnGraph(size_t side, int32_t grade, int32_t comboBefore) {
  const int32_t judged = JPtsMax[side] / kJPtsANote;
  DrawJudgedNote(judged, Combo[side], grade);
  if (PoorShow && comboBefore >= kGraphedLoss) DrawLostCombo(judged, comboBefore);
}

// Everything that follows from a grade, apart from the transcript.
void TakeGrade(size_t side, ChartObj& note, int32_t grade, float delta, bool tooEarly) {
  const int32_t comboBefore = Combo[side];
  LastJudge[side] = grade;
  HitColour = kColourOfGrade[static_cast<size_t>(grade)];
  RateGrade(side, grade, delta);
  if (grade >= kGood) {
    TakeHit(side, static_cast<size_t>(note.channel - 11), note, grade);
  } else {
    TakeMistake(side, note, tooEarly);
  }
  CountGrade(side, grade);
  BoundGauge(side);
  AddJPts(side, delta);
  DrawOnGraph(side, grade, comboBefore);
  LastJudgeTime[side] = platform::Now();
  SplitCombo(side);
  if (ComboHiSpeed) Assign(HiSpeedTarget, Narrow(Combo[side] / 100.0 + 1.0));
}

void TranscribeJudgement(int32_t index, const ChartObj& note, size_t side, float delta, bool tooEarly) {
  if (transcript == nullptr) return;
  transcript->judgements.push_back({.turn = transcript->turns - 1,
                                    .clock = playClock,
                                    .playPos = playPos,
                                    .obj = index,
                                    .channel = note.channel,
                                    .pos = note.pos,
                                    .deltaUsed = delta,
                                    .grade = LastJudge[side],
                                    .tooEarly = tooEarly,
                                    .side = static_cast<int32_t>(side)});
}

void MissLane(int32_t channel) {
  const int32_t played = channel == 17 || channel == 27 ? channel - 1 : channel;
  const auto lane = static_cast<size_t>(played - 11);
  const ChartObj* note = FindObj(LaneNote[lane]);
  if (note == nullptr) return;
  if (playPos - note->pos < kMissUnits) {
    // So a press sounds the note that comes next.
    LaneSound[lane] = note->value;
    return;
  }
  float ignored = 0;
  JudgeNote(LaneNote[lane], kMissUnits, false, ignored);
  // Quirk: the combo of the note's own side, which in double play is one that nothing scores on.
  Combo[static_cast<size_t>(played / 10 - 1)] = 0;
  LaneNote[lane] = -1;
}

}  // namespace

void SplitCombo(size_t side) {
  std::array<uint8_t, 10> lowestFirst{};
  int32_t count = 0;
  for (int32_t rest = Combo[side]; rest > 0; rest /= 10) {
    lowestFirst[static_cast<size_t>(count++)] = static_cast<uint8_t>(rest % 10);
  }
  ComboDigitCount[side] = count == 0 ? -1 : MinI32(count, kComboDigits);
  for (int32_t i = 0; i < ComboDigitCount[side]; ++i) {
    ComboDigit[side][static_cast<size_t>(i)] = lowestFirst[static_cast<size_t>(count - 1 - i)];
  }
}

bool JudgeNote(int32_t index, float delta, bool useStored, float& stored) {
  ChartObj* const note = FindObj(index);
  if (note == nullptr || !IsNoteChannel(note->channel) || FadeState == kFadeFail) return false;
  const auto objectSide = static_cast<size_t>(note->channel / 10 - 1);
  const auto lane = static_cast<size_t>(note->channel - 11);

  if (delta == 0) Assign(delta, Narrow(playPos - note->pos));
  const bool tooEarly = delta <= -JudgeWindow[3];
  delta = std::abs(useStored ? stored : ForgiveEvenTiming(objectSide, delta));
  stored = delta;

  const auto side = static_cast<size_t>(ScoreSide[objectSide]);
  if (PoorShow) BGADirty = true;
  PoorShow = false;
  // A machine lane scores nothing and keeps the note unjudged.
  if (AutoLane[lane]) {
    Flash(lane, 3);
    return false;
  }
  TakeGrade(side, *note, GradeOf(delta), delta, tooEarly);
  TranscribeJudgement(index, *note, side, delta, tooEarly);
  return !tooEarly;
}

void JudgeScrolledPast() {
  for (int32_t channel = 11; channel <= SideCount * 10 + 9; ++channel) MissLane(channel);
}

}  // namespace qlm
