// Conversion of one title for the marquee, with the dictionary of readings open.
#include <benchmark/benchmark.h>

#include "bench/support/bench_game.h"
#include "chart/titles.h"
#include "state/titles.h"

namespace {

using namespace qlm;

// The title, the artist and the gap of a skin's marquee; the argument is the number of words of the player's
// own.
void Convert(benchmark::State& state) {
  const BenchGame game;
  DictFrom.assign(static_cast<size_t>(state.range(0)), u"題名");
  DictTo.assign(DictFrom.size(), u"Title");
  const Text title =
      u"交響曲第五番「運命」より第一楽章 ～ピアノのための編曲版～ / 東京フィルハーモニー" + Text(31, u' ');
  Cvt2ASCII(title);
  for (auto _ : state) benchmark::DoNotOptimize(Cvt2ASCII(title));
}
BENCHMARK(Convert)->Arg(1)->Arg(1000)->Unit(benchmark::kMicrosecond);

}  // namespace
