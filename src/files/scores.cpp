// Score tables, which are still to come: until then none is read or written.
#include "files/scores.h"

namespace qlm {

void LoadScoreDat() {}
void SaveScoreDat() {}

}  // namespace qlm
