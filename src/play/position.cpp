// The chart's position: no table of times, only a rate and a running offset.
#include "play/position.h"

#include <algorithm>
#include <optional>

#include "base/log.h"
#include "base/numbers.h"
#include "platform/clock.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/judgement.h"
#include "state/message.h"
#include "state/options.h"
#include "state/settings.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "state/transcript.h"
#include "state/wide_chart.h"

namespace qlm {
namespace {

// Sets the offset that keeps the position at `clock` ms while the tempo in force gives way to `bpm`. The sum
// is 64-bit until it is rounded; without a whole number the offset stays.
// Quirk: the offset is an integer, so each tempo change may shift the position by half a unit, and nothing
// makes up for it. The wide reading keeps the rest.
void CarryPosition(float bpm, double clock) {
  const double change = double{bpm} * double{RealHiSpeed} - double{curBPM};
  const double offset = posOffset + posRest - change / kUnitRate * clock;
  const std::optional<int32_t> whole = Round(offset);
  if (!whole) return;
  posOffset = *whole;
  if (WideCharts) posRest = offset - posOffset;
}

double UnitsPastOffset(int32_t pos) { return static_cast<double>(pos) - posOffset - posRest; }

double RateOf(float bpm) { return double{bpm} * double{RealHiSpeed} / kUnitRate; }

// The clock `ms` before `now`, half to even on the clock's own number, of which only the last bit matters.
std::optional<uint32_t> ClockBefore(uint32_t now, double ms) {
  const uint32_t lastBit = now & 1;
  const std::optional<int32_t> moved = Round(lastBit - ms);
  if (!moved) return std::nullopt;
  return now - lastBit + static_cast<uint32_t>(*moved);
}

// The tempo that an object of channel 3 or 8 asks for; nothing for other kinds.
std::optional<float> TempoOf(const ChartObj& obj) {
  if (obj.channel == 3) return static_cast<float>(obj.value);
  if (obj.channel == 8) {
    if (const float* tempo = BpmTable.Find(obj.value)) return *tempo;
  }
  return std::nullopt;
}

// The position at playClock with the tempi that lie before it and are not passed yet.
double PositionBehindTempi() {
  double rate = pixPerMs;
  double offset = posOffset + posRest;
  double position = playClock * rate + offset;
  for (int32_t index = objCursor; rate > 0; ++index) {
    const ChartObj* const obj = FindObj(index);
    if (index >= objCount || obj == nullptr || obj->pos > position) break;
    const std::optional<float> tempo = TempoOf(*obj);
    if (!tempo || !(*tempo > 0)) continue;
    const double clock = (obj->pos - offset) / rate;
    rate = RateOf(*tempo);
    offset = obj->pos - clock * rate;
    // What else lies at its place is not to wait for the next turn.
    position = std::max<double>(playClock * rate + offset, obj->pos);
  }
  return position;
}

// A tempo object on the way of a seek: the position is kept at the object, not at a clock.
// Quirk: unlike in play, a table tempo of 0 counts, and what then divides by its rate is skipped.
void PassTempo(const ChartObj& obj, float tempo) {
  CarryPosition(tempo, UnitsPastOffset(obj.pos) / pixPerMs);
  rawBPM = tempo;
  TakeTempo(tempo);
}

// Changes the tempo as of `clock` ms.
void ChangeTempo(float bpm, double clock) {
  ShowMessage(Join(u"BPM CHANGE : ", bpm));
  DebugLog(Join(u"BPM->", bpm * RealHiSpeed, u" ( ", bpm, u" * ", RealHiSpeed, u" )"));
  CarryPosition(bpm, clock);
  TakeTempo(bpm);
  ApplySoundSpeed();
  if (transcript != nullptr) transcript->tempi.push_back({playClock, curBPM, posOffset});
}

// Whether a seek may go there.
bool InChart(int32_t position, bool byPosition) {
  if (!byPosition) return position >= 0 && position <= lastMeasure;
  const ChartObj* last = LastObj();
  return last != nullptr && position >= 0 && position <= last->pos;
}

bool IsSeekGoal(const ChartObj& obj, int32_t position, bool byPosition) {
  if (byPosition) return obj.pos >= position;
  return obj.channel == ObjSeparator && obj.measure == position;
}

}  // namespace

void ReadClock() {
  playClock = platform::Elapsed(platform::Now(), playStart);
  playPos = WideCharts ? PositionBehindTempi() : playClock * pixPerMs + posOffset;
}

void TakeTempo(float bpm) {
  Assign(curBPM, Narrow(double{bpm} * double{RealHiSpeed}));
  pixPerMs = curBPM / kUnitRate;
  unitsPerSec = curBPM / 240 * 192;
}

void SetBPM(float bpm) { ChangeTempo(bpm, playClock); }

void SetBPMOf(const ChartObj& obj, float bpm) {
  // A position that stands still was at the object's place for a long time.
  const bool fromItsPlace = WideCharts && pixPerMs > 0;
  ChangeTempo(bpm, fromItsPlace ? UnitsPastOffset(obj.pos) / pixPerMs : playClock);
}

void SeekChart(int32_t position, bool byPosition) {
  curBaseBGA = curLayerBGA = -1;
  BGADirty = true;
  if (!InChart(position, byPosition)) {
    DebugLog(u"Err: Range over");
    return;
  }

  rawBPM = HdrBPM;
  TakeTempo(HdrBPM);
  keySoundCursor = objCursor = posOffset = poorBGA = 0;
  posRest = 0;
  PoorShow = false;

  int32_t index = 0;
  for (; index < objCount; ++index) {
    const ChartObj* obj = FindObj(index);
    if (obj == nullptr || IsSeekGoal(*obj, position, byPosition)) break;
    if (const std::optional<float> tempo = TempoOf(*obj)) PassTempo(*obj, *tempo);
  }
  shownBPM = curBPM;
  if (!byPosition) {
    if (const ChartObj* found = FindObj(index)) position = found->pos;
  }
  if (index > 0) objCursor = index - 1;

  const uint32_t now = platform::Now();
  Assign(playStart, ClockBefore(now, UnitsPastOffset(position) / pixPerMs));
  playPos = position;
  playClock = platform::Elapsed(now, playStart);
}

}  // namespace qlm
