// Course files, .qcl: head and songs of a course, in two formats.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "state/lists.h"

namespace qlm {

struct CourseFile {
  bool old = false;  // of the old format, which has no head, and converted since
  uint8_t stars = 0;
  uint8_t songs = 0;  // how many rows are songs of the course
  Text title;
  int32_t length = 0;           // ms
  std::vector<SongEntry> rows;  // one more than there are songs
  size_t unread = 0;            // bytes behind the last row
};
// Takes any bytes: what they lack is 0 or empty. The first row that breaks off ends the reading. A course of
// the old format gets five stars, and the five songs that the head of such a course tells of.
CourseFile ReadCourseFile(std::string_view bytes);
// In the current format, with all rows.
std::string CourseFileBytes(const CourseFile& course);

// Makes it the loaded course; `headOnly` leaves CourseSongs as they are.
void TakeCourse(CourseFile course, bool headOnly);
// Reads a course and makes it the loaded one. A file of the old format is written again in the current one. A
// missing file changes nothing.
void CourseLoad(TextView path, bool headOnly);
// Writes the loaded course with `numsongs` songs, however many rows CourseSongs has; a longer file keeps what
// it holds behind them. False when the old file stayed.
bool CourseSave(TextView path);
// Puts the file into the system's trash, or removes it where there is none; the log says which. False when it
// stayed.
bool CourseDelete(TextView path);

// ms of all songs together. A song that would take the sum past 32 bits does not count.
int32_t LengthOfSongs(std::span<const SongEntry> songs);

}  // namespace qlm
