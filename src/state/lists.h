// The active list: charts, jukeboxes or courses, one row each.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/text.h"

namespace qlm {

// No text of a row is longer, in characters here and in bytes in files.
constexpr int64_t kLongestRowText = 65'535;

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

// What the library keeps beside the active list.
struct Library {
  std::vector<SongEntry> jukeList;    // jukeboxes, as UpdateJukeList found them
  int32_t lastJuke = -1;              // last index, -1 when empty
  std::vector<SongEntry> courseList;  // courses, as UpdateCourseList found them; row 0 makes a new one
  int32_t lastCourse = -1;
  std::vector<Text> foundFiles;  // of the last search
  int32_t foundCount = 0;
  int16_t scanDepth = 0;             // folders that the search stands in, one below the other
  bool scanNoLimit = false;          // a search goes down to any depth
  bool scanRunning = false;          // charts are looked for: what events bring must leave the list alone
  bool scanStopped = false;          // the search is to end where it stands; the next one clears it
  std::optional<uint32_t> lastPump;  // clock at which a search last let events run
  int32_t playedSongs = 0;           // of this play session, in the history file
};
inline Library library;

void ResetLists();

}  // namespace qlm
