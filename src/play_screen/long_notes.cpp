// The bodies of long notes.
#include "play_screen/long_notes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "base/numbers.h"
#include "graphics/clips.h"
#include "play_screen/shown_place.h"
#include "state/chart.h"
#include "state/options.h"
#include "state/skin.h"
#include "state/timeline.h"
#include "state/wide_chart.h"

namespace qlm {
namespace {

// Pixels from the line, as far as they show.
struct Extent {
  double from = 0;
  double to = 0;
};

Extent SeenOf(double from, double to) {
  return {std::max(from, Hidden ? kHiddenPixels : 0), Sudden ? std::min(to, kSuddenPixels) : to};
}

// The place at this height under the options that bend the way of the notes.
double Bent(double y) {
  if (Quil) y = std::sqrt(JudgeY * y);
  return Accel && JudgeY != 0 ? y * y / JudgeY : y;
}

// Of the note's picture: its edges, stretched, would be bars.
Rect MiddleRow(const Rect& picture) {
  const int32_t y = picture.top + picture.Height() / 2;
  return {picture.left, y, picture.right, y + 1};
}

void DrawBody(const LaneSkin& lane, double top, double bottom) {
  const SkinClip* const clip = Clip.Find(lane.clip);
  const std::optional<int32_t> first = Round(top), last = Round(bottom);
  if (clip == nullptr || !first || !last) return;
  StretchShadedFromSheet(
      clip->file, MiddleRow(clip->rect),
      RectOf(lane.x, *first, int64_t{lane.x} + clip->rect.Width(), int64_t{*last} + clip->rect.Height()),
      platform::Shade::kHalf);
}

void DrawBody(const ChartObj& head, const Extent& seen) {
  const LaneSkin& lane = NoteSkin[head.channel - 10];
  const int32_t middle = JudgeY / 2;
  if (HalfField && head.channel % 2 == 0) return DrawBody(lane, middle + seen.from, middle + seen.to);
  const int32_t base = HalfField ? middle : JudgeY;
  const auto height = [&](double distance) { return Bent(std::max(base - distance * head.speedMul, 0.0)); };
  DrawBody(lane, height(seen.to) + lane.yOffset, height(seen.from) + lane.yOffset);
}

}  // namespace

void DrawLongNotes() {
  if (LongNotes.empty() || Stealth) return;
  const double here = ShownPlace(playPos);
  const int32_t farthest = HalfField ? JudgeY / 2 : JudgeY;
  for (const LongNote& note : LongNotes) {
    const ChartObj* const head = FindObj(note.head);
    if (head == nullptr) return;
    const double from = (ShownPlace(head->pos) - here) * HiSpeed;
    if (from > farthest) return;
    if (note.end < playPos || !IsNoteChannel(head->channel)) continue;
    const Extent seen = SeenOf(from, (ShownPlace(note.end) - here) * HiSpeed);
    if (seen.from < seen.to) DrawBody(*head, seen);
  }
}

}  // namespace qlm
