// Fades.
#include "graphics/fades.h"

namespace qlm {

void ScreenFade(double) {}
void FadeScreen(int32_t, int32_t) {}
void MakeFadeTiles() {}
void HoldFrame() {}
bool DrawFadeTiles(int32_t) { return true; }
void DrawFades() {}

}  // namespace qlm
