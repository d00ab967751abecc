// Judgement windows and what the last judgements were.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/table.h"
#include "base/text.h"
#include "platform/surface.h"
#include "state/chart.h"

namespace qlm {

// Position units by rank * 4 + grade (0 PERFECT, 1 GREAT, 2 GOOD, 3 BAD): with r = rank + 1 they are r, 2r,
// 6r, 8r.
inline constexpr std::array<int32_t, 16> JudgeWindowTable = [] {
  std::array<int32_t, 16> table{};
  for (int32_t rank = 0; rank < 4; ++rank) {
    constexpr std::array<int32_t, 4> kFactors = {1, 2, 6, 8};
    for (int32_t grade = 0; grade < 4; ++grade) table[rank * 4 + grade] = kFactors[grade] * (rank + 1);
  }
  return table;
}();
// Names of the classes, best first.
inline constexpr std::array<TextView, 8> RankLetters = {u"SS", u"S", u"A", u"B", u"C", u"D", u"E", u"F"};
// Per cent of the accuracy from which each class is reached; below all of them stands "E".
inline constexpr std::array<float, 6> kClassPercent = {95, 90, 80, 70, 50, 30};
// The class of an accuracy of `points` out of `most`, as an index of RankLetters: 0 "SS" to 6 "E". As long as
// nothing was judged it is "E".
constexpr int32_t ClassOf(float points, int32_t most) {
  size_t reached = 0;
  // In 32 bits, so that 0.95 reaches 95.
  const float ratio = most == 0 ? 0 : points / static_cast<float>(most);
  while (reached < kClassPercent.size() && !(ratio * 100 >= kClassPercent[reached])) ++reached;
  return static_cast<int32_t>(reached);
}
inline std::array<int32_t, 4> JudgeWindow{};  // in force

// Grades, best first.
constexpr int32_t kPerfect = 4;
constexpr int32_t kGreat = 3;
constexpr int32_t kGood = 2;
constexpr int32_t kBad = 1;
constexpr int32_t kPoor = 0;
// Units behind the line at which a note that nobody pressed is missed, on every rank.
constexpr float kMissUnits = 48;

inline std::array<int32_t, 2> LastJudge = {-1, -1};  // a grade, -1 none yet; by score side
inline std::array<uint32_t, 2> LastJudgeTime{};      // clock; by score side
inline platform::Colour HitColour = 0;               // of the last judgement or empty press
inline std::array<float, 2> ChordDelta{};            // previous signed deviation, by object side
inline std::array<uint8_t, kLanes> LaneHit{};        // flash: 0 none, 1 GOOD, 2 GREAT, 3 PERFECT
inline std::array<uint32_t, kLanes> LaneHitTime{};   // clock
inline bool PoorShow = false;                        // the BGA shows its poor picture
inline int32_t PoorShowPos = 0;                      // position units

// A combo of 11 or more was broken, or one reached a multiple of 100: the figure rises for a second.
inline bool ComboLost = false;
inline uint32_t ComboLostTime = 0;  // clock
inline int32_t ComboLostValue = 0;
inline bool ComboRound = false;
inline uint32_t ComboRoundTime = 0;  // clock
inline int32_t ComboRoundValue = 0;
// The digits of Combo, the highest first, by score side. A count of -1 draws none.
constexpr int32_t kComboDigits = 5;
inline std::array<std::array<uint8_t, kComboDigits>, 2> ComboDigit{};
inline std::array<int32_t, 2> ComboDigitCount = {-1, -1};
inline bool BlinkToggle = false;  // turns with every drawn side; the combo's digits follow it

void ResetJudgement();

}  // namespace qlm
