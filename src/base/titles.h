// Conversion of titles for the bitmap font.
#pragma once

#include "base/text.h"

namespace qlm {

// Gives a title in the letters that the play screen's font has. The conversion is still to come: until then
// the title comes back as it is.
Text Cvt2ASCII(TextView title);

}  // namespace qlm
