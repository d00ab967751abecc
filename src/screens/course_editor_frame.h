// The picture of the course editor.
#pragma once

namespace qlm {

// One frame, also while its name is typed. Brings courseCursor to a line that there is.
void mEditCourse();

}  // namespace qlm
