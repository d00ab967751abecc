// Gauge, score, accuracy and combo of both score sides.
#pragma once

#include <array>
#include <cstdint>

namespace qlm {

// From it on a play is cleared.
constexpr float kClearGauge = 80;
inline std::array<float, 2> Gauge{};       // 0 to 100
inline std::array<float, 2> GaugeShown{};  // as drawn
inline std::array<float, 2> GaugeGain{};   // gain unit of the chart
inline std::array<double, 2> Score{};
inline std::array<double, 2> ScoreShown{};
inline std::array<double, 2> ScorePerNote{};  // score unit of the chart
inline std::array<float, 2> JPts{};           // accuracy, may be negative
inline std::array<float, 2> JPtsShown{};
inline std::array<int32_t, 2> JPtsMax{};                    // 18 per judged note
inline std::array<std::array<int32_t, 5>, 2> JudgeCount{};  // by side; 0 PERFECT … 4 POOR
inline std::array<int32_t, 2> Combo{};
inline std::array<int32_t, 2> MaxCombo{};
inline bool HazardGauge = false;  // the gauge starts full, and empty ends the play

void ResetGauge();

}  // namespace qlm
