// The header-only read of a chart.
#include "library/header.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <tuple>
#include <vector>

#include "base/numbers.h"
#include "base/sort.h"
#include "base/table.h"
#include "chart/lines.h"
#include "chart/reader.h"
#include "chart/wide_reading.h"
#include "library/progress.h"
#include "platform/disk_search.h"
#include "platform/heap.h"
#include "state/chart.h"
#include "state/lists.h"
#include "state/settings.h"
#include "state/wide_chart.h"

namespace qlm {
namespace {

// Room for tempo changes and bar lines together.
constexpr size_t kMostObjs = 1001;

struct HeaderObj {
  int32_t measure = 0;
  int32_t pos = 0;
  int32_t tick = 0;
  int32_t channel = 0;
  int32_t value = 0;
};

// As much of a chart's data as its length needs. Tempo changes by table do not count and a fractional tempo
// is rounded, so that the length is an estimate for display.
class LengthEstimate {
 public:
  void ReadLine(TextView line) {
    Assign(measure_, MeasureOf(line, 0));
    Assign(channel_, ChannelOf(line));
    lastMeasure_ = MaxI32(lastMeasure_, measure_);
    if (channel_ == 2) {
      if (const std::optional<float> length = LengthOf(line)) lengths_.Put(measure_, *length);
    } else if (channel_ == 3) {
      ReadTempi(line);
    }
  }

  // In ms, nothing for a chart without a tempo.
  std::optional<int32_t> Milliseconds(float bpm) {
    AddBars();
    SortInScheme(std::span(objs_), [](const HeaderObj& obj) { return obj.pos; });
    ScalePositions();
    int32_t tempo = RoundTo<int16_t>(bpm).value_or(0);
    double offset = 0;  // what earlier tempi contributed
    for (const HeaderObj& obj : objs_) {
      if (obj.channel != 3) continue;
      offset -= ((obj.value - tempo) / kUnitRate) * ((obj.pos - offset) / (tempo / kUnitRate));
      tempo = obj.value;
    }
    const int32_t end = objs_.empty() ? 0 : objs_.back().pos;
    return Round(end * kUnitRate / tempo - offset * kUnitRate / tempo);
  }

 private:
  void ReadTempi(TextView line) {
    const Cells cells(line);
    for (int64_t j = 0; j < cells.Count() && objs_.size() < kMostObjs; ++j) {
      if (!cells.IsRest(j)) Add(3, measure_, cells.Tick(j), cells.Value(j));
    }
  }

  // The table is full before the lengths end.
  void AddBars() {
    for (int32_t measure = 0; measure <= MinI32(lastMeasure_, lengths_.kLast); ++measure) {
      if (lengths_[measure] == 0) lengths_[measure] = 1.0F;
      Add(ObjSeparator, measure, 0, 0);
    }
  }

  // What the table has no room for is left out.
  void Add(int32_t channel, int32_t measure, int32_t tick, int32_t value) {
    if (objs_.size() >= kMostObjs) return;
    HeaderObj obj{measure, 0, tick, channel, value};
    Assign(obj.pos, PosOf(measure, tick));
    objs_.push_back(obj);
  }

  void ScalePositions() {
    int32_t base = 0;
    int32_t current = -1;
    for (HeaderObj& obj : objs_) {
      if (obj.measure != current) {
        if (const float* length = lengths_.Find(current)) {
          Assign(base, Round(base + kMeasureUnits * double{*length}));
        }
        current = obj.measure;
      }
      if (const float* length = lengths_.Find(current)) {
        Assign(obj.pos, Round(base + obj.tick * double{*length}));
      }
    }
  }

  Table<float, 1024> lengths_;  // of measures; 0 is not given
  std::vector<HeaderObj> objs_;
  int32_t lastMeasure_ = 0;
  int32_t measure_ = 0;  // of the last line whose measure was a number
  int32_t channel_ = 0;
};

Text RowText(TextView text) { return Text(Left(text, kLongestRowText)); }

// What the wide reading makes of a header and its length.
class WideEntry {
 public:
  // Takes the line unless the words of every chart are to.
  bool Take(TextView line) {
    if (IsNumbered(line)) return false;
    if (BeginsWith(line, u"STOP")) {
      Put(stops_, line, 5);
    } else if (BeginsWith(line, u"EXBPM")) {
      Put(tempi_, line, 6);
    } else if (Word(line) == Word(u"BPM") && Mid(line, 4, 1) != u" ") {
      Put(tempi_, line, 4);
    } else {
      return header_.Take(line);
    }
    return true;
  }

  void ReadData(TextView line) {
    Assign(measure_, MeasureOf(line, 0));
    const int32_t channel = WideReading::ChannelOf(line);
    lastMeasure_ = MaxI32(lastMeasure_, measure_);
    if (channel == 2) {
      if (const std::optional<float> length = LengthOf(line)) lengths_.Put(measure_, *length);
    } else if (channel == 3 || channel == 8 || channel == ObjStop) {
      const Cells cells(line);
      for (int64_t j = 0; j < cells.Count(); ++j) {
        if (cells.IsRest(j)) continue;
        const int32_t value = channel == 3 ? cells.Value(j) : SlotValue(cells.Letters(j));
        events_.push_back({measure_, cells.Tick(j), channel, value});
      }
    }
  }

  void Complete(SongEntry& song) {
    header_.Complete(song.title, song.artist);
    song.title = RowText(song.title);
    song.artist = RowText(song.artist);
    song.lengthMs = Round(Milliseconds(song.bpm)).value_or(0);
  }

 private:
  struct Event {
    int32_t measure = 0;
    int32_t tick = 0;
    int32_t channel = 0;
    int32_t value = 0;
  };

  static void Put(std::map<int32_t, float>& table, TextView line, int64_t digits) {
    const std::optional<float> value = ToSingle(Argument(line, digits + 2));
    if (value) table[SlotValue(Mid(line, digits, 2))] = *value;
  }

  static float In(const std::map<int32_t, float>& table, int32_t slot) {
    const auto entry = table.find(slot);
    return entry != table.end() ? entry->second : 0;
  }

  double LengthOfMeasure(int32_t measure) const {
    const float* const length = lengths_.Find(measure);
    return length != nullptr && *length != 0 ? kMeasureUnits * double{*length} : kMeasureUnits;
  }

  // Up to the end of the last measure that has a length. At one place tempi come before stops.
  double Milliseconds(double tempo) {
    std::stable_sort(events_.begin(), events_.end(), [](const Event& a, const Event& b) {
      return std::tuple(a.measure, a.tick, a.channel) < std::tuple(b.measure, b.tick, b.channel);
    });
    double ms = 0;
    const auto pass = [&](double units) {
      if (tempo > 0) ms += std::max(units, 0.0) * kUnitRate / tempo;
    };
    auto event = events_.begin();
    for (int32_t measure = 0; measure <= MinI32(lastMeasure_, lengths_.kLast); ++measure) {
      const double length = LengthOfMeasure(measure);
      int32_t tick = 0;
      for (; event != events_.end() && event->measure <= measure; ++event) {
        pass((event->tick - tick) * length / kMeasureUnits);
        tick = event->tick;
        const double next = event->channel == 3   ? event->value
                            : event->channel == 8 ? In(tempi_, event->value)
                                                  : 0;
        if (event->channel == ObjStop) pass(In(stops_, event->value));
        if (next > 0) tempo = next;
      }
      pass((kMeasureUnits - tick) * length / kMeasureUnits);
    }
    return ms;
  }

  WideHeader header_;
  std::map<int32_t, float> tempi_;
  std::map<int32_t, float> stops_;
  std::vector<Event> events_;
  Table<float, 1024> lengths_;  // of measures; 0 is not given
  int32_t lastMeasure_ = 0;
  int32_t measure_ = 0;
};

// Quirk: only the leading letters are compared, so a tempo table's #BPM01 counts as #BPM, and its value, cut
// at the wrong place, does not convert.
void ReadWord(SongEntry& song, TextView line) {
  switch (Word(line)) {
    case Word(u"WAV"): ++song.numWav; break;
    case Word(u"BMP"): ++song.numBmp; break;
    case Word(u"STA"): song.stageFile = RowText(StageFile(line)); break;
    case Word(u"TIT"): song.title = RowText(Argument(line, 7)); break;
    case Word(u"ART"): song.artist = RowText(Argument(line, 8)); break;
    case Word(u"GEN"): song.genre = RowText(Argument(line, 7)); break;
    case Word(u"BPM"): Assign(song.bpm, ToSingle(Argument(line, 5))); break;
    case Word(u"RAN"): Assign(song.rank, ToWhole(Argument(line, 6))); break;
    case Word(u"TOT"): Assign(song.total, ToWhole(Argument(line, 7))); break;
    case Word(u"VOL"): Assign(song.volWav, ToWhole(Argument(line, 8))); break;
    case Word(u"MID"): song.midiFile = RowText(Argument(line, 10)); break;
    default:
      if (BeginsWith(line, u"PLAYER")) Assign(song.player, ToWhole(Argument(line, 8)));
      if (BeginsWith(line, u"PLAYLE")) Assign(song.playLevel, ToWhole(Argument(line, 11)));
  }
}

template <typename TakeLine>
void ForLines(TextView text, TakeLine take) {
  for (size_t place = FindCommand(text, 0); place != TextView::npos;) {
    const size_t end = FindLineEnd(text, place);
    take(text.substr(place, end - place));
    place = FindCommand(text, end);
  }
}

void TakeWideText(SongEntry& song, std::string_view bytes) {
  const ChartText chart = WideReading::Decode(bytes);
  const SlotDigitsOf digits(chart.text);
  const auto entry = std::make_unique<WideEntry>();
  ForLines(chart.text, [&](TextView line) {
    if (IsNumbered(line)) {
      entry->ReadData(line);
    } else if (!entry->Take(line)) {
      ReadWord(song, line);
    }
  });
  entry->Complete(song);
}

void TakeText(SongEntry& song, std::string_view bytes) {
  const ChartText chart = DecodeChart(bytes);
  LengthEstimate length;
  ForLines(chart.text, [&](TextView line) {
    if (IsNumbered(line)) {
      length.ReadLine(line);
    } else {
      ReadWord(song, line);
    }
  });
  song.lengthMs = length.Milliseconds(song.bpm).value_or(0);
}

}  // namespace

void ReadBMSHeader(TextView path, int32_t index) {
  const platform::TextBytes chart = platform::ReadText(path, kLongestChart);
  if (!chart.why.empty()) ReportUnreadable(path, chart.why);
  ReadBMSHeaderBytes(path, index, chart.bytes);
}

void ReadBMSHeaderBytes(TextView path, int32_t index, std::string_view bytes) {
  if (index < 0 || index >= static_cast<int64_t>(songList.size())) return;
  SongEntry& song = songList[static_cast<size_t>(index)];
  song.path = path;
  song.player = 1;
  song.playLevel = 3;
  song.rank = 2;
  if (!platform::WithinMemory([&] { WideCharts ? TakeWideText(song, bytes) : TakeText(song, bytes); }))
    ReportUnreadable(path, u"There is no memory for it");
}

}  // namespace qlm
