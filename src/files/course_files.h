// Course files.
#pragma once

#include "base/text.h"

namespace qlm {

// Reads a course into CourseSongs, or only its head. A missing file changes nothing.
void CourseLoad(TextView path, bool headOnly);

}  // namespace qlm
