// The typing of a course's name.
#pragma once

#include <cstdint>

namespace qlm {

// A character of the name, which is also that of the file; 8 takes the last one back, 13 and 27 end the
// typing. What no file name can hold, and what is not ASCII, is refused with a message.
void ProcessKey_EnterCourse(int32_t ascii);

}  // namespace qlm
