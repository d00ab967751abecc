// Course files, .qcl: head and songs of a course, in two formats.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/text.h"
#include "state/lists.h"

namespace qlm {

// ms of all songs together. A song that would take the sum past 32 bits does not count.
int32_t LengthOfSongs(std::span<const SongEntry> songs);

// Whether the bytes are a course of the old format, which has neither stars nor a count nor a length.
bool IsOldCourse(std::string_view bytes);
// The same course in the current format: five stars, five songs, the length of these five.
std::string ConvertedCourse(std::string_view bytes);

// Fills the head of the loaded course and, unless `headOnly`, CourseSongs from bytes of the current format.
// Takes any bytes: what they lack is 0 or empty.
void TakeCourse(std::string_view bytes, bool headOnly);
// The loaded course with `numsongs` songs. A row that CourseSongs lack is empty.
std::string CourseBytes();

// Reads a course into its head and, unless `headOnly`, into CourseSongs. A file of the old format is written
// again in the current one. A missing file changes nothing.
void CourseLoad(TextView path, bool headOnly);
// Writes the loaded course over the file, of which a longer one keeps its tail. False when the old file
// stayed.
bool CourseSave(TextView path);

}  // namespace qlm
