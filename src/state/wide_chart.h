// What the wide reading keeps of a chart beside the tables that every chart has. All of it is empty, and
// costs nothing, with WideCharts off.
#pragma once

#include <cstdint>
#include <vector>

#include "base/text.h"

namespace qlm {

// Kinds of objects that only the wide reading makes. The first three follow the channels of their lanes.
constexpr int32_t kLongNoteKinds = 40;  // 51 to 69: begins or ends a long note; none is left by preparation
constexpr int32_t kMineKinds = 60;      // 71 to 89: a mine, drawn and harmless
constexpr int32_t kLongNoteEndKinds = 80;  // 91 to 109: ends the long note of the lane; none is left either
constexpr int32_t ObjStop = 9;             // value is its length in position units
constexpr int32_t ObjLongNoteEnd = -3;     // no note, no sound

constexpr bool IsMine(int32_t channel) { return channel >= kMineKinds + 11 && channel <= kMineKinds + 29; }

constexpr bool IsWideKindOf1P(int32_t channel) {
  return (channel >= 51 && channel <= 59) || (channel >= 71 && channel <= 79) ||
         (channel >= 91 && channel <= 99);
}

// A note with a body.
struct LongNote {
  int32_t head = 0;  // index of its note in the object table
  int32_t end = 0;   // position
};
inline std::vector<LongNote> LongNotes;  // in order of their heads

// A stop takes time and no way on the screen: on the axis of positions it is as long as it lasts, and what is
// drawn leaves it out.
struct Stop {
  int32_t pos = 0;     // where it begins
  int64_t units = 0;   // its length, above 0
  int64_t before = 0;  // the lengths of all stops before it together
};
inline std::vector<Stop> Stops;  // by pos

inline Text HdrPreview;          // sound that the song select plays for the chart, with its path
inline int32_t ChartVolume = 0;  // of #VOLWAV, added to that of each sound: hundredths of a decibel
inline double posRest = 0;       // what posOffset, which is a whole number, lacks of a position
inline int32_t courseTempi = 0;  // tempi of the songs of a course behind the slots of BpmTable

void ResetWideChart();

}  // namespace qlm
