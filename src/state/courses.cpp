// No course.
#include "state/courses.h"

namespace qlm {

void ResetCourses() {
  CourseSongs.clear();
  numsongs = 0;
}

}  // namespace qlm
