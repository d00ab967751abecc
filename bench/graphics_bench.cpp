// What a frame costs: copies, text, and one presented play frame.
#include <benchmark/benchmark.h>

#include <memory>

#include "bench/support/bench_game.h"
#include "graphics/display.h"
#include "graphics/draw.h"
#include "graphics/fades.h"
#include "graphics/play_screen.h"
#include "graphics/present.h"
#include "state/message.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

using platform::Keyed;

constexpr int32_t kNotes = 300;
constexpr Rect kNote = {0, 0, 28, 8};

// Every fourth column is transparent.
SurfacePtr Sheet(int32_t width, int32_t height) {
  auto sheet = std::make_shared<Surface>(width, height);
  for (int32_t x = 0; x < width; ++x) {
    if (x % 4 != 0) sheet->Fill({x, 0, x + 1, height}, 0x3FB8AF);
  }
  sheet->SetColourKey(0, 0);
  return sheet;
}

void DrawNotes(const Surface& sheet) {
  for (int32_t i = 0; i < kNotes; ++i) {
    ClippedBlt(*DDBack, ScreenRect, 8 + i % 20 * 30, i * 7 % 470, sheet, kNote, Keyed::kYes);
  }
}

// A play with a background, two pictures, 300 notes, a font, a message and the frame rate, shown to nobody.
void PresentedFrame(benchmark::State& state) {
  const BenchGame game;
  InitDD(DisplayOutput::kUnseen);
  CreateSurfaces();
  GameState = kStatePlay;
  ShowBGA = true;
  DDSkinBack = Sheet(640, 480);
  const SurfacePtr notes = Sheet(256, 256);
  SkinFile[1] = Sheet(256, 48);
  for (int32_t byte = 33; byte <= 128; ++byte) {
    SysFont[byte - 32] = {byte % 32 * 8, byte / 32 * 8, byte % 32 * 8 + 8, byte / 32 * 8 + 8};
  }
  SysFontW = SysFontH = 8;
  for (const int32_t slot : {1, 2}) {
    BmpSurface[slot] = Sheet(256, 256);
    BmpRect[slot] = {0, 0, 256, 256};
  }
  curBaseBGA = 1;
  curLayerBGA = 2;
  ShowMessage(u"R E A D Y ?");
  for (auto _ : state) {
    BGADirty = true;
    DrawPlayFrame();
    DrawNotes(*notes);
    PresentFrame();
  }
  ReleaseDD();
}
BENCHMARK(PresentedFrame)->Unit(benchmark::kMicrosecond);

void KeyedCopies(benchmark::State& state) {
  Surface target(640, 480);
  const SurfacePtr notes = Sheet(256, 256);
  for (auto _ : state) {
    for (int32_t i = 0; i < kNotes; ++i) {
      benchmark::DoNotOptimize(target.Copy(8 + i % 20 * 30, i * 7 % 470, *notes, kNote, Keyed::kYes));
    }
  }
  state.SetItemsProcessed(state.iterations() * kNotes);
}
BENCHMARK(KeyedCopies)->Unit(benchmark::kMicrosecond);

// A whole picture through each kind of key: none, one colour, the dark range of charts, any range.
void WholePicture(benchmark::State& state) {
  Surface target(256, 256);
  const SurfacePtr picture = Sheet(256, 256);
  if (state.range(0) == 2) picture->SetColourKey(0, 0x0F0F0F);
  if (state.range(0) == 3) picture->SetColourKey(0x010203, 0x102030);
  const Keyed keyed = state.range(0) == 0 ? Keyed::kNo : Keyed::kYes;
  for (auto _ : state) benchmark::DoNotOptimize(target.Copy(0, 0, *picture, picture->Bounds(), keyed));
  state.SetBytesProcessed(state.iterations() * 256 * 256 * 4);
}
BENCHMARK(WholePicture)->ArgName("key")->DenseRange(0, 3)->Unit(benchmark::kMicrosecond);

// A picture to a size that is no multiple of its own.
void Stretched(benchmark::State& state) {
  Surface target(640, 480);
  const SurfacePtr picture = Sheet(256, 256);
  const Keyed keyed = state.range(0) == 0 ? Keyed::kNo : Keyed::kYes;
  for (auto _ : state)
    benchmark::DoNotOptimize(target.Stretch({0, 0, 500, 400}, *picture, picture->Bounds(), keyed));
  state.SetItemsProcessed(state.iterations() * 500 * 400);
}
BENCHMARK(Stretched)->ArgName("keyed")->DenseRange(0, 1)->Unit(benchmark::kMicrosecond);

void FallingTiles(benchmark::State& state) {
  const BenchGame game;
  InitDD(DisplayOutput::kUnseen);
  CreateSurfaces();
  MakeFadeTiles();
  FadeStart = 1'000'000 - 200;
  for (auto _ : state) benchmark::DoNotOptimize(DrawFadeTiles(50));
  ReleaseDD();
}
BENCHMARK(FallingTiles)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace qlm
