// Judgement, which is still to come: until then no note is graded, missed or finished.
#include "play/judgement.h"

namespace qlm {

bool JudgeNote(int32_t, float, bool, float&) { return false; }
void JudgeScrolledPast() {}

}  // namespace qlm
