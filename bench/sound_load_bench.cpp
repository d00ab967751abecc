// Loading of all 255 sounds that a chart can name, a reload that finds them in memory, and a
// folder whose names are in another letter case than the chart's.
#include <benchmark/benchmark.h>
#include <malloc.h>

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
#include "state/settings.h"
#include "state/slots.h"
#include "state/sounds.h"
#include "tools/media_files/encoded.h"
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

// Keeps what one load gives back for the next. Otherwise the heap may give it back to the system, by where a
// few small blocks happen to lie, and two builds of the same code differ by half of the time.
void KeepHeap() {
  constexpr int kMostKept = 1 << 30;
  constexpr int kShortestOfItsOwn = 32 << 20;
  mallopt(M_TRIM_THRESHOLD, kMostKept);
  mallopt(M_MMAP_THRESHOLD, kShortestOfItsOwn);
}

// The argument is the length in frames: a tenth of a second, a second, five seconds.
void Load(benchmark::State& state) {
  KeepHeap();
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

// A sound as keys have them: it begins at once and dies away, bright and a little rough.
std::vector<float> Struck(uint32_t frames) {
  std::vector<float> samples;
  uint32_t noise = 1;
  for (uint32_t i = 0; i < frames; ++i) {
    noise = noise * 1664525 + 1013904223;
    const double fade = std::exp(-3.0 * i / frames);
    const double tone = 0.3 * std::sin(0.00001 * i * i) + 0.2 * std::sin(0.05 * i) +
                        static_cast<int16_t>(noise >> 16) / 32768.0 / 8;
    samples.push_back(static_cast<float>(fade * tone));
    samples.push_back(static_cast<float>(fade * tone * 0.8));
  }
  return samples;
}

constexpr int32_t kSoundsOfToday = 1300;

// A folder as charts of today have it: 1,300 sounds, as .wav in the chart and as Ogg Vorbis beside it, 50 MB
// in stereo. The argument is the encoder's quality in tenths; the sounds are as long as the bytes allow, a
// fifth of them very short, some long.
class FolderOfToday {
 public:
  FolderOfToday(const BenchGame& game, int64_t quality) {
    constexpr double kBytes = 50e6;
    constexpr double kLengths[] = {0.2, 0.6, 0.8, 1.0, 1.2, 0.2, 0.7, 1.0, 1.5, 2.8};
    std::vector<std::string> files;
    for (double scale = 1; files.empty(); scale *= kBytes / bytes) {
      bytes = 0;
      for (const double length : kLengths) {
        const auto frames = static_cast<uint32_t>(44100 * 1.7 * scale * length);
        files.push_back(media::EncodedSound(media::Coding::kVorbis, Struck(frames), 2, 44100,
                                            static_cast<double>(quality) / 10));
        bytes += static_cast<double>(files.back().size()) * kSoundsOfToday / std::size(kLengths);
        seconds += 1.7 * scale * length * kSoundsOfToday / std::size(kLengths);
      }
      if (std::abs(bytes - kBytes) < kBytes / 200) break;
      files.clear();
      seconds = 0;
    }
    SlotBase = 62;
    Text lines = u"\r\n#BASE 62";
    for (int32_t slot = 1; slot <= kSoundsOfToday; ++slot) {
      game.WriteData(Join(u"song\\sound", slot, u".ogg"), files[static_cast<size_t>(slot) % files.size()]);
      lines += Join(u"\r\n#WAV", SlotName(slot), u" sound", slot, u".wav");
    }
    chart = game.WriteData(u"song\\chart.bms", platform::EncodeUtf8(lines));
  }

  Text chart;
  double bytes = 0;
  double seconds = 0;
};

void ReadFolderOfToday(benchmark::State& state) {
  const BenchGame game;
  const FolderOfToday folder(game, state.range(0));
  RealHiSpeed = 1;
  WideCharts = true;
  platform::OpenSoundDevice(platform::SoundOutput::kOffline);
  // The folder has stood unchanged for a while, as a chart's has.
  std::this_thread::sleep_for(std::chrono::seconds(4));
  for (auto _ : state) {
    ReleaseAllSounds();
    BMSInit();
    BMSRead(folder.chart);
  }
  if (WavBuffer.Find(kSoundsOfToday) == nullptr || WavBuffer[kSoundsOfToday] == nullptr)
    state.SkipWithError("not all sounds were loaded");
  state.counters["MB"] = folder.bytes / 1e6;
  state.counters["seconds of sound"] = folder.seconds;
  state.counters["MiB in memory"] = static_cast<double>(platform::SoundBytesHeld()) / (1 << 20);
  ReleaseAllSounds();
  platform::CloseSoundDevice();
}
BENCHMARK(ReadFolderOfToday)
    ->Arg(4)
    ->Arg(6)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MeasureProcessCPUTime();

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
