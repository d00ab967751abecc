// The entry of a name, which is still to come: until then no play is ranked.
#include "screens/name_entry.h"

namespace qlm {

void AddScoreDat() {}
void ProcessKey_EnterName(int32_t) {}

}  // namespace qlm
