// Start values of the play record.
#include "state/records.h"

namespace qlm {

void ResetRecords() { RecCount = RecCursor = 0; }

}  // namespace qlm
