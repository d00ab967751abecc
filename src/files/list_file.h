// List files, .qbl: the rows of a jukebox.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"
#include "base/cursor.h"
#include "base/text.h"
#include "state/lists.h"

namespace qlm {

// One text of a row: the number of its bytes in 16 bits, then the bytes.
Text TakeText(Cursor& cursor);
// A text of more than 65,535 bytes is cut.
void PutText(ByteWriter& bytes, TextView text);

// One row, as list and course files hold it. What the bytes do not hold has its start value.
SongEntry TakeSongEntry(Cursor& cursor);
void PutSongEntry(ByteWriter& bytes, const SongEntry& song);

struct ListFile {
  int32_t lastSong = -1;        // as the file tells it
  std::vector<SongEntry> rows;  // that the bytes hold, the last one perhaps in part
  bool whole = false;           // every row that the file tells of is there
  size_t unread = 0;            // bytes behind the last row
};
// Takes any bytes. The first 20 are not looked at.
ListFile ReadListFile(std::string_view bytes);
std::string ListFileBytes(std::span<const SongEntry> rows);

// Writes the rows to a file. False when the old one stayed.
bool WriteListFile(TextView path, std::span<const SongEntry> rows);

}  // namespace qlm
