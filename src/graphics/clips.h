// The skin's sprites: the frames that are in use, and copies of them onto the back surface. Sources are
// always keyed. Nothing is drawn without a back surface, without a sheet, or from outside the tables.
#pragma once

#include <cstdint>
#include <optional>

#include "state/skin.h"

namespace qlm {

// Puts the frame of the moment into each moving clip, by the clock or by the position in the measure.
void UpdateClips();

// Where a frame of a clip lies on its sheet; nothing where the clip has none of that number.
std::optional<Rect> FrameOf(const SkinClip& clip, int64_t frame);

// The clip's frame in use at (x, y). A copy that would run off the screen is refused.
void CopyClip(int64_t number, int64_t x, int64_t y);
inline void CopyClip(const SkinPos& pos) { CopyClip(pos.id, pos.x, pos.y); }
void CopyFromSheet(uint8_t file, const Rect& from, int64_t x, int64_t y);
// The same half covered by what lies there.
void CopyFaintFromSheet(uint8_t file, const Rect& from, int64_t x, int64_t y);

// The same, cut at the screen's edge.
void DrawClip(int64_t number, int64_t x, int64_t y);
inline void DrawClip(const SkinPos& pos) { DrawClip(pos.id, pos.x, pos.y); }
void DrawFromSheet(uint8_t file, const Rect& from, int64_t x, int64_t y);
// Stretched to `to`, and cut likewise.
void StretchFromSheet(uint8_t file, const Rect& from, const Rect& to);

// The same with its colours shaded.
void StretchShadedFromSheet(uint8_t file, const Rect& from, const Rect& to, platform::Shade shade);
// A clip's frame in use as red as it is bright, cut at the screen's edge.
void DrawRedClip(int64_t number, int64_t x, int64_t y);

// A rectangle of 32-bit sides; nothing where they do not fit.
std::optional<Rect> FittingRect(int64_t left, int64_t top, int64_t right, int64_t bottom);
// The same, with an empty one, which no copy takes, in place of none.
inline Rect RectOf(int64_t left, int64_t top, int64_t right, int64_t bottom) {
  return FittingRect(left, top, right, bottom).value_or(Rect());
}

}  // namespace qlm
