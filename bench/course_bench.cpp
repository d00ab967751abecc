// The join of a course of dense charts, and how long a turn of the play takes at most where one song gives
// way to the next and its sounds come from the disk.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "base/paths.h"
#include "bench/support/bench_game.h"
#include "chart/loading.h"
#include "platform/clock.h"
#include "platform/sound_device.h"
#include "platform/text.h"
#include "play/position.h"
#include "play/reset.h"
#include "play/turn.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/timeline.h"
#include "tools/media_files/wav.h"

namespace qlm {
namespace {

constexpr int kSlots = 255;

Text Slot(int value) {
  const Text hex = Hex(static_cast<uint32_t>(value));
  return hex.size() < 2 ? Join(u"0", hex) : hex;
}

// All sounds are named in the chart's own folder, and played in turn, eight in a measure of a lane.
Text ChartOf(int measures, const std::vector<int>& channels) {
  Text chart = u"\r\n#PLAYER 1\r\n#BPM 150\r\n#RANK 2\r\n";
  for (int slot = 1; slot <= kSlots; ++slot) {
    chart += Join(u"#WAV", Slot(slot), u" ", Slot(slot), u".wav", kCrLf);
  }
  int next = 0;
  for (int measure = 0; measure < measures; ++measure) {
    for (const int channel : channels) {
      chart += Join(u"#", Padded(measure, 3), Padded(channel, 2), u":");
      for (int cell = 0; cell < 8; ++cell) chart += Slot(next++ % kSlots + 1);
      chart += kCrLf;
    }
  }
  return chart;
}

void TakeCourse(const BenchGame& game, int songs, const Text& chart) {
  for (int song = 0; song < songs; ++song) {
    SongEntry entry;
    entry.path = game.WriteData(Join(u"songs\\", song, u"\\chart.bms"), platform::EncodeCp932(chart));
    CourseSongs.push_back(entry);
  }
  numsongs = static_cast<uint8_t>(songs);
  numObjs = 65'535;
  RealHiSpeed = 1;
  BMPLoadmode = 1;
}

// Ten charts of 5,600 notes and background sounds each. No sound is loaded.
void JoinTenDenseCharts(benchmark::State& state) {
  const BenchGame game;
  TakeCourse(game, 10, ChartOf(100, {1, 11, 12, 13, 14, 15, 18}));
  WAVLoadmode = CourseLoadMode = 1;
  for (auto _ : state) BMSLoadCourse();
  state.counters["objects"] = objCount;
}
BENCHMARK(JoinTenDenseCharts)->Unit(benchmark::kMillisecond);

// The longest turn from the second song's marker on, at 60 a second. Each song names 255 stereo sounds of a
// second, of which the disk's cache holds all. The argument is CourseLoadMode.
void LongestTurnAtASongChange(benchmark::State& state) {
  const BenchGame game;
  TakeCourse(game, 2, ChartOf(4, {1, 11, 12, 13, 14, 15, 18, 19}));
  const std::string sound = media::WavBytes(std::vector<int16_t>(size_t{2} * 44'100, 0x1111), 2, 44'100);
  for (int song = 0; song < 2; ++song) {
    for (int slot = 1; slot <= kSlots; ++slot) {
      game.WriteData(Join(u"songs\\", song, u"\\", Slot(slot), u".wav"), sound);
    }
  }
  platform::OpenSoundDevice(platform::SoundOutput::kOffline);
  PlaySound = DEMOMode = true;
  CourseLoadMode = static_cast<int32_t>(state.range(0));
  for (auto _ : state) {
    ReleaseAllSounds();
    GameState = kStatePlay;
    WAVLoadmode = 1;
    BMSLoadCourse();
    WAVLoadmode = 0;
    ResetPlay();
    SeekChart(0, true);
    PlayEnd = false;
    uint32_t now = platform::Now();
    double longest = 0;
    while (objCursor < objCount) {
      platform::UseVirtualClock(now += 17);
      const auto begin = std::chrono::steady_clock::now();
      PlayStep();
      const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
      if (CourseSong == 1) longest = std::max(longest, took.count());
    }
    state.SetIterationTime(longest);
  }
  ReleaseAllSounds();
  platform::CloseSoundDevice();
}
BENCHMARK(LongestTurnAtASongChange)
    ->DenseRange(0, 2)
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace qlm
