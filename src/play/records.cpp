// Play records, which are still to come: until then nothing is recorded or replayed.
#include "play/records.h"

namespace qlm {

void AddRecEvent(int32_t, int32_t, float, int32_t) {}
void SaveUserRec(TextView) {}
void LoadUserRec(TextView) {}
void ReplayEvents() {}

}  // namespace qlm
