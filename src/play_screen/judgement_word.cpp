// The word of the last judgement: it opens wide, bounces on the beat and is squashed at its end.
#include "play_screen/judgement_word.h"

#include <cmath>
#include <cstdint>
#include <optional>

#include "base/numbers.h"
#include "graphics/clips.h"
#include "platform/clock.h"
#include "play_screen/figures.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/options.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "state/timeline.h"

namespace qlm {
namespace {

constexpr int32_t kStands = 1000;  // ms, for the word and for a bonus figure
constexpr int32_t kLeaving = 900;  // ms after which the word is squashed
constexpr int32_t kOpening = 100;  // ms for which it is wider
constexpr int32_t kBounceUnits = 8;
constexpr double kPi = 3.1415;

// The position's place in a stretch of `units` while it is among the first 8, nothing behind.
std::optional<int32_t> Bounce(int32_t units) {
  const std::optional<int32_t> place = Round(playPos);
  if (!place) return std::nullopt;
  const int32_t phase = *place % units;
  return phase >= 0 && phase < kBounceUnits ? std::optional(phase) : std::nullopt;
}

// Pixels by which the word is lower than its picture.
int32_t Squash(int32_t ms) {
  if (DontStretch) return 0;
  if (ms > kLeaving) return (ms - kLeaving) / 3;
  const std::optional<int32_t> phase = Bounce(kBeatUnits);
  return phase ? static_cast<int32_t>(RoundHalfEven(12 - *phase * 1.5)) : 0;
}

// Pixels by which the word is wider at each side.
int32_t Widening(int32_t ms) {
  if (DontStretch) return 0;
  double wider = Bounce(kMeasureUnits).value_or(0);
  if (ms < kOpening) {
    const double left = (kOpening - ms) / 100.0;
    wider += 20 * left * left;
  }
  return Round(wider).value_or(0);
}

void DrawCombo(size_t side, int64_t x, int32_t y, int32_t squash) {
  const SkinNumber& number = Number[ComboNumber];
  const int32_t digits = std::min(ComboDigitCount[side], kComboDigits);
  const int32_t middle = y - squash / 2;
  for (int32_t i = 0; i < digits; ++i) {
    const int32_t turned = 180 / digits * i;
    const double wave = playPos / 24 * 180 + turned;
    const auto top = RoundTo<int64_t>(middle - 3 * std::sin(wave * kPi / 180));
    if (!top) continue;
    const int64_t left = x + int64_t{number.width} * i;
    const Rect& glyph = number.rects[ComboDigit[side][static_cast<size_t>(i)] + size_t{1}];
    StretchFromSheet(number.file, glyph,
                     RectOf(left, *top, left + number.width, *top + number.height + squash));
  }
}

// The figure of a bonus or a loss, which climbs from the word's upper edge.
void DrawRising(const SkinPos& word, bool shown, uint32_t since, int32_t value) {
  const int32_t ms = platform::Elapsed(platform::Now(), since);
  if (!shown || ms < 0 || ms >= kStands) return;
  const int64_t bottom = int64_t{word.y} - ms / 10;
  DrawNumber(ComboNumber, word.x, bottom - Number[ComboNumber].height, value, 0);
}

void DrawComboGraph(size_t side, int64_t x, int64_t y) {
  DrawClip(ComboGraphBackClip, x, y);
  const SkinClip* const clip = Clip.Find(ComboGraphClip);
  if (clip == nullptr) return;
  const std::optional<int32_t> width = Divide(int64_t{clip->width} * Combo[side], MaxCombo[side]);
  if (!width) return;
  const Rect& rect = clip->rect;
  DrawFromSheet(clip->file, RectOf(rect.left, rect.top, int64_t{rect.left} + *width, rect.bottom), x, y);
}

// What the combo is worth.
void DrawComboBox(size_t side, int64_t x, int64_t y) {
  const bool missed = JudgeCount[side][3] != 0 || JudgeCount[side][4] != 0;
  if (Pressure) {
    DrawClip(PressureClip, x, y);
  } else if (Combo[side] != MaxCombo[side]) {
    DrawComboGraph(side, x, y);
  } else {
    DrawClip(missed ? MaxComboClip : NoMissClip, x, y);
  }
}

}  // namespace

void DrawJudgement(size_t side, bool blink) {
  const int32_t grade = LastJudge[side];
  const int32_t ms = platform::Elapsed(platform::Now(), LastJudgeTime[side]);
  if (!DDBack || grade < 0 || grade > 4 || ms >= kStands) return;
  const SkinPos& pos = JudgePos[side][static_cast<size_t>(grade)];
  const SkinClip& clip = Clip[pos.id];
  const int32_t squash = Squash(ms);
  const int32_t wider = Widening(ms);
  const int64_t right = int64_t{pos.x} + clip.width;
  const int64_t bottom = int64_t{pos.y} + clip.height;
  StretchFromSheet(clip.file, clip.rect,
                   RectOf(pos.x - wider, pos.y + squash / 2, right + wider, bottom - squash / 2));
  if (Combo[side] > 0 && blink) DrawCombo(side, right, pos.y, squash);
  DrawRising(pos, ComboRound, ComboRoundTime, ComboRoundValue);
  DrawRising(pos, ComboLost, ComboLostTime, ComboLostValue);
  DrawComboBox(side, right, bottom);
}

}  // namespace qlm
