// What a frame costs: copies, text, one whole frame of the play screen, and a presented one.
#include <benchmark/benchmark.h>

#include <array>
#include <memory>
#include <string>

#include "bench/support/bench_game.h"
#include "graphics/display.h"
#include "graphics/draw.h"
#include "graphics/fades.h"
#include "graphics/present.h"
#include "graphics/skin_directives.h"
#include "platform/clock.h"
#include "play_screen/play_screen.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/message.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "state/timeline.h"

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

SkinPos LayClip(uint8_t number, int32_t width, int32_t height, int16_t x = 0, int16_t y = 0, int16_t p3 = 0) {
  SkinFile[number] = Sheet(width, height);
  SkinClip& clip = Clip[number];
  clip.file = number;
  clip.rect = {0, 0, width, height};
  clip.width = width;
  clip.height = height;
  return {number, x, y, p3, 0};
}

void LayStrip(uint8_t number, uint8_t file, int32_t width, int32_t height) {
  SkinFile[file] = Sheet(width * kGlyphs, height);
  SkinNumber& strip = Number[number];
  strip.file = file;
  strip.width = width;
  strip.height = height;
  for (int32_t glyph = 0; glyph < kGlyphs; ++glyph) {
    strip.rects[static_cast<size_t>(glyph)] = {glyph * width, 0, (glyph + 1) * width, height};
  }
}

// Channels of a player's eight lanes, from left to right.
constexpr std::array<int32_t, 8> kLaneChannels = {16, 11, 12, 13, 14, 15, 18, 19};

// Everything that a skin for one player may have, each of the size that a rich skin gives it.
void LayFullSkin() {
  DDSkinBack = Sheet(640, 480);
  SkinFile[1] = Sheet(256, 64);
  for (Rect& cell : SysFont) cell = {8, 16, 16, 32};
  SysFontW = 8;
  SysFontH = 16;
  MarqueeText = u"The March of the Quill / composed by nobody in particular    ";
  TitleRect = {220, 20, 320, 16};
  TitleChars = 40;
  LayStrip(1, 2, 8, 14);
  LayStrip(2, 3, 32, 48);
  ComboNumber = 2;
  JudgeY = 400;
  LayClip(10, 60, 10);
  LayClip(11, 60, 400);
  LayClip(12, 300, 2);
  LayClip(13, 96, 96);
  LayClip(14, 10, 400);
  LayClip(15, 60, 12);
  NoteSkin[0] = {.clip = 12, .x = 8};
  for (size_t lane = 0; lane < kLaneChannels.size(); ++lane) {
    const auto x = static_cast<int16_t>(8 + 36 * lane);
    NoteSkin[kLaneChannels[lane] - 10] = {.clip = 10, .x = x, .yOffset = -10, .beamClip = 11};
    LinePos[0][0][lane] = {14, x, 0, 0, 0};
    LineList[0].entries[lane] = static_cast<uint8_t>(lane);
    BlinkPos[0][static_cast<size_t>(kLaneChannels[lane]) - 11] = {15, x, 404, 0, 0};
  }
  LineList[0].last = 7;
  BombPos.fill({13, 0, 0, 0, 0});
  Clip[13].speed = 1e6F;
  KeyPos[0] = LayClip(16, 300, 80, 8, 396);
  JudgeLinePos[0][0] = LayClip(17, 300, 6, 8, 397);
  LenPos[0] = {14, 0, 0, 0, 0};
  LenPos[1] = {14, 310, 0, 0, 0};
  LenUsed = {true, true, false, false};
  for (uint8_t n = 0; n < 4; ++n) {
    LayerClip[n] = 18;
    LayerX[n] = 460;
    LayerY[n] = 100 * n;
    LayerList.entries[n] = n;
  }
  LayClip(18, 160, 120);
  LayerList.last = 3;
  BpmPos = PlayPos1 = PlayFullPos = CountPos = StagePos = FpsPos = {1, 460, 420, 4, 0};
  for (auto& pos : ScoreCountPos[0]) pos = {1, 460, 440, 5, 0};
  ScorePos[0] = JPointPos[0] = MaxPos[0] = GaugeNumPos[0] = {1, 560, 440, 0, 0};
  FanPos[0].fill(LayClip(19, 64, 64, 560, 300));
  ClassPos[0].fill(LayClip(20, 64, 64, 560, 380));
  GaugeBackPos[0] = LayClip(21, 220, 24, 330, 440);
  GaugePos[0] = LayClip(22, 200, 16, 340, 444, 1);
  JudgePos[0].fill(LayClip(23, 200, 56, 20, 200));
  OptionPos[0].fill(LayClip(24, 60, 16, 330, 420));
  NoMissClip = LayClip(25, 80, 16).id;
}

// 200 notes and four bar lines on the screen, all lanes pressed and struck, a PERFECT that is being squashed.
void LayPlay() {
  HiSpeed = RealHiSpeed = 1;
  BMSLengthMs = 100'000;
  playClock = 30'000;
  playPos = 195;
  Fps = 60;
  UserPlay = true;
  LaneNote.fill(-1);
  MeasureLen.Fill(1);
  JudgeWindow = {3, 6, 18, 24};
  objs.clear();
  for (int32_t i = 0; i < 200; ++i) {
    objs.push_back({.pos = 195 + 2 * i, .channel = kLaneChannels[static_cast<size_t>(i) % 8], .speedMul = 1});
    if (i % 50 == 0) objs.push_back({.pos = 195 + 2 * i, .channel = ObjSeparator, .speedMul = 1});
  }
  objCount = static_cast<int32_t>(objs.size());
  LaneDown.fill(true);
  LaneBeam.fill(127);
  LaneHit.fill(3);
  LaneHitTime.fill(platform::Now());
  LastJudge = {4, 4};
  LastJudgeTime.fill(platform::Now() - 50);
  Combo = MaxCombo = {1234, 0};
  ComboDigit[0] = {1, 2, 3, 4};
  ComboDigitCount[0] = 4;
  GaugeShown = {80, 0};
  ScoreShown = {123456, 0};
}

// One frame of the play screen, composed and not shown.
void ComposedPlayFrame(benchmark::State& state) {
  const BenchGame game;
  InitDD(DisplayOutput::kUnseen);
  CreateSurfaces();
  platform::UseVirtualClock(1'000'000);
  GameState = kStatePlay;
  ShowBGA = true;
  LayFullSkin();
  LayPlay();
  BmpSurface[1] = Sheet(256, 256);
  BmpRect[1] = {0, 0, 256, 256};
  curBaseBGA = 1;
  BGADirty = true;
  for (auto _ : state) {
    BlinkToggle = false;  // the frame with the combo's digits
    DrawPlayFrame();
  }
  platform::UseRealClock();
  ReleaseDD();
}
BENCHMARK(ComposedPlayFrame)->Unit(benchmark::kMicrosecond);

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

// 2,000 lines, several times as many as a large skin has, a quarter of them clips of 16 frames.
void SkinLines(benchmark::State& state) {
  std::string skin;
  for (int i = 0; i < 500; ++i) {
    skin +=
        "#CLIP2A 2,10,20,32,16,2,1,16,40 // a moving one\r\n#NOTE11 2A,00,00,100,200\r\n"
        "#SC_PERFECT_1P 01,340,60,4\r\n#OP_HIDDEN 2A,1,2,3,4\r\n";
  }
  for (auto _ : state) {
    ClearSkinTables();
    ReadSkin(skin, nullptr);
  }
}
BENCHMARK(SkinLines)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace qlm
