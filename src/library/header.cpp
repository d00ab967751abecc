// The header-only read of a chart.
#include "library/header.h"

namespace qlm {

void ReadBMSHeader(TextView, int32_t) {}

}  // namespace qlm
