// The active list: charts, jukeboxes or courses, one row each.
#pragma once

#include <cstdint>
#include <vector>

#include "base/text.h"

namespace qlm {

// One row of any list. The start values are those that a row has before its chart's header is read.
struct SongEntry {
  Text title;
  Text artist;
  Text genre;
  float bpm = 0;
  int32_t player = 0;
  int32_t playLevel = 0;
  Text midiFile;
  int32_t rank = 0;
  int32_t volWav = 0;
  int32_t total = 0;
  int32_t lengthMs = 0;
  Text stageFile;
  int32_t numWav = 0;
  int32_t numBmp = 0;
  Text path;  // of the chart, the list or the course

  friend bool operator==(const SongEntry&, const SongEntry&) = default;
};

inline std::vector<SongEntry> songList;
inline int32_t lastSong = -1;            // last index, -1 when empty
inline std::vector<bool> songCleared;    // row has a cleared score
inline std::vector<bool> songHasRecord;  // row has a play record
inline int64_t listTotalTime = 0;        // ms
inline int32_t listCursor = 0;
inline Text listFileName;
inline bool selectLocked = false;  // a battle waits: the list takes no keys

void ResetLists();

}  // namespace qlm
