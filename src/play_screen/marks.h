// Marks of a side: how full its gauge is, the class it plays for, its options.
#pragma once

#include <cstddef>

namespace qlm {

// One of four pictures by the exact gauge: below 20, below 80, below 100, and 100.
void DrawFan(size_t side);
// Bobs by four pixels in each beat.
void DrawClassMark(size_t side);
void DrawOptionMarks(size_t side);

}  // namespace qlm
