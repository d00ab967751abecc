// The loaded course.
#pragma once

#include <cstdint>
#include <vector>

#include "state/lists.h"

namespace qlm {

inline std::vector<SongEntry> CourseSongs;
inline uint8_t numsongs = 0;

void ResetCourses();

}  // namespace qlm
