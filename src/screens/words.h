// The game's Japanese lines in the language of the person who plays.
#pragma once

#include "base/text.h"

namespace qlm {

// The line itself, or its English when the setting MenuLanguage asks for that by name. A line that has no
// English stays as it is.
TextView Words(TextView japanese);

}  // namespace qlm
