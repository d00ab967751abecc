// Preparation of the chart that was read.
#include "chart/preparation.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <vector>

#include "base/hooks.h"
#include "base/log.h"
#include "base/numbers.h"
#include "base/sort.h"
#include "chart/chart_report.h"
#include "chart/random_lane.h"
#include "chart/reader.h"
#include "chart/titles.h"
#include "chart/wide_reading.h"
#include "graphics/bga.h"
#include "platform/heap.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/slots.h"
#include "state/surfaces.h"
#include "state/timeline.h"

namespace qlm {
namespace {

// The records in use that the table holds.
std::span<ChartObj> UsedObjs() {
  return std::span(objs).first(std::min(objs.size(), static_cast<size_t>(objCount)));
}

void ChooseSides() {
  ScoreSide = {0, 1};
  if (HdrPlayer == 3) {
    ScoreSide[1] = 0;
    TotalNotes[0] += TotalNotes[1];
  }
}

// A bar line for each measure up to one behind the last, and a length for each that has none.
void AddSeparators() {
  DebugLog(Join(u"adding separator... (", lastMeasure, u")"));
  const int64_t end = int64_t{lastMeasure} + 1;
  for (int64_t measure = 0; measure <= end; ++measure) {
    if (float* length = MeasureLen.Find(measure); length != nullptr && *length == 0) *length = 1.0F;
    ChartObj* bar = AddObj();
    if (bar != nullptr) {
      bar->channel = ObjSeparator;
      const int64_t pos = measure * kMeasureUnits;
      if (pos <= INT32_MAX) bar->pos = static_cast<int32_t>(pos);
      bar->tick = 0;
      if (measure <= INT32_MAX) bar->measure = static_cast<int32_t>(measure);
      bar->speedMul = 1.0F;
    } else if (measure >= MeasureLen.kLast) {
      // Nothing but the count is left to do, for as many as two billion measures.
      objCount = static_cast<int32_t>(std::min<int64_t>(objCount + end - measure, INT32_MAX));
      break;
    }
  }
}

// Walks the objects in order: scales their positions, turns second notes at one place into background sounds,
// and lists where the sound of a lane changes.
class PositionWalk {
 public:
  explicit PositionWalk(ChartReport* report) : report_(report) {
    prevPos_.fill(-1);
    scatteredAt_.fill(-1);
    if (WideCharts && report == nullptr) wide_.emplace();
  }

  void Pass(ChartObj& obj) {
    Scale(obj);
    if (wide_) wide_->Pass(obj, static_cast<int32_t>(&obj - objs.data()));
    if (obj.channel < 11 || obj.channel > 29) return;
    if (ScatterNotes && obj.channel != 16 && obj.channel != 17) Scatter(obj);
    if (report_ != nullptr) report_->Note(&obj - objs.data(), obj);
    int32_t& prevPos = prevPos_[Lane(obj)];
    if (prevPos == obj.pos) {
      --TotalNotes[obj.channel / 10 - 1];
      obj.channel = 1;
    } else {
      prevPos = obj.pos;
    }
    if (!PreviewActive) AddKeySoundOf(obj);
  }

  void End() {
    if (wide_) wide_->End();
  }

 private:
  static size_t Lane(const ChartObj& note) { return static_cast<size_t>(note.channel - 11); }

  void Scale(ChartObj& obj) {
    if (obj.measure != curMeasure_) {
      if (const float* length = MeasureLen.Find(curMeasure_)) {
        Assign(posTotal, Round(posTotal + kMeasureUnits * double{*length}));
      }
      curMeasure_ = obj.measure;
    }
    // Quirk: measures from 2049 on have no length, so that the total stands still and objects keep the
    // reader's pos.
    if (const float* length = MeasureLen.Find(curMeasure_)) {
      Assign(obj.pos, Round(posTotal + obj.tick * double{*length}));
    }
  }

  // A random lane that this step has not yet used at this place. The note stays where it is when none is
  // left.
  void Scatter(ChartObj& note) {
    const auto usedAt = [&](int32_t channel) -> int32_t& {
      return scatteredAt_[static_cast<size_t>(channel - 11)];
    };
    const std::optional<int32_t> drawn =
        DrawLane([&](int32_t channel) { return usedAt(channel) != note.pos; });
    if (!drawn) return;
    usedAt(*drawn) = note.pos;
    note.channel = *drawn;
  }

  // The sound of a lane turns to that of its next note halfway between the two.
  void AddKeySoundOf(const ChartObj& note) {
    if (note.channel == 1) {
      // Quirk: a note turned into a background sound has no lane to compare with, so that it always takes one
      // of the places, at position 0, to no effect.
      AddKeySound({note.channel, 0, note.value});
      return;
    }
    int32_t& sound = sound_[Lane(note)];
    int32_t& soundPos = soundPos_[Lane(note)];
    if (sound != note.value) {
      const int64_t sum = int64_t{soundPos} + note.pos;
      const bool fits = sum >= INT32_MIN && sum <= INT32_MAX;
      AddKeySound({note.channel, fits ? static_cast<int32_t>(sum / 2) : 0, note.value});
    }
    soundPos = note.pos;
    sound = note.value;
  }

  static void AddKeySound(const KeySoundChange& change) { KeySoundChanges.Put(keySoundCount++, change); }

  ChartReport* report_;
  std::optional<WideWalk> wide_;
  int32_t curMeasure_ = -1;
  std::array<int32_t, kLanes> prevPos_{};
  std::array<int32_t, kLanes> scatteredAt_{};
  std::array<int32_t, kLanes> soundPos_{};
  std::array<int32_t, kLanes> sound_{};
};

void ScalePositions(ChartReport* report) {
  DebugLog(u"recaliculating objects position...");
  PositionWalk walk(report);
  for (ChartObj& obj : UsedObjs()) walk.Pass(obj);
  walk.End();
  if (report != nullptr) report->EndOfNotes();
}

// The scheme of the sort looks at positions alone, so that the lines of the objects can go along.
void SortWithLines(ChartReport& report) {
  struct Row {
    ChartObj obj;
    int64_t line = 0;
  };
  const std::span<ChartObj> used = UsedObjs();
  report.objLines.resize(objs.size());
  std::vector<Row> rows;
  for (size_t i = 0; i < used.size(); ++i) rows.push_back({used[i], report.objLines[i]});
  SortInScheme(std::span(rows), [](const Row& row) { return row.obj.pos; });
  for (size_t i = 0; i < used.size(); ++i) {
    used[i] = rows[i].obj;
    report.objLines[i] = rows[i].line;
  }
}

// Sounds and pictures that the new chart still names stay loaded.
void ReleaseUnnamed() {
  for (int32_t slot = 0; slot <= LastSlot; ++slot) {
    ReleaseUnnamedSound(slot);
    ReleaseUnnamedPicture(slot);
  }
}

void ComputeBMSID() {
  const double notes = 0.0 + TotalNotes[0] + TotalNotes[1];
  Assign(BMSID, Round(notes * (HdrPlayLevel + 1.0) + (HdrRank + 1.0) * HdrBPM + BMSLengthMs));
}

void LogInfo() {
  DebugLog(u"BMSInfo --------", 1);
  DebugLog(Join(u"* BMS-ID: ", BMSID));
  DebugLog(Join(u"* ", objCount, u"objects, ", lastMeasure, u"measures"));
  DebugLog(Join(u"* TotalNotes 1:", TotalNotes[0], u" 2:", TotalNotes[1]));
  if (const ChartObj* last = LastObj()) {
    DebugLog(Join(u"* length ", BMSLengthMs, u"ms, ", last->pos, u"pixels"), -1);
  }
}

// A side without notes gets infinities, which no note ever uses.
void ComputeGains() {
  if (HdrTotal == 0) Assign(HdrTotal, Round(TotalNotes[0] + 100.0));
  for (size_t side = 0; side < 2; ++side) {
    const double notes = TotalNotes[side];
    GaugeGain[side] = HazardGauge ? 0.05F : static_cast<float>(HdrTotal / notes);
    ScorePerNote[side] = CourseMode ? 1.0 : 100000.0 / notes;
  }
}

void AddMarqueeGap() {
  MarqueeGap = MaxI32(TitleChars, 0);
  MarqueeText.append(static_cast<size_t>(MarqueeGap), u' ');
}

void ConvertMarquee() {
  MarqueeText = Cvt2ASCII(MarqueeText);
  MarqueeConverted = true;
}

void BeginMarquee(TextView title) {
  MarqueeText = title;
  MarqueeConverted = false;
  AddMarqueeGap();
}

Text ChartTitle() { return Join(HdrTitle, u" / ", HdrArtist); }

void ShowTitles() {
  if (Windowed && hooks.setCaption != nullptr) hooks.setCaption(ChartCaption());
  SetMarquee();
}

void SetTempo() {
  Assign(curBPM, Narrow(double{HdrBPM} * RealHiSpeed));
  rawBPM = HdrBPM;
  pixPerMs = curBPM / kUnitRate;
}

// The tempo that an object gives to the length of the chart.
// Quirk: tempo changes by table (channel 08) do not count, so that the length of such a chart is that of its
// other tempi. Records know a chart by it. The wide reading counts them.
std::optional<double> TempoOfLength(const ChartObj& obj) {
  if (obj.channel == 3) return obj.value;
  if (!WideCharts || obj.channel != 8) return std::nullopt;
  const float* const tempo = BpmTable.Find(obj.value);
  return tempo != nullptr && *tempo > 0 ? std::optional<double>(*tempo) : std::nullopt;
}

void SetSideCount() {
  if (HdrPlayer == 0 || HdrPlayer == 1) SideCount = 1;
  if (HdrPlayer == 2 || HdrPlayer == 3) SideCount = 2;
}

}  // namespace

void SetJudgeWindow() {
  if (HdrRank < 0 || HdrRank > 3) return;
  for (size_t grade = 0; grade < 4; ++grade) {
    JudgeWindow[grade] = JudgeWindowTable[static_cast<size_t>(HdrRank) * 4 + grade];
  }
}

Text ChartCaption() {
  return Join(u"[", HdrGenre, u"] ", HdrTitle, u" / ", HdrArtist, u" - ", u"quillmarch");
}

void SetMarquee() {
  BeginMarquee(CourseMode ? Text(u"COURSE MODE!") : ChartTitle());
  if (GameState == kStatePlay) ConvertMarquee();
}

void SetSongMarquee() {
  BeginMarquee(ChartTitle());
  ConvertMarquee();
}

void FitMarquee() {
  if (MarqueeText.empty()) return;
  if (!MarqueeConverted) ConvertMarquee();
  // A dictionary may have put something in the place of blanks.
  for (; MarqueeGap > 0 && MarqueeText.ends_with(u' '); --MarqueeGap) MarqueeText.pop_back();
  AddMarqueeGap();
}

void BMSPrepare(ChartReport* report) {
  DebugLog(Join(u"[BMSPrepare] minimum: ", PreviewActive), 1);
  ChooseSides();
  AddSeparators();
  DebugLog(u"sorting objects...");
  platform::WithinMemory([&] { report != nullptr ? SortWithLines(*report) : SortObjs(); });
  ScalePositions(report);
  if (!PreviewActive) ReleaseUnnamed();
  BMSLengthMs = GetBMSLength();
  ComputeBMSID();
  LogInfo();
  ComputeGains();
  platform::WithinMemory(ShowTitles);
  SetTempo();
  if (const ChartObj* last = LastObj()) lastObjPos = last->pos;
  SetSideCount();
  SetJudgeWindow();
  HistoryStep = static_cast<float>(BMSLengthMs / 300.0);
  if (ReportShortage()) return;
  DebugLog(u"complete.", -1);
}

int32_t GetBMSLength() {
  DebugLog(Join(u"[GetBMSLength] BPM:", HdrBPM));
  float tempo = HdrBPM;
  double offset = 0;  // what earlier tempi contributed
  for (const ChartObj& obj : UsedObjs()) {
    const std::optional<double> next = TempoOfLength(obj);
    if (!next) continue;
    DebugLog(Join(u"(", obj.pos, u") BPM -> ", tempo));
    offset -= (obj.pos - offset) / (tempo / kUnitRate) * ((*next - double{tempo}) / kUnitRate);
    tempo = static_cast<float>(*next);
  }
  const ChartObj* last = LastObj();
  if (last == nullptr) return 0;
  DebugLog(Join(u"LastOBJPos=", last->pos));
  const double rate = tempo / kUnitRate;
  return Round(last->pos / rate - offset / rate).value_or(0);
}

void SortObjs() {
  SortInScheme(UsedObjs(), [](const ChartObj& obj) { return obj.pos; });
}

}  // namespace qlm
