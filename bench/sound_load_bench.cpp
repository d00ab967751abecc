// Loading of all 255 sounds that a chart can name, a reload that finds them in memory, and a
// folder whose names are in another letter case than the chart's.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "base/paths.h"
#include "bench/support/bench_game.h"
#include "chart/reader.h"
#include "platform/files.h"
#include "platform/sound_device.h"
#include "platform/text.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/options.h"
#include "tools/media_files/wav.h"

namespace {

using namespace qlm;

// A stereo sound of 16 bits.
std::string WavOf(uint32_t frames) {
  return media::WavBytes(std::vector<int16_t>(size_t{2} * frames, 0x1111), 2, 44100);
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

// A second of a bright, changing sound, as an encoder makes it at 128 kbit/s; empty where there is no
// encoder.
std::string Mp3OfASecond(const BenchGame& game) {
  std::vector<int16_t> samples;
  uint32_t noise = 1;
  for (int i = 0; i < 44100; ++i) {
    noise = noise * 1664525 + 1013904223;
    const double tone = 9000 * std::sin(0.00001 * i * i) + static_cast<int16_t>(noise >> 16) / 8.0;
    samples.insert(samples.end(), 2, static_cast<int16_t>(tone));
  }
  const std::string wav =
      platform::SystemPath(game.WriteData(u"tone.wav", media::WavBytes(samples, 2, 44100)));
  const std::string mp3 = wav + ".mp3";
  if (std::system(("lame --quiet -b 128 " + wav + " " + mp3).c_str()) != 0) return {};
  return platform::ReadFile(platform::InnerPath(mp3)).value_or(std::string());
}

void LoadMp3(benchmark::State& state) {
  const BenchGame game;
  const std::string bytes = Mp3OfASecond(game);
  if (bytes.empty()) return state.SkipWithError("lame is not installed");
  for (int32_t slot = 1; slot <= 255; ++slot) {
    WavFile[slot] = game.WriteData(Join(u"song\\sound", slot, u".mp3"), bytes);
  }
  RealHiSpeed = 1;
  platform::OpenSoundDevice(platform::SoundOutput::kOffline);
  for (auto _ : state) {
    ReleaseAllSounds();
    for (int32_t slot = 1; slot <= 255; ++slot) loadwav(slot);
  }
  state.counters["times real time"] =
      benchmark::Counter(static_cast<double>(state.iterations()) * 255, benchmark::Counter::kIsRate);
  platform::CloseSoundDevice();
}
BENCHMARK(LoadMp3)->Unit(benchmark::kMillisecond)->UseRealTime();

// The sounds of a file as a chart names them, read with the chart.
void ReadChartOf(benchmark::State& state, const BenchGame& game, const std::string& bytes, TextView kind) {
  Text lines;
  for (int32_t slot = 1; slot <= 255; ++slot) {
    game.WriteData(Join(u"song\\sound", slot, kind), bytes);
    lines +=
        Join(u"\r\n#WAV", slot < 16 ? u"0" : u"", Hex(static_cast<uint32_t>(slot)), u" sound", slot, kind);
  }
  const Text chart = game.WriteData(u"song\\chart.bms", platform::EncodeUtf8(lines));
  RealHiSpeed = 1;
  platform::OpenSoundDevice(platform::SoundOutput::kOffline);
  for (auto _ : state) {
    ReleaseAllSounds();
    BMSInit();
    BMSRead(chart);
  }
  platform::CloseSoundDevice();
}

void ReadWavChart(benchmark::State& state) { ReadChartOf(state, BenchGame(), WavOf(4410), u".wav"); }
BENCHMARK(ReadWavChart)->Unit(benchmark::kMillisecond)->UseRealTime();

void ReadMp3Chart(benchmark::State& state) {
  const BenchGame game;
  const std::string bytes = Mp3OfASecond(game);
  if (bytes.empty()) return state.SkipWithError("lame is not installed");
  ReadChartOf(state, game, bytes, u".mp3");
}
BENCHMARK(ReadMp3Chart)->Unit(benchmark::kMillisecond)->UseRealTime();

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
