// The result screen.
#pragma once

#include <cstdint>

namespace qlm {

// The result screen, from its opening to its end.
void ShowResults();
// A key by its number goes down there: any lane ends it.
void ProcessKey_Results(int32_t key);

}  // namespace qlm
