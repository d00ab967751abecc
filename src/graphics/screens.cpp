// Whole frames.
#include "graphics/screens.h"

namespace qlm {

void DrawPlayFrame() {}
void Loading() {}
void PrintBoot(TextView, bool) {}
void DrawBootScreen() {}
void LoadSS() {}

}  // namespace qlm
