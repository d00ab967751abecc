// Start values of the play record.
#include "state/records.h"

namespace qlm {

void ResetRecords() {
  PlayRecord.clear();
  RecCount = RecCursor = 0;
}

}  // namespace qlm
