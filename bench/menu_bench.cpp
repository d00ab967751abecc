// The startup menu: from nothing of the toolkit to a menu that is up, and its end.
#include <benchmark/benchmark.h>

#include <cstdlib>

#include "base/hooks.h"
#include "bench/support/bench_game.h"
#include "files/settings_file.h"
#include "forms/startup_menu.h"

namespace {

using namespace qlm;

// Where there is no display, on one that is nowhere.
void ShowMenu(benchmark::State& state) {
  if (std::getenv("DISPLAY") == nullptr) setenv("QT_QPA_PLATFORM", "offscreen", 1);
  setenv("SDL_VIDEODRIVER", "dummy", 1);
  const BenchGame game;
  LoadSettings();
  // A few folders of charts and skins, as a player has them.
  for (const char16_t letter : {u'a', u'b', u'c', u'd', u'e', u'f'}) {
    game.WriteData(Join(u"_qlmfiles\\", TextView(&letter, 1), u".brd"), "#TITLE skin\r\n");
  }
  game.WriteData(u"_qlmfiles\\qlm_searchdir.txt", "\\a\r\n\\b\r\n#\\c\r\n");
  for (auto _ : state) {
    benchmark::DoNotOptimize(RunStartupMenu([] { hooks.closeRequested(); }));
  }
}
BENCHMARK(ShowMenu)->Unit(benchmark::kMillisecond);

}  // namespace
