// Loading of all 255 sounds that a chart can name, a reload that finds them in memory, and a
// folder whose names are in another letter case than the chart's.
#include <benchmark/benchmark.h>

#include <chrono>
#include <string>
#include <thread>

#include "base/paths.h"
#include "bench/support/bench_game.h"
#include "platform/sound_device.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/options.h"

namespace {

using namespace qlm;

// A stereo sound of 16 bits.
std::string WavOf(uint32_t frames) {
  const auto little = [](uint32_t value, int bytes) {
    std::string out;
    for (int i = 0; i < bytes; ++i) out += static_cast<char>(value >> (8 * i) & 255);
    return out;
  };
  const uint32_t size = frames * 4;
  std::string bytes = "RIFF" + little(size + 36, 4) + "WAVEfmt " + little(16, 4) + little(1, 2) +
                      little(2, 2) + little(44100, 4) + little(176400, 4) + little(4, 2) + little(16, 2) +
                      "data" + little(size, 4);
  bytes.append(size, '\x11');
  return bytes;
}

void NameSounds(const BenchGame& game, uint32_t frames) {
  const std::string bytes = WavOf(frames);
  for (int32_t slot = 1; slot <= 255; ++slot) {
    WavFile[slot] = game.WriteData(Join(u"song\\sound", slot, u".wav"), bytes);
  }
  RealHiSpeed = 1;
  platform::OpenSoundDevice(platform::SoundOutput::kOffline);
}

// The argument is the length in frames: a tenth of a second, a second, five seconds.
void Load(benchmark::State& state) {
  const BenchGame game;
  const auto frames = static_cast<uint32_t>(state.range(0));
  NameSounds(game, frames);
  for (auto _ : state) {
    ReleaseAllSounds();
    for (int32_t slot = 1; slot <= 255; ++slot) loadwav(slot);
  }
  state.SetBytesProcessed(state.iterations() * 255 * int64_t{frames} * 4);
  platform::CloseSoundDevice();
}
BENCHMARK(Load)->Arg(4410)->Arg(44100)->Arg(220500)->Unit(benchmark::kMillisecond);

void Reload(benchmark::State& state) {
  const BenchGame game;
  NameSounds(game, 4410);
  for (auto _ : state) {
    for (int32_t slot = 1; slot <= 255; ++slot) loadwav(slot);
  }
  platform::CloseSoundDevice();
}
BENCHMARK(Reload)->Unit(benchmark::kMillisecond);

// The same sounds in a folder of 1000 files, each named in another letter case than its file. The folder has
// stood unchanged for a while, as a chart's has.
void LoadInWrongLetterCase(benchmark::State& state) {
  const BenchGame game;
  NameSounds(game, 4410);
  for (int32_t file = 256; file <= 1000; ++file) game.WriteData(Join(u"song\\sound", file, u".wav"), "");
  for (int32_t slot = 1; slot <= 255; ++slot) {
    WavFile[slot] = Join(AppPath, u"\\song\\SOUND", slot, u".WAV");
  }
  std::this_thread::sleep_for(std::chrono::seconds(4));
  for (auto _ : state) {
    ReleaseAllSounds();
    for (int32_t slot = 1; slot <= 255; ++slot) loadwav(slot);
  }
  platform::CloseSoundDevice();
}
BENCHMARK(LoadInWrongLetterCase)->Unit(benchmark::kMillisecond);

}  // namespace
