// Rebuilding of lists from the data folder.
#include "library/lists.h"

namespace qlm {

void UpdateJukeList() {}

void UpdateCourseList() {}

}  // namespace qlm
