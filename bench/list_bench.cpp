// What a frame of the list screens costs, whatever the length of the list.
#include <benchmark/benchmark.h>

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
#include "screens/stills.h"
#include "state/chart.h"
#include "state/lists.h"
#include "state/session.h"
#include "state/settings.h"
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

}  // namespace
}  // namespace qlm
