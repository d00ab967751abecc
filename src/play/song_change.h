// The join of two songs of a course.
#pragma once

#include <cstdint>

namespace qlm {

// Keeps the ExPTS so far as those at the end of the song in play.
void StoreExPts();
// Makes song `song` of the course the one in play: header, titles, windows, load states, pictures. The time
// that its loading takes does not count for the chart.
void ChangeSong(int32_t song);

}  // namespace qlm
