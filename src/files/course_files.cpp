// Course files between memory and disk.
#include "files/course_files.h"

#include <optional>
#include <utility>

#include "base/bytes.h"
#include "base/cursor.h"
#include "base/log.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "files/data_folder.h"
#include "files/list_file.h"
#include "files/search_folders.h"
#include "platform/files.h"
#include "platform/trash.h"
#include "state/courses.h"

namespace qlm {
namespace {

constexpr std::string_view kMagic = "qlmcourse2              ";
constexpr std::string_view kOldMagic = "qlm_course";
constexpr size_t kHeadBytes = kMagic.size();

std::vector<SongEntry> TakeRows(Cursor& cursor, size_t count) {
  std::vector<SongEntry> rows(count);
  for (SongEntry& row : rows) {
    if (!cursor.Good()) break;
    row = TakeSongEntry(cursor);
  }
  return rows;
}

void TakeOld(Cursor& cursor, CourseFile& course) {
  course.stars = 5;
  // Quirk: the last index is stored as the count, so that the sixth row is written, but neither counted nor
  // played.
  course.songs = 5;
  course.rows = TakeRows(cursor, size_t{course.songs} + 1);
  course.length = LengthOfSongs(std::span(course.rows).first(course.songs));
}

void TakeCurrent(Cursor& cursor, CourseFile& course) {
  course.stars = cursor.U8();
  course.songs = cursor.U8();
  course.title = TakeText(cursor);
  course.length = cursor.I32();
  // Quirk: the count is taken for a last index, so that one row more is asked for than the file holds.
  course.rows = TakeRows(cursor, size_t{course.songs} + 1);
}

// Quirk: a course is written over the one before, so that a longer one leaves its end behind the songs.
bool Write(TextView path, const CourseFile& course) {
  return SaveFile(path, WrittenOver(path, CourseFileBytes(course)));
}

}  // namespace

CourseFile ReadCourseFile(std::string_view bytes) {
  CourseFile course;
  Cursor cursor(bytes);
  // Quirk: whatever does not begin with the old word is read as a course of the current format.
  course.old = bytes.starts_with(kOldMagic);
  cursor.Skip(kHeadBytes);
  if (course.old) {
    TakeOld(cursor, course);
  } else {
    TakeCurrent(cursor, course);
  }
  course.unread = cursor.Left();
  return course;
}

std::string CourseFileBytes(const CourseFile& course) {
  ByteWriter bytes;
  bytes.Bytes(kMagic);
  bytes.U8(course.stars);
  bytes.U8(course.songs);
  PutText(bytes, course.title);
  bytes.I32(course.length);
  for (const SongEntry& row : course.rows) PutSongEntry(bytes, row);
  return bytes.Take();
}

void TakeCourse(CourseFile course, bool headOnly) {
  courseStars = course.stars;
  numsongs = course.songs;
  courseTitle = std::move(course.title);
  courseLength = course.length;
  if (headOnly) return;
  CourseSongs = std::move(course.rows);
  for (SongEntry& song : CourseSongs) song.path = WithProgramFolder(song.path);
}

void CourseLoad(TextView path, bool headOnly) {
  if (!headOnly) DebugLog(Join(u"[CourseLoad] ", GetFileName(path)));
  const std::optional<std::string> bytes = platform::ReadFile(path);
  if (!bytes) return;
  CourseFile course = ReadCourseFile(*bytes);
  if (course.old) Write(path, course);
  TakeCourse(std::move(course), headOnly);
  if (!headOnly) DebugLog(u"course loaded.");
}

bool CourseSave(TextView path) {
  CourseFile course;
  course.stars = courseStars;
  course.songs = numsongs;
  course.title = courseTitle;
  course.length = courseLength;
  course.rows = CourseSongs;
  course.rows.resize(numsongs);
  return Write(path, course);
}

bool CourseDelete(TextView path) {
  const TextView name = GetFileName(path);
  if (keepsDataFolder && platform::MoveToTrash(path)) {
    DebugLog(Join(u"moved to the trash: ", name));
    return true;
  }
  if (keepsDataFolder && platform::DeleteFile(path)) {
    DebugLog(Join(u"removed: ", name));
    return true;
  }
  DebugLog(Join(u"# cannot be deleted: ", name));
  return false;
}

int32_t LengthOfSongs(std::span<const SongEntry> songs) {
  int32_t length = 0;
  for (const SongEntry& song : songs) {
    Assign(length, Round(static_cast<double>(length) + song.lengthMs));
  }
  return length;
}

}  // namespace qlm
