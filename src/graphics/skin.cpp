// Skins.
#include "graphics/skin.h"

namespace qlm {

void loadSkin(TextView, bool) {}
void PickOptionMarks() {}

}  // namespace qlm
