// The library: scanning charts, opening and sorting a long list.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "base/paths.h"
#include "bench/support/bench_game.h"
#include "library/jukebox.h"
#include "library/scan.h"
#include "library/song_list.h"
#include "library/sorts.h"
#include "platform/text.h"
#include "state/lists.h"

namespace qlm {
namespace {

constexpr int kCharts = 500;
constexpr int kChartBytes = 50'000;
constexpr int kRows = 10'000;

// A chart as many are: 255 sounds, notes, a few tempo changes, a title in Japanese.
std::string Chart(int number) {
  Text chart =
      Join(u"\r\n#PLAYER 1\r\n#TITLE 春の海 ", number, u"\r\n#ARTIST 誰か\r\n#GENRE POPS\r\n#BPM 150\r\n");
  for (int slot = 1; slot < 256; ++slot) {
    const Text hex = Hex(static_cast<uint32_t>(slot));
    chart += Join(u"#WAV", hex.size() < 2 ? u"0" : u"", hex, u" piano_", slot, u".wav\r\n");
  }
  for (int measure = 0; chart.size() < kChartBytes; ++measure) {
    if (measure % 8 == 0) chart += Join(u"#", Padded(measure, 3), u"03:96A0\r\n");
    for (const int channel : {1, 11, 12, 13, 18}) {
      chart += Join(u"#", Padded(measure, 3), Padded(channel, 2), u":01000000050000000A000000FF000000\r\n");
    }
  }
  return platform::EncodeCp932(chart);
}

// From a warm disk: the system holds what was just written.
void Scan(benchmark::State& state) {
  const BenchGame ground;
  for (int number = 0; number < kCharts; ++number) {
    ground.WriteData(Join(u"bms\\song ", number / 4, u"\\chart ", number, u".bms"), Chart(number));
  }
  const Text folder = Join(AppPath, u"\\bms");
  for (auto _ : state) {
    ClearList();
    ScanFolder(folder);
  }
  if (lastSong != kCharts - 1) state.SkipWithError("not all charts were found");
  state.SetItemsProcessed(state.iterations() * kCharts);
}

// Rows in no order.
void FillList() {
  ClearList();
  std::vector<SongEntry> rows(kRows);
  uint32_t random = 1;
  for (SongEntry& song : rows) {
    random = random * 1'664'525 + 1'013'904'223;
    song.title = Join(random % 2 == 0 ? u"春の歌 " : u"A Song Of ", random >> 8);
    song.artist = Join(u"Artist ", (random >> 16) % 500);
    song.genre = Join(u"Genre ", (random >> 20) % 40);
    song.playLevel = static_cast<int32_t>(random >> 24) % 13;
    song.stageFile = u"stage.bmp";
    song.path = Join(u"\\home\\someone\\music\\bms\\a folder of many\\song ", random, u"\\chart.bms");
  }
  TakeRows(std::move(rows));
}

void OpenJukebox(benchmark::State& state) {
  const BenchGame ground;
  FillList();
  const Text path = Join(AppPath, u"\\many.qbl");
  SaveJukeList(path, true);
  for (auto _ : state) LoadJukeList(path, true);
  if (lastSong != kRows - 1) state.SkipWithError("not all rows were read");
}

void Sort(benchmark::State& state, void (*sort)()) {
  const BenchGame ground;
  FillList();
  const std::vector<SongEntry> rows = songList;
  for (auto _ : state) {
    state.PauseTiming();
    songList = rows;
    state.ResumeTiming();
    sort();
  }
}

BENCHMARK(Scan)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenJukebox)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Sort, level, SortByLevel)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Sort, genre, SortByGenre)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Sort, title, SortByTitle)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Sort, artist, SortByArtist)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace qlm
