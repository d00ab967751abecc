// The loaded course: its head, as its file holds it, and its songs.
#pragma once

#include <cstdint>
#include <vector>

#include "base/text.h"
#include "state/lists.h"

namespace qlm {

inline uint8_t courseStars = 0;   // shown only
inline uint8_t numsongs = 0;      // a count, no last index
inline Text courseTitle;          // empty in the files of this game: a course is called as its file is
inline int32_t courseLength = 0;  // ms, of all songs

// Behind the `numsongs` songs of a course that was read stands one more row, which nothing may look at.
inline std::vector<SongEntry> CourseSongs;

// No course is loaded.
void ResetCourses();

}  // namespace qlm
