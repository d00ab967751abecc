// Notes and bar lines: the walk that draws them and picks up the note of each lane.
#include "play_screen/objects.h"

#include <cmath>
#include <cstdint>

#include "base/numbers.h"
#include "graphics/clips.h"
#include "play_screen/shown_place.h"
#include "play_screen/sides.h"
#include "state/chart.h"
#include "state/options.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/timeline.h"
#include "state/wide_chart.h"

namespace qlm {
namespace {

// Position units from the line within which a note becomes that of its lane.
constexpr double kPickUpUnits = 96;

using Painter = void (*)(int64_t clip, int64_t x, int64_t y);

bool OptionsShow(double distance) {
  return !(Sudden && distance > kSuddenPixels) && !(Hidden && distance < kHiddenPixels) && !Stealth;
}

// Quirk: what may be struck is chosen while drawing, one note a lane and frame, so that a note which has not
// yet come onto the screen cannot be struck, however near it is.
void PickUp(int32_t index, const ChartObj& obj) {
  int32_t& pending = LaneNote[LaneOf(obj.channel)];
  if (pending == -1 && UserPlay && !obj.hit && std::abs(obj.pos - playPos) < kPickUpUnits) pending = index;
}

// Under HalfField half of the lanes, and a second bar line, run from the middle down, with their upper edge
// on the place.
void DrawMirrored(const LaneSkin& lane, double distance, Painter paint = DrawClip) {
  // Quirk: speedMul, Accel and Quil do not reach them.
  const int32_t middle = JudgeY / 2;
  if (const auto y = RoundTo<int64_t>(middle + distance)) paint(lane.clip, lane.x, *y);
}

void DrawUpright(const LaneSkin& lane, int32_t y, Painter paint = DrawClip) {
  paint(lane.clip, lane.x, int64_t{y} + lane.yOffset);
}

void DrawNote(int32_t channel, int32_t y, double distance, Painter paint = DrawClip) {
  const LaneSkin& lane = NoteSkin[channel - 10];
  const bool mirrored = HalfField && channel % 2 == 0;
  mirrored ? DrawMirrored(lane, distance, paint) : DrawUpright(lane, y, paint);
}

void DrawBarLine(int32_t y, double distance) {
  for (size_t side = 0; side < DrawnSides(); ++side) {
    const LaneSkin& lane = NoteSkin[static_cast<int64_t>(side) * 10];
    DrawUpright(lane, y);
    if (HalfField) DrawMirrored(lane, distance);
  }
}

}  // namespace

void DrawObjects() {
  const int32_t base = HalfField ? JudgeY / 2 : JudgeY;
  // Where a statement fails, an object takes the place of the one before it.
  int32_t y = 0;
  const double here = ShownPlace(playPos);
  for (int32_t index = objCursor; index < objCount; ++index) {
    const ChartObj* const obj = FindObj(index);
    if (obj == nullptr) return;
    const double distance = (ShownPlace(obj->pos) - here) * HiSpeed;
    bool visible = OptionsShow(distance);
    Assign(y, Round(base - distance * obj->speedMul));
    // Quirk: the note's own speed does not count here, so that a slow note comes late into the picture and a
    // fast one ends nothing.
    if (base - distance < 0) return;
    if (Quil) Assign(y, Round(std::sqrt(static_cast<double>(JudgeY) / y) * y));
    if (y < 0) visible = false;
    if (y > JudgeY) return;
    if (Accel) {
      const double part = static_cast<double>(y) / JudgeY;
      Assign(y, Round(part * part * JudgeY));
    }
    if (obj->channel == ObjSeparator) {
      DrawBarLine(y, distance);
    } else if (IsNoteChannel(obj->channel)) {
      PickUp(index, *obj);
      if (visible) DrawNote(obj->channel, y, distance);
    } else if (IsMine(obj->channel) && visible) {
      DrawNote(obj->channel - kMineKinds, y, distance, DrawRedClip);
    }
  }
}

}  // namespace qlm
