// The course editor, which is still to come: until then its keys do nothing.
#include "screens/course_editor.h"

namespace qlm {

void ProcessKey_EditCourse(int32_t) {}

}  // namespace qlm
