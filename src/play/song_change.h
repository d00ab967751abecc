// The join of two songs of a course.
#pragma once

#include <cstdint>

namespace qlm {

// Makes song `song` of the course the one in play: header, titles, windows, load states, pictures. The time
// that its loading takes does not count for the chart.
void ChangeSong(int32_t song);

}  // namespace qlm
