// No course.
#include "state/courses.h"

namespace qlm {

void ResetCourses() {
  courseStars = 0;
  numsongs = 0;
  courseTitle.clear();
  courseLength = 0;
  CourseSongs.clear();
}

}  // namespace qlm
