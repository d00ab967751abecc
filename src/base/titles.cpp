// Conversion of titles for the bitmap font.
#include "base/titles.h"

namespace qlm {

Text Cvt2ASCII(TextView title) { return Text(title); }

}  // namespace qlm
