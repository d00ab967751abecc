// The gauge as a bar.
#include "play_screen/gauge_bar.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

#include "base/numbers.h"
#include "base/rnd.h"
#include "graphics/clips.h"
#include "platform/clock.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/skin.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

constexpr int32_t kExcited = 300;  // ms for which a judgement stirs the head
constexpr int16_t kRightward = 1;  // p3 of a bar that grows to the right

// How much of the gauge the head falls short: more and more after a judgement, and then a little.
double Wobble(size_t side) {
  const int32_t ms = platform::Elapsed(platform::Now(), LastJudgeTime[side]);
  const bool stirred = LastJudge[side] >= 0 && ms >= 0 && ms < kExcited;
  return (stirred ? ms / 30 : 2) * DrawRnd();
}

// The part of a bar that stands for the gauge from one value to another.
void DrawPart(const SkinPos& pos, const SkinClip& clip, double from, double to) {
  const double sourceStep = clip.width / 100.0;
  const double step = GaugeStep == 0 ? sourceStep : double{GaugeStep};
  const std::optional<int32_t> left = Round(from * step);
  const std::optional<int32_t> right = Round(to * step);
  const std::optional<int32_t> sourceLeft = Round(from * sourceStep);
  const std::optional<int32_t> sourceRight = Round(to * sourceStep);
  if (!left || !right || !sourceLeft || !sourceRight) return;
  const Rect& rect = clip.rect;
  const int64_t bottom = int64_t{pos.y} + clip.height;
  if (pos.p3 == kRightward) {
    StretchFromSheet(
        clip.file,
        RectOf(int64_t{rect.left} + *sourceLeft, rect.top, int64_t{rect.left} + *sourceRight, rect.bottom),
        RectOf(int64_t{pos.x} + *left, pos.y, int64_t{pos.x} + *right, bottom));
  } else {
    const int64_t end = int64_t{pos.x} + clip.width;
    StretchFromSheet(
        clip.file,
        RectOf(int64_t{rect.right} - *sourceRight, rect.top, int64_t{rect.right} - *sourceLeft, rect.bottom),
        RectOf(end - *right, pos.y, end - *left, bottom));
  }
}

}  // namespace

void DrawGaugeBar(size_t side) {
  if (!DDBack) return;
  CopyClip(HazardGauge ? ExGaugeBackPos[side] : GaugeBackPos[side]);
  const SkinPos& pos = HazardGauge ? ExGaugePos[side] : GaugePos[side];
  const SkinClip& clip = Clip[pos.id];
  const double reached = std::trunc(GaugeShown[side]);
  DrawPart(pos, clip, 0, std::max(reached - Wobble(side), 0.0));
  if (reached >= 1) DrawPart(pos, clip, reached - 1, reached);
}

}  // namespace qlm
