// The course editor.
#pragma once

#include <cstdint>

namespace qlm {

// A key by its number goes down in the editor.
void ProcessKey_EditCourse(int32_t key);

}  // namespace qlm
