// Course files between memory and disk.
#include "files/course_files.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "base/bytes.h"
#include "base/cursor.h"
#include "base/log.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "files/data_folder.h"
#include "files/list_file.h"
#include "platform/files.h"
#include "state/courses.h"

namespace qlm {
namespace {

constexpr std::string_view kMagic = "qlmcourse2              ";
constexpr std::string_view kOldMagic = "qlm_course";
constexpr size_t kHeadPlace = 24;
constexpr size_t kOldRows = 6;

struct Head {
  uint8_t stars = 0;
  uint8_t songs = 0;
  Text title;
  int32_t length = 0;
};

// `count` rows; those behind the end of the bytes are empty. The first row that breaks off, or holds a text
// longer than what is left, ends the reading.
std::vector<SongEntry> TakeRows(Cursor& cursor, size_t count) {
  std::vector<SongEntry> rows(count);
  for (SongEntry& row : rows) {
    if (!cursor.Good()) break;
    row = TakeSongEntry(cursor);
  }
  return rows;
}

std::string Bytes(const Head& head, std::span<const SongEntry> rows) {
  ByteWriter bytes;
  bytes.Bytes(kMagic);
  bytes.U8(head.stars);
  bytes.U8(head.songs);
  PutText(bytes, head.title);
  bytes.I32(head.length);
  for (const SongEntry& row : rows) PutSongEntry(bytes, row);
  return bytes.Take();
}

// Quirk: written as if in place, so that what a longer file holds behind the course stays.
bool Overwrite(TextView path, std::string bytes, std::string_view old) {
  if (old.size() > bytes.size()) bytes += old.substr(bytes.size());
  return SaveFile(path, bytes);
}

}  // namespace

int32_t LengthOfSongs(std::span<const SongEntry> songs) {
  int32_t length = 0;
  for (const SongEntry& song : songs) Assign(length, Round(static_cast<double>(length) + song.lengthMs));
  return length;
}

bool IsOldCourse(std::string_view bytes) { return bytes.starts_with(kOldMagic); }

std::string ConvertedCourse(std::string_view bytes) {
  Cursor cursor(bytes);
  cursor.Skip(kHeadPlace);
  const std::vector<SongEntry> rows = TakeRows(cursor, kOldRows);
  // Quirk: the head tells of five songs, and the sixth row, which is written all the same, is neither counted
  // nor played.
  Head head;
  head.stars = 5;
  head.songs = kOldRows - 1;
  head.length = LengthOfSongs(std::span(rows).first(head.songs));
  return Bytes(head, rows);
}

void TakeCourse(std::string_view bytes, bool headOnly) {
  Cursor cursor(bytes);
  // Quirk: what stands before the head is not looked at.
  cursor.Skip(kHeadPlace);
  courseStars = cursor.U8();
  numsongs = cursor.U8();
  courseTitle = TakeText(cursor);
  courseLength = cursor.I32();
  // One row more than there are songs: the reader takes the count for a last index.
  if (!headOnly) CourseSongs = TakeRows(cursor, size_t{numsongs} + 1);
}

std::string CourseBytes() {
  std::vector<SongEntry> rows = CourseSongs;
  rows.resize(numsongs);
  return Bytes({courseStars, numsongs, courseTitle, courseLength}, rows);
}

void CourseLoad(TextView path, bool headOnly) {
  if (!headOnly) DebugLog(Join(u"[CourseLoad] ", GetFileName(path)));
  std::optional<std::string> bytes = platform::ReadFile(path);
  if (!bytes) return;
  if (IsOldCourse(*bytes)) {
    const std::string old = *std::move(bytes);
    bytes = ConvertedCourse(old);
    Overwrite(path, *bytes, old);
  }
  TakeCourse(*bytes, headOnly);
  if (!headOnly) DebugLog(u"course loaded.");
}

bool CourseSave(TextView path) {
  return Overwrite(path, CourseBytes(), platform::ReadFile(path).value_or(std::string()));
}

}  // namespace qlm
