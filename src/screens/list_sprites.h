// The sprites of the list screens: where each lies on its picture, ssobj.bmp and ssnostg.bmp, and their
// drawing. Whoever draws these two pictures anew keeps to this table.
#pragma once

#include <array>
#include <cstdint>

#include "state/surfaces.h"

namespace qlm {

constexpr Rect At(int32_t left, int32_t top, int32_t width, int32_t height) {
  return {left, top, left + width, top + height};
}

// Slips of paper for the rows of the wheel, from one that is hardly seen to one right under the lamp.
constexpr int32_t kSlipLevels = 8;
constexpr Rect SlipSprite(int32_t level) { return At(0, 24 * level, 208, 22); }

constexpr Rect kSheetSprite = At(0, 192, 320, 140);        // of the panel
constexpr Rect kHeadSprite = At(208, 0, 200, 26);          // behind the name of the list
constexpr Rect kFrameSprite = At(208, 32, 204, 156);       // around the picture box, open in its middle
constexpr Rect kStripSprite = At(416, 0, 128, 164);        // behind the scores
constexpr Rect kFirstScoreSprite = At(320, 192, 176, 34);  // behind the best one
constexpr Rect kNibSprite = At(416, 168, 36, 22);          // the cursor; its tip is at the right
constexpr Rect kStarSprite = At(320, 232, 12, 14);         // one of a chart's level
constexpr Rect kTempoLabel = At(456, 168, 32, 16);
constexpr Rect kTimeLabel = At(488, 168, 32, 16);
constexpr Rect kRankLabel = At(520, 168, 32, 16);
constexpr Rect kNotesLabel = At(520, 186, 32, 16);
constexpr Rect kSpeedLabel = At(520, 204, 32, 16);
constexpr Rect kWideTagSprite = At(336, 330, 124, 16);  // behind "[spShuffle ON]"
constexpr Rect kSmallTagSprite = At(464, 330, 84, 16);  // behind "[DEMO ON]"

// By rank from 0, very hard, to 3, easy.
constexpr int32_t kRanks = 4;
constexpr Rect RankSprite(int32_t rank) { return At(320, 250 + 18 * rank, 96, 16); }
// By player - 1: one player, two, one on two sides.
constexpr int32_t kPlayers = 3;
constexpr Rect PlayerSprite(int32_t kind) { return At(420, 250 + 18 * kind, 64, 14); }

// The options by the keys F1, F2, F3, F4 and F12, and the places of each one's cycle; place 0 is none.
constexpr int32_t kOptions = 5;
constexpr Rect OptionSprite(int32_t option, int32_t place) {
  return At(60 * place, 336 + 28 * option, 60, 26);
}

// ssnostg.bmp: the frames of the animation that stands for a missing title picture, in rows of six.
constexpr int32_t kDemoFrames = 24;
constexpr Rect DemoSprite(int32_t frame) { return At(frame % 6 * 192, frame / 6 * 144, 192, 144); }

// A sprite of ssobj.bmp with its left top corner at (x, y), cut at the clip rectangle. Nothing without the
// picture.
void DrawSprite(int32_t x, int32_t y, const Rect& sprite, const Rect& clip = kScreen);

}  // namespace qlm
