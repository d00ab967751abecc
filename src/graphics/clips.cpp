// The skin's sprites.
#include "graphics/clips.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/numbers.h"
#include "graphics/draw.h"
#include "state/surfaces.h"
#include "state/timeline.h"

namespace qlm {
namespace {

using platform::Keyed;

bool Fits(int64_t value) { return std::in_range<int32_t>(value); }

// Null for a sheet that is not there.
const Surface* Sheet(uint8_t file) { return DDBack ? SkinFile[file].get() : nullptr; }

// How many frames have gone by at a clip's speed; nothing for a clip that stands still or whose speed is no
// number.
std::optional<int64_t> FramesGone(const SkinClip& clip) {
  switch (clip.animMode) {
    case kClipByClock:
      if (const std::optional<int32_t> ms = Round(clip.speed)) return Divide(playClock, *ms);
      return std::nullopt;
    case kClipByPosition:
      if (clip.speed == 0) return std::nullopt;
      return RoundTo<int64_t>((playPos - curMeasurePos) / clip.speed);
    default: return std::nullopt;
  }
}

void UpdateClip(SkinClip& clip) {
  const std::optional<int64_t> gone = FramesGone(clip);
  if (!gone) return;
  const std::optional<int32_t> frame = Modulo(*gone, clip.frames);
  if (frame) Assign(clip.rect, FrameOf(clip, *frame));
}

}  // namespace

void UpdateClips() {
  for (int32_t i = 0; i <= std::min(ClipList.last, 255); ++i) {
    UpdateClip(Clip[ClipList.entries[static_cast<size_t>(i)]]);
  }
}

std::optional<Rect> FrameOf(const SkinClip& clip, int64_t frame) {
  if (frame < 0 || frame >= clip.frames) return std::nullopt;
  const int64_t left = clip.x + frame * clip.stepX;
  const int64_t top = clip.y + frame * clip.stepY;
  return RectOf(left, top, left + clip.width, top + clip.height);
}

void CopyClip(int64_t number, int64_t x, int64_t y) {
  if (const SkinClip* clip = Clip.Find(number)) CopyFromSheet(clip->file, clip->rect, x, y);
}

void CopyFromSheet(uint8_t file, const Rect& from, int64_t x, int64_t y) {
  const Surface* const sheet = Sheet(file);
  if (sheet == nullptr || !Fits(x) || !Fits(y)) return;
  DDBack->Copy(static_cast<int32_t>(x), static_cast<int32_t>(y), *sheet, from, Keyed::kYes);
}

void CopyFaintFromSheet(uint8_t file, const Rect& from, int64_t x, int64_t y) {
  const Surface* const sheet = Sheet(file);
  if (sheet == nullptr || !Fits(x) || !Fits(y)) return;
  DDBack->CopyFaint(static_cast<int32_t>(x), static_cast<int32_t>(y), *sheet, from);
}

void DrawClip(int64_t number, int64_t x, int64_t y) {
  // Quirk: 0 names a clip like any other, so that a place which the skin does not give shows clip 0, if there
  // is one, in the upper left corner.
  if (const SkinClip* clip = Clip.Find(number)) DrawFromSheet(clip->file, clip->rect, x, y);
}

void DrawFromSheet(uint8_t file, const Rect& from, int64_t x, int64_t y) {
  const Surface* const sheet = Sheet(file);
  if (sheet == nullptr || !Fits(x) || !Fits(y)) return;
  ClippedBlt(*DDBack, ScreenRect, static_cast<int32_t>(x), static_cast<int32_t>(y), *sheet, from,
             Keyed::kYes);
}

void StretchFromSheet(uint8_t file, const Rect& from, const Rect& to) {
  if (const Surface* const sheet = Sheet(file)) {
    DDBack->StretchWithin(ScreenRect, to, *sheet, from, Keyed::kYes);
  }
}

void StretchShadedFromSheet(uint8_t file, const Rect& from, const Rect& to, platform::Shade shade) {
  if (const Surface* const sheet = Sheet(file)) DDBack->StretchShaded(ScreenRect, to, *sheet, from, shade);
}

void DrawRedClip(int64_t number, int64_t x, int64_t y) {
  const SkinClip* const clip = Clip.Find(number);
  if (clip == nullptr) return;
  const Rect to = RectOf(x, y, x + clip->rect.Width(), y + clip->rect.Height());
  StretchShadedFromSheet(clip->file, clip->rect, to, platform::Shade::kRed);
}

std::optional<Rect> FittingRect(int64_t left, int64_t top, int64_t right, int64_t bottom) {
  if (!Fits(left) || !Fits(top) || !Fits(right) || !Fits(bottom)) return std::nullopt;
  return Rect{static_cast<int32_t>(left), static_cast<int32_t>(top), static_cast<int32_t>(right),
              static_cast<int32_t>(bottom)};
}

}  // namespace qlm
