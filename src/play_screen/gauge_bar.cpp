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

// The columns of a bar that stand for the gauge from one value to another.
struct Columns {
  int64_t left;
  int64_t right;
};

std::optional<Columns> ColumnsOf(double from, double to, double step) {
  const std::optional<int32_t> left = Round(from * step);
  const std::optional<int32_t> right = Round(to * step);
  if (!left || !right) return std::nullopt;
  // On a bar of less than a column for each value, no value goes without one.
  if (*left == *right && from < to && step > 0 && step < 1) {
    const auto column = static_cast<int64_t>(std::floor(from * step));
    return Columns{column, column + 1};
  }
  return Columns{*left, *right};
}

// The part of a bar that stands for the gauge from one value to another.
void DrawPart(const SkinPos& pos, const SkinClip& clip, double from, double to) {
  const double sourceStep = clip.width / 100.0;
  const double step = GaugeStep == 0 ? sourceStep : double{GaugeStep};
  const std::optional<Columns> drawn = ColumnsOf(from, to, step);
  const std::optional<Columns> source = ColumnsOf(from, to, sourceStep);
  if (!drawn || !source) return;
  const Rect& rect = clip.rect;
  const int64_t bottom = int64_t{pos.y} + clip.height;
  if (pos.p3 == kRightward) {
    const int64_t begin = rect.left;
    StretchFromSheet(clip.file, RectOf(begin + source->left, rect.top, begin + source->right, rect.bottom),
                     RectOf(pos.x + drawn->left, pos.y, pos.x + drawn->right, bottom));
  } else {
    const int64_t begin = rect.right;
    const int64_t end = int64_t{pos.x} + clip.width;
    StretchFromSheet(clip.file, RectOf(begin - source->right, rect.top, begin - source->left, rect.bottom),
                     RectOf(end - drawn->right, pos.y, end - drawn->left, bottom));
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
