// How long the song list stands still for a preview: from the timer to the first sound.
#include <benchmark/benchmark.h>

#include <cstdint>

#include "base/paths.h"
#include "bench/support/bench_game.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/sound_device.h"
#include "platform/timers.h"
#include "play/preview.h"
#include "state/lists.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "state/transcript.h"

namespace qlm {
namespace {

void ForgetSounds() {
  for (SoundBufferPtr& buffer : WavBuffer) buffer.reset();
  WavHeldName.Clear();
}

// The stock chart for seven keys from a warm disk, read and prepared anew each time, with its first sounds
// loaded, or held from the preview before. The 20 ms to the first tick pass on the clock alone.
void PreviewStart(benchmark::State& state) {
  const bool held = state.range(0) != 0;
  const BenchGame game;
  AppPath = platform::InnerPath(QLM_BINARY_DIR);
  platform::OpenSoundDevice(platform::SoundOutput::kOffline);
  PlaySound = true;
  RealHiSpeed = 1;
  BMSPreview = 1;
  GameState = kStateSongSelect;
  songList.resize(1);
  songList[0].path = Join(AppPath, u"\\songs\\march\\march7.bme");
  lastSong = 0;
  Transcript played;
  transcript = &played;
  uint32_t now = platform::Now();
  for (auto _ : state) {
    state.PauseTiming();
    EndPreview();
    if (!held) ForgetSounds();
    played.starts.clear();
    state.ResumeTiming();
    StartPreview();
    for (int tick = 0; tick < 10 && played.starts.empty(); ++tick) {
      now += 20;
      platform::UseVirtualClock(now);
      platform::RunDueTimers();
    }
    if (played.starts.empty()) {
      state.SkipWithError("the stock chart is not there, or silent");
      break;
    }
  }
  EndPreview();
  ForgetSounds();
  transcript = nullptr;
  platform::CloseSoundDevice();
}
BENCHMARK(PreviewStart)->ArgName("held")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace qlm
