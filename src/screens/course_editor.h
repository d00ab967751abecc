// The course editor.
#pragma once

#include <cstdint>

namespace qlm {

// One frame of it.
void mEditCourse();
// A key by its number goes down in the editor.
void ProcessKey_EditCourse(int32_t key);

}  // namespace qlm
