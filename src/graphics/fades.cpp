// Fades.
#include "graphics/fades.h"

#include <algorithm>
#include <optional>

#include "base/numbers.h"
#include "base/rnd.h"
#include "graphics/bga.h"
#include "graphics/draw.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "sound/play.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

constexpr int32_t kShortFade = 200;   // ms
constexpr int32_t kFailFade = 2000;   // ms
constexpr int32_t kTitleZoom = 500;   // ms
constexpr int32_t kPlayDivisor = 50;  // of the tiles in a play
constexpr int32_t kTile = 32;
constexpr int32_t kTilesAcross = 20;

int32_t FadeTime() { return platform::Elapsed(platform::Now(), FadeStart); }

void EndFade() {
  FadeState = kFadeNone;
  if (FadeLeaving == 1) PlayEnd = true;
}

void DrawHeldFrame() {
  if (DDBack && DDSnapshot) DDBack->Copy(0, 0, *DDSnapshot, FullRect);
}

// The part of the title picture's way from the middle to the whole screen that `ms` have brought.
void DrawGrowingTitle(int32_t ms) {
  if (!DDBack || !DDStage) return;
  const int32_t width = kScreen.Width() * ms / kTitleZoom;
  const int32_t height = kScreen.Height() * ms / kTitleZoom;
  const int32_t left = (kScreen.Width() - width) / 2;
  const int32_t top = (kScreen.Height() - height) / 2;
  DDBack->Stretch({left, top, left + width, top + height}, *DDStage, StageRect);
}

void DrawTitleFade(int32_t ms) {
  if (ms < kTitleZoom && !DontStretch) {
    DrawGrowingTitle(std::max(ms, 0));
    return;
  }
  DrawTitle();
  HoldFrame();
  ComposeBga();
  FadeState = kFadeTiles;
  FadeStart = platform::Now();
}

}  // namespace

void DrawTitle() { DrawGrowingTitle(kTitleZoom); }

void ScreenFade(double percent) {
  const std::optional<int32_t> rounded = Round(percent * 6.4);
  if (!DDBack || !rounded) return;
  const int32_t width = std::min(*rounded, kScreen.Width());
  if (width <= 0) return;
  for (int32_t y = 0; y < kScreen.Height(); y += 4) {
    DDBack->Fill({0, y, width, y + 2}, 0);
    DDBack->Fill({kScreen.Width() - width, y + 2, kScreen.Width(), y + 4}, 0);
  }
}

void FadeScreen(int32_t kind, int32_t length) {
  const bool toBlack = kind == 1;
  if (length == 0) length = kShortFade;
  PlaySE(SE::kFade);
  HoldFrame();
  const uint32_t begin = platform::Now();
  for (int32_t ms = 0; ms < length; ms = platform::Elapsed(platform::Now(), begin)) {
    DrawHeldFrame();
    if (const std::optional<int32_t> percent = Divide(ms, length / 100)) {
      ScreenFade(toBlack ? *percent : 100 - *percent);
    }
    PresentFrame();
  }
  DrawHeldFrame();
  ScreenFade(toBlack ? 100 : 0);
  PresentFrame();
}

void MakeFadeTiles() {
  for (int32_t& speed : FadeTileSpeed) speed = 480 + static_cast<int32_t>(DrawRnd() * 480);
}

void HoldFrame() {
  if (DDBack && DDSnapshot) DDSnapshot->Copy(0, 0, *DDBack, FullRect);
}

void HoldScreen() {
  if (DDPrimary && DDSnapshot) DDSnapshot->Copy(0, 0, *DDPrimary, FullRect);
}

bool DrawFadeTiles(int32_t divisor) {
  const int32_t steps = FadeTime() / 10;
  if (steps >= divisor) return true;
  if (!DDBack || !DDSnapshot) return false;
  const double t = static_cast<double>(steps) / divisor;
  const double way = t * t * t * t;
  for (int32_t i = 0; i < static_cast<int32_t>(FadeTileSpeed.size()); ++i) {
    const int32_t x = i % kTilesAcross * kTile;
    const int32_t y = i / kTilesAcross * kTile;
    const auto fallen = static_cast<int32_t>(RoundHalfEven(way * FadeTileSpeed[static_cast<size_t>(i)]));
    ClippedBlt(*DDBack, ScreenRect, x, y + fallen, *DDSnapshot, {x, y, x + kTile, y + kTile},
               platform::Keyed::kNo);
  }
  return false;
}

void DrawFades() {
  const int32_t ms = FadeTime();
  const int32_t percent = ms / 2;  // of a short fade
  switch (FadeState) {
    case kFadeEnd:
      if (ms > kShortFade) EndFade();
      ScreenFade(percent);
      if (PlayAlive) FadeEndVolumes(ms);
      break;
    case kFadeIn:
      if (ms > kShortFade) EndFade();
      ScreenFade(100 - percent);
      break;
    case kFadeFail:
      if (ms > kFailFade) EndFade();
      FadeFailVolumes(ms);
      ScreenFade(ms / 20.0);
      break;
    case kFadeTiles:
      if (DrawFadeTiles(kPlayDivisor)) FadeState = kFadeNone;
      break;
    case kFadeTitle: DrawTitleFade(ms); break;
    default: break;
  }
}

}  // namespace qlm
