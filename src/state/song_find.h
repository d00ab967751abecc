// The search within the list that is up: what is typed, and the whole list while a part of it is shown.
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "base/text.h"
#include "state/lists.h"

namespace qlm {

struct SongFind {
  bool typing = false;        // the line takes what is typed; no key of the list acts
  bool slashHeld = false;     // the key that opened the line is down, and may come as characters
  Text words;                 // what was typed
  Text composing;             // what an input method still works on, behind the words
  bool filtered = false;      // the active list is that part of `rows` which holds the words
  bool holdsNone = false;     // no row holds the words
  int32_t heldRow = 0;        // of the whole list, the row that was in hand last
  int32_t clearCheckRow = 0;  // of the whole list, as it stood before

  // The whole list and its marks, while `filtered`.
  std::vector<SongEntry> rows;
  std::vector<bool> cleared;
  std::vector<bool> hasRecord;
  std::vector<Text> keys;      // what each row is found by
  size_t readRows = 0;         // the rows whose keys have the readings of kanji too
  std::vector<int32_t> shown;  // the row of the whole list, by row of the active one
};
inline SongFind songFind;

// Readings of texts with kanji in the form in which texts are compared, as they were looked up; empty where
// there is none. They outlive the list.
inline std::unordered_map<Text, Text> foundReadings;

void ResetSongFind();

}  // namespace qlm
