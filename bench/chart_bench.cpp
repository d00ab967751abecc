// Reading and preparing of charts: an ASCII one and one full of Shift-JIS and one of today, all written here.
#include <benchmark/benchmark.h>

#include <string>

#include "bench/support/bench_game.h"
#include "chart/preparation.h"
#include "chart/reader.h"
#include "library/header.h"
#include "platform/text.h"
#include "state/chart.h"
#include "state/lists.h"
#include "state/options.h"
#include "state/settings.h"

namespace qlm {
namespace {

// Sounds and pictures are named but not loaded.
class Ground : public BenchGame {
 public:
  Ground() {
    WAVLoadmode = 1;
    BMPLoadmode = 1;
    RealHiSpeed = 1;
    numObjs = 4'000'000;
  }
};

Text Slot(int value) {
  const Text hex = Hex(static_cast<uint32_t>(value));
  return hex.size() < 2 ? Join(u"0", hex) : hex;
}

// A line of 32 cells, every `gap`th of which is a note.
Text NoteLine(int measure, int channel, int gap) {
  Text line = Join(u"#", Padded(measure, 3), Padded(channel, 2), u":");
  for (int cell = 0; cell < 32; ++cell)
    line += cell % gap == 0 ? Slot((measure + cell) % 255 + 1) : Text(u"00");
  return line + Text(kCrLf);
}

// Data lines for the most part, as in a dense chart.
std::string AsciiChart() {
  Text chart = u"\r\n#PLAYER 1\r\n#TITLE A title in plain letters\r\n#BPM 150\r\n#RANK 2\r\n";
  for (int slot = 1; slot < 256; ++slot) {
    chart += Join(u"#WAV", Slot(slot), u" piano_", Slot(slot), u".wav", kCrLf);
  }
  for (int round = 0; round < 20; ++round) {
    for (int measure = 0; measure < 999; ++measure) {
      for (const int channel : {1, 11, 12, 13, 18}) chart += NoteLine(measure, channel, 4);
    }
  }
  return platform::EncodeCp932(chart);
}

// Comments, titles and file names in Japanese, a few notes between.
std::string ShiftJisChart() {
  const Text comment = u"*---- この譜面は練習のために作られました。感想をお待ちしています。 ----\r\n";
  Text chart = u"\r\n#PLAYER 1\r\n#BPM 150\r\n";
  for (int round = 0; round < 20; ++round) {
    chart += u"#TITLE 春の海、夏の空、秋の山、冬の星\r\n";
    for (int slot = 1; slot < 256; ++slot) {
      chart += Join(u"#WAV", Slot(slot), u" 太鼓の音、その一番大きなもの.wav", kCrLf);
    }
    for (int measure = 0; measure < 999; ++measure) chart += Join(comment, comment, NoteLine(measure, 11, 8));
  }
  return platform::EncodeCp932(chart);
}

void Read(benchmark::State& state, const std::string& chart, bool wide = false) {
  const Ground ground;
  WideCharts = wide;
  const Text path = ground.WriteData(u"song\\chart.bms", chart);
  int64_t objects = 0;
  for (auto _ : state) {
    state.PauseTiming();
    BMSInit();
    state.ResumeTiming();
    BMSRead(path);
    objects += objCount;
  }
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(chart.size()));
  state.counters["objects"] = benchmark::Counter(static_cast<double>(objects), benchmark::Counter::kIsRate);
}

void ReadAscii(benchmark::State& state) { Read(state, AsciiChart()); }
void ReadShiftJis(benchmark::State& state) { Read(state, ShiftJisChart()); }

// 70,000 notes as charts of today have them: sounds of base 36, stops, tempi by table, long notes, UTF-8 text
// and bare line feeds.
std::string WideChart() {
  constexpr TextView kDigits = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  const auto slot = [&](int value) {
    return Text{kDigits[static_cast<size_t>(value / 36)], kDigits[static_cast<size_t>(value % 36)]};
  };
  Text chart =
      u"#PLAYER 1\n#TITLE 春の海\n#SUBTITLE ~remix~\n#BPM 150\n#LNOBJ ZZ\n#STOP01 24\n#BPM0Z 172.5\n";
  for (int value = 1; value < 1295; ++value) {
    chart += Join(u"#WAV", slot(value), u" 太鼓_", slot(value), u".wav\n");
  }
  for (int measure = 0; measure < 500; ++measure) {
    const auto line = [&](TextView channel, int cells, auto cell) {
      chart += Join(u"#", Padded(measure, 3), channel, u":");
      for (int j = 0; j < cells; ++j) chart += cell(j);
      chart += u"\n";
    };
    for (const TextView channel : {u"11", u"12", u"13", u"14", u"15", u"16", u"18", u"19"}) {
      line(channel, 16, [&](int j) { return slot((measure + j * 7) % 1294 + 1); });
    }
    for (const TextView channel : {u"51", u"52"}) {
      line(channel, 12, [&](int j) { return slot(j + 1); });
    }
    if (measure % 8 == 0) line(u"09", 1, [](int) { return Text(u"01"); });
    if (measure % 8 == 4) line(u"08", 1, [](int) { return Text(u"0Z"); });
  }
  return platform::EncodeUtf8(chart);
}

void ReadWide(benchmark::State& state) { Read(state, WideChart(), true); }

void ReadHeaderShiftJis(benchmark::State& state) {
  const Ground ground;
  const std::string chart = ShiftJisChart();
  const Text path = ground.WriteData(u"song\\chart.bms", chart);
  songList.resize(1);
  for (auto _ : state) ReadBMSHeader(path, 0);
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(chart.size()));
}

// 65,000 notes and background sounds in the order of a file, lane by lane, and no tempo change.
void Prepare(benchmark::State& state) {
  const Ground ground;
  Text chart = u"\r\n#BPM 150\r\n";
  for (int line = 0; line < 65'000 / 32; ++line) {
    constexpr int kChannels[] = {1, 11, 12, 13, 14, 15, 16, 18, 19, 1};
    chart += NoteLine(line / 10, kChannels[line % 10], 1);
  }
  const Text path = ground.WriteData(u"song\\chart.bms", platform::EncodeCp932(chart));
  int64_t objects = 0;
  for (auto _ : state) {
    state.PauseTiming();
    BMSInit();
    BMSRead(path);
    state.ResumeTiming();
    BMSPrepare();
    objects += objCount;
  }
  state.counters["objects"] = static_cast<double>(objects) / static_cast<double>(state.iterations());
}

BENCHMARK(ReadAscii)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadShiftJis)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadWide)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadHeaderShiftJis)->Unit(benchmark::kMillisecond);
BENCHMARK(Prepare)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace qlm
