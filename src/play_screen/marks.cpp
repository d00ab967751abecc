// Marks of a side.
#include "play_screen/marks.h"

#include <array>
#include <cstdint>
#include <optional>

#include "base/numbers.h"
#include "graphics/clips.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/skin.h"
#include "state/timeline.h"

namespace qlm {

void DrawFan(size_t side) {
  constexpr std::array<size_t, 6> kRows = {0, 1, 1, 1, 2, 3};
  const float fifth = Gauge[side] / 20;
  if (!(fifth > -1 && fifth < 6)) return;
  CopyClip(FanPos[side][kRows[static_cast<size_t>(fifth)]]);
}

void DrawClassMark(size_t side) {
  const int32_t reached = ClassOf(JPts[side], JPtsMax[side]);
  const SkinPos& pos = ClassPos[side][static_cast<size_t>(reached)];
  const std::optional<int32_t> place = Round(playPos);
  if (!place) return;
  DrawClip(pos.id, pos.x, pos.y - *place % kBeatUnits / 12);
}

void DrawOptionMarks(size_t side) {
  for (const uint8_t row : OptionMark) {
    if (row < OptionPos[side].size()) DrawClip(OptionPos[side][row]);
  }
}

}  // namespace qlm
