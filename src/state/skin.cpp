// Start values of the skin choice.
#include "state/skin.h"

namespace qlm {

void ResetSkin() {
  SkinPath.clear();
  SkinMapPath = {};
}

}  // namespace qlm
