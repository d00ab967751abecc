// The display and its surfaces.
#include "graphics/display.h"

namespace qlm {

void InitDX() {}
void InitDD() {}
void CreateSurfaces() {}
void ReleaseDD() {}
bool CheckDisplay() { return true; }

}  // namespace qlm
