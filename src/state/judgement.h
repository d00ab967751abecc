// Judgement windows and what the last judgements were.
#pragma once

#include <array>
#include <cstdint>

#include "base/table.h"
#include "base/text.h"
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
inline std::array<int32_t, 4> JudgeWindow{};  // in force

inline std::array<int32_t, 2> LastJudge = {-1, -1};  // 4 PERFECT … 0 POOR, -1 none yet; by score side
inline std::array<float, 2> ChordDelta{};            // previous signed deviation, by object side
inline std::array<uint8_t, kLanes> LaneHit{};        // flash: 0 none, 1 GOOD, 2 GREAT, 3 PERFECT
inline std::array<uint32_t, kLanes> LaneHitTime{};   // clock
inline bool PoorShow = false;                        // the BGA shows its poor picture
inline int32_t PoorShowPos = 0;                      // position units

void ResetJudgement();

}  // namespace qlm
