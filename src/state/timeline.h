// Time and place in the chart: clock, position, tempo, and the cursors that walk the tables.
#pragma once

#include <array>
#include <cstdint>

#include "base/table.h"
#include "state/chart.h"

namespace qlm {

inline uint32_t playStart = 0;  // the clock at 0 ms of the chart
inline int32_t playClock = 0;   // ms since playStart, fixed within a turn
inline double playPos = 0;      // position units: playClock * pixPerMs + posOffset
inline double pixPerMs = 0;     // position units per ms: curBPM / 1250
inline float rawBPM = 0;        // tempo at the start and after a seek
inline float curBPM = 0;        // tempo in force, times RealHiSpeed
inline float shownBPM = 0;      // curBPM as the screen's digits have it: a pause does not reach them
inline float unitsPerSec = 0;   // curBPM / 240 * 192; kept up to date and read by nothing
inline int32_t posOffset = 0;   // what earlier tempi contributed
inline int32_t objCursor = 0;   // first object not yet processed
inline int32_t keySoundCursor = 0;

inline std::array<int32_t, kLanes> LaneSound{};  // slot that a press of the lane sounds; by channel - 11
inline std::array<int32_t, kLanes> LaneNote{};   // pending note of the lane, -1 none

inline double curMeasure = 0;      // measure of the last bar line passed
inline int32_t curMeasurePos = 0;  // its position

// 300 gauge samples a side, and when the next one is due.
inline std::array<Table<uint8_t, 299>, 2> GaugeHistory;
inline std::array<float, 2> HistoryNext{};
inline float HistoryStep = 0;  // ms a sample

inline Table<int16_t, 127> CourseExPts;  // ExPTS at each song's end

// The one loop counter that the walks over the sound slots share and leave where they end.
// Quirk: `PlayWav` in the fail fade sets the volume of the slot with this number.
inline int32_t loopCounter = 0;

void ResetTimeline();

}  // namespace qlm
