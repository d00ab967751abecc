// What a frame of the list screens costs, whatever the length of the list.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>

#include "base/paths.h"
#include "base/text.h"
#include "bench/support/bench_game.h"
#include "graphics/display.h"
#include "graphics/skin.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "screens/list_frame.h"
#include "screens/list_text.h"
#include "screens/song_find.h"
#include "screens/stills.h"
#include "state/chart.h"
#include "state/lists.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_find.h"
#include "state/song_select.h"
#include "state/surfaces.h"
#include "state/timeline.h"

namespace qlm {
namespace {

void LayList(int64_t rows) {
  for (int64_t i = 0; i < rows; ++i) {
    SongEntry row;
    row.title = Join(u"羽ペンの行進 第", i, u"番 [7KEYS]");
    row.artist = u"quillmarch";
    row.genre = u"MARCH";
    row.bpm = 132;
    row.playLevel = static_cast<int32_t>(i % 12 + 1);
    songList.push_back(row);
  }
  lastSong = static_cast<int32_t>(rows) - 1;
  songCleared.assign(songList.size(), true);
  songHasRecord.assign(songList.size(), false);
  songSelect.titleMain = u"羽ペンの行進";
  songSelect.titleSub = u"[7KEYS]";
}

// A frame of the song list under the stock pictures, shown to nobody; at rest, or stepping a row every tenth
// frame.
void ListFrame(benchmark::State& state) {
  const BenchGame game;
  AppPath = platform::InnerPath(QLM_BINARY_DIR);
  InitDD(DisplayOutput::kUnseen);
  CreateSurfaces();
  platform::UseVirtualClock(1'000'000);
  loadSkin(DataPath(u"qlm_scr.brd"), false);
  LoadSS();
  GameState = kStateSongSelect;
  DRAWLIMIT = 1;
  TotalNotes = {574, 0};
  curBPM = 132;
  songSelect.listFadeIn = 0;
  LayList(state.range(0));
  const bool turning = state.range(1) != 0;
  int64_t frame = 0;
  for (auto _ : state) {
    if (turning) {
      if (frame % 10 == 0) {
        listCursor = listCursor == lastSong ? 0 : listCursor + 1;
        songSelect.listScroll -= 1;
      }
      songSelect.listScroll *= 0.8F;
    }
    ++frame;
    DrawList();
  }
  state.SetItemsProcessed(state.iterations());
  ForgetLines();
  platform::UseRealClock();
  ReleaseDD();
}
BENCHMARK(ListFrame)
    ->ArgNames({"rows", "turning"})
    ->ArgsProduct({{10, 10'000}, {0, 1}})
    ->Unit(benchmark::kMicrosecond);

// One letter typed into the search: the first one of a word, which most rows hold, or the last of four, which
// no row does.
void TypeALetter(benchmark::State& state) {
  const BenchGame game;
  platform::UseVirtualClock(1'000'000);
  GameState = kStateSongSelect;
  LayList(state.range(0));
  const bool rare = state.range(1) != 0;
  // The readings are looked up over the frames before.
  const TextView before = rare ? u"hane" : u"";
  OpenFindLine();
  for (const char16_t letter : TextView(u"pen")) TypeInFindLine(letter);
  while (songFind.readRows < songFind.rows.size()) ReadOnForFinding();
  EndFind();
  for (auto _ : state) {
    OpenFindLine();
    for (const char16_t letter : before) TypeInFindLine(letter);
    const auto begin = std::chrono::steady_clock::now();
    TypeInFindLine(rare ? u'x' : u'q');
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    state.SetIterationTime(took.count());
    EndFind();
  }
  platform::UseRealClock();
}
BENCHMARK(TypeALetter)
    ->ArgNames({"rows", "rare"})
    ->ArgsProduct({{10'000}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

// A frame's share of the readings of kanji, none of them known.
void ReadOn(benchmark::State& state) {
  const BenchGame game;
  platform::UseVirtualClock(1'000'000);
  GameState = kStateSongSelect;
  LayList(10'000);
  OpenFindLine();
  TypeInFindLine(u'z');
  for (auto _ : state) {
    if (songFind.readRows == songFind.rows.size()) {
      state.PauseTiming();
      foundReadings.clear();
      EndFind();
      OpenFindLine();
      TypeInFindLine(u'z');
      state.ResumeTiming();
    }
    ReadOnForFinding();
  }
  platform::UseRealClock();
}
BENCHMARK(ReadOn)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace qlm
