// Preparation.
#include "chart/preparation.h"

namespace qlm {

void BMSPrepare() {}
int32_t GetBMSLength() { return 0; }
void SortObjs() {}

}  // namespace qlm
