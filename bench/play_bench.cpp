// How long one turn of a play takes without drawing, and one judgement.
#include <benchmark/benchmark.h>

#include <array>
#include <memory>

#include "bench/support/bench_game.h"
#include "platform/clock.h"
#include "platform/sound_device.h"
#include "play/judgement.h"
#include "play/position.h"
#include "play/turn.h"
#include "state/chart.h"
#include "state/judgement.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "state/timeline.h"

namespace qlm {
namespace {

constexpr int32_t kLengthMs = 120'000;
constexpr int32_t kLastPos = 14'400;  // two minutes of 150 BPM, 0.12 units a millisecond

// Every slot holds a second of silence.
void FillSlots() {
  const platform::SoundFormat format{.tag = 1,
                                     .channels = 2,
                                     .samplesPerSec = 44100,
                                     .avgBytesPerSec = 176400,
                                     .blockAlign = 4,
                                     .bitsPerSample = 16};
  const auto sound = platform::CreateSoundBuffer({.flags = 0, .bytes = 176400}, format).buffer;
  for (int32_t slot = 1; slot <= 255; ++slot) {
    WavBuffer[slot] = platform::DuplicateSoundBuffer(sound).buffer;
    WavFrequency[slot] = 44100;
    WavLengthMs[slot] = 1000;
    WavLoaded[slot] = 255;
  }
}

// Notes of seven lanes and background sounds in turn, evenly over two minutes.
void LayChart(int32_t count) {
  objs.assign(static_cast<size_t>(count) + 1, {});
  constexpr std::array<int32_t, 8> kChannels = {1, 11, 12, 13, 14, 15, 18, 19};
  for (int32_t i = 0; i < count; ++i) {
    const auto pos = static_cast<int32_t>(int64_t{kLastPos} * i / count);
    *AddObj() = {.measure = pos / kMeasureUnits,
                 .pos = pos,
                 .tick = pos % kMeasureUnits,
                 .channel = kChannels[static_cast<size_t>(i) % kChannels.size()],
                 .value = i % 255 + 1,
                 .speedMul = 1};
  }
}

// Turns of a demo at 60 a second, over and over, with `count` objects in the chart.
void Turn(benchmark::State& state) {
  const BenchGame game;
  platform::OpenSoundDevice(platform::SoundOutput::kOffline);
  FillSlots();
  LayChart(static_cast<int32_t>(state.range(0)));
  HdrBPM = 150;
  RealHiSpeed = 1;
  HistoryStep = kLengthMs / 300.0F;
  PlaySound = true;
  DEMOMode = true;
  PreviewActive = true;

  int64_t turn = 0;
  constexpr int64_t kTurnsOfAPlay = int64_t{kLengthMs} * 60 / 1000;
  SeekChart(0, true);
  const uint32_t begin = playStart;
  for (auto _ : state) {
    if (turn == kTurnsOfAPlay) {
      turn = 0;
      objCursor = 0;
      HistoryNext = {};
    }
    platform::UseVirtualClock(begin + static_cast<uint32_t>(turn * 1000 / 60));
    PlayStep();
    ++turn;
  }
  WavBuffer.Clear();
  platform::CloseSoundDevice();
}
// A very dense chart, and the fullest table there is.
BENCHMARK(Turn)->Arg(10'000)->Arg(65'000);

// One judgement with its pixels on the graph, of each grade in turn.
void Judge(benchmark::State& state) {
  const BenchGame game;
  LayChart(100);
  DDGraph = std::make_shared<Surface>(300, 203);
  JudgeWindow = {3, 6, 18, 24};
  TotalNotes = {100'000'000, 0};
  constexpr std::array<double, 6> kLate = {0, 4, 10, 20, 30, -30};
  size_t turn = 0;
  float used = 0;
  for (auto _ : state) {
    playPos = FindObj(1)->pos + kLate[turn++ % kLate.size()];
    JudgeNote(1, 0, false, used);
    benchmark::DoNotOptimize(used);
  }
}
BENCHMARK(Judge);

}  // namespace
}  // namespace qlm
