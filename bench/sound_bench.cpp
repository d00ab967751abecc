// Mixing: how much faster than real time the device's routine is, and how much one call on a buffer costs.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "platform/sound_device.h"

namespace {

using platform::SoundBufferPtr;

constexpr uint32_t kRate = 44100;
constexpr size_t kBlockFrames = 256;

SoundBufferPtr NoiseOf(uint16_t channels, uint32_t frames) {
  platform::SoundFormat format;
  format.tag = 1;
  format.channels = channels;
  format.bitsPerSample = 16;
  format.samplesPerSec = kRate;
  std::mt19937 random(channels);
  std::vector<unsigned char> bytes(size_t{2} * channels * frames);
  for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random());
  platform::SoundDescription description;
  description.bytes = static_cast<uint32_t>(bytes.size());
  SoundBufferPtr sound = platform::CreateSoundBuffer(description, format).buffer;
  sound->Write(0, bytes);
  return sound;
}

// Looping voices of two seconds each at the usual volume, 256 frames at a time. With `hertz` 0 at their own
// rate.
void Mix(benchmark::State& state, uint16_t channels, int32_t hertz) {
  platform::OpenSoundDevice(platform::SoundOutput::kOffline);
  std::vector<SoundBufferPtr> voices;
  for (int64_t i = 0; i < state.range(0); ++i) {
    voices.push_back(NoiseOf(channels, 2 * kRate));
    voices.back()->SetVolume(-500);
    voices.back()->SetFrequency(hertz == 0 ? 0 : hertz + static_cast<int32_t>(i));
    voices.back()->Play(true);
  }
  std::vector<int16_t> block(2 * kBlockFrames);
  for (auto _ : state) {
    platform::RenderSound(block);
    benchmark::DoNotOptimize(block.data());
  }
  const double seconds = static_cast<double>(state.iterations()) * kBlockFrames / kRate;
  state.counters["x_real_time"] = benchmark::Counter(seconds, benchmark::Counter::kIsRate);
  voices.clear();
  platform::CloseSoundDevice();
}

void PlainStereo(benchmark::State& state) { Mix(state, 2, 0); }
void PitchedStereo(benchmark::State& state) { Mix(state, 2, 48000); }
void PitchedMono(benchmark::State& state) { Mix(state, 1, 48000); }
void HalfSpeedStereo(benchmark::State& state) { Mix(state, 2, 22050); }
void FastStereo(benchmark::State& state) { Mix(state, 2, 66150); }
BENCHMARK(PlainStereo)->Arg(64)->Arg(256);
BENCHMARK(PitchedStereo)->Arg(64)->Arg(256);
BENCHMARK(PitchedMono)->Arg(64)->Arg(256);
BENCHMARK(HalfSpeedStereo)->Arg(64);
BENCHMARK(FastStereo)->Arg(64);

// A start as the game makes it: volume, stop, rewind, play.
void Retrigger(benchmark::State& state) {
  platform::OpenSoundDevice(platform::SoundOutput::kOffline);
  const SoundBufferPtr sound = NoiseOf(2, 100);
  for (auto _ : state) {
    sound->SetVolume(-500);
    sound->Stop();
    sound->SetCurrentPosition(0);
    sound->Play(false);
  }
  platform::CloseSoundDevice();
}
BENCHMARK(Retrigger);

}  // namespace
