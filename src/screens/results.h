// The result screen.
#pragma once

#include <cstdint>

namespace qlm {

// The result screen, from its opening to its end. GameState is kStateResults meanwhile.
void ShowResults();
// A key by its number goes down there: any lane but the turntables ends it.
void ProcessKey_Results(int32_t key);

}  // namespace qlm
