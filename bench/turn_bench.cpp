// What a whole turn costs: objects, the stock skin's frame, the pump and the showing of the frame, beside a
// loop that does nothing but show frames. Run it once with SDL_VIDEODRIVER=dummy and once under an X server.
#include <benchmark/benchmark.h>

#include "base/log.h"
#include "base/paths.h"
#include "bench/support/bench_game.h"
#include "chart/loading.h"
#include "graphics/display.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/sound_device.h"
#include "platform/window.h"
#include "play/position.h"
#include "play/reset.h"
#include "play/turn.h"
#include "state/chart.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "state/timeline.h"

namespace qlm {
namespace {

// The whole window at its own size, as fast as it goes.
void OpenUnwaitingWindow() {
  Windowed = true;
  DirectBlt = true;
  NOVSync = true;
  InitDD();
  CreateSurfaces();
}

void ShowNothingButFrames(benchmark::State& state) {
  const BenchGame game;
  OpenUnwaitingWindow();
  for (auto _ : state) platform::ShowFrame(*DDBack, false);
  state.SetItemsProcessed(state.iterations());
  ReleaseDD();
}
BENCHMARK(ShowNothingButFrames)->UseRealTime()->Unit(benchmark::kMicrosecond);

// The stock song in the machine's hands, one turn each millisecond, from its start again at its end.
void WholeTurn(benchmark::State& state) {
  const BenchGame game;
  AppPath = platform::InnerPath(QLM_BINARY_DIR);
  SkinMapPath[0] = DataPath(u"default.brd");
  OpenUnwaitingWindow();
  platform::OpenSoundDevice(platform::SoundOutput::kOffline);
  HiSpeed = 1;
  RealHiSpeed = 1;
  PlaySound = ShowBGA = UserPlay = DEMOMode = true;
  if (BMSLoad(Join(AppPath, u"\\songs\\march\\march7.bme")) < 1) {
    state.SkipWithError("the stock song is not there");
    return;
  }
  ResetPlay();
  const auto begin = [] {
    FadeState = kFadeNone;
    PlayAlive = true;
    GameState = kStatePlay;
    SeekChart(0, true);
  };
  begin();
  uint32_t now = platform::Now();
  for (auto _ : state) {
    if (objCursor >= objCount) begin();
    platform::UseVirtualClock(++now);
    PlayStep();
  }
  state.SetItemsProcessed(state.iterations());
  ReleaseDD();
  platform::CloseSoundDevice();
}
BENCHMARK(WholeTurn)->UseRealTime()->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace qlm
