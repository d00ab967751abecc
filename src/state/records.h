// The play record in memory.
#pragma once

#include <cstdint>
#include <vector>

namespace qlm {

// What the hands did at one moment of a play.
struct RecEvent {
  int32_t pos = 0;     // position units
  int32_t kind = 0;    // the channel of a lane, negated when the lane was let go; or a kind of play/records.h
  float delta = 0;     // deviation as judged; of a speed, the new value in hundredths
  int32_t colour = 0;  // of the hit, with red in the low byte
  int16_t reserved = 0;

  friend bool operator==(const RecEvent&, const RecEvent&) = default;
};

// RecCount counts on past what a record holds.
constexpr int32_t kMostRecEvents = 100001;
inline std::vector<RecEvent> PlayRecord;
inline int32_t RecCount = 0;   // events recorded
inline int32_t RecCursor = 0;  // next event of a replay

void ResetRecords();

}  // namespace qlm
